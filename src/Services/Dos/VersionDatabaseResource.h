#pragma once

#include <QByteArray>

namespace ludarium {

/// Tools/GameVersionDatabase.json, embedded in the program; not copied.
QByteArray embeddedVersionDatabase();

} // namespace ludarium
