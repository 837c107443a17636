#include "Views/CoverStore.h"

#include <atomic>

namespace ludarium {

namespace {

/// Counted over all stores: Qt Quick keeps pictures by their address for the whole process.
std::atomic<int> lastGeneration{0};

} // namespace

void CoverStore::setCollection(const QString &collection) {
    const QMutexLocker lock(&m_mutex);
    m_generation = ++lastGeneration;
    m_collection = collection;
    m_numbers.clear();
    m_games.clear();
}

QString CoverStore::url(const GamePtr &game) {
    const QMutexLocker lock(&m_mutex);
    auto number = m_numbers.find(game->id);
    if (number == m_numbers.end()) {
        number = m_numbers.insert(game->id, int(m_games.size()));
        m_games.append(game);
    } else {
        m_games[*number] = game;
    }
    return QStringLiteral("image://cover/%1/%2").arg(m_generation).arg(*number);
}

std::optional<CoverStore::Source> CoverStore::source(const QString &address) const {
    const qsizetype slash = address.indexOf(QLatin1Char('/'));
    const QMutexLocker lock(&m_mutex);
    const int number = QStringView(address).mid(slash + 1).toInt();
    if (QStringView(address).left(slash).toInt() != m_generation || number < 0 || number >= m_games.size())
        return std::nullopt;
    return Source{m_games[number], m_collection};
}

} // namespace ludarium
