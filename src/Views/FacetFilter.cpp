#include "Views/FacetFilter.h"

#include "App/AppState.h"
#include "Services/Library/GameLibrary.h"

#include <array>

namespace ludarium {

namespace {

constexpr std::array kinds{"recent", "favorites", "installed", "genre", "developer", "publisher", "year"};

} // namespace

FacetFilter::FacetFilter(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state, &AppState::filteredGamesChanged, this, [this] {
        QVariantList now = active();
        if (m_known != now) {
            m_known = std::move(now);
            Q_EMIT activeChanged();
        }
    });
    connect(&state.gameLibrary(), &GameLibrary::isLoadingChanged, this, &FacetFilter::valuesChanged);
}

QVariantList FacetFilter::active() const {
    QVariantList list;
    for (const char *kind : kinds)
        if (const QString text = value(QLatin1StringView(kind)); !text.isEmpty()) {
            const QVariantMap entry{{QStringLiteral("kind"), QLatin1StringView(kind)}, {QStringLiteral("text"), text}};
            list.append(QVariant(entry));
        }
    return list;
}

bool FacetFilter::isInstalledOnly() const {
    return m_state.query().installedOnly;
}

QString FacetFilter::value(const QString &kind) const {
    const BrowseQuery &query = m_state.query();
    if (kind == QLatin1StringView("recent"))
        return query.recentlyPlayed ? QStringLiteral("Recently Played") : QString();
    if (kind == QLatin1StringView("favorites"))
        return query.favoritesOnly ? QStringLiteral("Favorites") : QString();
    if (kind == QLatin1StringView("installed"))
        return query.installedOnly ? QStringLiteral("Installed") : QString();
    if (kind == QLatin1StringView("genre"))
        return query.genre;
    if (kind == QLatin1StringView("developer"))
        return query.developer;
    if (kind == QLatin1StringView("publisher"))
        return query.publisher;
    return kind == QLatin1StringView("year") && query.year ? QString::number(*query.year) : QString();
}

QStringList FacetFilter::values() const {
    const MetadataIndexes &all = m_state.gameLibrary().metadata();
    QStringList list;
    if (m_kind == QLatin1StringView("genre"))
        list = all.genres;
    else if (m_kind == QLatin1StringView("developer"))
        list = all.developers;
    else if (m_kind == QLatin1StringView("publisher"))
        list = all.publishers;
    else if (m_kind == QLatin1StringView("year"))
        for (const int year : all.years)
            list.append(QString::number(year));
    return m_search.isEmpty() ? list : list.filter(m_search, Qt::CaseInsensitive);
}

void FacetFilter::setKind(const QString &kind) {
    if (std::exchange(m_kind, kind) != kind)
        Q_EMIT valuesChanged();
}

void FacetFilter::setSearch(const QString &search) {
    if (std::exchange(m_search, search) != search)
        Q_EMIT valuesChanged();
}

void FacetFilter::toggle(const QString &value) {
    set(m_kind, this->value(m_kind) == value ? QString() : value);
}

void FacetFilter::set(const QString &kind, const QString &value) {
    if (kind == QLatin1StringView("recent"))
        m_state.setShowRecentlyPlayed(!value.isEmpty());
    else if (kind == QLatin1StringView("favorites"))
        m_state.setShowFavoritesOnly(!value.isEmpty());
    else if (kind == QLatin1StringView("installed"))
        m_state.setShowInstalledOnly(!value.isEmpty());
    else if (kind == QLatin1StringView("genre"))
        m_state.setSelectedGenre(value);
    else if (kind == QLatin1StringView("developer"))
        m_state.setSelectedDeveloper(value);
    else if (kind == QLatin1StringView("publisher"))
        m_state.setSelectedPublisher(value);
    else if (kind == QLatin1StringView("year"))
        m_state.setSelectedYear(value.isEmpty() ? std::nullopt : std::optional(value.toInt()));
}

void FacetFilter::clear() {
    for (const char *kind : kinds)
        set(QLatin1StringView(kind), QString());
}

} // namespace ludarium
