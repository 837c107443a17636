#pragma once

#include <QString>

namespace ludarium {

/// Walks a collection's games files one after the other on this thread with handlers that do nothing, through the same
/// entry point of libxml2 and the same file reader as the parser's: what reading the XML costs at least. Returns the
/// number of elements; a file that is not well-formed ends the program.
qint64 walkGamesFiles(const QString &collection);

} // namespace ludarium
