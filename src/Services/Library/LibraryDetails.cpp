#include "Services/Library/LibraryDetails.h"

#include "Host/ShareOut.h"
#include "Services/Library/LoadedRecords.h"

#include <QtEndian>
#include <atomic>
#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace ludarium {

namespace {

constexpr std::uint32_t magic = 0x4458554C; // "LUXD"
constexpr std::uint32_t version = 1;
constexpr qsizetype headSize = 16; ///< magic, version, checksum
/// Games that one thread completes at a time.
constexpr qsizetype runSize = 2'000;
constexpr std::uint32_t absentText = 0xFFFFFFFF;
constexpr qint64 absentDay = std::numeric_limits<qint64>::min();

enum Has : std::uint32_t {
    hasReleaseDate = 1u << 0,
    hasDateAdded = 1u << 1,
    hasMaxPlayers = 1u << 2,
    hasRating = 1u << 3,
    hasVotes = 1u << 4,
    hasEmulator = 1u << 5,
    hasApplications = 1u << 6,
    firstFlag = 1u << 8, ///< two bits each from here: there is a value, and it is true
};

/// FNV-1a over words of eight bytes: it finds damage, not malice.
std::uint64_t checksum(const char *bytes, qsizetype size) {
    std::uint64_t sum = 0xCBF29CE484222325u;
    for (; size >= 8; bytes += 8, size -= 8)
        sum = (sum ^ qFromLittleEndian<std::uint64_t>(bytes)) * 0x100000001B3u;
    for (; size > 0; ++bytes, --size)
        sum = (sum ^ std::uint8_t(*bytes)) * 0x100000001B3u;
    return sum;
}

std::uint64_t fingerprint(const GameList &games) {
    std::uint64_t sum = 0xCBF29CE484222325u;
    for (const GamePtr &game : games)
        for (const QChar c : game->id)
            sum = (sum ^ c.unicode()) * 0x100000001B3u;
    return sum;
}

std::uint32_t flagBits(std::optional<bool> flag, int place) {
    return flag ? (*flag ? 3u : 1u) << (8 + 2 * place) : 0;
}
std::optional<bool> flagOf(std::uint32_t bits, int place) {
    const std::uint32_t value = bits >> (8 + 2 * place) & 3;
    return value == 0 ? std::nullopt : std::optional(value == 3);
}

class Writer {
  public:
    template<typename Number>
    void number(Number value) {
        const Number little = qToLittleEndian(value);
        m_bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
    }
    void real(double value) { number(std::bit_cast<std::uint64_t>(value)); }
    void text(const QString &value) {
        if (value.isNull())
            return number(absentText);
        const QByteArray utf8 = value.toUtf8();
        number(std::uint32_t(utf8.size()));
        m_bytes += utf8;
    }
    QByteArray &bytes() { return m_bytes; }

  private:
    QByteArray m_bytes;
};

struct Damaged : std::runtime_error {
    Damaged() : std::runtime_error("the file is damaged") {}
};

class Reader {
  public:
    Reader(const char *at, const char *end) : m_at(at), m_end(end) {}

    template<typename Number>
    Number number() {
        return qFromLittleEndian<Number>(take(sizeof(Number)));
    }
    double real() { return std::bit_cast<double>(number<std::uint64_t>()); }
    QString text() {
        const auto size = number<std::uint32_t>();
        if (size == absentText)
            return {};
        return size == 0 ? QString(QLatin1String("")) : QString::fromUtf8(take(size), qsizetype(size));
    }
    const char *at() const { return m_at; }

  private:
    const char *take(size_t size) {
        if (size > size_t(m_end - m_at))
            throw Damaged();
        return std::exchange(m_at, m_at + size);
    }
    const char *m_at;
    const char *m_end;
};

void write(Writer &out, const AdditionalApplication &application) {
    out.number(flagBits(application.autoRunBefore, 0) | flagBits(application.autoRunAfter, 1) |
               flagBits(application.waitForExit, 2) | flagBits(application.sideA, 3) | flagBits(application.sideB, 4) |
               (application.priority ? 1u : 0u));
    out.text(application.id);
    out.text(application.name);
    out.text(application.applicationPath);
    out.text(application.commandLine);
    out.number(qint32(application.playCount));
    if (application.priority)
        out.number(qint32(*application.priority));
}

AdditionalApplication readApplication(Reader &in, const Game &game) {
    AdditionalApplication application;
    const auto bits = in.number<std::uint32_t>();
    application.id = in.text();
    application.gameId = game.id;
    application.name = in.text();
    application.applicationPath = in.text();
    application.commandLine = in.text();
    application.autoRunBefore = flagOf(bits, 0).value_or(false);
    application.autoRunAfter = flagOf(bits, 1).value_or(false);
    application.waitForExit = flagOf(bits, 2).value_or(false);
    application.sideA = flagOf(bits, 3);
    application.sideB = flagOf(bits, 4);
    application.playCount = in.number<qint32>();
    if ((bits & 1) != 0)
        application.priority = in.number<qint32>();
    return application;
}

void write(Writer &out, const Game &game) {
    const auto has = [](bool value, Has bit) { return value ? std::uint32_t(bit) : 0u; };
    out.number(
        has(game.releaseDate.has_value(), hasReleaseDate) | has(game.dateAdded.has_value(), hasDateAdded) |
        has(game.maxPlayers.has_value(), hasMaxPlayers) | has(game.communityRating.has_value(), hasRating) |
        has(game.communityRatingCount.has_value(), hasVotes) | has(game.requiredEmulatorType.has_value(), hasEmulator) |
        has(!game.additionalApplications.isEmpty(), hasApplications) | flagBits(game.cooperative, 0) |
        flagBits(game.completed, 1) | flagBits(game.hide, 2) | flagBits(game.broken, 3) | flagBits(game.portable, 4));
    if (game.releaseDate)
        out.number(qint64(game.releaseDate->toMSecsSinceEpoch()));
    if (game.dateAdded)
        out.number(qint64(game.dateAdded->toMSecsSinceEpoch()));
    if (game.maxPlayers)
        out.number(qint32(*game.maxPlayers));
    if (game.communityRating)
        out.real(*game.communityRating);
    if (game.communityRatingCount)
        out.number(qint32(*game.communityRatingCount));
    if (game.requiredEmulatorType) {
        out.text(emulatorTypeText(*game.requiredEmulatorType));
        out.text(game.requiredEmulatorVersion);
    }
    if (!game.additionalApplications.isEmpty()) {
        out.number(std::uint32_t(game.additionalApplications.size()));
        for (const AdditionalApplication &application : game.additionalApplications)
            write(out, application);
    }
}

void complete(Game &game, Reader &in) {
    const auto bits = in.number<std::uint32_t>();
    const auto moment = [&] { return QDateTime::fromMSecsSinceEpoch(in.number<qint64>(), Qt::UTC); };
    if ((bits & hasReleaseDate) != 0)
        game.releaseDate = moment();
    if ((bits & hasDateAdded) != 0)
        game.dateAdded = moment();
    if ((bits & hasMaxPlayers) != 0)
        game.maxPlayers = in.number<qint32>();
    if ((bits & hasRating) != 0)
        game.communityRating = in.real();
    if ((bits & hasVotes) != 0)
        game.communityRatingCount = in.number<qint32>();
    if ((bits & hasEmulator) != 0) {
        game.requiredEmulatorType = emulatorTypeFromText(in.text());
        game.requiredEmulatorVersion = in.text();
    }
    game.cooperative = flagOf(bits, 0);
    game.completed = flagOf(bits, 1);
    game.hide = flagOf(bits, 2);
    game.broken = flagOf(bits, 3);
    game.portable = flagOf(bits, 4);
    if ((bits & hasApplications) != 0)
        for (auto left = in.number<std::uint32_t>(); left > 0; --left)
            game.additionalApplications.append(readApplication(in, game));
}

/// As the cache writes its date.
qint64 inMilliseconds(double cacheDate) {
    return std::isfinite(cacheDate) ? std::llround(cacheDate * 1000) : 0;
}

} // namespace

QByteArray LibraryDetails::encode(const CachedCollectionData &data) {
    Writer out;
    out.number(magic);
    out.number(version);
    out.number(std::uint64_t(0));
    out.text(data.collectionPath);
    out.number(inMilliseconds(data.cacheDate));
    out.number(std::uint64_t(data.games.size()));
    out.number(fingerprint(data.games));
    out.number(std::uint32_t(data.platforms.size()));
    for (const Platform &platform : data.platforms) {
        out.number(platform.releaseDate ? qint64(platform.releaseDate->toJulianDay()) : absentDay);
        out.text(platform.emulatorPath);
        out.text(platform.defaultEmulator);
    }
    // Places for the beginnings of the runs, counted from behind them.
    const qsizetype runs = (data.games.size() + runSize - 1) / runSize;
    const qsizetype table = out.bytes().size();
    for (qsizetype i = 0; i < runs; ++i)
        out.number(std::uint64_t(0));
    const qsizetype begin = out.bytes().size();
    for (qsizetype i = 0; i < data.games.size(); ++i) {
        if (i % runSize == 0)
            qToLittleEndian(std::uint64_t(out.bytes().size() - begin), out.bytes().data() + table + i / runSize * 8);
        write(out, *data.games[i]);
    }
    QByteArray bytes = std::move(out.bytes());
    qToLittleEndian(checksum(bytes.constData() + headSize, bytes.size() - headSize), bytes.data() + 8);
    return bytes;
}

bool LibraryDetails::apply(const QByteArray &bytes, CachedCollectionData &data) {
    if (bytes.size() < headSize)
        return false;
    const char *const end = bytes.constData() + bytes.size();
    Reader in(bytes.constData(), end);
    try {
        if (in.number<std::uint32_t>() != magic || in.number<std::uint32_t>() != version ||
            in.number<std::uint64_t>() != checksum(bytes.constData() + headSize, bytes.size() - headSize))
            return false;
        if (in.text() != data.collectionPath || in.number<qint64>() != inMilliseconds(data.cacheDate) ||
            in.number<std::uint64_t>() != std::uint64_t(data.games.size()) ||
            in.number<std::uint64_t>() != fingerprint(data.games) ||
            in.number<std::uint32_t>() != std::uint32_t(data.platforms.size()))
            return false;
        // From here on the checksum says that it is what `encode` wrote.
        for (Platform &platform : data.platforms) {
            if (const auto day = in.number<qint64>(); day != absentDay)
                platform.releaseDate = QDate::fromJulianDay(day);
            platform.emulatorPath = in.text();
            platform.defaultEmulator = in.text();
        }
        const qsizetype runs = (data.games.size() + runSize - 1) / runSize;
        std::vector<std::uint64_t> begins;
        for (qsizetype i = 0; i < runs; ++i)
            begins.push_back(in.number<std::uint64_t>());
        const char *const games = in.at();
        for (const std::uint64_t begin : begins)
            if (begin > size_t(end - games))
                throw Damaged();
        GamePtr *const records = data.games.data();
        std::atomic<bool> damaged = false;
        const auto completeRun = [&](size_t run) {
            try {
                Reader from(games + begins[run], end);
                const qsizetype last = std::min((qsizetype(run) + 1) * runSize, data.games.size());
                for (qsizetype i = qsizetype(run) * runSize; i < last; ++i)
                    complete(changeable(records[i]), from);
            } catch (const Damaged &) {
                damaged = true;
            }
        };
        shareOut(size_t(runs), completeRun);
        return !damaged;
    } catch (const Damaged &) {
        return false;
    }
}

} // namespace ludarium
