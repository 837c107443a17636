#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

// Names as a DOS guest sees them: eight characters, a dot and three, in capitals.
namespace ludarium {

/// Whether a guest can name a file or folder of the host as it is called there.
bool isDosName(const QString &name);

/// `text` as DOS reads one piece of a path: in capitals and cut to 8.3; none when it holds what DOS refuses.
std::optional<QByteArray> dosPiece(const QByteArray &text);

/// The names under which a guest finds the entries of a folder of the host. A name that DOS cannot spell has a short
/// one with "~" and a number, which the order of the listing decides.
QHash<QByteArray, QString> guestNames(const QStringList &listing);

/// The first word of a DOS command line, in lower case: up to a blank or what DOS takes for the beginning of an
/// argument, and for a word of letters alone also up to a dot or backslash ("echo.", "cd\games").
QByteArray dosCommandWord(const QByteArray &line);

/// Whether a program stays in memory or sets the machine up, so that the game is yet to come: "mouse", "mscdex", …
/// `stem` is in lower case, without an ending.
bool isLoader(const QByteArray &stem);
/// Whether the shell has a command of that name, or most versions of DOS have one as a program.
bool isShellCommand(const QByteArray &word);
/// The same, or whether DOSBox has a program or a setting of that name: none of them is a game.
bool isGuestCommand(const QByteArray &word);

} // namespace ludarium
