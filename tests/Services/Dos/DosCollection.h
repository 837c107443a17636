#pragma once

#include "Services/Dos/FolderView.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ludarium::test {

/// A small collection on disk.
class DosCollection {
  public:
    explicit DosCollection(const QString &name = QStringLiteral("coll")) : m_name(name) {}
    QString root() const { return m_directory.path() + u'/' + m_name; }
    QString game(const QString &name = QStringLiteral("GAME")) const {
        return root() + QStringLiteral("/eXo/eXoDOS/") + name;
    }
    QString script(const QString &name = QStringLiteral("GAME")) const {
        return root() + QStringLiteral("/eXo/eXoDOS/!dos/") + name;
    }
    /// Writes a file at an absolute path below the root or, for a relative one, in the game's folder. A path that
    /// ends in "/" makes a folder.
    QString put(const QString &path, const QByteArray &content = "x") const {
        const QString full = path.startsWith(u'/') ? path : game() + u'/' + path;
        if (full.endsWith(u'/')) {
            QDir().mkpath(full);
            return full;
        }
        QDir().mkpath(parentPath(full));
        QFile file(full);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << qPrintable(full);
        return full;
    }
    static QByteArray read(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
    /// Text with the collection's path as "{C}".
    QByteArray portable(QByteArray text) const { return text.replace(QFile::encodeName(root()), "{C}"); }

  private:
    QTemporaryDir m_directory;
    QString m_name;
};

/// A view whose listings are sorted, so that ties fall the same way on every file system.
inline FolderView sortedView() {
    return FolderView([](const QString &folder) {
        std::optional<QStringList> names = listFolder(folder);
        if (names)
            names->sort();
        return names;
    });
}

} // namespace ludarium::test
