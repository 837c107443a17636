#include "Services/Library/CachedCollectionReader.h"

#include "Models/GameDecoder.h"
#include "Models/RecordDecoder.h"
#include "Models/TextPool.h"

#include <QThread>
#include <QtConcurrent/QtConcurrentRun>
#include <numeric>
#include <simdjson.h>
#include <unistd.h>

namespace ludarium {

namespace {

using namespace simdjson;

/// Larger than any library; what is beyond is not a cache that this program wrote.
constexpr qint64 maxCacheFile = 2LL << 30;
/// Start of a game object behind another one. An unescaped quote behind a brace cannot stand inside a text, so this
/// is never found within one.
constexpr std::string_view gameBoundary = "},{\"ID\":\"";
constexpr std::string_view gamesStart = ",\"games\":[";

// The DOM interface is used because it picks the instruction set at run time; a piece's tape is small and reused.

GameList readGameArray(dom::array array, TextPool &pool) {
    static const int yearField = GameDecoder::field("releaseYear");
    GameDecoder decoder(pool);
    GameList games;
    games.reserve(static_cast<qsizetype>(array.size()));
    for (const dom::element element : array) {
        for (const dom::key_value_pair field : dom::object(element.get_object())) {
            const int number = GameDecoder::field(field.key);
            if (number < 0 || field.value.is_null())
                continue;
            if (number == yearField)
                decoder.setReleaseYear(static_cast<int>(int64_t(field.value.get_int64())));
            else
                decoder.set(number, field.value.get_string());
        }
        games.append(decoder.finish());
    }
    return games;
}

/// Text form of a scalar of a platform or playlist; nothing for null, lists and objects.
std::optional<std::string> scalarText(const dom::element &value) {
    switch (value.type()) {
    case dom::element_type::STRING:
        return std::string(std::string_view(value.get_string()));
    case dom::element_type::INT64:
        return std::to_string(int64_t(value.get_int64()));
    case dom::element_type::UINT64:
        return std::to_string(uint64_t(value.get_uint64()));
    case dom::element_type::BOOL:
        return bool(value.get_bool()) ? "true" : "false";
    default:
        return std::nullopt;
    }
}

template<typename Decoder>
void readScalars(dom::object object, Decoder &decoder) {
    for (const dom::key_value_pair field : object)
        if (const auto text = scalarText(field.value))
            decoder.set(field.key, *text);
}

Playlist readPlaylist(dom::object object) {
    PlaylistDecoder decoder;
    QList<PlaylistFilter> filters;
    readScalars(object, decoder);
    for (const dom::key_value_pair field : object) {
        if (!field.value.is_array())
            continue;
        for (const dom::element item : dom::array(field.value.get_array())) {
            if (field.key != "PlaylistFilter") {
                decoder.set(field.key, item.get_string());
                continue;
            }
            PlaylistFilterDecoder filter;
            readScalars(item.get_object(), filter);
            filters.append(filter.finish());
        }
    }
    Playlist playlist = decoder.finish();
    playlist.filters = filters;
    return playlist;
}

/// Fills `data` from a whole document; its games only when `pool` is given.
void readDocument(dom::object document, CachedCollectionData &data, TextPool *pool) {
    const std::string_view path = document["collectionPath"].get_string();
    data.collectionPath = QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
    data.cacheDate = document["cacheDate"].get_double();
    for (const dom::element platform : dom::array(document["platforms"].get_array())) {
        PlatformDecoder decoder;
        readScalars(platform.get_object(), decoder);
        data.platforms.append(decoder.finish());
    }
    for (const dom::element playlist : dom::array(document["playlists"].get_array()))
        data.playlists.append(readPlaylist(playlist.get_object()));
    if (pool)
        data.games = readGameArray(document["games"].get_array(), *pool);
}

} // namespace

CachedCollectionReader::CachedCollectionReader(const QString &file, qint64 pieceSize)
    : m_file(file), m_pieceSize(pieceSize) {
    if (!m_file.open(QIODevice::ReadOnly))
        throw CacheReadError(m_file.errorString().toStdString());
    m_size = m_file.size();
    if (m_size > maxCacheFile)
        throw CacheReadError("the file is too large");
}

QByteArray CachedCollectionReader::readRange(qint64 from, qint64 to, int behind) const {
    QByteArray bytes(to - from + behind, Qt::Uninitialized);
    readInto(bytes.data(), from, to);
    return bytes;
}

void CachedCollectionReader::readInto(char *target, qint64 from, qint64 to) const {
    qint64 done = 0;
    while (done < to - from) {
        const ssize_t got = ::pread(m_file.handle(), target + done, static_cast<size_t>(to - from - done), from + done);
        if (got <= 0)
            throw CacheReadError("the file ended while it was read");
        done += got;
    }
}

bool CachedCollectionReader::locateGames() {
    // The head holds platforms and playlists; look through it in growing pieces.
    for (qint64 head = 64 << 10; m_gamesBegin < 0; head *= 4) {
        const QByteArray bytes = readRange(0, std::min(head, m_size));
        const qsizetype at = bytes.indexOf(QByteArrayView(gamesStart.data(), qsizetype(gamesStart.size())));
        if (at >= 0)
            m_gamesBegin = at + static_cast<qint64>(gamesStart.size());
        else if (head >= m_size)
            return false;
    }
    m_gamesEnd = m_size - 2;
    return m_gamesEnd >= m_gamesBegin && readRange(m_gamesEnd, m_size) == "]}";
}

CachedCollectionData CachedCollectionReader::readAllButGames() {
    CachedCollectionData data;
    dom::parser parser;
    try {
        const bool inOrder = m_size > m_pieceSize && locateGames();
        const qint64 end = inOrder ? m_gamesBegin : m_size;
        QByteArray bytes = readRange(0, end, SIMDJSON_PADDING + 2);
        if (inOrder)
            std::memcpy(bytes.data() + end, "]}", 2);
        else
            m_gamesBegin = -1;
        TextPool pool;
        const size_t length = static_cast<size_t>(end + (inOrder ? 2 : 0));
        readDocument(parser.parse(bytes.constData(), length, false).get_object(), data, inOrder ? nullptr : &pool);
        m_games = std::exchange(data.games, {});
    } catch (const simdjson_error &error) {
        throw CacheReadError(error.what());
    }
    return data;
}

qint64 CachedCollectionReader::nextGameFrom(qint64 offset) const {
    constexpr qint64 window = 16 << 10;
    while (offset < m_gamesEnd) {
        const qint64 end = std::min(offset + window, m_gamesEnd);
        const QByteArray bytes = readRange(offset, end);
        const qsizetype at = bytes.indexOf(QByteArrayView(gameBoundary.data(), qsizetype(gameBoundary.size())));
        if (at >= 0)
            return offset + at + 2;
        if (end == m_gamesEnd)
            break;
        offset = end - static_cast<qint64>(gameBoundary.size());
    }
    return m_gamesEnd;
}

GameList CachedCollectionReader::readGames() {
    if (m_gamesBegin < 0)
        return std::exchange(m_games, {});

    std::vector<qint64> starts{m_gamesBegin};
    while (starts.back() + m_pieceSize < m_gamesEnd) {
        const qint64 start = nextGameFrom(starts.back() + m_pieceSize);
        if (start >= m_gamesEnd)
            break;
        starts.push_back(start);
    }

    TextPool shared;
    std::vector<GameList> lists(starts.size());
    std::vector<QString> problems(starts.size());
    std::atomic<size_t> next{0};
    const auto work = [&] {
        TextPool pool(&shared);
        dom::parser parser;
        std::vector<char> text; // kept from piece to piece: fresh memory costs more than the reading
        for (size_t i = next++; i < starts.size(); i = next++) {
            // A piece ends before the comma that separates it from the next.
            const qint64 end = i + 1 < starts.size() ? starts[i + 1] - 1 : m_gamesEnd;
            try {
                const qint64 length = end - starts[i];
                if (text.size() < size_t(length) + 2 + SIMDJSON_PADDING)
                    text.resize(size_t(length) + 2 + SIMDJSON_PADDING);
                readInto(text.data() + 1, starts[i], end);
                text[0] = '[';
                text[size_t(length) + 1] = ']';
                lists[i] = readGameArray(parser.parse(text.data(), size_t(length) + 2, false).get_array(), pool);
            } catch (const std::exception &error) {
                problems[i] = QString::fromUtf8(error.what());
            }
        }
    };
    QList<QFuture<void>> others;
    for (int i = 1; i < QThread::idealThreadCount(); ++i)
        others.append(QtConcurrent::run(work));
    work();
    for (QFuture<void> &other : others)
        other.waitForFinished();

    GameList games;
    games.reserve(std::accumulate(lists.cbegin(), lists.cend(), qsizetype(0),
                                  [](qsizetype sum, const GameList &list) { return sum + list.size(); }));
    for (size_t i = 0; i < lists.size(); ++i) {
        if (!problems[i].isEmpty())
            throw CacheReadError(problems[i].toStdString());
        games.append(std::move(lists[i]));
    }
    return games;
}

} // namespace ludarium
