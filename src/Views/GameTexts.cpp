#include "Views/GameTexts.h"

#include "Models/PlayTime.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

enum class Status { none, downloadable, compressed, installed };

bool hasAny(const GameList &games, bool Game::*flag) {
    return std::any_of(games.begin(), games.end(), [&](const GamePtr &game) { return (*game).*flag; });
}

Status bestStatus(const GameList &games) {
    return hasAny(games, &Game::isInstalled)      ? Status::installed
           : hasAny(games, &Game::isCompressed)   ? Status::compressed
           : hasAny(games, &Game::isDownloadable) ? Status::downloadable
                                                  : Status::none;
}

} // namespace

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
    return seconds > 0 ? formatPlayTime(seconds) : QString();
}

QString statusText(const GameList &games, bool running) {
    if (running)
        return QCoreApplication::translate("GameTexts", "Playing");
    switch (bestStatus(games)) {
    case Status::installed:
        return QCoreApplication::translate("GameTexts", "Installed");
    case Status::compressed:
        return QCoreApplication::translate("GameTexts", "Compressed");
    case Status::downloadable:
        return QCoreApplication::translate("GameTexts", "Downloadable");
    case Status::none:
        return {};
    }
    return {};
}

QString coverBadges(const GameList &games, bool running) {
    QStringList badges;
    if (running)
        badges.append(u"play:"_s + statusText(games, running));
    switch (running ? Status::none : bestStatus(games)) {
    case Status::installed:
        badges.append(QStringLiteral("check"));
        break;
    case Status::compressed:
        badges.append(QStringLiteral("archive"));
        break;
    case Status::downloadable:
        badges.append(QStringLiteral("download"));
        break;
    case Status::none:
        break;
    }
    if (games.size() > 1)
        badges.append(QStringLiteral("stack:%L1").arg(games.size()));
    return badges.join(u'+');
}

QString spokenText(const QString &title, const QString &platform, const GameList &games, bool running) {
    QStringList parts{title, platform};
    if (games.size() > 1)
        parts.append(QCoreApplication::translate("GameTexts", "%L1 variants").arg(games.size()));
    if (hasAny(games, &Game::isFavorite))
        parts.append(QCoreApplication::translate("GameTexts", "Favorite"));
    parts.append(statusText(games, running));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace ludarium
