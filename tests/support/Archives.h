#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace ludarium::test {

/// One entry of an archive; a link when it has a target.
struct ArchiveEntry {
    QString name;
    QByteArray content = "content";
    QString linkTarget = {};
};

/// An archive with these entries, in the format of its name's ending, "zip" or "7z". The content is stored as it is.
QByteArray archiveOf(const QString &format, const QList<ArchiveEntry> &entries);
/// The usual one of a game: a program in a folder of that name.
QByteArray gameArchive(const QString &folder, const QString &format = QStringLiteral("zip"));

} // namespace ludarium::test
