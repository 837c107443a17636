#pragma once

#include "Models/EmulatorType.h"

#include <QString>
#include <optional>

namespace ludarium {

/// The DOSBox build that a collection names for a game.
struct EmulatorRequirement {
    EmulatorType emulatorType = EmulatorType::vanilla;
    QString version;            ///< name of the build, as the collection writes it
    QString wineExecutablePath; ///< below eXo/emulators/dosbox, with "/"; null when absent
    /// Where the collection says so: the title as written there, and the line of eXo/util/dosbox.txt; 0 when unknown.
    QString listedTitle = {};
    int line = 0;
};

/// The emulator that a known exception asks for.
enum class EmulatorOverride { staging, dosboxX, ece, scummvm };

} // namespace ludarium
