#include "Services/Library/GameGroup.h"

#include <algorithm>
#include <array>

namespace ludarium {

namespace {

constexpr std::array editionTags{
    u"(multi-platform)",
    u"(multiplatform)",
    u"(dos)",
    u"(scummvm)",
    u"(dreamm)",
    u"(windows)",
    u"(win3x)",
    u"(win9x)",
    u"(cd)",
    u"(cd-rom)",
    u"(cd rom)",
    u"(cd version)",
    u"(cdrom)",
    u"(floppy)",
    u"(floppy version)",
    u"(dvd)",
    u"(dvd-rom)",
    u"(dvd version)",
    u"(talkie)",
    u"(enhanced)",
    u"(deluxe)",
    u"(special edition)",
};

/// Whether the text ends in a blank and a year in parentheses, as in "doom (1993)".
bool endsInYear(QStringView text) {
    if (text.size() < 7)
        return false;
    const QStringView tail = text.last(7);
    return tail[0] == u' ' && tail[1] == u'(' && tail[6] == u')' &&
           std::all_of(tail.begin() + 2, tail.begin() + 6, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

GameGroup::GameGroup(QString title, QList<GamePtr> games)
    : normalizedTitle(std::move(title)), variants(std::move(games)) {
    if (variants.size() > 1)
        std::stable_sort(variants.begin(), variants.end(),
                         [](const GamePtr &a, const GamePtr &b) { return a->platform < b->platform; });
    primaryVariant = computePrimaryVariant(variants);
}

GamePtr GameGroup::computePrimaryVariant(const QList<GamePtr> &variants) {
    // A date that only says "never".
    static const QDateTime distantPast(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
    GamePtr latest;
    for (const GamePtr &game : variants)
        if (game->lastPlayed && *game->lastPlayed > distantPast && (!latest || *game->lastPlayed > *latest->lastPlayed))
            latest = game;
    if (latest)
        return latest;
    for (const GamePtr &game : variants)
        if (game->isInstalled)
            return game;
    return variants.isEmpty() ? GamePtr() : variants.first();
}

std::optional<QDateTime> GameGroup::lastPlayed() const {
    std::optional<QDateTime> latest;
    for (const GamePtr &game : variants)
        if (game->lastPlayed && (!latest || *game->lastPlayed > *latest))
            latest = game->lastPlayed;
    return latest;
}

int GameGroup::playCount() const {
    int sum = 0;
    for (const GamePtr &game : variants)
        sum += game->playCount;
    return sum;
}

QStringList GameGroup::availablePlatforms() const {
    QStringList platforms;
    for (const GamePtr &game : variants)
        platforms.append(game->platform);
    platforms.sort();
    return platforms;
}

GamePtr GameGroup::variant(const QString &platform) const {
    for (const GamePtr &game : variants)
        if (game->platform == platform)
            return game;
    return {};
}

QString GameGroup::normalize(const QString &title) {
    QString text = title.toLower().trimmed();
    if (endsInYear(text))
        text.chop(7);
    // Most titles have no tag at all; every tag begins with a parenthesis.
    if (text.contains(u'(')) {
        for (const char16_t *tag : editionTags) {
            const QStringView view(tag);
            qsizetype at = text.indexOf(view);
            if (at < 0)
                continue;
            const qsizetype afterBlank = text.indexOf(u' ' + view.toString());
            if (afterBlank >= 0)
                text.remove(afterBlank, view.size() + 1);
            else
                text.remove(at, view.size());
        }
    }
    while (text.contains(QLatin1StringView("  ")))
        text.replace(QLatin1StringView("  "), QLatin1StringView(" "));
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.sliced(begin, end - begin);
}

} // namespace ludarium
