#include "maker/Tree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <archive.h>
#include <archive_entry.h>
#include <memory>
#include <stdexcept>

namespace ludarium::demo {

void Tree::add(const QString &path, const QByteArray &content) const {
    const QString full = m_root + u'/' + path;
    if (!QDir().mkpath(QFileInfo(full).path()))
        throw std::runtime_error(qPrintable(QStringLiteral("cannot make the folder of ") + full));
    QFile file(full);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        throw std::runtime_error(qPrintable(full + QStringLiteral(": ") + file.errorString()));
}

void Tree::addFolder(const QString &path) const {
    if (!QDir().mkpath(m_root + u'/' + path))
        throw std::runtime_error(qPrintable(QStringLiteral("cannot make ") + path));
}

QByteArray readFile(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(path + QStringLiteral(": ") + file.errorString()));
    return file.readAll();
}

namespace {

la_ssize_t appendTo(struct archive *, void *target, const void *data, size_t size) {
    static_cast<QByteArray *>(target)->append(static_cast<const char *>(data), static_cast<qsizetype>(size));
    return static_cast<la_ssize_t>(size);
}

void check(int status, struct archive *archive) {
    if (status != ARCHIVE_OK)
        throw std::runtime_error(archive_error_string(archive));
}

} // namespace

QByteArray zipArchive(const Files &files, qint64 secondsSinceEpoch) {
    QByteArray bytes;
    const std::unique_ptr<struct archive, decltype(&archive_write_free)> archive(archive_write_new(),
                                                                                 &archive_write_free);
    check(archive_write_set_format_zip(archive.get()), archive.get());
    check(archive_write_open2(archive.get(), &bytes, nullptr, appendTo, nullptr, nullptr), archive.get());
    for (const auto &[path, content] : files) {
        const std::unique_ptr<struct archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                                         &archive_entry_free);
        archive_entry_set_pathname_utf8(entry.get(), path.toUtf8().constData());
        archive_entry_set_filetype(entry.get(), AE_IFREG);
        archive_entry_set_perm(entry.get(), 0644);
        archive_entry_set_size(entry.get(), content.size());
        archive_entry_set_mtime(entry.get(), secondsSinceEpoch, 0);
        check(archive_write_header(archive.get(), entry.get()), archive.get());
        if (archive_write_data(archive.get(), content.constData(), static_cast<size_t>(content.size())) !=
            content.size())
            throw std::runtime_error(archive_error_string(archive.get()));
    }
    check(archive_write_close(archive.get()), archive.get());
    return bytes;
}

} // namespace ludarium::demo
