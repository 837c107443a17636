#pragma once

#include "Models/EmulatorRequirement.h"

#include <QDateTime>
#include <QMap>
#include <QStringList>

namespace ludarium {

/// Stored text: "staging", "dosbox-x", "ece", "scummvm".
QString emulatorOverrideText(EmulatorOverride emulator);
std::optional<EmulatorOverride> emulatorOverrideFromText(const QString &text);

/// What is known to be special about some games, found by their titles.
struct GameException {
    enum class Severity { critical, recommended, optional, info };

    QString id;
    QStringList patterns; ///< regular expressions or plain texts that fit the title
    std::optional<EmulatorOverride> emulator;
    QString preLaunchCommand;               ///< kept, never run; null when absent
    QString postLaunchCommand;              ///< kept, never run; null when absent
    QMap<QString, QString> configOverrides; ///< DOSBox keys and values
    QString notes;                          ///< for the user
    Severity severity = Severity::info;
    QDateTime addedDate;
    QString testedVersion; ///< of the collection

    /// A list of exceptions as JSON with the fields' names as keys; "addedDate" is a number of seconds since
    /// 2001-01-01 00:00 UTC. None when any of them is not whole.
    static std::optional<QList<GameException>> listFromJson(const QByteArray &json);
};

/// Stored text: "critical", "recommended", "optional", "info".
QString exceptionSeverityText(GameException::Severity severity);
std::optional<GameException::Severity> exceptionSeverityFromText(const QString &text);

} // namespace ludarium
