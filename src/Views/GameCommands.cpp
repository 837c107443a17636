#include "Views/GameCommands.h"

#include "App/AppState.h"
#include "Host/Host.h"
#include "Host/Workspace.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

GameCommands::GameCommands(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state, &AppState::selectionChanged, this, &GameCommands::refresh);
    connect(&state.gameLibrary(), &GameLibrary::gamesChanged, this, &GameCommands::refresh);
    connect(&state.gameLibrary(), &GameLibrary::userDataChanged, this, &GameCommands::changed);
}

void GameCommands::refresh() {
    const GamePtr game = m_state.gameLibrary().game(m_state.selectedGameId());
    if (std::exchange(m_game, game) != game)
        Q_EMIT changed();
}

QString GameCommands::setupButtonTitle() const {
    if (!m_game)
        return QStringLiteral("Setup/Install Game");
    return m_game->isInstalled ? QStringLiteral("Setup Selected Game") : QStringLiteral("Install Selected Game");
}

int GameCommands::rating() const {
    return m_game ? m_state.gameLibrary().userData().rating(m_game->id) : 0;
}

int GameCommands::progress() const {
    return m_game ? int(m_game->gameProgress) : 0;
}

QStringList GameCommands::progressTexts() const {
    QStringList texts;
    for (qint64 number = 0; const auto progress = gameProgressFromNumber(number); ++number)
        texts.append(gameProgressText(*progress));
    return texts;
}

void GameCommands::toggleFavorite() {
    if (m_game)
        m_state.gameLibrary().toggleFavorite(m_game->id);
}

void GameCommands::setRating(int rating) {
    if (m_game)
        m_state.gameLibrary().setRating(m_game->id, rating);
}

void GameCommands::setProgress(int progress) {
    if (const auto wanted = gameProgressFromNumber(progress); m_game && wanted)
        m_state.gameLibrary().setProgress(m_game->id, *wanted);
}

void GameCommands::showPlatform() {
    if (!m_game)
        return;
    BrowseQuery place;
    place.platform = m_game->platform;
    m_state.goTo(place);
}

void GameCommands::showDeveloper() {
    if (!m_game || m_game->developer.isEmpty())
        return;
    BrowseQuery place;
    place.developer = m_game->developer;
    m_state.goTo(place);
}

void GameCommands::copyTitle() {
    if (m_game)
        m_state.host().workspace.copyToClipboard(m_game->title);
}

QVariantList GameCommands::variants() const {
    QVariantList list;
    const std::optional<GameGroup> group = m_state.groupDuplicateGames() ? m_state.selectedGameGroup() : std::nullopt;
    if (!group || group->variants.size() < 2)
        return list;
    for (const GamePtr &game : group->variants) {
        const QVariantMap entry{
            {QStringLiteral("id"), game->id},
            {QStringLiteral("text"), QStringLiteral("%1 (%2)").arg(game->title, game->platform)},
        };
        list.append(QVariant(entry));
    }
    return list;
}

void GameCommands::selectVariant(const QString &id) {
    m_state.setSelectedGameId(id);
}

} // namespace ludarium
