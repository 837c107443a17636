#include "Views/GameDetail.h"

#include "App/AppState.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"
#include "Views/CoverStore.h"
#include "Views/TitleArt.h"

namespace ludarium {

GameDetail::GameDetail(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent)
    : QObject(parent), m_state(state), m_covers(std::move(covers)), m_media(state) {
    connect(&state, &AppState::selectionChanged, this, &GameDetail::refresh);
    connect(&state.gameLibrary(), &GameLibrary::gamesChanged, this, &GameDetail::refresh);
    refresh();
}

void GameDetail::refresh() {
    const QString id = m_state.selectedGameId();
    GamePtr game = id.isEmpty() ? GamePtr() : m_state.gameLibrary().game(id);
    if (game == m_game)
        return;
    const bool another = !m_game || !game || m_game->id != game->id;
    m_game = std::move(game);
    if (another)
        m_media.setGame(m_game);
    Q_EMIT changed();
}

void GameDetail::showPicturesAnew() {
    m_media.setGame(m_game);
    Q_EMIT changed();
}

void GameDetail::clearImageCache() {
    if (m_game)
        m_state.imageLoader().clearGameCache(*m_game, m_state.collectionPath());
}

QString GameDetail::title() const {
    return m_game ? m_game->title : QString();
}

QString GameDetail::cover() const {
    return m_game ? m_covers->url(m_game) : QString();
}

QString GameDetail::initials() const {
    return m_game ? titleInitials(m_game->title) : QString();
}

double GameDetail::hue() const {
    return m_game ? titleHue(m_game->title) : 0;
}

QStringList GameDetail::chips() const {
    if (!m_game)
        return {};
    QStringList chips{m_game->platform};
    if (m_game->releaseYear)
        chips.append(QString::number(*m_game->releaseYear));
    chips.append(m_game->developer);
    chips.removeAll(QString());
    return chips;
}

QString GameDetail::genre() const {
    return m_game ? m_game->genre : QString();
}

QString GameDetail::publisher() const {
    return m_game ? m_game->publisher : QString();
}

QString GameDetail::series() const {
    return m_game ? m_game->series : QString();
}

QString GameDetail::text() const {
    if (!m_game)
        return {};
    return m_game->overview.isEmpty() ? m_game->notesText() : m_game->overviewText();
}

} // namespace ludarium
