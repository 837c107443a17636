#pragma once

#include "Models/Game.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace ludarium {

/// The same title on several platforms, shown once. Identity is the normalised title.
struct GameGroup {
    QString normalizedTitle;
    QList<GamePtr> variants; ///< by platform, ascending
    GamePtr primaryVariant;  ///< stands for the group: the last played, else the first installed, else the first

    GameGroup() = default;
    GameGroup(QString title, QList<GamePtr> games);

    /// The latest date over the variants; none when none was played.
    std::optional<QDateTime> lastPlayed() const;
    int playCount() const;
    /// The platform of every variant, ascending; one that two variants share stands twice.
    QStringList availablePlatforms() const;
    /// The first variant of exactly this platform; null when there is none.
    GamePtr variant(const QString &platform) const;

    /// A title without its year and edition tags, lower-cased: what the variants of one game have in common.
    static QString normalize(const QString &title);
    /// Of variants that are sorted by platform.
    static GamePtr computePrimaryVariant(const QList<GamePtr> &variants);
};

} // namespace ludarium
