#include "Services/Library/LibraryCache.h"

#include "Host/AppLogger.h"
#include "Host/HostPaths.h"
#include "Host/SafeFiles.h"
#include "Models/GameDecoder.h"
#include "Models/RecordEncoder.h"
#include "Services/Library/CachedCollectionReader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace ludarium {

namespace {

constexpr int maxAgeDays = 29;
constexpr qint64 maxIdsFile = 64LL << 20;

const QDateTime &referenceDate() {
    static const QDateTime date(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    return date;
}

/// Whole days from one moment to a later one in the local calendar; 0 when that cannot be told.
qint64 wholeDays(const QDateTime &from, const QDateTime &to) {
    if (!from.isValid() || !to.isValid())
        return 0;
    const QDateTime start = from.toLocalTime();
    const QDateTime end = to.toLocalTime();
    qint64 days = start.daysTo(end);
    if (days > 0 && start.addDays(days) > end)
        --days;
    return days;
}

template<typename List>
void appendList(QByteArray &out, const char *key, const List &values) {
    out += ",\"";
    out += key;
    out += "\":[";
    bool first = true;
    for (const auto &value : values) {
        if (!std::exchange(first, false))
            out += ',';
        if constexpr (std::is_same_v<List, GameList>)
            appendJson(out, *value);
        else
            appendJson(out, value);
    }
    out += ']';
}

} // namespace

LibraryCache::LibraryCache(const HostPaths &paths)
    : m_folder(paths.layout() == HostLayout::MacOS ? QFileInfo(paths.caches()).path() : paths.caches()) {}

QString LibraryCache::cacheFile() const {
    return m_folder + QStringLiteral("/com.ludarium.app.GameLibraryCache.json");
}
QString LibraryCache::installedIdsFile() const {
    return m_folder + QStringLiteral("/com.ludarium.app.installedGameIds.json");
}
QString LibraryCache::compressedIdsFile() const {
    return m_folder + QStringLiteral("/com.ludarium.app.compressedGameIds.json");
}

double LibraryCache::toCacheDate(const QDateTime &time) {
    return static_cast<double>(referenceDate().msecsTo(time)) / 1000.0;
}

QDateTime LibraryCache::fromCacheDate(double date) {
    // Beyond what a calendar can tell there is no age.
    if (!(date > -1e11 && date < 1e11))
        return {};
    return referenceDate().addMSecs(static_cast<qint64>(date * 1000.0));
}

std::optional<CachedCollectionData> LibraryCache::load(const QString &collection, const QDateTime &now) const {
    if (!QFileInfo::exists(cacheFile()))
        return std::nullopt;
    QElapsedTimer timer;
    timer.start();
    CachedCollectionData data;
    try {
        CachedCollectionReader reader(cacheFile());
        data = reader.readAllButGames();
        if (data.collectionPath != collection) {
            Log::info(QStringLiteral("   ❌ Cache path mismatch"));
            return std::nullopt;
        }
        const qint64 days = wholeDays(fromCacheDate(data.cacheDate), now);
        if (days > maxAgeDays) {
            Log::info(QStringLiteral("   ❌ Cache too old (%1 days)").arg(days));
            return std::nullopt;
        }
        data.games = reader.readGames();
        if (data.games.isEmpty()) {
            Log::info(QStringLiteral("   ❌ Cache has 0 games - forcing re-parse"));
            return std::nullopt;
        }
        Log::info(QStringLiteral("   ✅ Cache valid: %1 games, %2 days old").arg(data.games.size()).arg(days));
    } catch (const std::exception &error) {
        Log::warning(QStringLiteral("   ❌ Failed to load cache: %1").arg(QString::fromUtf8(error.what())));
        return std::nullopt;
    }
    Log::info(QStringLiteral("⏱️ Cache read and decoded in %1ms").arg(timer.elapsed()));
    return data;
}

void LibraryCache::save(const CachedCollectionData &data) const {
    QElapsedTimer timer;
    timer.start();
    // What decides whether the cache is used stands first, so that a reader can stop before the games.
    QByteArray out = "{\"collectionPath\":";
    appendJsonText(out, data.collectionPath);
    out += ",\"cacheDate\":" + QByteArray::number(data.cacheDate, 'f', 3);
    appendList(out, "platforms", data.platforms);
    appendList(out, "playlists", data.playlists);
    appendList(out, "games", data.games);
    out += '}';
    QDir().mkpath(m_folder);
    if (const QString problem = writeAtomically(cacheFile(), out); !problem.isEmpty())
        Log::error(QStringLiteral("❌ Failed to save cache: %1").arg(problem));
    else
        Log::info(QStringLiteral("⏱️ Cache of %1 games saved in %2ms").arg(data.games.size()).arg(timer.elapsed()));
}

void LibraryCache::clear() const {
    QFile file(cacheFile());
    if (file.remove())
        Log::info(QStringLiteral("✅ Cache cleared: %1").arg(cacheFile()));
    else
        Log::warning(QStringLiteral("⚠️ Cache clear failed (may not exist): %1").arg(file.errorString()));
}

std::optional<QSet<QString>> LibraryCache::loadIds(const QString &path) {
    if (!QFileInfo::exists(path))
        return std::nullopt;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly) && file.size() <= maxIdsFile) {
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
        const QJsonArray array = document.array();
        if (document.isArray() &&
            std::all_of(array.begin(), array.end(), [](const QJsonValue &value) { return value.isString(); })) {
            QSet<QString> ids;
            for (const QJsonValue &value : array)
                ids.insert(value.toString());
            return ids;
        }
    }
    Log::warning(QStringLiteral("⚠️ %1 is no list of game ids; the next look at the disk makes it anew").arg(path));
    return std::nullopt;
}

void LibraryCache::saveIds(const QString &path, const QSet<QString> &ids) {
    QByteArray out = "[";
    for (const QString &id : ids) {
        if (out.size() > 1)
            out += ',';
        appendJsonText(out, id);
    }
    out += ']';
    QDir().mkpath(QFileInfo(path).path());
    if (const QString problem = writeAtomically(path, out); !problem.isEmpty())
        Log::warning(QStringLiteral("⚠️ Failed to save %1: %2").arg(path, problem));
}

} // namespace ludarium
