#include "maker/Tree.h"

#include <QtEndian>
#include <stdexcept>

namespace ludarium::demo {

namespace {

constexpr qsizetype sector = 2048;
constexpr qsizetype rootSector = 20; // 16 volume, 17 terminator, 18 and 19 path tables

void putBoth16(QByteArray &bytes, qsizetype at, quint16 value) {
    qToLittleEndian(value, bytes.data() + at);
    qToBigEndian(value, bytes.data() + at + 2);
}

void putBoth32(QByteArray &bytes, qsizetype at, quint32 value) {
    qToLittleEndian(value, bytes.data() + at);
    qToBigEndian(value, bytes.data() + at + 4);
}

void putText(QByteArray &bytes, qsizetype at, qsizetype width, const QByteArray &text) {
    bytes.replace(at, width, text.leftJustified(width, ' ', true));
}

// A directory record; `name` is one NUL for the folder itself and one 0x01 for its parent.
QByteArray record(const QByteArray &name, qsizetype start, qsizetype size, bool folder, int year) {
    QByteArray bytes(33 + name.size() + (name.size() % 2 ? 0 : 1), '\0');
    bytes[0] = static_cast<char>(bytes.size());
    putBoth32(bytes, 2, static_cast<quint32>(start));
    putBoth32(bytes, 10, static_cast<quint32>(size));
    bytes[18] = static_cast<char>(year - 1900);
    bytes[19] = 1;
    bytes[20] = 1;
    bytes[25] = folder ? 2 : 0;
    putBoth16(bytes, 28, 1);
    bytes[32] = static_cast<char>(name.size());
    bytes.replace(33, name.size(), name);
    return bytes;
}

qsizetype sectors(qsizetype size) {
    return (size + sector - 1) / sector;
}

} // namespace

QByteArray discImage(const QString &volume, const Files &files, int year) {
    QByteArray root = record(QByteArray(1, '\0'), rootSector, sector, true, year) +
                      record(QByteArray(1, '\1'), rootSector, sector, true, year);
    QByteArray data;
    Files sorted = files; // the standard wants the names in order
    std::sort(sorted.begin(), sorted.end());
    for (const auto &[path, content] : sorted) {
        root += record(path.toLatin1() + ";1", rootSector + 1 + data.size() / sector, content.size(), false, year);
        data += content;
        data.append(sectors(content.size()) * sector - content.size(), '\0');
    }
    if (root.size() > sector)
        throw std::runtime_error("too many files for a disc of one folder");
    root.append(sector - root.size(), '\0');

    const qsizetype total = rootSector + 1 + data.size() / sector;
    QByteArray head(rootSector * sector, '\0');
    const qsizetype at = 16 * sector;
    head.replace(at, 7, QByteArray("\1CD001\1", 7));
    putText(head, at + 8, 32, "");
    putText(head, at + 40, 32, volume.toLatin1());
    putBoth32(head, at + 80, static_cast<quint32>(total));
    putBoth16(head, at + 120, 1);
    putBoth16(head, at + 124, 1);
    putBoth16(head, at + 128, sector);
    putBoth32(head, at + 132, 10);
    qToLittleEndian<quint32>(18, head.data() + at + 140);
    qToBigEndian<quint32>(19, head.data() + at + 148);
    head.replace(at + 156, 34, record(QByteArray(1, '\0'), rootSector, sector, true, year));
    putText(head, at + 190, 623, "");
    const QByteArray stamp = QByteArray::number(year) + "010100000000";
    for (int i = 0; i < 4; ++i) // made, changed, expires, effective
        head.replace(at + 813 + i * 17, 16, i < 2 ? stamp.leftJustified(16, '0') : QByteArray(16, '0'));
    head[at + 881] = 1;
    head.replace(17 * sector, 7,
                 QByteArray("\xff"
                            "CD001\1",
                            7));
    for (const qsizetype table : {qsizetype(18), qsizetype(19)}) {
        head[table * sector] = 1;
        if (table == 18)
            qToLittleEndian<quint32>(rootSector, head.data() + table * sector + 2);
        else
            qToBigEndian<quint32>(rootSector, head.data() + table * sector + 2);
        head[table * sector + (table == 18 ? 6 : 7)] = 1;
    }
    return head + root + data;
}

} // namespace ludarium::demo
