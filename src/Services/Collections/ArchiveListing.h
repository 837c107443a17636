#pragma once

#include <QSet>
#include <QString>

namespace ludarium {

/// What an archive holds, as its own list of contents tells.
struct ArchiveListing {
    /// Why it cannot be relied on, in words that go on from its name ("is empty"); empty when it lists cleanly.
    QString problem;
    /// The case-folded names of all folders that files of it lie in.
    QSet<QString> folders;
};

/// Lists a ZIP or 7-Zip file. It is no clean one when it is empty, cut off or encrypted, or when it holds what must not
/// be unpacked: absolute names, "..", links, devices, control characters. A file with holes, as downloads leave behind
/// that never ended, is read to its end and every checksum compared. Blocks.
ArchiveListing listArchive(const QString &path);

} // namespace ludarium
