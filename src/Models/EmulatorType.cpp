#include "Models/EmulatorType.h"

namespace ludarium {

QString emulatorTypeText(EmulatorType type) {
    switch (type) {
    case EmulatorType::staging:
        return QStringLiteral("staging");
    case EmulatorType::dosboxX:
        return QStringLiteral("dosbox-x");
    case EmulatorType::ece:
        return QStringLiteral("ece");
    case EmulatorType::vanilla:
        return QStringLiteral("vanilla");
    case EmulatorType::custom:
        return QStringLiteral("custom");
    }
    Q_UNREACHABLE();
}

std::optional<EmulatorType> emulatorTypeFromText(const QString &text) {
    for (EmulatorType type :
         {EmulatorType::staging, EmulatorType::dosboxX, EmulatorType::ece, EmulatorType::vanilla, EmulatorType::custom})
        if (text == emulatorTypeText(type))
            return type;
    return std::nullopt;
}

QString emulatorTypeName(EmulatorType type) {
    switch (type) {
    case EmulatorType::staging:
        return QStringLiteral("DOSBox Staging");
    case EmulatorType::dosboxX:
        return QStringLiteral("DOSBox-X");
    case EmulatorType::ece:
        return QStringLiteral("DOSBox ECE");
    case EmulatorType::vanilla:
        return QStringLiteral("DOSBox");
    case EmulatorType::custom:
        return QStringLiteral("Custom DOSBox");
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
