#pragma once

#include <QString>
#include <optional>

namespace ludarium {

/// The DOSBox build that a game was tested with.
enum class EmulatorType { staging, dosboxX, ece, vanilla, custom };

/// Stored text: "staging", "dosbox-x", "ece", "vanilla", "custom".
QString emulatorTypeText(EmulatorType type);
std::optional<EmulatorType> emulatorTypeFromText(const QString &text);
/// For users: "DOSBox Staging", "DOSBox-X", "DOSBox ECE", "DOSBox", "Custom DOSBox".
QString emulatorTypeName(EmulatorType type);

} // namespace ludarium
