#include "Services/Dos/VersionFolders.h"

#include "Host/AppLogger.h"
#include "Services/Dos/ExecutableDetection.h"

#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Config = QMap<QString, QString>;

/// A folder that holds a game's sound drivers for one kind of hardware.
struct AudioFolder {
    QString name;
    AudioType type;
    Config config;
};

const QList<AudioFolder> &audioFolders() {
    static const QList<AudioFolder> list{
        {u"MT32"_s, AudioType::mt32, {{u"mididevice"_s, u"mt32"_s}}},
        {u"SB16"_s, AudioType::soundBlaster, {}},
        {u"SC55"_s, AudioType::soundCanvas, {{u"mididevice"_s, u"fluidsynth"_s}}},
        {u"ADLIB"_s, AudioType::adlib, {}},
        {u"TANDY"_s, AudioType::tandy, {{u"tandy"_s, u"on"_s}}},
    };
    return list;
}

GameVersionOption makeOption(const QString &label, VersionType type, const QString &workingDirectory = {}) {
    GameVersionOption option;
    option.label = label;
    option.versionType = type;
    option.workingDirectory = workingDirectory;
    option.origin = u"found by looking at the game's folder"_s;
    return option;
}

GameVersionOption withAudio(GameVersionOption option, AudioType audio, const Config &config) {
    option.label += " with "_L1 + audioTypeText(audio);
    option.audioType = audio;
    option.configChanges = config;
    return option;
}

/// What a version's folder in the table of named folders is called.
struct NamedFolder {
    QString name;
    VersionType type;
    QString label;
    bool isDisplay() const {
        return type == VersionType::cga || type == VersionType::ega || type == VersionType::hercules;
    }
};

const QList<NamedFolder> &namedFolders() {
    static const QList<NamedFolder> list{{u"cd"_s, VersionType::cd, u"CD Version"_s},
                                         {u"floppy"_s, VersionType::floppy, u"Floppy Version"_s},
                                         {u"vga"_s, VersionType::vga, u"VGA Version"_s},
                                         {u"ega"_s, VersionType::ega, u"EGA Version"_s},
                                         {u"cga"_s, VersionType::cga, u"CGA Version"_s},
                                         {u"herc"_s, VersionType::hercules, u"Hercules Version"_s},
                                         {u"talkie"_s, VersionType::talkie, u"Talkie Version"_s}};
    return list;
}

bool isNoVersion(const QString &folder) {
    static const QStringList names =
        u"ultrasnd gus sb16 mt32 sc55 adlib rst ereg data setup install docs manual manuals saves savegame savegames save driver drivers sound patch patches util utils temp tmp"_s
            .split(u' ');
    const QString lower = folder.toLower();
    return lower == "cd"_L1 || folder.startsWith(u'.') || names.contains(lower);
}

class FolderSearch {
  public:
    FolderSearch(FolderView &view, const QString &folder) : m_view(view), m_folder(folder) {}

    QList<GameVersionOption> options() {
        addAudioFolders();
        if (m_options.isEmpty())
            addVersionFolders();
        if (m_options.isEmpty())
            addNamedFolders();
        return m_options;
    }

    QList<GameVersionOption> discOptions() {
        if (!hasDiscImages())
            return {};
        const GameVersionOption disc = makeOption(u"CD/Talkie"_s, VersionType::talkie);
        m_options.append(disc);
        addForAudioFolders(disc, subfolder(u"CD"_s), {});
        return m_options;
    }

  private:
    /// Path of a folder in the game's folder; null when there is none.
    QString subfolder(const QString &name, const QString &parent = {}) {
        const QString path = m_view.resolve(parent.isNull() ? m_folder : parent, name);
        return !path.isNull() && m_view.isDirectory(path) ? path : QString();
    }

    bool hasDiscImages() {
        const QString disc = subfolder(u"CD"_s);
        const QStringList names = disc.isNull() ? QStringList() : m_view.names(disc);
        return std::any_of(names.cbegin(), names.cend(), [](const QString &name) {
            for (const QLatin1StringView ending : {".iso"_L1, ".bin"_L1, ".cue"_L1, ".img"_L1})
                if (name.endsWith(ending, Qt::CaseInsensitive))
                    return true;
            return false;
        });
    }

    bool hasMt32Roms() { return !m_view.find(m_folder, u"MT32_CONTROL.ROM"_s).isNull(); }

    /// One option for each folder of sound drivers in `folder`. `prefix` names that folder from the game's.
    void addForAudioFolders(const GameVersionOption &base, const QString &folder, const QString &prefix) {
        for (const AudioFolder &audio : audioFolders()) {
            if (subfolder(audio.name, folder).isNull())
                continue;
            GameVersionOption option = withAudio(base, audio.type, audio.config);
            option.setupCommands = QStringList{prefix + audio.name + u"\\*.*"_s};
            m_options.append(option);
        }
    }

    void addAudioFolders() {
        addForAudioFolders(makeOption(u"Floppy"_s, VersionType::floppy), m_folder, {});
        if (m_options.isEmpty())
            return;
        if (hasDiscImages())
            addForAudioFolders(makeOption(u"CD/Talkie"_s, VersionType::talkie), subfolder(u"CD"_s), {});
        if (const QString enhanced = subfolder(u"enhanced"_s); !enhanced.isNull())
            addForAudioFolders(makeOption(u"Enhanced"_s, VersionType::other, u"enhanced"_s), enhanced, u"enhanced/"_s);
    }

    /// Whether the game's folder has a program itself, other than a menu of the collection's.
    bool hasOwnProgram() {
        static const QStringList menus{u"run"_s, u"menu"_s, u"start"_s, u"select"_s, u"launch"_s};
        for (const QString &name : m_view.names(m_folder)) {
            const QString stem = name.section(u'.', 0, -2).toLower();
            const bool isMenu = name.endsWith(".bat"_L1, Qt::CaseInsensitive) && menus.contains(stem);
            if (!isMenu && isGameProgram(m_view, m_folder, name))
                return true;
        }
        return false;
    }

    /// An editor or a demo beside the game is none of its versions: only many folders of programs speak for that.
    bool areNoVersions(qsizetype folders) { return folders > 0 && folders <= 2 && hasOwnProgram(); }

    void addVersionFolders() {
        // The file system's own order would make the menu another one on each machine.
        QStringList names = m_view.names(m_folder);
        names.sort(Qt::CaseInsensitive);
        names.removeIf([this](const QString &name) {
            const QString path = isNoVersion(name) ? QString() : subfolder(name);
            return path.isNull() || !folderHasExecutables(m_view, path);
        });
        if (areNoVersions(names.size()))
            return;
        for (const QString &name : std::as_const(names)) {
            const QString path = subfolder(name);
            const VersionType type =
                name.contains("talkie"_L1, Qt::CaseInsensitive) ? VersionType::talkie : VersionType::other;
            const qsizetype before = m_options.size();
            addForAudioFolders(makeOption(name, type, name), path, name + u'/');
            if (m_options.size() == before)
                m_options.append(makeOption(name + " Version"_L1, type, name));
        }
    }

    void addNamedFolders() {
        const auto &table = namedFolders();
        if (areNoVersions(std::count_if(table.cbegin(), table.cend(),
                                        [this](const NamedFolder &row) { return !subfolder(row.name).isNull(); })))
            return;
        for (const NamedFolder &row : namedFolders()) {
            const QString path = subfolder(row.name);
            if (path.isNull())
                continue;
            if (row.type == VersionType::cd && !folderHasExecutables(m_view, path)) {
                Log::info(u"GameVersionDetector: Skipping 'cd' folder - contains only CD images, not executables"_s);
                continue;
            }
            const GameVersionOption plain = makeOption(row.label, row.type, row.name);
            if (row.isDisplay()) {
                m_options.append(withAudio(plain, AudioType::adlib, {}));
                m_options.append(withAudio(plain, AudioType::pcSpeaker, {}));
                m_options.append(withAudio(plain, AudioType::tandy, {{u"tandy"_s, u"on"_s}}));
                m_options.append(withAudio(plain, AudioType::gameBlaster, {{u"sbtype"_s, u"gb"_s}}));
            } else {
                m_options.append(plain);
            }
            if (hasMt32Roms())
                m_options.append(withAudio(plain, AudioType::mt32, {{u"mididevice"_s, u"mt32"_s}}));
        }
    }

    FolderView &m_view;
    QString m_folder;
    QList<GameVersionOption> m_options;
};

} // namespace

std::optional<GameVersionMenu> detectVersionsFromFolders(FolderView &view, const QString &gameDataFolder) {
    const QList<GameVersionOption> options = FolderSearch(view, gameDataFolder).options();
    if (options.isEmpty())
        return std::nullopt;
    return versionMenu(lastPathComponent(gameDataFolder), options);
}

QList<GameVersionOption> detectCDVersions(FolderView &view, const QString &gameDataFolder) {
    return FolderSearch(view, gameDataFolder).discOptions();
}

GameVersionMenu versionMenu(const QString &title, const QList<GameVersionOption> &options) {
    GameVersionMenu menu;
    menu.gameTitle = title;
    menu.options = options;
    // Copies of one option share its id, and each has to have its own.
    for (GameVersionOption &option : menu.options)
        option.id = QUuid::createUuid();
    menu.hasMultipleVersions = options.size() > 1;
    menu.hasAudioOptions = std::any_of(options.cbegin(), options.cend(),
                                       [](const GameVersionOption &option) { return option.audioType.has_value(); });
    return menu;
}

} // namespace ludarium
