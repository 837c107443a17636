#pragma once

#include "Host/SafeFiles.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace ludarium {

/// The folders of one launch as DOS sees them: names are found whatever their case, and each folder is read once, so
/// that a slow drive is not listed again by every step. Listings keep the order of the file system, which decides
/// between equals. Made anew for each launch; belongs to one thread.
///
/// Changes that a launch will make can be pretended, so that a plan sees the folder as the launch will find it.
class FolderView {
  public:
    using Lister = std::function<std::optional<QStringList>(const QString &folder)>;
    explicit FolderView(Lister lister = listFolder);

    /// Empty for a folder that cannot be listed.
    QStringList names(const QString &folder);
    bool canList(const QString &folder);
    /// The name in `folder` that equals `name`, otherwise the first that equals it ignoring case; null for none and for
    /// a name that is not one safe component.
    QString find(const QString &folder, const QString &name);
    /// Path of the entry at `relative` below `folder`, its components found as by `find`; null when there is none and
    /// for a text that is absolute, empty or holds "..". Only "/" separates.
    QString resolve(const QString &folder, const QString &relative);

    bool exists(const QString &path) const;
    bool isDirectory(const QString &path) const;
    bool isFile(const QString &path) const; ///< a regular file
    qint64 size(const QString &path) const; ///< 0 when unknown
    /// The content of a regular file of at most 16 MiB; none when it cannot be read.
    std::optional<QByteArray> read(const QString &path) const;

    void pretendRemoved(const QString &path);
    void pretendCopied(const QString &source, const QString &target);
    /// A file that a launch will write outside the folders that are listed.
    void pretendWritten(const QString &path, const QByteArray &content);

  private:
    struct Folder {
        bool readable = false;
        QStringList names;
        QHash<QString, QString> byFoldedName; ///< the first of each
        QSet<QString> present;
    };
    Folder &folder(const QString &path);
    QString physical(const QString &path) const;

    Lister m_lister;
    QHash<QString, Folder> m_folders;
    QHash<QString, QString> m_copies; ///< pretended target to its source
    QSet<QString> m_removed;
    QHash<QString, QByteArray> m_written;
};

/// `folder`/`name`, without a doubled slash.
QString childPath(const QString &folder, const QString &name);
QString parentPath(const QString &path);
QString lastPathComponent(const QString &path);

} // namespace ludarium
