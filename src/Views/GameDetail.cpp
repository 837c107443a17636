#include "Views/GameDetail.h"

#include "App/AppState.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"
#include "Views/CoverStore.h"
#include "Views/GameFacts.h"
#include "Views/TitleArt.h"

#include <algorithm>
#include <utility>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr int writingPause = 1000; ///< milliseconds after the last key

} // namespace

GameDetail::GameDetail(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent)
    : QObject(parent), m_state(state), m_covers(std::move(covers)), m_media(state), m_variants(state), m_extras(state),
      m_actions(state) {
    m_writingPause.setSingleShot(true);
    m_writingPause.setInterval(writingPause);
    connect(&m_writingPause, &QTimer::timeout, this, &GameDetail::keepNotes);
    connect(&state, &AppState::selectionChanged, this, &GameDetail::refresh);
    connect(&state.gameLibrary(), &GameLibrary::gamesChanged, this, &GameDetail::refresh);
    connect(&state.gameLibrary(), &GameLibrary::userDataChanged, this, &GameDetail::changed);
    connect(&m_media, &GameMedia::changed, this, [this] { m_extras.setShownElsewhere(m_media.manual()); });
    refresh();
}

GameDetail::~GameDetail() {
    saveNotes();
}

void GameDetail::refresh() {
    const QString id = m_state.selectedGameId();
    GamePtr game = id.isEmpty() ? GamePtr() : m_state.gameLibrary().game(id);
    if (game == m_game)
        return;
    const bool another = !m_game || !game || m_game->id != game->id;
    if (another) {
        saveNotes();
        m_writtenNotes.reset();
    }
    m_game = std::move(game);
    m_actions.setGame(m_game);
    if (another) {
        m_media.setGame(m_game);
        m_extras.setGame(m_game);
        Q_EMIT gameSelected();
    }
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

QVariantList GameDetail::chips() const {
    return m_game ? chipsOf(*m_game) : QVariantList();
}

QVariantList GameDetail::facts() const {
    return m_game ? factsOf(*m_game) : QVariantList();
}

QVariantList GameDetail::issues() const {
    return m_game ? issuesOf(m_state.exceptions(), m_game->title) : QVariantList();
}

bool GameDetail::isCritical() const {
    const QVariantList known = issues();
    return std::any_of(known.begin(), known.end(), [](const QVariant &issue) {
        return issue.toMap().value(u"severity"_s).toString() == u"critical"_s;
    });
}

QString GameDetail::text() const {
    if (!m_game)
        return {};
    return m_game->overview.isEmpty() ? m_game->notesText() : m_game->overviewText();
}

QString GameDetail::notes() const {
    if (!m_game)
        return {};
    return m_writtenNotes ? *m_writtenNotes : m_state.gameLibrary().userData().notes(m_game->id);
}

void GameDetail::editNotes(const QString &text) {
    if (!m_game)
        return;
    m_writtenNotes = text;
    m_writingPause.start();
}

bool GameDetail::keepNotes() {
    m_writingPause.stop();
    if (!m_game || !m_writtenNotes || *m_writtenNotes == m_state.gameLibrary().userData().notes(m_game->id))
        return true;
    return m_state.gameLibrary().setNotes(m_game->id, *m_writtenNotes).isEmpty();
}

void GameDetail::saveNotes() {
    // What was refused stays in the editor.
    if (keepNotes())
        m_writtenNotes.reset();
}

void GameDetail::narrowTo(const QString &kind, const QString &value) {
    // The search text stays, as it does in every other move to a place.
    BrowseQuery place;
    if (kind == u"platform"_s)
        place.platform = value;
    else if (kind == u"developer"_s)
        place.developer = value;
    else if (kind == u"publisher"_s)
        place.publisher = value;
    else if (kind == u"genre"_s)
        place.genre = value;
    else if (kind == u"year"_s)
        place.year = value.toInt();
    m_state.goTo(place);
}

} // namespace ludarium
