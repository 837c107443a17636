#include "Views/GameVariants.h"

#include "App/AppState.h"
#include "Services/Dos/VariantDetector.h"
#include "Services/Library/GameLibrary.h"

#include <utility>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

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
        if (group && group->variants.size() > 1)
            for (const GamePtr &game : group->variants) {
                const std::optional<GameVariant> variant = VariantDetector::detectVariant(game);
                list.append(QVariantMap{
                    {u"id"_s, game->id},
                    {u"text"_s, variant ? variant->variantName : game->platform},
                    {u"platform"_s, game->platform},
                    {u"help"_s, helpText(game)},
                    {u"installed"_s, game->isInstalled},
                    {u"selected"_s, game->id == selected->id},
                });
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
