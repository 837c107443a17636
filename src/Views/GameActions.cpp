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

bool isRunning(AppState &state, const Game &game) {
    return state.sessionTracker().isRunning(game.id);
}

QString reasonAgainst(AppState &state, const Game &game, LaunchMode mode) {
    return isRunning(state, game) ? u"The game is running"_s : state.gameLauncher().whyNotLaunched(game, mode);
}

} // namespace

GameActions::GameActions(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.sessionTracker(), &PlaySessionTracker::runningChanged, this, &GameActions::changed);
}

void GameActions::setGame(const GamePtr &game) {
    m_game = game;
    Q_EMIT changed();
}

QString GameActions::primaryOf(AppState &state, const Game &game) {
    if (isRunning(state, game))
        return u"running"_s;
    switch (primaryMode(game)) {
    case LaunchMode::install:
        return u"install"_s;
    case LaunchMode::download:
        return u"download"_s;
    default:
        return u"play"_s;
    }
}

QString GameActions::reasonAgainstPrimary(AppState &state, const Game &game) {
    return reasonAgainst(state, game, primaryMode(game));
}

QString GameActions::primary() const {
    return m_game ? primaryOf(m_state, *m_game) : QString();
}

QString GameActions::primaryReason() const {
    return m_game ? reasonAgainstPrimary(m_state, *m_game) : QString();
}

QString GameActions::downloadSize() const {
    return m_game ? m_game->downloadSize : QString();
}

QString GameActions::playReason() const {
    return m_game ? reasonAgainst(m_state, *m_game, LaunchMode::play) : QString();
}

QString GameActions::versionsReason() const {
    const bool playable = m_game && primaryMode(*m_game) == LaunchMode::play;
    return playable ? playReason() : u"The game is not installed"_s;
}

QString GameActions::setupReason() const {
    return m_game ? reasonAgainst(m_state, *m_game, LaunchMode::setup) : QString();
}

QString GameActions::folderReason() const {
    return m_game && m_game->configurationPath.isEmpty() ? u"This game names no folder"_s : QString();
}

} // namespace ludarium
