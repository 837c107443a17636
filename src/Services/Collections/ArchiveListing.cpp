#include "Services/Collections/ArchiveListing.h"

#include "Host/SafeFiles.h"

#include <QFile>
#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t blockSize = 64 * 1024;

struct Reader {
    void operator()(archive *reader) const { archive_read_free(reader); }
};
using ReaderPtr = std::unique_ptr<archive, Reader>;

class OpenFile {
  public:
    /// A pipe that somebody put there must not be waited for.
    explicit OpenFile(const QString &path)
        : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    ~OpenFile() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    int descriptor() const { return m_descriptor; }

  private:
    int m_descriptor;
};

QString unreadable(const QString &reason) {
    return u"cannot be read (%1)"_s.arg(reason);
}

bool hasHoles(int descriptor, off_t size) {
#ifdef SEEK_HOLE
    const off_t hole = ::lseek(descriptor, 0, SEEK_HOLE);
    ::lseek(descriptor, 0, SEEK_SET);
    return hole >= 0 && hole < size;
#else
    Q_UNUSED(descriptor);
    Q_UNUSED(size);
    return false;
#endif
}

QString nameOf(archive_entry *entry) {
    // Names in the character set of DOS are no text of this system; their bytes are enough to look at.
    if (const char *utf8 = archive_entry_pathname_utf8(entry))
        return QString::fromUtf8(utf8);
    const char *bytes = archive_entry_pathname(entry);
    return bytes ? QString::fromLatin1(bytes) : QString();
}

QString problemOf(archive_entry *entry, const QString &name, const QStringList &pieces) {
    const mode_t type = archive_entry_filetype(entry);
    if (type != AE_IFREG && type != AE_IFDIR)
        return u"holds a link or a device"_s;
    if (archive_entry_is_encrypted(entry))
        return u"is encrypted"_s;
    const bool drive = name.size() > 1 && name[1] == u':';
    const bool safe = std::all_of(pieces.begin(), pieces.end(),
                                  [](const QString &piece) { return piece == "."_L1 || isSafeName(piece); });
    if (name.startsWith(u'/') || name.startsWith(u'\\') || drive || !safe)
        return u"holds a name that must not be unpacked"_s;
    return {};
}

/// Reads an entry to its end, which compares its checksum.
bool readsWhole(archive *reader) {
    const void *block = nullptr;
    size_t size = 0;
    la_int64_t offset = 0;
    int result = ARCHIVE_OK;
    while (result == ARCHIVE_OK)
        result = archive_read_data_block(reader, &block, &size, &offset);
    return result == ARCHIVE_EOF;
}

QString errorOf(archive *reader) {
    const char *text = archive_error_string(reader);
    return unreadable(text ? QString::fromUtf8(text) : u"not a ZIP or 7-Zip file"_s);
}

} // namespace

ArchiveListing listArchive(const QString &path) {
    ArchiveListing listing;
    const OpenFile file(path);
    struct stat info {};
    if (file.descriptor() < 0 || ::fstat(file.descriptor(), &info) != 0) {
        listing.problem = unreadable(qt_error_string(errno));
        return listing;
    }
    if (!S_ISREG(info.st_mode)) {
        listing.problem = u"is no file"_s;
        return listing;
    }
    if (info.st_size == 0) {
        listing.problem = u"is empty"_s;
        return listing;
    }
    const bool suspicious = hasHoles(file.descriptor(), info.st_size);

    const ReaderPtr owner(archive_read_new());
    archive *reader = owner.get();
    // By the list at the end of a ZIP file: reading one from its front takes one that is cut off for a whole one.
    archive_read_support_format_zip_seekable(reader);
    archive_read_support_format_7zip(reader);
    if (archive_read_open_fd(reader, file.descriptor(), blockSize) != ARCHIVE_OK) {
        listing.problem = errorOf(reader);
        return listing;
    }
    while (listing.problem.isEmpty()) {
        archive_entry *entry = nullptr;
        const int result = archive_read_next_header(reader, &entry);
        if (result == ARCHIVE_EOF)
            break;
        // A warning is about a name's character set.
        if (result != ARCHIVE_OK && result != ARCHIVE_WARN) {
            listing.problem = errorOf(reader);
            break;
        }
        const QString name = nameOf(entry);
        const QStringList pieces = pathComponents(name);
        listing.problem = problemOf(entry, name, pieces);
        if (archive_entry_filetype(entry) != AE_IFREG)
            continue;
        for (const QString &folder : pieces.first(std::max<qsizetype>(0, pieces.size() - 1)))
            listing.folders.insert(folder.toCaseFolded());
        if (suspicious && listing.problem.isEmpty() && !readsWhole(reader))
            listing.problem = errorOf(reader);
    }
    struct stat now {};
    const bool same = ::stat(QFile::encodeName(path).constData(), &now) == 0 && now.st_dev == info.st_dev &&
                      now.st_ino == info.st_ino && now.st_size == info.st_size && now.st_mtime == info.st_mtime;
    if (!same && listing.problem.isEmpty())
        listing.problem = u"changed while it was looked at"_s;
    return listing;
}

} // namespace ludarium
