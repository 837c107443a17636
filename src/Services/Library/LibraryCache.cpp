#include "Services/Library/LibraryCache.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Models/RecordEncoder.h"
#include "Services/Library/CachedCollectionReader.h"
#include "Services/Library/LibraryDetails.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxAgeDays = 29;
constexpr qint64 maxDetails = 1LL << 30;

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

/// Whose state a cache file holds, and of when.
struct Stamp {
    QString collection;
    double date = 0;
};

/// Of a file that `save` wrote, from its first bytes; none for any other.
std::optional<Stamp> stampOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray head = file.read(64 << 10);
    const qsizetype end = head.indexOf(",\"platforms\":");
    if (!head.startsWith("{\"collectionPath\":") || end < 0)
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(head.first(end) + '}').object();
    const QString collection = object.value("collectionPath"_L1).toString();
    return collection.isEmpty() ? std::nullopt
                                : std::optional(Stamp{collection, object.value("cacheDate"_L1).toDouble()});
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
        QFile details(m_files.details());
        if (!details.open(QIODevice::ReadOnly) || details.size() > maxDetails ||
            !LibraryDetails::apply(details.readAll(), data))
            Log::warning(
                u"⚠️ There are no details of the games that fit the cache; the next full load brings them"_s);
        Log::info(QStringLiteral("   ✅ Cache valid: %1 games, %2 days old").arg(data.games.size()).arg(days));
    } catch (const std::exception &error) {
        Log::warning(QStringLiteral("   ❌ Failed to load cache: %1").arg(QString::fromUtf8(error.what())));
        return std::nullopt;
    }
    Log::info(QStringLiteral("⏱️ Cache read and decoded in %1ms").arg(timer.elapsed()));
    return data;
}

void LibraryCache::settle(const QString &collection) const {
    const CacheFiles::Lock lock(m_files);
    m_files.prepareFolder();
    const std::optional<Stamp> plain = stampOf(m_files.plain().cache());
    if (!m_files.arePlain()) {
        if (plain && plain->collection == collection && !QFileInfo::exists(m_files.cache()))
            m_files.plain().moveTo(m_files);
        m_files.noteUse();
        return;
    }
    if (plain && plain->collection == collection)
        return;
    const CacheFiles mine = m_files.named(collection);
    const bool hasOwn = QFileInfo::exists(mine.cache());
    if (plain)
        m_files.moveTo(m_files.named(plain->collection));
    if (hasOwn)
        mine.moveTo(m_files);
    m_files.noteUse();
}

void LibraryCache::save(const CachedCollectionData &data) const {
    const CacheFiles::Lock lock(m_files);
    m_files.prepareFolder();
    if (const std::optional<Stamp> before = stampOf(cacheFile())) {
        if (before->collection != data.collectionPath)
            m_files.moveTo(m_files.named(before->collection));
        else if (before->date > data.cacheDate && before->date <= toCacheDate(QDateTime::currentDateTimeUtc())) {
            Log::info(u"The cache holds a later state of the collection; it stays"_s);
            return;
        }
    }
    saveHeld(data);
    m_files.noteUse();
}

void LibraryCache::saveHeld(const CachedCollectionData &data) const {
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
    // The details first: of a save that ends between the two, neither fits the other.
    QString problem = writeAtomically(m_files.details(), LibraryDetails::encode(data), true);
    if (problem.isEmpty())
        problem = writeAtomically(cacheFile(), out, true);
    if (!problem.isEmpty())
        Log::error(QStringLiteral("❌ Failed to save cache: %1").arg(problem));
    else
        Log::info(QStringLiteral("⏱️ Cache of %1 games saved in %2ms").arg(data.games.size()).arg(timer.elapsed()));
}

void LibraryCache::clear() const {
    const CacheFiles::Lock lock(m_files);
    QFile file(cacheFile());
    if (file.remove())
        Log::info(QStringLiteral("✅ Cache cleared: %1").arg(cacheFile()));
    else
        Log::warning(QStringLiteral("⚠️ Cache clear failed (may not exist): %1").arg(file.errorString()));
    QFile::remove(m_files.details());
}

} // namespace ludarium
