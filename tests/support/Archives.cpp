#include "support/Archives.h"

#include <archive.h>
#include <archive_entry.h>
#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

QByteArray archiveOf(const QString &format, const QList<ArchiveEntry> &entries) {
    archive *writer = archive_write_new();
    if (format == "7z"_L1) {
        archive_write_set_format_7zip(writer);
        archive_write_set_options(writer, "compression=store");
    } else {
        archive_write_set_format_zip(writer);
        archive_write_zip_set_compression_store(writer);
    }
    archive_write_set_bytes_in_last_block(writer, 1);
    size_t used = 0;
    QByteArray bytes(1 << 20, '\0');
    EXPECT_EQ(archive_write_open_memory(writer, bytes.data(), size_t(bytes.size()), &used), ARCHIVE_OK);
    for (const ArchiveEntry &item : entries) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, item.name.toUtf8().constData());
        archive_entry_set_perm(entry, 0644);
        if (item.linkTarget.isEmpty()) {
            archive_entry_set_filetype(entry, AE_IFREG);
            archive_entry_set_size(entry, item.content.size());
        } else {
            archive_entry_set_filetype(entry, AE_IFLNK);
            archive_entry_set_symlink(entry, item.linkTarget.toUtf8().constData());
        }
        EXPECT_EQ(archive_write_header(writer, entry), ARCHIVE_OK) << archive_error_string(writer);
        if (item.linkTarget.isEmpty())
            archive_write_data(writer, item.content.constData(), size_t(item.content.size()));
        archive_entry_free(entry);
    }
    EXPECT_EQ(archive_write_close(writer), ARCHIVE_OK) << archive_error_string(writer);
    archive_write_free(writer);
    return bytes.first(qsizetype(used));
}

QByteArray gameArchive(const QString &folder, const QString &format) {
    return archiveOf(format, {{folder + u"/GAME.EXE"_s, "MZ"}, {folder + u"/DATA/LEVEL.DAT"_s}});
}

} // namespace ludarium::test
