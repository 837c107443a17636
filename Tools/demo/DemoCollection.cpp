#include "demo/DemoCollection.h"

#include "demo/DemoData.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QResource>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

namespace {

const QString resourceRoot = QStringLiteral("/ludarium-demo-files");

[[noreturn]] void fail(int error, const QString &path) {
    throw std::system_error(error, std::generic_category(), path.toStdString());
}

// The embedded resource, registered for as long as it is read.
class EmbeddedFiles {
  public:
    EmbeddedFiles() {
        if (!QResource::registerResource(demo::demoData(), resourceRoot))
            throw std::runtime_error("the embedded demo collection cannot be read");
    }
    ~EmbeddedFiles() { QResource::unregisterResource(demo::demoData(), resourceRoot); }
    EmbeddedFiles(const EmbeddedFiles &) = delete;
    EmbeddedFiles &operator=(const EmbeddedFiles &) = delete;

    QString root() const { return u':' + resourceRoot + QStringLiteral("/ludarium-demo"); }

    /// Relative paths in order, so that the collection's list of platforms, which makes it one, comes last.
    QStringList paths() const {
        QStringList list;
        QDirIterator it(root(), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            list.append(it.next().mid(root().size() + 1));
        list.sort();
        std::reverse(list.begin(), list.end());
        return list;
    }
};

// What has been made so far. Taken away again unless it is kept.
class Made {
  public:
    ~Made() {
        if (m_kept)
            return;
        for (auto path = m_files.rbegin(); path != m_files.rend(); ++path)
            ::unlink(path->constData());
        for (auto path = m_folders.rbegin(); path != m_folders.rend(); ++path)
            ::rmdir(path->constData());
    }

    void folder(const QString &path) {
        const QFileInfo info(path);
        if (info.isDir())
            return;
        if (info.exists())
            fail(ENOTDIR, path);
        const QString parent = QFileInfo(path).path();
        if (parent != path)
            folder(parent);
        const QByteArray native = QFile::encodeName(path);
        if (::mkdir(native.constData(), 0777) != 0)
            fail(errno, path);
        m_folders.append(native);
    }

    void file(const QString &path, const QByteArray &content, bool executable) {
        const QByteArray native = QFile::encodeName(path);
        const int descriptor =
            ::open(native.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, executable ? 0777 : 0666);
        if (descriptor < 0)
            fail(errno, path);
        m_files.append(native);
        int error = 0;
        for (qsizetype done = 0; done < content.size() && !error;) {
            const ssize_t written =
                ::write(descriptor, content.constData() + done, static_cast<size_t>(content.size() - done));
            if (written >= 0)
                done += written;
            else if (errno != EINTR)
                error = errno;
        }
        if (::close(descriptor) != 0 && !error)
            error = errno;
        if (error)
            fail(error, path);
    }

    void keep() { m_kept = true; }

  private:
    QList<QByteArray> m_files;
    QList<QByteArray> m_folders;
    bool m_kept = false;
};

QByteArray embedded(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(path + QStringLiteral(": ") + file.errorString()));
    return file.readAll();
}

} // namespace

void writeDemoCollection(const QString &folder) {
    const QString root = QDir::cleanPath(QDir::current().absoluteFilePath(folder));
    const QFileInfo info(root);
    if (info.isDir() && !QDir(root).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        throw std::system_error(ENOTEMPTY, std::generic_category(),
                                "The demo collection needs an empty folder, and " + root.toStdString() + " is not");

    const EmbeddedFiles files;
    Made made;
    made.folder(root);
    for (const QString &path : files.paths()) {
        const QString target = root + u'/' + path;
        made.folder(QFileInfo(target).path());
        made.file(target, embedded(files.root() + u'/' + path), path.endsWith(QStringLiteral(".bsh")));
    }
    made.keep();
}

} // namespace ludarium
