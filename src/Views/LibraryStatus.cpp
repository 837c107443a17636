#include "Views/LibraryStatus.h"

#include "App/AppState.h"
#include "Services/Library/GameLibrary.h"

namespace ludarium {

LibraryStatus::LibraryStatus(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    GameLibrary &library = state.gameLibrary();
    connect(&library, &GameLibrary::gamesChanged, this, &LibraryStatus::changed);
    connect(&library, &GameLibrary::isLoadingChanged, this, &LibraryStatus::changed);
    connect(&library, &GameLibrary::loadingChanged, this, &LibraryStatus::changed);
    connect(&library, &GameLibrary::errorMessageChanged, this, &LibraryStatus::changed);
    connect(&library, &GameLibrary::unavailableChanged, this, &LibraryStatus::changed);
    connect(&state, &AppState::collectionPathChanged, this, &LibraryStatus::changed);
}

QString LibraryStatus::state() const {
    if (gameCount() > 0)
        return QStringLiteral("ready");
    if (isLoading())
        return QStringLiteral("loading");
    if (m_state.isCollectionRestored() && !unavailable().isEmpty())
        return QStringLiteral("away");
    if (!errorMessage().isEmpty())
        return QStringLiteral("error");
    return folder().isEmpty() ? QStringLiteral("none") : QStringLiteral("empty");
}

bool LibraryStatus::isLoading() const {
    return m_state.gameLibrary().isLoading();
}

QString LibraryStatus::step() const {
    return m_state.gameLibrary().loadingStatus();
}

double LibraryStatus::progress() const {
    return m_state.gameLibrary().loadingProgress();
}

QString LibraryStatus::errorMessage() const {
    return m_state.gameLibrary().errorMessage();
}

QString LibraryStatus::folder() const {
    return m_state.collectionPath();
}

QString LibraryStatus::unavailable() const {
    return m_state.gameLibrary().unavailable();
}

int LibraryStatus::gameCount() const {
    return int(m_state.gameLibrary().games().size());
}

} // namespace ludarium
