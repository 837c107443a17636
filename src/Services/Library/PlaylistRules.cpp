#include "Services/Library/PlaylistRules.h"

#include "Host/AppLogger.h"
#include "Host/ShareOut.h"
#include "Services/Library/PlaylistFields.h"
#include "Services/Library/RepeatedLines.h"

#include <QHash>
#include <bit>
#include <map>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

enum class Comparison { equals, notEquals, contains, notContains, isTrue, isFalse, startsWith, endsWith, unknown };

Comparison comparison(const QString &type) {
    static const QHash<QString, Comparison> table{
        {u"equals"_s, Comparison::equals},         {u"equalto"_s, Comparison::equals},
        {u"notequals"_s, Comparison::notEquals},   {u"notequalto"_s, Comparison::notEquals},
        {u"contains"_s, Comparison::contains},     {u"notcontains"_s, Comparison::notContains},
        {u"istrue"_s, Comparison::isTrue},         {u"isfalse"_s, Comparison::isFalse},
        {u"startswith"_s, Comparison::startsWith}, {u"endswith"_s, Comparison::endsWith},
    };
    return table.value(type.toLower(), Comparison::unknown);
}

std::string_view view(const QByteArray &bytes) {
    return {bytes.constData(), size_t(bytes.size())};
}

bool holds(Comparison how, std::string_view field, std::string_view wanted) {
    switch (how) {
    case Comparison::equals:
        return field == wanted;
    case Comparison::notEquals:
        return field != wanted;
    case Comparison::contains:
        return field.find(wanted) != std::string_view::npos;
    case Comparison::notContains:
        return field.find(wanted) == std::string_view::npos;
    case Comparison::isTrue:
        return !field.empty() && field != "false";
    case Comparison::isFalse:
        return field.empty() || field == "false";
    case Comparison::startsWith:
        return field.starts_with(wanted);
    case Comparison::endsWith:
        return field.ends_with(wanted);
    case Comparison::unknown:
        break;
    }
    return false;
}

/// A rule without what does not change its outcome, so that equal rules are one.
struct Rule {
    const PlaylistField *field; ///< null: `key` is looked for in the description
    QByteArray key;
    Comparison how;
    QByteArray wanted;

    explicit Rule(const PlaylistFilter &filter) : how(comparison(filter.comparisonType)) {
        const QString lowerKey = filter.fieldKey.toLower();
        field = playlistField(lowerKey);
        if (field == nullptr)
            key = lowerKey.toUtf8();
        if (how != Comparison::isTrue && how != Comparison::isFalse && how != Comparison::unknown)
            wanted = filter.value.toLower().toUtf8();
        if (how == Comparison::unknown)
            Log::warning(u"  ⚠️ Unknown comparison type: %1"_s.arg(filter.comparisonType));
    }
    auto operator<=>(const Rule &other) const {
        const auto order = [](const Rule &r) { return std::tuple(r.field, view(r.key), r.how, view(r.wanted)); };
        return order(*this) <=> order(other);
    }
    bool operator==(const Rule &other) const { return (*this <=> other) == 0; }

    bool holdsFor(std::string_view lowerText) const { return holds(how, lowerText, view(wanted)); }
    /// For a rule without a field.
    bool holdsForDescription(std::string_view description) const {
        return holdsFor(description.find(view(key)) != std::string_view::npos ? "true" : "");
    }
};

/// One bit a game.
class GameSet {
  public:
    explicit GameSet(size_t count, bool all = false) : m_words((count + 63) / 64, all ? ~0ULL : 0) {
        if (all && count % 64 != 0)
            m_words.back() = (1ULL << (count % 64)) - 1;
    }
    void insert(size_t game) { m_words[game / 64] |= 1ULL << (game % 64); }
    void intersect(const GameSet &other) {
        for (size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= other.m_words[i];
    }
    qsizetype size() const {
        qsizetype count = 0;
        for (const std::uint64_t word : m_words)
            count += std::popcount(word);
        return count;
    }
    template<typename Use>
    void forEach(Use use) const {
        for (size_t i = 0; i < m_words.size(); ++i)
            for (std::uint64_t word = m_words[i]; word != 0; word &= word - 1)
                use(i * 64 + size_t(std::countr_zero(word)));
    }

  private:
    std::vector<std::uint64_t> m_words;
};

/// All rules on one field, and the games that each holds for.
struct FieldRules {
    const PlaylistField *field = nullptr;
    std::vector<std::pair<const Rule *, GameSet *>> rules;

    void workOut(const GameList &games) {
        if (field == nullptr)
            forEveryGame(games, lowerDescription, &Rule::holdsForDescription);
        else if (field->sameText == nullptr)
            forEveryGame(games, field->lowerText, &Rule::holdsFor);
        else
            forEveryText(games);
    }

  private:
    template<typename Text, typename Test>
    void forEveryGame(const GameList &games, Text text, Test test) {
        for (qsizetype i = 0; i < games.size(); ++i) {
            const QByteArray lower = text(*games[i]);
            for (const auto &[rule, result] : rules)
                if ((rule->*test)(view(lower)))
                    result->insert(size_t(i));
        }
    }

    void forEveryText(const GameList &games) {
        // Which rules hold for a text: found out at the first game that has it.
        std::unordered_map<std::uint64_t, std::vector<GameSet *>> known;
        const std::vector<GameSet *> *holding = nullptr;
        std::uint64_t last = 0;
        for (qsizetype i = 0; i < games.size(); ++i) {
            const std::uint64_t text = field->sameText(*games[i]);
            if (holding == nullptr || text != last) { // games come in runs of one platform
                const auto [entry, isNew] = known.try_emplace(text);
                if (isNew) {
                    const QByteArray lower = field->lowerText(*games[i]);
                    for (const auto &[rule, result] : rules)
                        if (rule->holdsFor(view(lower)))
                            entry->second.push_back(result);
                }
                holding = &entry->second;
                last = text;
            }
            for (GameSet *const result : *holding)
                result->insert(size_t(i));
        }
    }
};

/// The ids of a set of games, made once for each combination of rules.
QStringList idsOf(const GameSet &set, const GameList &games) {
    QStringList ids;
    ids.reserve(set.size());
    set.forEach([&](size_t game) { ids.append(games[qsizetype(game)]->id); });
    return ids;
}

} // namespace

bool matchesFilter(const Game &game, const PlaylistFilter &filter) {
    const Rule rule(filter);
    return rule.field == nullptr ? rule.holdsForDescription(view(lowerDescription(game)))
                                 : rule.holdsFor(view(rule.field->lowerText(game)));
}

QList<Playlist> applyPlaylistFilters(QList<Playlist> playlists, const GameList &games) {
    const size_t count = size_t(games.size());
    RepeatedLines skipped(LogLevel::Debug);
    std::map<Rule, GameSet> results;
    using Combination = std::vector<const GameSet *>;
    std::vector<std::pair<Playlist *, Combination>> dynamic;
    for (Playlist &playlist : playlists) {
        if (!playlist.autoPopulate) {
            skipped.add(u"     ⏭️ Skipping static playlist"_s,
                        u"     ⏭️ Skipping static playlist (already has %1 games)"_s.arg(playlist.gameIds.size()));
            continue;
        }
        if (playlist.filters.isEmpty())
            Log::warning(u"     ⚠️ Dynamic playlist has no filters! Keeping all %1 games"_s.arg(games.size()));
        Combination combination;
        for (const PlaylistFilter &filter : std::as_const(playlist.filters))
            combination.push_back(&results.try_emplace(Rule(filter), count).first->second);
        std::ranges::sort(combination);
        dynamic.emplace_back(&playlist, std::move(combination));
    }

    std::map<const PlaylistField *, FieldRules> byField;
    for (auto &[rule, result] : results) {
        byField[rule.field].field = rule.field;
        byField[rule.field].rules.emplace_back(&rule, &result);
    }
    std::vector<FieldRules *> fields;
    for (auto &[field, rules] : byField)
        fields.push_back(&rules);
    shareOut(fields.size(), [&](size_t i) { fields[i]->workOut(games); });

    std::map<Combination, QStringList> lists;
    for (const auto &[playlist, combination] : dynamic)
        lists.try_emplace(combination);
    std::vector<std::pair<const Combination, QStringList> *> unlisted;
    for (auto &list : lists)
        unlisted.push_back(&list);
    shareOut(unlisted.size(), [&](size_t i) {
        GameSet left(count, true);
        for (const GameSet *set : unlisted[i]->first)
            left.intersect(*set);
        unlisted[i]->second = idsOf(left, games);
    });
    for (auto &[playlist, combination] : dynamic)
        playlist->gameIds = lists[combination];

    const qsizetype fixed = playlists.size() - qsizetype(dynamic.size());
    Log::info(u"✅ Playlist filtering complete: %1 static, %2 dynamic"_s.arg(fixed).arg(dynamic.size()));
    return playlists;
}

} // namespace ludarium
