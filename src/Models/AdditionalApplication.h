#pragma once

#include <QHashFunctions>
#include <QString>
#include <optional>

namespace ludarium {

/// What an additional application is, by its name and path.
enum class ApplicationType { manual, extras, setup, document, application };

/// Name of the symbol shown for a type.
QString applicationTypeSymbol(ApplicationType type);

/// An extra launch entry of a game: a manual, a setup program, an extra. Equality covers all fields.
struct AdditionalApplication {
    QString id;              ///< Id; a new UUID when missing
    QString gameId;          ///< GameID; empty when missing
    QString name;            ///< Name; "Unknown" when missing
    QString applicationPath; ///< ApplicationPath; null when absent
    QString commandLine;     ///< CommandLine; null when absent
    bool autoRunBefore = false;
    bool autoRunAfter = false;
    bool waitForExit = false;
    int playCount = 0;
    std::optional<int> priority;
    std::optional<bool> sideA;
    std::optional<bool> sideB;

    bool operator==(const AdditionalApplication &) const = default;
    ApplicationType applicationType() const;
};

size_t qHash(const AdditionalApplication &application, size_t seed = 0);

} // namespace ludarium
