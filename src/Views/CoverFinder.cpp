#include "Views/CoverFinder.h"

#include "Host/SafeFiles.h"

#include <QDir>
#include <QFileInfo>
#include <array>

namespace ludarium {

namespace {

constexpr std::array kinds{"Box - Front",  "Box - 3D", "Screenshot - Gameplay", "Screenshot - Game Title",
                           "Clear Logo",   "Banner",   "Fanart - Background",   "Box - Back",
                           "Cart - Front", "Disc"};
constexpr std::array extensions{"png", "jpg", "jpeg", "gif", "webp"};

/// A name that contains the title of fewer letters than this proves nothing.
constexpr int shortestLooseTitle = 5;

bool isPicture(const QString &lowerName) {
    return std::any_of(extensions.begin(), extensions.end(), [&](const char *extension) {
        return lowerName.endsWith(QLatin1Char('.') + QLatin1StringView(extension));
    });
}

QString lettersAndDigits(const QString &text) {
    QString result;
    for (const QChar c : text.toLower())
        if (c.isLetterOrNumber())
            result.append(c);
    return result;
}

/// The title as a file name: what no file system takes becomes "_".
QString safeName(QString name) {
    for (QChar &c : name)
        if (QStringLiteral(":/\\?%*|\"<>").contains(c))
            c = QLatin1Char('_');
    return name;
}

QString lookUp(const QHash<QString, QString> &filesByLower, const QStringList &names) {
    for (const QString &name : names) {
        const QString safe = safeName(name);
        for (const char *extension : extensions) {
            const QString suffix = QLatin1Char('.') + QLatin1StringView(extension);
            if (const auto hit = filesByLower.constFind((name + suffix).toLower()); hit != filesByLower.cend())
                return *hit;
            if (safe != name)
                if (const auto hit = filesByLower.constFind((safe + suffix).toLower()); hit != filesByLower.cend())
                    return *hit;
        }
    }
    return {};
}

} // namespace

QStringList CoverFinder::candidates(const Game &game) {
    QString sanitized = game.title;
    sanitized.replace(QLatin1Char(':'), QLatin1Char('_')).replace(QLatin1Char('\''), QLatin1Char('_'));
    const bool differs = sanitized != game.title;
    QStringList names;
    for (const char *number : {"-01", "-02", "-00"})
        names.append(game.title + QLatin1StringView(number));
    if (differs)
        for (const char *number : {"-01", "-02", "-00"})
            names.append(sanitized + QLatin1StringView(number));
    names.append(game.title);
    if (differs)
        names.append(sanitized);
    names.append(game.gameFolderName());
    if (const QStringList pieces = pathComponents(game.applicationPath); !pieces.isEmpty())
        names.append(QFileInfo(pieces.last()).completeBaseName());
    names.removeAll(QString());
    return names;
}

std::shared_ptr<CoverFinder::Folder> CoverFinder::folder(const QString &path, bool withRegions) {
    std::shared_ptr<Folder> found;
    {
        const QMutexLocker lock(&m_mutex);
        std::shared_ptr<Folder> &slot = m_folders[path];
        if (!slot)
            slot = std::make_shared<Folder>();
        found = slot;
    }
    std::call_once(found->once, [&] {
        const std::optional<QStringList> names = listFolder(path);
        for (const QString &name : names.value_or(QStringList())) {
            const QString lower = name.toLower();
            if (isPicture(lower)) {
                found->filesByLower.insert(lower, name);
                found->normalized.append({lettersAndDigits(name), name});
            } else if (withRegions && !name.startsWith(QLatin1Char('.')) &&
                       QFileInfo(path + QLatin1Char('/') + name).isDir()) {
                found->regions.append(name);
            }
        }
    });
    return found;
}

QString CoverFinder::findKind(const Game &game, const QStringList &names, const QString &folderPath) {
    const std::shared_ptr<Folder> top = folder(folderPath, true);
    const auto inFolder = [](const QString &path, const QString &name) { return path + QLatin1Char('/') + name; };
    if (const QString hit = lookUp(top->filesByLower, names); !hit.isEmpty())
        return inFolder(folderPath, hit);
    for (const QString &region : top->regions)
        if (const QString hit = lookUp(folder(inFolder(folderPath, region), false)->filesByLower, names);
            !hit.isEmpty())
            return inFolder(inFolder(folderPath, region), hit);

    const QString wanted = lettersAndDigits(game.title);
    if (wanted.size() < shortestLooseTitle)
        return {};
    const auto loose = [&](const QString &path, const Folder &candidate) {
        for (const auto &[normalized, name] : candidate.normalized)
            if (normalized.contains(wanted))
                return inFolder(path, name);
        return QString();
    };
    if (const QString hit = loose(folderPath, *top); !hit.isEmpty())
        return hit;
    for (const QString &region : top->regions) {
        const QString path = inFolder(folderPath, region);
        if (const QString hit = loose(path, *folder(path, false)); !hit.isEmpty())
            return hit;
    }
    return {};
}

QString CoverFinder::find(const Game &game) {
    if (!isSafeName(game.platform))
        return {};
    const QString platformFolder = m_collection + QStringLiteral("/Images/") + game.platform;
    const QStringList names = candidates(game);
    for (const char *kind : kinds)
        if (const QString path = findKind(game, names, platformFolder + QLatin1Char('/') + QLatin1StringView(kind));
            !path.isEmpty())
            return path;
    return {};
}

} // namespace ludarium
