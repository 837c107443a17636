#include "Models/RecordEncoder.h"

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

namespace ludarium {

namespace {

/// Writes one object key by key.
class ObjectWriter {
  public:
    explicit ObjectWriter(QByteArray &out) : m_out(out) { m_out += '{'; }
    ~ObjectWriter() { m_out += '}'; }
    ObjectWriter(const ObjectWriter &) = delete;
    ObjectWriter &operator=(const ObjectWriter &) = delete;

    template<typename Text>
    void text(const char *key, const Text &value) {
        name(key);
        appendJsonText(m_out, value);
    }
    template<typename Text>
    void presentText(const char *key, const Text &value) {
        if (!value.isNull())
            text(key, value);
    }
    void textOrNull(const char *key, const QString &value) {
        name(key);
        value.isNull() ? void(m_out += "null") : appendJsonText(m_out, value);
    }
    void numberOrNull(const char *key, std::optional<int> value) {
        name(key);
        m_out += value ? QByteArray::number(*value) : QByteArrayLiteral("null");
    }
    void texts(const char *key, const QStringList &values) {
        list(key, values, [this](const QString &value) { appendJsonText(m_out, value); });
    }
    template<typename List, typename Append>
    void list(const char *key, const List &values, Append append) {
        name(key);
        m_out += '[';
        bool first = true;
        for (const auto &value : values) {
            if (!std::exchange(first, false))
                m_out += ',';
            append(value);
        }
        m_out += ']';
    }

  private:
    void name(const char *key) {
        if (!std::exchange(m_first, false))
            m_out += ',';
        m_out += '"';
        m_out += key;
        m_out += "\":";
    }

    QByteArray &m_out;
    bool m_first = true;
};

void appendJson(QByteArray &out, const PlaylistFilter &filter) {
    ObjectWriter object(out);
    object.presentText("Value", filter.value);
    object.text("FieldKey", filter.fieldKey);
    object.text("ComparisonTypeKey", filter.comparisonType);
}

} // namespace

void appendJson(QByteArray &out, const Game &game) {
    ObjectWriter object(out);
    object.text("ID", game.id);
    object.text("Title", game.title);
    object.presentText("SortTitle", game.sortTitle);
    object.text("Platform", game.platform);
    object.presentText("Developer", game.developer);
    object.presentText("Publisher", game.publisher);
    object.presentText("Genre", game.genre);
    object.presentText("Series", game.series);
    object.presentText("PlayMode", game.playMode);
    object.presentText("Notes", game.notes);
    object.presentText("Overview", game.overview);
    object.presentText("Rating", game.rating);
    object.presentText("ApplicationPath", game.applicationPath);
    object.presentText("ConfigurationPath", game.configurationPath);
    object.presentText("CommandLine", game.commandLine);
    object.presentText("RootFolder", game.rootFolder);
    object.presentText("ManualPath", game.manualPath);
    object.presentText("MusicPath", game.musicPath);
    object.presentText("VideoPath", game.videoPath);
    object.presentText("Source", game.source);
    object.presentText("DatabaseID", game.databaseID);
    object.presentText("WikipediaURL", game.wikipediaURL);
    object.presentText("VideoURL", game.videoURL);
    if (game.releaseYear)
        object.numberOrNull("releaseYear", game.releaseYear);
}

void appendJson(QByteArray &out, const Platform &platform) {
    ObjectWriter object(out);
    object.text("Name", platform.name);
    object.presentText("Category", platform.category);
    object.presentText("Developer", platform.developer);
    object.presentText("Manufacturer", platform.manufacturer);
    object.presentText("Notes", platform.notes);
}

void appendJson(QByteArray &out, const Playlist &playlist) {
    ObjectWriter object(out);
    object.text("PlaylistId", playlist.id);
    object.text("Name", playlist.name);
    object.textOrNull("Notes", playlist.description);
    object.numberOrNull("SortOrder", playlist.sortOrder);
    object.texts("GameId", playlist.gameIds);
    object.texts("NestedPlaylistId", playlist.nestedPlaylistIds);
    object.text("AutoPopulate", playlist.autoPopulate ? QByteArrayLiteral("true") : QByteArrayLiteral("false"));
    object.list("PlaylistFilter", playlist.filters, [&](const PlaylistFilter &filter) { appendJson(out, filter); });
}

void appendJson(QByteArray &out, const PlaylistGame &playlistGame) {
    ObjectWriter object(out);
    object.text("GameId", playlistGame.gameId);
    object.text("PlaylistId", playlistGame.playlistId);
    object.numberOrNull("ManualOrder", playlistGame.order);
}

void appendJson(QByteArray &out, const AdditionalApplication &application) {
    ObjectWriter object(out);
    object.text("Id", application.id);
    object.text("GameID", application.gameId);
    object.text("Name", application.name);
    object.presentText("ApplicationPath", application.applicationPath);
}

void appendJsonText(QByteArray &out, const QByteArray &utf8) {
    static constexpr char hex[] = "0123456789abcdef";
    out += '"';
    // Runs without anything to escape are the rule: append them whole.
    qsizetype start = 0;
    const auto flush = [&](qsizetype end) { out.append(utf8.constData() + start, end - start); };
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const uchar c = uchar(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        flush(i);
        start = i + 1;
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += "\\u00";
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    flush(utf8.size());
    out += '"';
}

void appendJsonText(QByteArray &out, const QString &text) {
    appendJsonText(out, text.toUtf8());
}

} // namespace ludarium
