#include "Services/Dos/FolderView.h"

#include <QFile>
#include <QFileInfo>

namespace ludarium {

namespace {

// Configurations and batch files are a few kilobytes; what is larger is none of them.
constexpr qint64 largestTextFile = 16 * 1024 * 1024;

} // namespace

QString childPath(const QString &folder, const QString &name) {
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString parentPath(const QString &path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

QString lastPathComponent(const QString &path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

FolderView::FolderView(Lister lister) : m_lister(std::move(lister)) {}

QString FolderView::physical(const QString &path) const {
    if (m_copies.isEmpty())
        return path;
    // A copied folder brings what lies below it.
    for (QString head = path; head.size() > 1; head = parentPath(head))
        if (const auto copy = m_copies.constFind(head); copy != m_copies.cend())
            return *copy + path.mid(head.size());
    return path;
}

FolderView::Folder &FolderView::folder(const QString &path) {
    const auto known = m_folders.find(path);
    if (known != m_folders.end())
        return *known;
    Folder made;
    if (const std::optional<QStringList> names = m_lister(physical(path))) {
        made.readable = true;
        made.names = *names;
        for (const QString &name : *names) {
            made.present.insert(name);
            const QString folded = name.toCaseFolded();
            if (!made.byFoldedName.contains(folded))
                made.byFoldedName.insert(folded, name);
        }
    }
    return *m_folders.insert(path, made);
}

QStringList FolderView::names(const QString &path) {
    return folder(path).names;
}

bool FolderView::canList(const QString &path) {
    return folder(path).readable;
}

QString FolderView::find(const QString &path, const QString &name) {
    if (!isSafeName(name))
        return {};
    const Folder &listing = folder(path);
    return listing.present.contains(name) ? name : listing.byFoldedName.value(name.toCaseFolded());
}

QString FolderView::resolve(const QString &path, const QString &relative) {
    if (relative.startsWith(u'/'))
        return {};
    const QStringList components = relative.split(u'/', Qt::SkipEmptyParts);
    if (components.isEmpty())
        return {};
    QString result = path;
    for (const QString &component : components) {
        const QString found = find(result, component);
        if (found.isNull())
            return {};
        result = childPath(result, found);
    }
    // A listing also names links that lead nowhere.
    return exists(result) ? result : QString();
}

bool FolderView::exists(const QString &path) const {
    return !path.isEmpty() && !m_removed.contains(path) &&
           (m_written.contains(path) || QFileInfo::exists(physical(path)));
}

bool FolderView::isDirectory(const QString &path) const {
    return !path.isEmpty() && !m_removed.contains(path) && QFileInfo(physical(path)).isDir();
}

bool FolderView::isFile(const QString &path) const {
    return !path.isEmpty() && !m_removed.contains(path) &&
           (m_written.contains(path) || QFileInfo(physical(path)).isFile());
}

qint64 FolderView::size(const QString &path) const {
    return QFileInfo(physical(path)).size();
}

std::optional<QByteArray> FolderView::read(const QString &path) const {
    if (!isFile(path))
        return std::nullopt;
    if (const auto written = m_written.constFind(path); written != m_written.cend())
        return *written;
    QFile file(physical(path));
    if (file.size() > largestTextFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

void FolderView::pretendRemoved(const QString &path) {
    const QString name = lastPathComponent(path);
    Folder &listing = folder(parentPath(path));
    listing.names.removeOne(name);
    listing.present.remove(name);
    const QString folded = name.toCaseFolded();
    listing.byFoldedName.remove(folded);
    for (const QString &other : std::as_const(listing.names))
        if (other.toCaseFolded() == folded) {
            listing.byFoldedName.insert(folded, other);
            break;
        }
    m_copies.remove(path);
    m_removed.insert(path);
}

void FolderView::pretendCopied(const QString &source, const QString &target) {
    const QString origin = physical(source);
    const QString name = lastPathComponent(target);
    Folder &listing = folder(parentPath(target));
    if (!listing.present.contains(name)) {
        listing.names.append(name);
        listing.present.insert(name);
        const QString folded = name.toCaseFolded();
        if (!listing.byFoldedName.contains(folded))
            listing.byFoldedName.insert(folded, name);
    }
    m_removed.remove(target);
    m_copies.insert(target, origin);
    m_folders.remove(target);
}

void FolderView::pretendWritten(const QString &path, const QByteArray &content) {
    m_written.insert(path, content);
}

} // namespace ludarium
