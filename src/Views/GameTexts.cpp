#include "Views/GameTexts.h"

#include <QLocale>
#include <algorithm>

namespace ludarium {

QString platformsText(const GameGroup &group) {
    QStringList platforms = group.availablePlatforms();
    platforms.removeDuplicates();
    return platforms.join(QStringLiteral(", "));
}

QString ratingText(const Game &game) {
    return game.communityRating.value_or(0) > 0 ? QLocale().toString(*game.communityRating, 'f', 1) : QString();
}

QString playCountText(int count) {
    return count > 0 ? QLocale().toString(count) : QString();
}

QString dateText(const std::optional<QDateTime> &date) {
    return date ? QLocale().toString(date->toLocalTime().date(), QLocale::ShortFormat) : QString();
}

QString playTimeText(double seconds) {
    if (seconds <= 0)
        return {};
    const auto minutes = qint64(seconds / 60);
    if (minutes < 1)
        return QStringLiteral("< 1 min");
    const QString rest = QStringLiteral("%L1 min").arg(minutes % 60);
    return minutes < 60 ? rest : QStringLiteral("%L1 h %2").arg(minutes / 60).arg(rest);
}

QString statusText(const GameList &games) {
    const auto any = [&](bool Game::*flag) {
        return std::any_of(games.begin(), games.end(), [&](const GamePtr &game) { return (*game).*flag; });
    };
    if (any(&Game::isInstalled))
        return QStringLiteral("Installed");
    if (any(&Game::isCompressed))
        return QStringLiteral("Compressed");
    return any(&Game::isDownloadable) ? QStringLiteral("Downloadable") : QString();
}

} // namespace ludarium
