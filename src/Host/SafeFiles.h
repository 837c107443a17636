#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace ludarium {

// --- Names and paths that come from data -------------------------------------------------------------------------

/// One path component as it may come from data: not empty, not "." or "..", no "/", "\", NUL or control character,
/// at most 255 bytes on disk.
bool isSafeName(const QString &name);
/// A safe name that may also be deleted: it does not begin with "!", which marks a set's script folder.
bool isDeletableName(const QString &name);

/// Splits a path of a collection at "\" and "/" and drops empty pieces.
QStringList pathComponents(const QString &windowsPath);

/// `base`/`components…`, or none when a component is not a safe name or the result lies outside `base` after links
/// in `base` and in all but the last component are followed. The last component need not exist and is not followed.
std::optional<QString> pathInside(const QString &base, const QStringList &components);
/// So that `{name}` is one component and not a text to be split.
inline std::optional<QString> pathInside(const QString &base, std::initializer_list<QString> components) {
    return pathInside(base, QStringList(components));
}
/// The same for a relative text with "/" or "\" separators, whose "." components are dropped; absolute text and drive
/// letters give none.
std::optional<QString> pathInside(const QString &base, const QString &relative);

/// Removes a file, or a folder with its contents, that lies inside `base` and is not `base` itself. Never goes through
/// a link: a link is removed, not its target. Returns the operating system's reason, empty on success. Refuses the
/// home folder, mount points and any path of `protectedPaths`.
QString removeInside(const QString &base, const QString &path, const QStringList &protectedPaths = {});

// --- Saving -------------------------------------------------------------------------------------------------------

/// Replaces `path` by `data` so that it is wholly old or wholly new at any moment: written beside it, every write
/// checked, flushed to disk, renamed over, the folder flushed. A link at `path` is replaced, not written through.
/// Returns the operating system's reason, empty on success. With `privateFile` the file is 0600.
QString writeAtomically(const QString &path, const QByteArray &data, bool privateFile = false);
/// The same, throwing std::system_error with the path in its text.
void writeAtomicallyOrThrow(const QString &path, const QByteArray &data, bool privateFile = false);

/// The bytes of a small file that a program of ours wrote; none when it is missing, longer than `limit`, a link or no
/// file at all, such as a pipe, which would hold up whoever opens it.
std::optional<QByteArray> readSmallFile(const QString &path, qint64 limit);

/// Moves a file that cannot be read aside to `{path}.corrupt-{time}`, never replacing another. Returns the new path,
/// empty when it could not be moved.
QString setAsideCorrupt(const QString &path);

/// Names in a folder in the order that the file system gives them, without "." and ".."; none when it cannot be
/// listed. The names are what QFile::decodeName makes of the bytes.
std::optional<QStringList> listFolder(const QString &folder);

// --- Text that goes into generated files ----------------------------------------------------------------------------

/// Text for the inside of a double-quoted string of a shell script: "\", `"`, "$" and backtick escaped, control
/// characters made blanks.
QString shellQuotedText(const QString &text);

/// Text for one line of a log, or for a comment line of a generated script or configuration: control characters and
/// line separators made blanks.
QString singleLine(const QString &text);

/// Why a value must not go into a generated emulator configuration (a CR, LF or NUL; a double quote when it is a
/// path), empty when it may.
QString configurationValueProblem(const QByteArray &value, bool isPath = false);
/// Whether a configuration key is made of letters, digits, "_" and "." only.
bool isSafeConfigurationKey(const QString &key);

} // namespace ludarium
