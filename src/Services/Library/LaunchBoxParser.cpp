#include "Services/Library/LaunchBoxParser.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Host/ShareOut.h"
#include "Services/Library/CollectionFile.h"
#include "Services/Library/GamesFileReader.h"
#include "Services/Library/PlatformsSink.h"
#include "Services/Library/PlaylistsSink.h"
#include "Services/Library/RepeatedLines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace ludarium {

namespace {

/// A set that shows twice when it is read: its games are also in the files of Windows.
constexpr QLatin1String excludedName("Windows 9x");

QString below(const QString &collection, const char *path) {
    return collection + QLatin1Char('/') + QLatin1String(path);
}

/// A file name without its last extension.
QString baseName(const QString &fileName) {
    return fileName.left(fileName.lastIndexOf(QLatin1Char('.')));
}

/// The XML files of a folder in the order of the file system. Files that macOS leaves beside others on a foreign volume
/// ("._MS-DOS.xml") are no part of the collection.
QStringList xmlFileNames(const QString &folder) {
    const std::optional<QStringList> names = listFolder(folder);
    if (!names) {
        std::error_code reason;
        const std::filesystem::directory_iterator attempt(QFile::encodeName(folder).toStdString(), reason);
        throw ParseError("Could not list " + folder.toStdString() + ": " + reason.message());
    }
    QStringList files;
    for (const QString &name : *names)
        if (name.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive) && !name.startsWith(QLatin1String("._")))
            files.append(name);
    return files;
}

QStringList platformFileNames(const QString &folder) {
    QStringList names = xmlFileNames(folder);
    names.removeIf([](const QString &name) { return baseName(name) == excludedName; });
    return names;
}

QString reasonText(const std::exception &error) {
    const auto *system = dynamic_cast<const std::system_error *>(&error);
    return QString::fromUtf8(system ? system->code().message().c_str() : error.what());
}

/// Reads a document from a file; throws for one that cannot be read or is not well-formed.
void readDocument(const QString &path, XmlRecordSink &sink) {
    const CollectionFile file(path);
    XmlPartSource source(file, {0, file.size(), {}, {}});
    const XmlResult result = readXmlRecords(source, sink);
    if (!result.wellFormed)
        throw std::runtime_error(result.error.toStdString());
}

QList<Platform> readPlatforms(const QString &path) {
    PlatformsSink sink;
    readDocument(path, sink);
    if (sink.undecodable)
        throw std::runtime_error("a Platform element cannot be decoded");
    if (sink.platforms.isEmpty())
        throw std::runtime_error("there is no Platform element");
    return sink.platforms;
}

/// The games files of one place, with what is told about their progress.
class GamesCollector {
  public:
    LaunchBoxParser::Games games;

    void append(GamesFileContent &&content) {
        for (GamePtr &game : content.games)
            games.games.append(std::move(game));
        for (AdditionalApplication &application : content.additionalApplications)
            games.additionalApplications.append(std::move(application));
    }

    /// Games that are hidden go first, so that a hidden game does not take a visible one of the same id with it.
    void dropHiddenAndRepeated() {
        games.games.removeIf([](const GamePtr &game) { return game->hide == true; });

        const qsizetype before = games.games.size();
        QSet<QString> ids;
        ids.reserve(before);
        games.games.removeIf([&](const GamePtr &game) {
            const qsizetype known = ids.size();
            ids.insert(game->id);
            return ids.size() == known;
        });
        if (const qsizetype after = games.games.size(); after != before)
            Log::info(QStringLiteral("🔄 Deduplicated %1 duplicate games (from %2 to %3)")
                          .arg(before - after)
                          .arg(before)
                          .arg(after));
    }
};

/// Where games may be when the usual places hold none. A place that cannot be listed is passed over like a file that
/// cannot be read.
QStringList alternatePaths(const QString &collection) {
    QStringList paths{below(collection, "LaunchBox.xml")};
    const auto addFolder = [&](const char *folder) {
        for (const QString &name : listFolder(below(collection, folder)).value_or(QStringList()))
            if (name.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive) && baseName(name) != excludedName)
                paths.append(below(collection, folder) + QLatin1Char('/') + name);
    };
    addFolder("Data");
    paths.append(below(collection, "Data/Platforms/MS-DOS.xml"));
    addFolder("xml/all");
    paths.removeIf([](const QString &path) { return !QFileInfo::exists(path); });
    return paths;
}

} // namespace

QList<Platform> LaunchBoxParser::parsePlatforms(const QString &collection) const {
    QList<Platform> platforms;
    QString path = below(collection, "Data/Platforms.xml");
    if (!QFileInfo::exists(path))
        path = below(collection, "xml/Platforms.xml");
    if (QFileInfo::exists(path)) {
        try {
            platforms = readPlatforms(path);
            Log::info(QStringLiteral("   Loaded %1 platforms from Platforms.xml").arg(platforms.size()));
        } catch (const std::exception &error) {
            Log::warning(QStringLiteral("Warning: Could not parse Platforms.xml: %1").arg(reasonText(error)));
        }
    }

    QSet<QString> known;
    for (const Platform &platform : platforms)
        known.insert(platform.name);
    for (const char *place : {"Data/Platforms", "xml/all"}) {
        const QString folder = below(collection, place);
        if (!QFileInfo::exists(folder))
            continue;
        for (const QString &fileName : platformFileNames(folder)) {
            const QString name = baseName(fileName);
            if (known.contains(name))
                continue;
            known.insert(name);
            Log::info(QStringLiteral("   Auto-detected new platform: %1").arg(name));
            platforms.append(Platform::named(name, QStringLiteral("Computer")));
        }
    }
    platforms.removeIf([](const Platform &platform) { return platform.name == excludedName; });
    return platforms;
}

LaunchBoxParser::Games LaunchBoxParser::parseGamesWithAdditionalApps(const QString &collection,
                                                                     const ProgressCallback &progress) const {
    const auto tell = [&](const QString &text) {
        if (progress)
            progress(text);
    };

    const QString primary = below(collection, "Data/Platforms");
    const QString lite = below(collection, "xml/all");
    Log::info(QStringLiteral("Looking for games in %1 and %2").arg(primary, lite));

    struct Location {
        QString folder;
        QStringList names;
    };
    QList<Location> locations;
    if (QFileInfo::exists(primary))
        locations.append({primary, platformFileNames(primary)});
    if (QFileInfo::exists(lite)) {
        Log::info(QStringLiteral("✅ Found lite collection XML location: xml/all/"));
        locations.append({lite, platformFileNames(lite)});
    }
    QStringList paths;
    for (const Location &location : locations)
        for (const QString &name : location.names)
            paths.append(location.folder + QLatin1Char('/') + name);
    Log::info(
        QStringLiteral("Found %1 XML files to parse from %2 location(s)").arg(paths.size()).arg(locations.size()));

    GamesCollector collector;
    {
        GamesFileReader reader(paths);
        for (const Location &location : locations) {
            for (qsizetype i = 0; i < location.names.size(); ++i) {
                const QString &name = location.names[i];
                Log::info(QStringLiteral("Parsing file %1/%2: ").arg(i + 1).arg(location.names.size()) + name);
                tell(QStringLiteral("Parsing ") + name +
                     QStringLiteral("... (%1/%2)").arg(i + 1).arg(location.names.size()));
                try {
                    GamesFileContent content = reader.next();
                    Log::info(QStringLiteral("  ✓ Loaded %1 games from ").arg(content.games.size()) + name);
                    collector.append(std::move(content));
                } catch (const std::exception &error) {
                    Log::warning(QStringLiteral("Warning: Could not parse ") + name + QStringLiteral(": ") +
                                 reasonText(error));
                }
            }
        }
    }

    if (collector.games.games.isEmpty()) {
        tell(QStringLiteral("Trying alternate locations..."));
        const QStringList alternates = alternatePaths(collection);
        GamesFileReader reader(alternates);
        for (const QString &path : alternates) {
            try {
                collector.append(reader.next());
            } catch (const std::exception &error) {
                Log::debug(QStringLiteral("Passed over ") + path + QStringLiteral(": ") + reasonText(error));
            }
        }
    }
    collector.dropHiddenAndRepeated();
    return std::move(collector.games);
}

QList<Playlist> LaunchBoxParser::parsePlaylists(const QString &collection) const {
    const QString folder = below(collection, "Data/Playlists");
    if (!QFileInfo::exists(folder))
        return {};
    const QStringList names = xmlFileNames(folder);
    Log::info(QStringLiteral("📋 Found %1 playlist XML files").arg(names.size()));

    struct File {
        PlaylistFileContent content;
        QString problem;
    };
    std::vector<File> files(size_t(names.size()));
    const auto read = [&](size_t i) {
        try {
            PlaylistsSink sink;
            readDocument(folder + QLatin1Char('/') + names[qsizetype(i)], sink);
            files[i].content = sink.takeContent();
        } catch (const std::exception &error) {
            files[i].problem = reasonText(error);
        }
    };
    shareOut(files.size(), read);

    QList<Playlist> playlists;
    QHash<QString, QStringList> gamesOfPlaylist;
    RepeatedLines warnings(LogLevel::Warning);
    for (size_t i = 0; i < files.size(); ++i) {
        if (!files[i].problem.isNull()) {
            Log::warning(QStringLiteral("Warning: Could not parse playlist ") + names[qsizetype(i)] +
                         QStringLiteral(": ") + files[i].problem);
            continue;
        }
        PlaylistFileContent &content = files[i].content;
        for (const QString &warning : std::as_const(content.warnings))
            warnings.add(warning, warning);
        for (auto it = content.emptyLinks.cbegin(); it != content.emptyLinks.cend(); ++it) {
            const QString warning = QStringLiteral("⚠️ PlaylistGame with empty playlistId! Available keys: %1")
                                        .arg(QString::fromUtf8(it.key()));
            for (qsizetype n = 0; n < it.value(); ++n)
                warnings.add(warning, warning);
        }

        // A file describes one playlist: its links and filters are its first playlist's, whatever ids they name.
        if (!content.playlists.isEmpty() && !content.games.isEmpty()) {
            QStringList &ids = gamesOfPlaylist[content.playlists.first().id];
            for (const PlaylistGame &game : content.games)
                ids.append(game.gameId);
        }
        for (Playlist &playlist : content.playlists) {
            playlist.filters = content.filters;
            playlists.append(std::move(playlist));
        }
    }

    Log::info(QStringLiteral("📋 Attaching games to playlists..."));
    RepeatedLines skipped(LogLevel::Info);
    for (Playlist &playlist : playlists) {
        const auto ids = gamesOfPlaylist.constFind(playlist.id);
        const QString line = QStringLiteral("     - Skipping static gameIds (will be filtered later)");
        if (playlist.autoPopulate)
            skipped.add(line, line);
        else if (ids != gamesOfPlaylist.cend())
            playlist.gameIds = *ids;
    }
    if (gamesOfPlaylist.isEmpty())
        Log::warning(QStringLiteral("⚠️ playlistGames dictionary is EMPTY!"));

    std::ranges::stable_sort(playlists, {}, &Playlist::name);
    return playlists;
}

} // namespace ludarium
