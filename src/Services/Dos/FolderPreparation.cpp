#include "Services/Dos/FolderPreparation.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Dos/DriverCopy.h"

#include <QFileInfo>

namespace ludarium {

namespace {

QStringList candidatesFor(const std::optional<GameVersionOption> &version) {
    const auto words = [](const char *text) { return QString::fromLatin1(text).split(u' '); };
    if (!version || !version->audioType) {
        Log::info(QStringLiteral("   No audio type specified, trying default SoundBlaster audio config"));
        return words("SB16 sb16 SB sb");
    }
    switch (*version->audioType) {
    case AudioType::mt32:
        return words("MT32 mt32");
    case AudioType::soundBlaster:
        return words("SB16 sb16 SB sb SC55 sc55");
    case AudioType::soundCanvas:
        return words("SC55 sc55 SOUNDCANVAS soundcanvas");
    case AudioType::cdAudio:
        return words("CDA cda CDAUDIO cdaudio");
    case AudioType::adlib:
        return words("ADLIB adlib ADL adl");
    case AudioType::tandy:
        return words("TANDY tandy");
    case AudioType::gameBlaster:
        return words("GB gb GAMEBLASTER gameblaster");
    case AudioType::gus:
    case AudioType::flac:
    case AudioType::pcSpeaker:
    case AudioType::none:
        return {};
    }
    return {};
}

/// Whether `path`, links followed, is `folder` or lies in it.
bool reallyInside(const QString &folder, const QString &path) {
    const QString base = QFileInfo(folder).canonicalFilePath();
    const QString real = QFileInfo(path).canonicalFilePath();
    return !base.isEmpty() && (real == base || real.startsWith(base + u'/'));
}

/// The first candidate that `folder` holds: one spelled so, else one in another case.
QString firstCandidate(FolderView &view, const QString &folder, const QStringList &candidates) {
    for (const QString &candidate : candidates)
        if (view.names(folder).contains(candidate))
            return candidate;
    for (const QString &candidate : candidates)
        if (const QString found = view.find(folder, candidate); !found.isNull())
            return found;
    return {};
}

/// Makes a view see an item over another: of folders, what both hold.
void pretendOver(FolderView &view, const QString &source, const QString &target) {
    if (!view.isDirectory(source) || !view.isDirectory(target)) {
        view.pretendCopied(source, target);
        return;
    }
    for (const QString &name : view.names(source)) {
        const QString present = view.find(target, name);
        pretendOver(view, childPath(source, name), childPath(target, present.isNull() ? name : present));
    }
}

} // namespace

QStringList FolderPreparation::inWords() const {
    const auto relative = [&](const QString &path) {
        return path.startsWith(gameFolder + u'/') ? path.mid(gameFolder.size() + 1) : path;
    };
    QStringList result;
    for (const Step &step : steps)
        result.append(step.kind == Step::Kind::remove
                          ? QStringLiteral("Remove %1").arg(relative(step.target))
                          : QStringLiteral("Copy %1 over %2").arg(relative(step.source), relative(step.target)));
    return result;
}

void executeSetupDeleteCommands(FolderPreparation &preparation, FolderView &view, const QString &folder,
                                const std::optional<GameVersionOption> &version) {
    if (!version || !version->setupCommands)
        return;
    const QString inside = view.resolve(folder, version->workingDirectory);
    const QString working = inside.isNull() ? folder : inside;
    for (const QString &raw : *version->setupCommands) {
        const QString command = raw.trimmed();
        if (!command.startsWith(QStringLiteral("del "), Qt::CaseInsensitive))
            continue;
        const QString name = command.mid(4).trimmed().replace(u'\\', u'/');
        const QString path = view.resolve(working, name);
        if (path.isNull()) {
            Log::info(QStringLiteral("   Setup DEL: %1 not found (OK)").arg(singleLine(name)));
            continue;
        }
        if (!isDeletableName(lastPathComponent(path)) || QFileInfo(path).isSymLink() || !view.isFile(path) ||
            !reallyInside(preparation.gameFolder, parentPath(path))) {
            Log::warning(QStringLiteral("   Setup DEL: %1 is no file of the game's folder, ignored").arg(path));
            continue;
        }
        preparation.steps.append({FolderPreparation::Step::Kind::remove, {}, path});
        view.pretendRemoved(path);
    }
}

void copyAudioDriverFiles(FolderPreparation &preparation, FolderView &view, const QString &folder,
                          const std::optional<GameVersionOption> &version) {
    const QStringList candidates = candidatesFor(version);
    if (candidates.isEmpty())
        return;
    QString target = folder;
    QString found = firstCandidate(view, folder, candidates);
    if (found.isNull())
        for (const QString &name : view.names(folder)) {
            const QString lower = name.toLower();
            const QString subfolder = childPath(folder, name);
            if (lower.startsWith(QStringLiteral("cd")) || lower.startsWith(QStringLiteral("disc")) ||
                lower.startsWith(QStringLiteral("floppy")) || !view.isDirectory(subfolder))
                continue;
            found = firstCandidate(view, subfolder, candidates);
            if (found.isNull())
                continue;
            target = subfolder;
            Log::info(QStringLiteral("   Found audio driver files in %1/%2/").arg(name, found));
            break;
        }
    if (found.isNull())
        return;
    const QString source = childPath(target, found);
    if (!view.isDirectory(source))
        return;
    if (!reallyInside(preparation.gameFolder, target) || !reallyInside(preparation.gameFolder, source)) {
        Log::warning(QStringLiteral("   Audio driver files in %1 lie outside the game's folder, ignored").arg(source));
        return;
    }
    for (const QString &name : view.names(source)) {
        const QString item = childPath(source, name);
        if (QFileInfo(item).isSymLink()) {
            Log::warning(QStringLiteral("   %1 is a link, not copied").arg(item));
            continue;
        }
        // DOS knows one spelling of a name: the game's own file has to give way, whatever its case.
        const QString present = view.find(target, name);
        const QString destination = childPath(target, present.isNull() ? name : present);
        if (destination == source) {
            Log::warning(QStringLiteral("   %1 would replace the folder that it lies in, not copied").arg(item));
            continue;
        }
        preparation.steps.append({FolderPreparation::Step::Kind::copy, item, destination});
    }
}

void pretend(const FolderPreparation &preparation, FolderView &view) {
    for (const FolderPreparation::Step &step : preparation.steps)
        if (step.kind == FolderPreparation::Step::Kind::remove)
            view.pretendRemoved(step.target);
        else
            pretendOver(view, step.source, step.target);
}

void carryOut(const FolderPreparation &preparation) {
    bool copying = true;
    for (const FolderPreparation::Step &step : preparation.steps) {
        if (step.kind == FolderPreparation::Step::Kind::remove) {
            const QString name = lastPathComponent(step.target);
            const QString problem = removeInside(preparation.gameFolder, step.target);
            if (problem.isEmpty())
                Log::info(QStringLiteral("   Executed setup DEL: removed %1").arg(name));
            else
                Log::warning(QStringLiteral("   Setup DEL: %1 could not be removed: %2").arg(name, problem));
        } else if (copying) {
            sweepCopies(parentPath(step.target));
            const QString problem = copyOver(step.source, step.target);
            if (!problem.isEmpty()) {
                Log::warning(QStringLiteral("   Failed to copy audio driver files: %1").arg(problem));
                copying = false;
            }
        }
    }
}

} // namespace ludarium
