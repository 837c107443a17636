// Any bytes as a cache file: nothing may crash, whether it is read whole or in pieces; and what could be read, written
// as the cache writes it, gives the same when it is read in pieces.

#include "Models/RecordEncoder.h"
#include "Services/Library/CachedCollectionReader.h"

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

using namespace ludarium;

namespace {

constexpr qint64 whole = 1LL << 30;

void check(bool condition) {
    if (!condition)
        std::abort();
}

template<typename List>
void appendList(QByteArray &out, const char *key, const List &records) {
    out += QByteArray(",\"") + key + "\":[";
    for (qsizetype i = 0; i < records.size(); ++i) {
        if (i > 0)
            out += ',';
        if constexpr (std::is_same_v<List, GameList>)
            appendJson(out, *records[i]);
        else
            appendJson(out, records[i]);
    }
    out += ']';
}

QByteArray written(const CachedCollectionData &data) {
    QByteArray out = "{\"collectionPath\":";
    appendJsonText(out, data.collectionPath);
    out += ",\"cacheDate\":0.0";
    appendList(out, "platforms", data.platforms);
    appendList(out, "playlists", data.playlists);
    appendList(out, "games", data.games);
    return out + '}';
}

std::optional<CachedCollectionData> read(const QByteArray &bytes, qint64 pieceSize) {
    static const int descriptor = ::memfd_create("fuzz", MFD_CLOEXEC);
    check(::ftruncate(descriptor, 0) == 0 &&
          ::pwrite(descriptor, bytes.constData(), size_t(bytes.size()), 0) == ssize_t(bytes.size()));
    try {
        CachedCollectionReader reader(QStringLiteral("/proc/self/fd/%1").arg(descriptor), pieceSize);
        CachedCollectionData data = reader.readAllButGames();
        data.games = reader.readGames();
        return data;
    } catch (const CacheReadError &) {
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    read(bytes, 64);
    if (const auto readWhole = read(bytes, whole)) {
        const QByteArray text = written(*readWhole);
        const auto again = read(text, 64);
        check(again && written(*again) == text);
    }
    return 0;
}
