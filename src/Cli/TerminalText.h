#pragma once

#include <QString>
#include <QStringView>

namespace ludarium {

/// Text for a terminal, whose titles come from data: what would steer the terminal is shown instead of sent.

/// Replaces control characters, line separators and the marks that turn the reading direction by visible escapes
/// ("\n", "\x1b", "\u{202e}").
QString escapedForTerminal(QStringView text);

/// The same as one line of prose: runs of control characters and blanks become one blank.
QString oneLine(QStringView text);

/// Columns that the text takes on a terminal: wide characters and emoji count two, combining marks none.
int displayWidth(QStringView text);

/// `text` cut to at most `width` columns, with "…" at the cut, never inside a character with its marks.
QString elided(const QString &text, int width);

/// `text` with blanks behind it up to `width` columns.
QString padded(const QString &text, int width);

} // namespace ludarium
