#include "maker/LaunchBoxXml.h"

#include "maker/Dice.h"

#include <QUuid>
#include <QXmlStreamWriter>

namespace ludarium::demo {

namespace {

class Writer {
  public:
    Writer() : m_xml(&m_bytes) {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(2);
        m_xml.writeStartDocument(QStringLiteral("1.0"), true);
        m_xml.writeStartElement(QStringLiteral("LaunchBox"));
    }
    void begin(const char *name) { m_xml.writeStartElement(QLatin1StringView(name)); }
    void end() { m_xml.writeEndElement(); }
    void put(const char *name, const QString &text = {}) {
        if (text.isEmpty())
            m_xml.writeEmptyElement(QLatin1StringView(name));
        else
            m_xml.writeTextElement(QLatin1StringView(name), text);
    }
    void put(const char *name, bool value) { put(name, value ? QStringLiteral("true") : QStringLiteral("false")); }
    void put(const char *name, int value) { put(name, QString::number(value)); }
    QByteArray finish() {
        m_xml.writeEndDocument();
        return m_bytes;
    }

  private:
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

QString launchBoxDate(const QDate &date) {
    return date.toString(Qt::ISODate) + QStringLiteral("T03:00:00-05:00");
}

// Seven digits of a second and a zone, as LaunchBox writes the moment at which a game was added.
QString addedAt(const DemoGame &game) {
    Dice dice(game.id());
    return QStringLiteral("2024-%1-%2T%3:%4:%5.%6-05:00")
        .arg(1 + dice.below(12), 2, 10, QLatin1Char('0'))
        .arg(1 + dice.below(28), 2, 10, QLatin1Char('0'))
        .arg(8 + dice.below(14), 2, 10, QLatin1Char('0'))
        .arg(dice.below(60), 2, 10, QLatin1Char('0'))
        .arg(dice.below(60), 2, 10, QLatin1Char('0'))
        .arg(dice.below(10000000), 7, 10, QLatin1Char('0'));
}

void putGame(Writer &xml, const DemoGame &game, const GamePaths &paths) {
    xml.begin("Game");
    xml.put("ApplicationPath", paths.application);
    xml.put("CommandLine");
    xml.put("Completed", game.completed);
    xml.put("ConfigurationCommandLine");
    xml.put("ConfigurationPath", paths.configuration);
    xml.put("DateAdded", addedAt(game));
    xml.put("DateModified", addedAt(game));
    xml.put("Developer", game.developer);
    xml.put("Emulator");
    xml.put("Favorite", false);
    xml.put("ID", game.id());
    xml.put("ManualPath", paths.manual);
    xml.put("MusicPath", paths.music);
    xml.put("VideoPath");
    xml.put("Notes", game.notes);
    if (!game.overview.isEmpty())
        xml.put("Overview", game.overview);
    xml.put("Platform", game.platform);
    xml.put("Publisher", game.publisher);
    xml.put("Rating", game.rating);
    xml.put("ReleaseDate", launchBoxDate(game.date));
    xml.put("RootFolder", paths.rootFolder);
    xml.put("SortTitle", game.sortTitle);
    xml.put("Source", QStringLiteral("Ludarium Demo"));
    xml.put("CommunityStarRating", QString::number(game.stars));
    xml.put("CommunityStarRatingTotalVotes", game.votes);
    xml.put("DatabaseID", game.databaseId());
    xml.put("WikipediaURL",
            game.wikipedia ? QStringLiteral("https://en.wikipedia.org/wiki/Fictional_video_game") : QString());
    xml.put("VideoUrl");
    xml.put("Title", game.title);
    xml.put("UseDosBox", game.isDos());
    xml.put("UseScummVM", game.isScummVM());
    xml.put("Version");
    xml.put("Series", game.series);
    xml.put("PlayMode", game.playMode);
    xml.put("MaxPlayers", game.players);
    xml.put("Cooperative", game.cooperative);
    xml.put("Region", game.developer.startsWith(QStringLiteral("Studio K")) ? QStringLiteral("Japan") : QString());
    xml.put("Portable", false);
    xml.put("Hide", game.hide);
    xml.put("Broken", game.broken);
    xml.put("Genre", game.genre);
    xml.end();
}

} // namespace

QByteArray platformsXml(const QStringList &platforms) {
    struct Description {
        const char *category, *developer, *manufacturer, *date, *notes;
    };
    static const QHash<QString, Description> known{
        {QStringLiteral("MS-DOS"),
         {"Computer", "Microsoft", "IBM and many others", "1981-08-12",
          "Beige, loud, and home to most of this shelf."}},
        {QStringLiteral("ScummVM"), {"Engine", "The ScummVM Team", "", "2001-10-09", "Stories with a pointer."}},
        {QStringLiteral("Nintendo Game Boy"),
         {"Handhelds", "Nintendo", "Nintendo", "1989-04-21", "Four shades and four batteries."}},
        {QStringLiteral("Nintendo Entertainment System"),
         {"Consoles", "Nintendo", "Nintendo", "1985-10-18", "The grey box below the television."}}};
    Writer xml;
    for (const QString &name : platforms) {
        const Description description = known.value(name, Description{"", "", "", "1980-01-01", ""});
        xml.begin("Platform");
        xml.put("Category", QString::fromLatin1(description.category));
        xml.put("Name", name);
        xml.put("ReleaseDate", QString::fromLatin1(description.date));
        xml.put("Developer", QString::fromLatin1(description.developer));
        xml.put("Manufacturer", QString::fromLatin1(description.manufacturer));
        xml.put("Folder", QStringLiteral("Games\\") + name);
        xml.put("Notes", QString::fromLatin1(description.notes));
        xml.put("ScrapeAs", name);
        xml.put("HideInBigBox", false);
        xml.end();
    }
    return xml.finish();
}

QByteArray gamesXml(const QList<DemoGame> &games, const QList<GamePaths> &paths) {
    Writer xml;
    for (int i = 0; i < games.size(); ++i)
        putGame(xml, games[i], paths[i]);
    for (int i = 0; i < games.size(); ++i) {
        int priority = 0;
        for (const auto &[name, path] : paths[i].additional) {
            xml.begin("AdditionalApplication");
            xml.put("Id", QUuid::createUuidV5(QUuid(games[i].id()), name).toString(QUuid::WithoutBraces));
            xml.put("PlayCount", 0);
            xml.put("GameID", games[i].id());
            xml.put("ApplicationPath", path);
            xml.put("AutoRunAfter", false);
            xml.put("AutoRunBefore", false);
            xml.put("CommandLine");
            xml.put("Name", name);
            xml.put("WaitForExit", false);
            xml.put("Priority", priority++);
            xml.put("SideA", false);
            xml.put("SideB", false);
            xml.end();
        }
    }
    return xml.finish();
}

QByteArray playlistXml(const DemoPlaylist &playlist, const QList<DemoGame> &games) {
    Writer xml;
    xml.begin("Playlist");
    xml.put("PlaylistId", playlist.id());
    xml.put("Name", playlist.name);
    xml.put("NestedName", playlist.name);
    xml.put("SortBy", QStringLiteral("Default"));
    xml.put("Notes", playlist.notes);
    xml.put("IncludeWithPlatforms", false);
    xml.put("AutoPopulate", playlist.dynamic());
    xml.put("IsAutogenerated", false);
    xml.put("HideInBigBox", false);
    xml.end();
    int order = 0;
    for (const QString &wanted : playlist.games) {
        const auto game = std::find_if(games.begin(), games.end(), [&wanted](const DemoGame &candidate) {
            return candidate.platform + u'|' + candidate.title == wanted;
        });
        if (game == games.end())
            throw std::runtime_error(qPrintable(QStringLiteral("no such game for a playlist: ") + wanted));
        xml.begin("PlaylistGame");
        xml.put("GameId", game->id());
        xml.put("LaunchBoxDbId", game->databaseId());
        xml.put("GameTitle", game->title);
        xml.put("GamePlatform", game->platform);
        xml.put("ManualOrder", order++);
        xml.end();
    }
    for (const QStringList &filter : playlist.filters) {
        xml.begin("PlaylistFilter");
        xml.put("Value", filter[2]);
        xml.put("FieldKey", filter[0]);
        xml.put("ComparisonTypeKey", filter[1]);
        xml.end();
    }
    return xml.finish();
}

} // namespace ludarium::demo
