#include "Views/GameActions.h"

#include "App/AppState.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/PlaySessionTracker.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// Without an archive that is known the launch itself tells what is missing.
LaunchMode primaryMode(const Game &game) {
    if (!game.isInstalled && game.isCompressed)
        return LaunchMode::install;
    if (!game.isInstalled && game.isDownloadable)
        return LaunchMode::download;
    return LaunchMode::play;
}

} // namespace

GameActions::GameActions(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.sessionTracker(), &PlaySessionTracker::sessionChanged, this, &GameActions::changed);
}

/// Of a session whose process is unknown nobody can say whether the game still runs.
bool GameActions::isRunning() const {
    const PlaySessionTracker &tracker = m_state.sessionTracker();
    return m_game && tracker.isWatching() && tracker.currentGame()->id == m_game->id;
}

void GameActions::setGame(const GamePtr &game) {
    m_game = game;
    Q_EMIT changed();
}

QString GameActions::primary() const {
    if (!m_game)
        return {};
    if (isRunning())
        return u"running"_s;
    switch (primaryMode(*m_game)) {
    case LaunchMode::install:
        return u"install"_s;
    case LaunchMode::download:
        return u"download"_s;
    default:
        return u"play"_s;
    }
}

QString GameActions::reasonAgainst(LaunchMode mode) const {
    return isRunning() ? u"The game is running"_s : m_state.gameLauncher().whyNotLaunched(*m_game, mode);
}

QString GameActions::primaryReason() const {
    return m_game ? reasonAgainst(primaryMode(*m_game)) : QString();
}

QString GameActions::downloadSize() const {
    return m_game ? m_game->downloadSize : QString();
}

QString GameActions::playReason() const {
    return m_game ? reasonAgainst(LaunchMode::play) : QString();
}

QString GameActions::versionsReason() const {
    const bool playable = m_game && primaryMode(*m_game) == LaunchMode::play;
    return playable ? playReason() : u"The game is not installed"_s;
}

QString GameActions::setupReason() const {
    return m_game ? m_state.gameLauncher().whyNotLaunched(*m_game, LaunchMode::setup) : QString();
}

QString GameActions::folderReason() const {
    return m_game && m_game->configurationPath.isEmpty() ? u"This game names no folder"_s : QString();
}

} // namespace ludarium
