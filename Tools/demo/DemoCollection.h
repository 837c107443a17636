#pragma once

#include <QString>

namespace ludarium {

/// Writes the demo collection, a small collection of our own games, into `folder`, which is made when it does not
/// exist. Throws std::system_error with the path and the reason: `not_empty` when the folder holds anything, else what
/// the system says; whatever was written by then is removed again. Blocks; takes a fraction of a second.
void writeDemoCollection(const QString &folder);

} // namespace ludarium
