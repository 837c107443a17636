#include "Services/Dos/DiskImage.h"

#include "Services/Dos/CueSheet.h"
#include "Services/Dos/DosNames.h"

#include <QFile>
#include <QtEndian>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

// A folder of DOS times is a few kilobytes; more is a damaged image.
constexpr quint32 largestFolder = 4 * 1024 * 1024;

quint16 word(const QByteArray &bytes, qsizetype at) {
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}
quint32 longWord(const QByteArray &bytes, qsizetype at) {
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

/// `size` bytes of a file, fewer at its end.
QByteArray bytesAt(QFile &file, qint64 at, qint64 size) {
    return at >= 0 && file.seek(at) ? file.read(size) : QByteArray();
}

class IsoImage : public DiskImage {
  public:
    /// How the sectors of 2048 bytes lie in the file.
    struct Layout {
        qint64 sectorSize = 2048;
        qint64 header = 0; ///< bytes before the data of each
        qint64 first = 0;  ///< sectors before the disc's own
    };

    bool open(const QString &path, const QList<Layout> &layouts) {
        m_file.setFileName(path);
        if (!m_file.open(QIODevice::ReadOnly))
            return false;
        for (const Layout &layout : layouts) {
            m_layout = layout;
            const QByteArray descriptor = sectors(16, 2048);
            if (descriptor.size() == 2048 && descriptor[0] == 1 && descriptor.mid(1, 5) == "CD001") {
                m_root = record(descriptor.mid(156, 34)).value_or(Entry());
                return m_root.isFolder;
            }
        }
        return false;
    }

  protected:
    Entry root() const override { return m_root; }

    QList<Entry> list(const Entry &folder) override {
        QList<Entry> result;
        const QByteArray content = sectors(folder.start, qMin(folder.size, largestFolder));
        for (qsizetype at = 0; at < content.size();) {
            const auto length = uchar(content[at]);
            if (length == 0) { // records do not cross the border of a sector
                at = (at / 2048 + 1) * 2048;
                continue;
            }
            if (const auto entry = record(content.mid(at, length)))
                result.append(*entry);
            at += length;
        }
        return result;
    }

  private:
    QByteArray sectors(quint32 first, quint32 size) {
        QByteArray result;
        for (qint64 sector = m_layout.first + first; result.size() < size; ++sector) {
            const QByteArray piece = bytesAt(m_file, sector * m_layout.sectorSize + m_layout.header,
                                             qMin<qint64>(2048, size - result.size()));
            if (piece.isEmpty())
                break;
            result += piece;
        }
        return result;
    }

    static std::optional<Entry> record(const QByteArray &bytes) {
        if (bytes.size() < 34 || bytes.size() < 33 + uchar(bytes[32]))
            return std::nullopt;
        QByteArray name = bytes.mid(33, uchar(bytes[32])).toUpper();
        if (const qsizetype version = name.indexOf(';'); version >= 0)
            name.truncate(version);
        if (name.endsWith('.'))
            name.chop(1);
        return Entry{name, (uchar(bytes[25]) & 2) != 0, longWord(bytes, 2), longWord(bytes, 10)};
    }

    QFile m_file;
    Layout m_layout;
    Entry m_root;
};

class FatImage : public DiskImage {
  public:
    bool open(const QString &path) {
        m_file.setFileName(path);
        if (!m_file.open(QIODevice::ReadOnly))
            return false;
        QByteArray sector = bytesAt(m_file, 0, 512);
        if (sector.size() != 512)
            return false;
        // A hard disk begins with the table of its partitions.
        if (!isBootSector(sector) && word(sector, 510) == 0xaa55) {
            m_start = qint64(longWord(sector, 0x1be + 8)) * 512;
            sector = bytesAt(m_file, m_start, 512);
        }
        return sector.size() == 512 && isBootSector(sector) && read(sector);
    }

  protected:
    Entry root() const override { return {{}, true, 0, 0}; }

    QList<Entry> list(const Entry &folder) override {
        QByteArray content;
        if (folder.start == 0)
            content = bytesAt(m_file, m_root, m_rootSize);
        // A chain that comes round again ends with the largest size.
        for (quint32 cluster = folder.start; cluster >= 2 && cluster < m_clusters + 2 && content.size() < largestFolder;
             cluster = next(cluster)) {
            const QByteArray piece = bytesAt(m_file, m_data + qint64(cluster - 2) * m_clusterSize, m_clusterSize);
            if (piece.isEmpty())
                break;
            content += piece;
        }
        QList<Entry> result;
        for (qsizetype at = 0; at + 32 <= content.size() && content[at] != 0; at += 32) {
            const auto flags = uchar(content[at + 11]);
            if (uchar(content[at]) == 0xe5 || (flags & 0x08) != 0)
                continue;
            QByteArray name = content.mid(at, 8).trimmed();
            if (const QByteArray ending = content.mid(at + 8, 3).trimmed(); !ending.isEmpty())
                name += '.' + ending;
            result.append({name.toUpper(), (flags & 0x10) != 0, word(content, at + 26), 0});
        }
        return result;
    }

  private:
    static bool isBootSector(const QByteArray &sector) {
        const quint16 size = word(sector, 11);
        const auto cluster = uchar(sector[13]);
        return size == 512 && cluster != 0 && (cluster & (cluster - 1)) == 0 && word(sector, 14) != 0 &&
               (sector[16] == 1 || sector[16] == 2) && word(sector, 17) != 0 && word(sector, 22) != 0;
    }

    bool read(const QByteArray &sector) {
        const qint64 reserved = word(sector, 14), tables = uchar(sector[16]), tableSize = word(sector, 22);
        const qint64 entries = word(sector, 17);
        const qint64 total = word(sector, 19) != 0 ? word(sector, 19) : longWord(sector, 32);
        m_clusterSize = qint64(uchar(sector[13])) * 512;
        m_root = m_start + (reserved + tables * tableSize) * 512;
        m_rootSize = entries * 32;
        m_data = m_root + (m_rootSize + 511) / 512 * 512;
        const qint64 clusters = (total * 512 - (m_data - m_start)) / m_clusterSize;
        if (clusters <= 0 || clusters > 65524)
            return false;
        m_clusters = quint32(clusters);
        m_table = bytesAt(m_file, m_start + reserved * 512, tableSize * 512);
        return true;
    }

    quint32 next(quint32 cluster) const {
        if (m_clusters >= 4085)
            return (cluster + 1) * 2 <= m_table.size() ? word(m_table, cluster * 2) : 0;
        const qsizetype at = cluster + cluster / 2;
        if (at + 2 > m_table.size())
            return 0;
        return cluster % 2 != 0 ? word(m_table, at) >> 4 : word(m_table, at) & 0xfff;
    }

    QFile m_file;
    QByteArray m_table;
    qint64 m_start = 0; ///< of the partition
    qint64 m_root = 0;
    qint64 m_rootSize = 0;
    qint64 m_data = 0;
    qint64 m_clusterSize = 0;
    quint32 m_clusters = 0;
};

} // namespace

GuestEntry DiskImage::find(const QByteArrayList &path) {
    Entry current = root();
    for (const QByteArray &piece : path) {
        if (!current.isFolder)
            return GuestEntry::missing;
        const QList<Entry> entries = list(current);
        const auto found =
            std::find_if(entries.cbegin(), entries.cend(), [&](const Entry &e) { return e.name == piece; });
        if (found == entries.cend())
            return GuestEntry::missing;
        current = *found;
    }
    return current.isFolder ? GuestEntry::folder : GuestEntry::file;
}

std::unique_ptr<DiskImage> DiskImage::openDisc(FolderView &view, const QString &path) {
    auto image = std::make_unique<IsoImage>();
    constexpr qint64 raw = 2352;
    if (path.endsWith(".cue"_L1, Qt::CaseInsensitive)) {
        const auto track = firstDataTrack(view, path);
        if (!track || track->path.isNull())
            return nullptr;
        const qint64 first = track->firstSector;
        const QList<IsoImage::Layout> layouts =
            track->mode == "MODE1/2048"   ? QList<IsoImage::Layout>{{2048, 0, first}}
            : track->mode == "MODE1/2352" ? QList<IsoImage::Layout>{{raw, 16, first}}
            : track->mode == "MODE2/2336" ? QList<IsoImage::Layout>{{2336, 8, first}}
                                          : QList<IsoImage::Layout>{{raw, 24, first}, {raw, 16, first}};
        return image->open(track->path, layouts) ? std::move(image) : nullptr;
    }
    return image->open(path, {{2048, 0, 0}, {raw, 16, 0}, {raw, 24, 0}, {2336, 8, 0}}) ? std::move(image) : nullptr;
}

std::unique_ptr<DiskImage> DiskImage::openDisk(const QString &path) {
    auto image = std::make_unique<FatImage>();
    return image->open(path) ? std::move(image) : nullptr;
}

} // namespace ludarium
