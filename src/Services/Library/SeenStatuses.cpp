#include "Services/Library/SeenStatuses.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Models/RecordEncoder.h"
#include "Services/Library/CacheFiles.h"

#include <QFile>
#include <QFileInfo>
#include <simdjson.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxFile = 64LL << 20;

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

/// The document in a file; throws simdjson_error.
simdjson::dom::element parsed(simdjson::dom::parser &parser, const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxFile)
        throw simdjson::simdjson_error(simdjson::IO_ERROR);
    const QByteArray bytes = file.readAll();
    return parser.parse(bytes.constData(), size_t(bytes.size()));
}

void saveFile(const QString &path, const QByteArray &bytes) {
    if (const QString problem = writeAtomically(path, bytes, true); !problem.isEmpty())
        Log::warning(u"⚠️ Failed to save %1: %2"_s.arg(path, problem));
}

} // namespace

GameStatus SeenStatuses::of(const QString &id) const {
    GameStatus status;
    status.isInstalled = installed.contains(id);
    status.isCompressed = !status.isInstalled && compressed.contains(id);
    if (const auto size = downloadable.constFind(id);
        !status.isInstalled && !status.isCompressed && size != downloadable.cend()) {
        status.isDownloadable = true;
        status.downloadSize = *size;
    }
    return status;
}

void SeenStatuses::set(const QString &id, const GameStatus &status) {
    status.isInstalled ? void(installed.insert(id)) : void(installed.remove(id));
    status.isCompressed ? void(compressed.insert(id)) : void(compressed.remove(id));
    status.isDownloadable ? void(downloadable.insert(id, status.downloadSize)) : void(downloadable.remove(id));
}

SeenStatuses SeenStatuses::of(const GameList &games, double time) {
    SeenStatuses statuses;
    statuses.time = time;
    for (const GamePtr &game : games)
        if (game->isInstalled || game->isCompressed || game->isDownloadable)
            statuses.set(game->id, GameStatus::of(*game));
    return statuses;
}

SeenStatuses SeenStatuses::load(const CacheFiles &files) {
    SeenStatuses statuses;
    const auto installed = loadIds(files.installedIds());
    const auto compressed = loadIds(files.compressedIds());
    statuses.found = installed && compressed;
    statuses.installed = installed.value_or(QSet<QString>());
    statuses.compressed = compressed.value_or(QSet<QString>());
    if (!QFileInfo::exists(files.downloadable()))
        return statuses;
    try {
        simdjson::dom::parser parser;
        const simdjson::dom::object document = parsed(parser, files.downloadable()).get_object();
        statuses.time = document["time"].get_double();
        const simdjson::dom::object games = document["games"].get_object();
        statuses.downloadable.reserve(qsizetype(games.size()));
        for (const simdjson::dom::key_value_pair game : games)
            statuses.downloadable.insert(textOf(game.key), textOf(game.value.get_string()));
    } catch (const simdjson::simdjson_error &error) {
        Log::warning(u"⚠️ %1 is no list of games: %2"_s.arg(files.downloadable(), QString::fromUtf8(error.what())));
        statuses.downloadable.clear();
        statuses.time = 0;
    }
    return statuses;
}

bool SeenStatuses::saveUnlessOlder(const CacheFiles &files, double now) const {
    const double before = load(files).time;
    if (before > time && before <= now)
        return false;
    save(files);
    return true;
}

void SeenStatuses::save(const CacheFiles &files) const {
    saveIds(files.installedIds(), installed);
    saveIds(files.compressedIds(), compressed);
    QByteArray out = "{\"time\":" + QByteArray::number(time, 'f', 3) + ",\"games\":{";
    bool first = true;
    for (auto it = downloadable.cbegin(); it != downloadable.cend(); ++it) {
        if (!std::exchange(first, false))
            out += ',';
        appendJsonText(out, it.key());
        out += ':';
        appendJsonText(out, it.value());
    }
    saveFile(files.downloadable(), out + "}}");
}

std::optional<QSet<QString>> SeenStatuses::loadIds(const QString &path) {
    if (!QFileInfo::exists(path))
        return std::nullopt;
    try {
        simdjson::dom::parser parser;
        const simdjson::dom::array array = parsed(parser, path).get_array();
        QSet<QString> ids;
        ids.reserve(qsizetype(array.size()));
        for (const simdjson::dom::element id : array)
            ids.insert(textOf(id.get_string()));
        return ids;
    } catch (const simdjson::simdjson_error &) {
        Log::warning(u"⚠️ %1 is no list of game ids; the next look at the disk makes it anew"_s.arg(path));
        return std::nullopt;
    }
}

void SeenStatuses::saveIds(const QString &path, const QSet<QString> &ids) {
    QByteArray out = "[";
    for (const QString &id : ids) {
        if (out.size() > 1)
            out += ',';
        appendJsonText(out, id);
    }
    saveFile(path, out + ']');
}

} // namespace ludarium
