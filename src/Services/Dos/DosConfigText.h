#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <optional>

// Text of DOSBox configurations. It is kept as bytes: the collections' files are in DOS code pages, and a host path
// has to stand in a configuration exactly as on disk.
namespace ludarium {

/// A configuration without its autoexec sections, of which DOSBox runs one after the other.
struct AutoexecSplit {
    QByteArray kept;     ///< everything but the sections, what followed one behind what preceded it
    QByteArray autoexec; ///< the sections' text behind their headers
    bool found = false;
};
AutoexecSplit splitAutoexec(const QByteArray &configuration);

/// The lines of a text, each trimmed, which also takes the CR of a DOS file away.
QByteArrayList trimmedLines(const QByteArray &text);

/// First "cycles" value of the "[cpu]" section that is neither empty nor "auto"; none also for a file that is not
/// UTF-8.
std::optional<QString> extractCyclesFromConfig(const QByteArray &configuration);

/// The line of a game's own autoexec section that starts its program.
struct OriginalExecutable {
    QString executable; ///< the line as it stands, without "@"; its bytes as ISO Latin-1
    QString subpath;    ///< folders that the section changes to before, joined by "/"; null for none
    bool operator==(const OriginalExecutable &) const = default;
};
std::optional<OriginalExecutable> extractExecutableFromOriginalConfig(const QByteArray &configuration,
                                                                      const QString &gameFolder);

/// A host name or path as a collection's file writes it: UTF-8, else ISO Latin-1.
QString hostNameFrom(const QByteArray &text);
/// A text from data in the bytes of a configuration: ISO Latin-1, or UTF-8 when it holds what Latin-1 lacks.
QByteArray dosText(const QString &text);
/// A host path's bytes. Throws LaunchError when it holds what a configuration cannot carry.
QByteArray hostPathText(const QString &path);
/// The same in double quotes for a line of an autoexec section, where DOSBox takes "%%" for a percent sign.
QByteArray quotedHostPath(const QString &path);
/// The bytes of a value or a line. Throws LaunchError when it holds a line break or a NUL; `what` names it to the user.
QByteArray checkedText(const QByteArray &text, const QString &what);

/// File name of a configuration made for a game: its folder's name with blanks and slashes as "_", then `suffix`. A
/// name that would be too long for a file is cut and told apart by a digest.
QString generatedConfigName(const QString &gameFolderName, const QString &suffix);

} // namespace ludarium
