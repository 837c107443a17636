#pragma once

#include "Models/Game.h"

#include <QString>
#include <optional>

namespace ludarium {

/// What an entry of a game differs in from its twins. `other` is only ever stored, never detected.
enum class VariantType { media, audio, graphics, language, version, platform, other };

/// Every kind, in order.
const QList<VariantType> &variantTypes();
/// Stored text: "media", "audio", …
QString variantTypeText(VariantType type);
std::optional<VariantType> variantTypeFromText(const QString &text);

/// One entry of a game that stands several times in a collection.
struct GameVariant {
    QString id; ///< the game's
    GamePtr game;
    VariantType variantType = VariantType::other;
    QString variantName;   ///< for the user: "CD Version"
    QString variantSuffix; ///< the part of the title that tells, with its brackets; empty for `platform`
};

/// Reads the bracket of a title, such as "(CD Version)", that tells an entry from its twins.
namespace VariantDetector {

std::optional<GameVariant> detectVariant(const GamePtr &game);

} // namespace VariantDetector

} // namespace ludarium
