#include "support/CollectionGenerator.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <array>
#include <initializer_list>
#include <random>
#include <span>
#include <stdexcept>
#include <string_view>

namespace ludarium {

namespace {

/// A generator of numbers whose results do not depend on the standard library.
class Dice {
  public:
    explicit Dice(uint64_t seed) : m_engine(seed) {}
    uint64_t below(uint64_t limit) { return m_engine() % limit; }
    int between(int low, int high) { return low + int(below(uint64_t(high - low + 1))); }
    bool chance(int percent) { return below(100) < uint64_t(percent); }
    template<typename List>
    auto of(const List &list) {
        return list[below(std::size(list))];
    }
    /// The low numbers come often, the high ones rarely, as developers do.
    uint64_t skewed(uint64_t limit) { return below(below(limit) + 1); }
    QByteArray hex(int digits) {
        QByteArray text;
        while (text.size() < digits)
            text += "0123456789abcdef"[below(16)];
        return text;
    }

  private:
    std::mt19937_64 m_engine;
};

using namespace std::string_view_literals;

constexpr std::array words{
    "the"sv,     "of"sv,     "and"sv,       "player"sv, "game"sv,     "a"sv,      "to"sv,        "in"sv,
    "with"sv,    "is"sv,     "enemy"sv,     "level"sv,  "weapons"sv,  "year"sv,   "mission"sv,   "his"sv,
    "dungeon"sv, "star"sv,   "adventure"sv, "world"sv,  "must"sv,     "by"sv,     "character"sv, "as"sv,
    "puzzle"sv,  "ship"sv,   "time"sv,      "from"sv,   "princess"sv, "king"sv,   "evil"sv,      "through"sv,
    "segunda"sv, "años"sv,   "naves"sv,     "acción"sv, "control"sv,  "screen"sv, "points"sv,    "galaxy"sv,
    "castle"sv,  "secret"sv, "army"sv,      "race"sv,   "magic"sv,    "island"sv, "combat"sv,    "quest"sv,
};
constexpr std::array genres{
    "Action"sv,
    "Action; Adventure"sv,
    "Adventure"sv,
    "Shooter"sv,
    "Platform"sv,
    "Sports"sv,
    "Puzzle"sv,
    "Role-Playing"sv,
    "Strategy"sv,
    "Racing"sv,
    "Fighting"sv,
    "Flight Simulator"sv,
    "Beat 'em Up"sv,
    "Action; Platform"sv,
    "Board Game"sv,
    "Casino"sv,
    "Education"sv,
    "Action; Adventure; Role-Playing"sv,
    "Construction and Management Simulation"sv,
};
constexpr std::array playModes{"Un Jugador"sv, "Single Player"sv, "2-Player Alternating"sv,
                               "Cooperative; Multiplayer"sv, "4-Player Simultaneous"sv};
constexpr std::array ratings{"Not Rated"sv, "E - Everyone"sv, "T - Teen"sv, "M - Mature"sv};

/// The children of a game in the order of the files. "@…" stands for a value that is made for each game; a name that
/// begins with "?" is left out of some games.
struct Element {
    std::string_view name;
    std::string_view value;
};
constexpr Element gameElements[] = {
    {"GogAppId", ""},
    {"OriginAppId", ""},
    {"OriginInstallPath", ""},
    {"VideoPath", ""},
    {"ThemeVideoPath", ""},
    {"Installed", "true"},
    {"ApplicationPath", "@path"},
    {"CommandLine", ""},
    {"Completed", "false"},
    {"ConfigurationCommandLine", ""},
    {"ConfigurationPath", "@configuration"},
    {"DateAdded", "@moment"},
    {"DateModified", "@moment"},
    {"Developer", "@developer"},
    {"DosBoxConfigurationPath", ""},
    {"Emulator", "@emulator"},
    {"Favorite", "false"},
    {"ID", "@id"},
    {"ManualPath", ""},
    {"MusicPath", ""},
    {"Notes", "@notes"},
    {"Platform", "@platform"},
    {"Publisher", "@publisher"},
    {"Rating", "@rating"},
    {"?ReleaseDate", "@release"},
    {"RootFolder", "@folder"},
    {"ScummVMAspectCorrection", "false"},
    {"ScummVMFullscreen", "false"},
    {"ScummVMGameDataFolderPath", ""},
    {"ScummVMGameType", ""},
    {"SortTitle", ""},
    {"Source", "@source"},
    {"StarRatingFloat", "0"},
    {"StarRating", "0"},
    {"CommunityStarRating", "@stars"},
    {"CommunityStarRatingTotalVotes", "@votes"},
    {"Status", ""},
    {"DatabaseID", "@number"},
    {"WikipediaURL", "@wikipedia"},
    {"Title", "@title"},
    {"UseDosBox", "false"},
    {"UseScummVM", "false"},
    {"Version", "@version"},
    {"Series", "@series"},
    {"PlayMode", "@mode"},
    {"Region", ""},
    {"PlayCount", "0"},
    {"PlayTime", "0"},
    {"Portable", "false"},
    {"Hide", "false"},
    {"Broken", "false"},
    {"CloneOf", ""},
    {"Genre", "@genre"},
    {"MissingVideo", "false"},
    {"MissingBoxFrontImage", "false"},
    {"MissingScreenshotImage", "false"},
    {"MissingMarqueeImage", "true"},
    {"MissingClearLogoImage", "false"},
    {"MissingBackgroundImage", "true"},
    {"MissingBox3dImage", "false"},
    {"MissingCartImage", "true"},
    {"MissingCart3dImage", "true"},
    {"MissingManual", "true"},
    {"MissingBannerImage", "false"},
    {"MissingMusic", "true"},
    {"UseStartupScreen", "false"},
    {"HideAllNonExclusiveFullscreenWindows", "false"},
    {"StartupLoadDelay", "0"},
    {"HideMouseCursorInGame", "false"},
    {"DisableShutdownScreen", "false"},
    {"AggressiveWindowHiding", "false"},
    {"OverrideDefaultStartupScreenSettings", "false"},
    {"UsePauseScreen", "false"},
    {"PauseAutoHotkeyScript", ""},
    {"ResumeAutoHotkeyScript", ""},
    {"OverrideDefaultPauseScreenSettings", "false"},
    {"SuspendProcessOnPause", "false"},
    {"ForcefulPauseScreenActivation", "false"},
    {"LoadStateAutoHotkeyScript", ""},
    {"SaveStateAutoHotkeyScript", ""},
    {"ResetAutoHotkeyScript", ""},
    {"SwapDiscsAutoHotkeyScript", ""},
    {"CustomDosBoxVersionPath", ""},
    {"ReleaseType", "Released"},
    {"MaxPlayers", "@players"},
    {"VideoUrl", "@video"},
    {"AndroidBoxFrontThumbPath", ""},
    {"AndroidBoxFrontFullPath", ""},
    {"AndroidClearLogoThumbPath", ""},
    {"AndroidClearLogoFullPath", ""},
    {"AndroidBackgroundPath", ""},
    {"AndroidBackgroundThumbPath", ""},
    {"AndroidGameTitleScreenshotThumbPath", ""},
    {"AndroidGameplayScreenshotThumbPath", ""},
    {"AndroidGameTitleScreenshotPath", ""},
    {"AndroidGameplayScreenshotPath", ""},
    {"AndroidVideoPath", ""},
    {"HasCloudSynced", "false"},
};
constexpr Element applicationElements[] = {
    {"GogAppId", ""},
    {"OriginAppId", ""},
    {"OriginInstallPath", ""},
    {"Id", "@newid"},
    {"PlayCount", "0"},
    {"PlayTime", "0"},
    {"GameID", "@id"},
    {"ApplicationPath", "@path"},
    {"AutoRunAfter", "false"},
    {"AutoRunBefore", "false"},
    {"CommandLine", ""},
    {"Name", "@application"},
    {"UseDosBox", "false"},
    {"UseEmulator", "false"},
    {"WaitForExit", "false"},
    {"Developer", ""},
    {"Publisher", ""},
    {"Region", ""},
    {"Version", "@version"},
    {"Status", ""},
    {"EmulatorId", ""},
    {"SideA", "false"},
    {"SideB", "false"},
    {"Priority", "1"},
    {"HasCloudSynced", "false"},
};

/// How the games of a platform differ, measured on collections in use.
struct PlatformShape {
    const char *name;
    int percent;             ///< of all games
    int notes;               ///< mean length of the notes in bytes
    int applications;        ///< additional applications a hundred games
    int alternateNames;      ///< a hundred games
    int controllers;         ///< GameControllerSupport a hundred games
    bool isComputer = false; ///< an eXo folder with a script and a configuration; else a ROM
};
constexpr PlatformShape platformShapes[] = {
    {"MS-DOS", 45, 1500, 0, 70, 0, true}, {"Nintendo Entertainment System", 20, 620, 200, 11, 100},
    {"Sega Genesis", 12, 460, 6, 77, 23}, {"Atari 7800", 10, 620, 200, 11, 100},
    {"ScummVM", 6, 1500, 0, 70, 0, true}, {"Sega 32X", 4, 460, 6, 77, 23},
    {"Arcade", 3, 460, 200, 11, 100},
};

QByteArray bytes(std::string_view text) {
    return {text.data(), qsizetype(text.size())};
}

QByteArray capitalised(std::string_view word) {
    QByteArray text = bytes(word);
    if (uchar(text[0]) < 0x80)
        text[0] = char(std::toupper(text[0]));
    return text;
}

QByteArray escaped(const QByteArray &text) {
    QByteArray result = text;
    return result.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
}

/// The pieces are made from left to right, which operator+ does not promise.
QByteArray joined(std::initializer_list<QByteArray> pieces) {
    QByteArray text;
    for (const QByteArray &piece : pieces)
        text += piece;
    return text;
}

QByteArray uuid(Dice &dice) {
    return joined({dice.hex(8), "-", dice.hex(4), "-4", dice.hex(3), "-a", dice.hex(3), "-", dice.hex(12)});
}

/// One of many made-up companies; number n has always the same name.
QByteArray company(uint64_t number) {
    Dice dice(number * 7919 + 13);
    static constexpr std::array endings{" Software"sv, " Entertainment"sv, ""sv, " Inc."sv, " & Sons"sv, " Soft"sv};
    return joined({capitalised(dice.of(words)), dice.chance(50) ? capitalised(dice.of(words)) : QByteArray(),
                   QByteArray::number(qulonglong(number)), bytes(dice.of(endings))});
}

QByteArray padded(int number, int digits) {
    return QByteArray::number(number).rightJustified(digits, '0');
}

QByteArray moment(Dice &dice) {
    return joined({"20", padded(dice.between(10, 24), 2), "-", padded(dice.between(1, 12), 2), "-",
                   padded(dice.between(1, 28), 2), "T", padded(dice.between(0, 23), 2), ":",
                   padded(dice.between(0, 59), 2), ":", padded(dice.between(0, 59), 2), ".",
                   padded(dice.between(0, 9'999'999), 7), "-05:00"});
}

/// One game as it is written; texts are not escaped yet.
class GameWriter {
  public:
    GameWriter(const PlatformShape &platform, const QByteArray &id, uint64_t seed)
        : m_dice(seed), m_platform(platform), m_id(id) {
        for (int i = m_dice.between(1, 4); i > 0; --i)
            m_title += capitalised(m_dice.of(words)) + (i > 1 ? " " : "");
        m_title += ' ' + QByteArray::number(m_dice.between(1, 999));
        m_year = QByteArray::number(m_dice.between(1978, 2005));
        for (char c : m_title.toLower())
            if (c > ' ' && uchar(c) < 0x80 && m_folder.size() < 8)
                m_folder += c;
        m_folder += m_dice.hex(4);
    }

    QByteArray game() {
        QByteArray xml;
        append(xml, "Game", gameElements);
        return xml;
    }
    QByteArray companions() {
        QByteArray xml;
        for (int i = countOf(m_platform.applications); i > 0; --i)
            append(xml, "AdditionalApplication", applicationElements);
        for (int i = countOf(m_platform.alternateNames); i > 0; --i)
            xml += "  <AlternateName>\r\n    <GameID>" + m_id + "</GameID>\r\n    <Name>" + escaped(m_title) +
                   "</Name>\r\n    <Region />\r\n  </AlternateName>\r\n";
        for (int i = countOf(m_platform.controllers); i > 0; --i)
            xml += "  <GameControllerSupport>\r\n    <ControllerId>" + uuid(m_dice) +
                   "</ControllerId>\r\n    <GameId>" + m_id + "</GameId>\r\n  </GameControllerSupport>\r\n";
        if (m_dice.chance(10))
            xml += "  <CustomField>\r\n    <GameID>" + m_id +
                   "</GameID>\r\n    <Name>Idioma</Name>\r\n    <Value>Ingles</Value>\r\n  </CustomField>\r\n";
        return xml;
    }

  private:
    int countOf(int perHundred) { return perHundred / 100 + (m_dice.chance(perHundred % 100) ? 1 : 0); }

    void append(QByteArray &xml, const char *record, std::span<const Element> elements) {
        xml += QByteArray("  <") + record + ">\r\n";
        for (Element element : elements) {
            if (element.name.front() == '?') {
                if (m_dice.chance(4))
                    continue;
                element.name.remove_prefix(1);
            }
            const QByteArray name = bytes(element.name);
            const QByteArray text =
                element.value.starts_with('@') ? escaped(made(element.value)) : bytes(element.value);
            xml += text.isEmpty() ? "    <" + name + " />\r\n" : "    <" + name + ">" + text + "</" + name + ">\r\n";
        }
        xml += QByteArray("  </") + record + ">\r\n";
    }

    QByteArray notes() {
        const int length = m_platform.notes / 3 + int(m_dice.below(uint64_t(m_platform.notes) * 4 / 3));
        QByteArray text;
        while (text.size() < length) {
            QByteArray sentence = capitalised(m_dice.of(words));
            for (int i = m_dice.between(5, 18); i > 0; --i)
                sentence += ' ' + bytes(m_dice.of(words));
            text += sentence + (m_dice.chance(4) ? " & more.\r\n\r\n" : ". ");
        }
        return text.trimmed();
    }

    QByteArray made(std::string_view value) {
        const QByteArray platform = m_platform.name;
        const QByteArray script = "eXo\\eXoDOS\\!dos\\" + m_folder;
        if (value == "@id")
            return m_id;
        if (value == "@newid")
            return uuid(m_dice);
        if (value == "@title")
            return m_title;
        if (value == "@platform")
            return platform;
        if (value == "@path")
            return m_platform.isComputer ? script + "\\" + m_title + " (" + m_year + ").bat"
                                         : "Games\\" + platform + "\\" + m_title + " (" + m_year + ") (World).zip";
        if (value == "@configuration")
            return m_platform.isComputer ? script + "\\dosbox.conf" : QByteArray();
        if (value == "@folder")
            return m_platform.isComputer ? script : QByteArray();
        if (value == "@moment")
            return moment(m_dice);
        if (value == "@release")
            return joined({m_year, "-", padded(m_dice.between(1, 12), 2), "-", padded(m_dice.between(1, 28), 2),
                           "T03:00:00-05:00"});
        if (value == "@developer")
            return company(m_dice.skewed(4000));
        if (value == "@publisher")
            return company(m_dice.skewed(1500));
        if (value == "@emulator")
            return m_platform.isComputer ? QByteArray() : QByteArray("5cbb2c7c-31b0-4ac9-9bd5-0d0e7b0a1f9c");
        if (value == "@notes")
            return notes();
        if (value == "@rating")
            return m_dice.chance(30) ? bytes(m_dice.of(ratings)) : QByteArray();
        if (value == "@source")
            return m_dice.chance(10) ? QByteArray("Steam") : QByteArray();
        if (value == "@stars")
            return joined({padded(m_dice.between(1, 4), 1), ".", padded(m_dice.between(0, 999'999), 6)});
        if (value == "@votes")
            return QByteArray::number(m_dice.between(1, 120));
        if (value == "@number")
            return QByteArray::number(m_dice.between(100, 199'999));
        if (value == "@wikipedia")
            return m_dice.chance(70)
                       ? "https://en.wikipedia.org/wiki/" + QByteArray(m_title).replace(' ', "_") + "_(video_game)"
                       : QByteArray();
        if (value == "@version")
            return m_dice.chance(40) ? "(" + m_year + ") (" + company(m_dice.skewed(1500)) + ")" : QByteArray();
        if (value == "@series")
            return m_dice.chance(8) ? "Playlist: " + capitalised(m_dice.of(words)) : QByteArray();
        if (value == "@mode")
            return bytes(m_dice.of(playModes));
        if (value == "@genre")
            return bytes(m_dice.of(genres));
        if (value == "@players")
            return QByteArray::number(m_dice.between(1, 4));
        if (value == "@video")
            return m_dice.chance(65) ? "https://www.youtube.com/watch?v=" + m_dice.hex(11) : QByteArray();
        if (value == "@application")
            return "Jugar la Versión (" + m_year + ") (" + platform + ")...";
        throw std::logic_error("no such value");
    }

    Dice m_dice;
    const PlatformShape &m_platform;
    QByteArray m_id;
    QByteArray m_title;
    QByteArray m_year;
    QByteArray m_folder;
};

class XmlFile {
  public:
    XmlFile(const QString &folder, const QString &name) : m_file(folder + QLatin1Char('/') + name) {
        if (!QDir().mkpath(folder) || !m_file.open(QIODevice::WriteOnly))
            throw std::runtime_error("cannot write " + m_file.fileName().toStdString());
        add("<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<LaunchBox>\r\n");
    }
    void add(const QByteArray &xml) {
        if (m_file.write(xml) != xml.size())
            throw std::runtime_error("cannot write " + m_file.fileName().toStdString());
    }
    void close() {
        add("</LaunchBox>\r\n");
        if (!m_file.flush())
            throw std::runtime_error("cannot write " + m_file.fileName().toStdString());
    }

  private:
    QFile m_file;
};

} // namespace

QList<CollectionGenerator::PlatformShare> CollectionGenerator::platforms() const {
    QList<PlatformShare> shares;
    int left = m_shape.games;
    for (const PlatformShape &shape : platformShapes) {
        const bool last = &shape == std::end(platformShapes) - 1 || m_shape.singlePlatform;
        const int games = last ? left : int(qint64(m_shape.games) * shape.percent / 100);
        shares.append({QString::fromLatin1(shape.name), games});
        left -= games;
        if (last)
            break;
    }
    return shares;
}

QString CollectionGenerator::gameId(int number) const {
    Dice dice(m_shape.seed * 0x9E3779B97F4A7C15u + uint64_t(number));
    return QString::fromLatin1(uuid(dice));
}

void CollectionGenerator::write(const QString &folder) const {
    const QString data = folder + QLatin1String("/Data");
    XmlFile list(data, QStringLiteral("Platforms.xml"));
    int number = 0;
    const QList<PlatformShare> shares = platforms();
    for (qsizetype i = 0; i < shares.size(); ++i) {
        list.add("  <Platform>\r\n    <Name>" + shares[i].name.toUtf8() +
                 "</Name>\r\n    <Category>Computer</Category>\r\n  </Platform>\r\n");
        XmlFile file(data + QLatin1String("/Platforms"), shares[i].name + QLatin1String(".xml"));
        // The companions of all games stand behind the games, as in the files of collections.
        QList<QByteArray> companions;
        for (int game = 0; game < shares[i].games; ++game, ++number) {
            GameWriter writer(platformShapes[i], gameId(number).toLatin1(), m_shape.seed + uint64_t(number) * 31);
            file.add(writer.game());
            companions.append(writer.companions());
        }
        for (const QByteArray &xml : companions)
            file.add(xml);
        file.close();
    }
    list.close();

    writePlaylists(data + QLatin1String("/Playlists"));
}

namespace {

QByteArray playlistHead(Dice &dice, const QByteArray &name, bool isDynamic) {
    QByteArray xml = "  <Playlist>\r\n    <PlaylistId>" + uuid(dice) + "</PlaylistId>\r\n    <Name>" + escaped(name) +
                     "</Name>\r\n    <NestedName>" + escaped(name) + "</NestedName>\r\n";
    for (const char *empty :
         {"Notes",          "VideoPath", "ImageType",    "Category",      "BigBoxView",  "SortTitle", "Developer",
          "Manufacturer",   "Cpu",       "Memory",       "Graphics",      "Sound",       "Display",   "Media",
          "MaxControllers", "Folder",    "VideosFolder", "ManualsFolder", "MusicFolder", "ScrapeAs"})
        xml += QByteArray("    <") + empty + " />\r\n";
    return xml + "    <AutoPopulate>" + (isDynamic ? "true" : "false") +
           "</AutoPopulate>\r\n    <HideInBigBox>false</HideInBigBox>\r\n  </Playlist>\r\n";
}

QByteArray playlistRule(const QByteArray &value, const char *field, const char *comparison) {
    return "  <PlaylistFilter>\r\n    <Value>" + escaped(value) + "</Value>\r\n    <FieldKey>" + field +
           "</FieldKey>\r\n    <ComparisonTypeKey>" + comparison + "</ComparisonTypeKey>\r\n  </PlaylistFilter>\r\n";
}

} // namespace

void CollectionGenerator::writePlaylists(const QString &folder) const {
    const int count = m_shape.gamesAPlaylist > 0 ? m_shape.games / m_shape.gamesAPlaylist : 0;
    for (int i = 0; i < count; ++i) {
        Dice dice(m_shape.seed * 7'368'787 + uint64_t(i));
        const bool isDynamic = i % 7 == 0;
        const QByteArray name = capitalised(dice.of(words)) + ' ' + bytes(dice.of(words)) + ' ' + QByteArray::number(i);
        XmlFile file(folder, QString::fromUtf8(name) + QLatin1String(".xml"));
        file.add(playlistHead(dice, name, isDynamic));
        if (isDynamic) {
            file.add(playlistRule(bytes(std::string_view(dice.of(platformShapes).name)), "Platform", "EqualTo"));
            const int rules = dice.chance(80) ? 1 : dice.chance(70) ? 2 : 7;
            for (int rule = 0; rule < rules; ++rule)
                switch (dice.below(4)) {
                case 0:
                    file.add(playlistRule(company(dice.skewed(1500)), "Publisher", "Contains"));
                    break;
                case 1:
                    file.add(playlistRule("Steam", "Source", "Contains"));
                    break;
                case 2:
                    file.add(playlistRule(bytes(dice.of(playModes)), "PlayMode", "Contains"));
                    break;
                default:
                    file.add(playlistRule(bytes(dice.of(genres)), "Genre", "Contains"));
                }
        } else {
            const int games = dice.chance(2) ? dice.between(100, 1000) : dice.between(1, 23);
            for (int order = 0; order < games; ++order) {
                // A tenth of the links lead nowhere.
                const QByteArray id =
                    dice.chance(10) ? uuid(dice) : gameId(int(dice.below(uint64_t(m_shape.games)))).toLatin1();
                file.add("  <PlaylistGame>\r\n    <GameId>" + id + "</GameId>\r\n    <LaunchBoxDbId>" +
                         QByteArray::number(dice.between(1, 200'000)) + "</LaunchBoxDbId>\r\n    <GameTitle>" +
                         capitalised(dice.of(words)) + "</GameTitle>\r\n    <GameFileName>" + bytes(dice.of(words)) +
                         ".zip</GameFileName>\r\n    <GamePlatform>" + dice.of(platformShapes).name +
                         "</GamePlatform>\r\n    <ManualOrder>" + QByteArray::number(order) +
                         "</ManualOrder>\r\n  </PlaylistGame>\r\n");
            }
        }
        file.close();
    }
}

} // namespace ludarium
