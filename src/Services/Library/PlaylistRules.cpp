#include "Services/Library/PlaylistRules.h"

#include "Host/AppLogger.h"

#include <QHash>
#include <QLocale>

namespace ludarium {

namespace {

QString flagText(std::optional<bool> flag) {
    return flag.value_or(false) ? QStringLiteral("true") : QStringLiteral("false");
}

enum class Comparison { equals, notEquals, contains, notContains, isTrue, isFalse, startsWith, endsWith, unknown };

Comparison comparison(const QString &type) {
    static const QHash<QString, Comparison> table{
        {QStringLiteral("equals"), Comparison::equals},
        {QStringLiteral("equalto"), Comparison::equals},
        {QStringLiteral("notequals"), Comparison::notEquals},
        {QStringLiteral("notequalto"), Comparison::notEquals},
        {QStringLiteral("contains"), Comparison::contains},
        {QStringLiteral("notcontains"), Comparison::notContains},
        {QStringLiteral("istrue"), Comparison::isTrue},
        {QStringLiteral("isfalse"), Comparison::isFalse},
        {QStringLiteral("startswith"), Comparison::startsWith},
        {QStringLiteral("endswith"), Comparison::endsWith},
    };
    return table.value(type.toLower(), Comparison::unknown);
}

template<typename Text>
auto falseText() {
    if constexpr (std::is_same_v<Text, QString>)
        return QLatin1StringView("false");
    else
        return QByteArrayView("false");
}

/// `Text` is QString, or QByteArray for the UTF-8 of the same.
template<typename Text>
bool holds(Comparison how, const Text &field, const Text &wanted) {
    switch (how) {
    case Comparison::equals:
        return field == wanted;
    case Comparison::notEquals:
        return field != wanted;
    case Comparison::contains:
        return field.contains(wanted);
    case Comparison::notContains:
        return !field.contains(wanted);
    case Comparison::isTrue:
        return !field.isEmpty() && field != falseText<Text>();
    case Comparison::isFalse:
        return field.isEmpty() || field == falseText<Text>();
    case Comparison::startsWith:
        return field.startsWith(wanted);
    case Comparison::endsWith:
        return field.endsWith(wanted);
    case Comparison::unknown:
        break;
    }
    return false;
}

/// Where a record holds the lower-cased form of a field already; null for other fields.
QByteArray Game::*searchField(const QString &fieldKey) {
    static const QHash<QString, QByteArray Game::*> fields{
        {QStringLiteral("title"), &Game::searchTitle},         {QStringLiteral("genre"), &Game::searchGenre},
        {QStringLiteral("genres"), &Game::searchGenre},        {QStringLiteral("developer"), &Game::searchDeveloper},
        {QStringLiteral("publisher"), &Game::searchPublisher}, {QStringLiteral("series"), &Game::searchSeries},
    };
    return fields.value(fieldKey, nullptr);
}

/// A rule with what does not depend on the game worked out once.
struct PreparedRule {
    Comparison how;
    QString fieldKey;
    QString wanted;
    QByteArray Game::*lowerField;
    QByteArray wantedBytes;

    explicit PreparedRule(const PlaylistFilter &filter)
        : how(comparison(filter.comparisonType)), fieldKey(filter.fieldKey.toLower()), wanted(filter.value.toLower()),
          lowerField(searchField(fieldKey)), wantedBytes(wanted.toUtf8()) {
        if (how == Comparison::unknown)
            Log::warning(QStringLiteral("  ⚠️ Unknown comparison type: %1").arg(filter.comparisonType));
    }
    bool matches(const Game &game) const {
        return lowerField ? holds(how, game.*lowerField, wantedBytes)
                          : holds(how, getFieldValue(game, fieldKey).toLower(), wanted);
    }
};

} // namespace

QString getFieldValue(const Game &game, const QString &fieldKey) {
    using Reader = QString (*)(const Game &);
    static const QHash<QString, Reader> readers{
        {QStringLiteral("title"), [](const Game &g) { return g.title; }},
        {QStringLiteral("platform"), [](const Game &g) { return g.platform; }},
        {QStringLiteral("genre"), [](const Game &g) { return g.genre; }},
        {QStringLiteral("genres"), [](const Game &g) { return g.genre; }},
        {QStringLiteral("developer"), [](const Game &g) { return g.developer; }},
        {QStringLiteral("publisher"), [](const Game &g) { return g.publisher; }},
        {QStringLiteral("series"), [](const Game &g) { return g.series; }},
        {QStringLiteral("year"),
         [](const Game &g) {
             if (g.releaseYear)
                 return QString::number(*g.releaseYear);
             return g.releaseDate ? g.releaseDate->toString(Qt::ISODate) : QString();
         }},
        {QStringLiteral("rating"),
         [](const Game &g) {
             return g.communityRating ? QString::number(*g.communityRating, 'g', QLocale::FloatingPointShortest)
                                      : QString();
         }},
        {QStringLiteral("playmode"), [](const Game &g) { return g.playMode; }},
        {QStringLiteral("installed"), [](const Game &g) { return flagText(g.isInstalled); }},
        {QStringLiteral("favorite"), [](const Game &g) { return flagText(g.isFavorite); }},
        {QStringLiteral("notes"), [](const Game &g) { return g.notesText(); }},
        {QStringLiteral("overview"), [](const Game &g) { return g.overviewText(); }},
        {QStringLiteral("source"), [](const Game &g) { return g.source; }},
        {QStringLiteral("completed"), [](const Game &g) { return flagText(g.completed); }},
        {QStringLiteral("broken"), [](const Game &g) { return flagText(g.broken); }},
        {QStringLiteral("portable"), [](const Game &g) { return flagText(g.portable); }},
        {QStringLiteral("cooperative"), [](const Game &g) { return flagText(g.cooperative); }},
        {QStringLiteral("maxplayers"),
         [](const Game &g) { return g.maxPlayers ? QString::number(*g.maxPlayers) : QString(); }},
        {QStringLiteral("videotype"), [](const Game &) { return QString(); }},
        {QStringLiteral("soundtype"), [](const Game &) { return QString(); }},
    };
    static const QHash<QString, QString> synonyms{
        {QStringLiteral("releasedate"), QStringLiteral("year")},
        {QStringLiteral("releaseyear"), QStringLiteral("year")},
        {QStringLiteral("communityrating"), QStringLiteral("rating")},
        {QStringLiteral("favourite"), QStringLiteral("favorite")},
        {QStringLiteral("description"), QStringLiteral("overview")},
        {QStringLiteral("coop"), QStringLiteral("cooperative")},
    };
    const QString lower = fieldKey.toLower();
    if (const Reader reader = readers.value(synonyms.value(lower, lower)))
        return reader(game);
    const QString text = (game.notesText() + u' ' + game.overviewText()).toLower();
    return text.contains(lower) ? QStringLiteral("true") : QString();
}

bool matchesFilter(const Game &game, const PlaylistFilter &filter) {
    return PreparedRule(filter).matches(game);
}

QList<Playlist> applyPlaylistFilters(QList<Playlist> playlists, const GameList &games) {
    qsizetype staticCount = 0;
    qsizetype dynamicCount = 0;
    for (Playlist &playlist : playlists) {
        if (!playlist.autoPopulate) {
            ++staticCount;
            Log::debug(QStringLiteral("     ⏭️ Skipping static playlist (already has %1 games)")
                           .arg(playlist.gameIds.size()));
            continue;
        }
        ++dynamicCount;
        if (playlist.filters.isEmpty())
            Log::warning(
                QStringLiteral("     ⚠️ Dynamic playlist has no filters! Keeping all %1 games").arg(games.size()));
        QList<PreparedRule> rules;
        for (const PlaylistFilter &filter : std::as_const(playlist.filters))
            rules.append(PreparedRule(filter));
        playlist.gameIds.clear();
        for (const GamePtr &game : games)
            if (std::all_of(rules.cbegin(), rules.cend(),
                            [&](const PreparedRule &rule) { return rule.matches(*game); }))
                playlist.gameIds.append(game->id);
    }
    Log::info(
        QStringLiteral("✅ Playlist filtering complete: %1 static, %2 dynamic").arg(staticCount).arg(dynamicCount));
    return playlists;
}

} // namespace ludarium
