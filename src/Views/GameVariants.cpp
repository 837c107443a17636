#include "Views/GameVariants.h"

#include "App/AppState.h"
#include "Services/Dos/VariantDetector.h"
#include "Services/Library/GameLibrary.h"

#include <utility>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// A short name for each; those that it does not tell apart say their platform too, or else their title.
QStringList namesOf(const QList<GamePtr> &variants) {
    QStringList names;
    for (const GamePtr &game : variants) {
        const std::optional<GameVariant> variant = VariantDetector::detectVariant(game);
        names.append(variant ? variant->variantName : game->platform);
    }
    const auto tellApart = [&](const auto &longer) {
        const QStringList before = names;
        for (qsizetype i = 0; i < names.size(); ++i)
            if (before.count(before[i]) > 1)
                names[i] = longer(names[i], *variants[i]);
    };
    tellApart([](const QString &name, const Game &game) {
        return name == game.platform ? name : u"%1, %2"_s.arg(name, game.platform);
    });
    tellApart([](const QString &, const Game &game) { return game.title; });
    return names;
}

} // namespace

GameVariants::GameVariants(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state, &AppState::selectionChanged, this, &GameVariants::refresh);
    connect(&state, &AppState::filteredGamesChanged, this, &GameVariants::refresh);
    refresh();
}

void GameVariants::refresh() {
    QVariantList list;
    const GamePtr selected = m_state.gameLibrary().game(m_state.selectedGameId());
    if (selected && m_state.groupDuplicateGames()) {
        const std::optional<GameGroup> group = m_state.selectedGameGroup();
        if (group && group->variants.size() > 1) {
            const QStringList texts = namesOf(group->variants);
            for (qsizetype i = 0; i < texts.size(); ++i) {
                const GamePtr &game = group->variants[i];
                list.append(QVariantMap{
                    {u"id"_s, game->id},
                    {u"text"_s, texts[i]},
                    {u"platform"_s, game->platform},
                    {u"help"_s, helpText(game)},
                    {u"installed"_s, game->isInstalled},
                    {u"selected"_s, game->id == selected->id},
                });
            }
        }
    }
    if (std::exchange(m_list, list) != list)
        Q_EMIT changed();
}

QString GameVariants::helpText(const GamePtr &game) {
    QString text = game->title;
    if (const std::optional<GameVariant> variant = VariantDetector::detectVariant(game))
        text += u" - "_s + variant->variantName;
    return text + (game->isInstalled ? u" (Installed)"_s : u" (Not installed)"_s);
}

void GameVariants::select(const QString &gameId) {
    m_state.setSelectedGameId(gameId);
}

} // namespace ludarium
