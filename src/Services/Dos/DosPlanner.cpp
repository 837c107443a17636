#include "Services/Dos/DosPlanner.h"

#include "Host/AppLogger.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/ExecutableDetection.h"
#include "Services/Dos/IndependentLaunchConfig.h"
#include "Services/Dos/MinimalConfig.h"
#include "Services/Dos/OverlayConfig.h"
#include "Services/Dos/ScriptFolderConfig.h"

#include <QFile>
#include <QUuid>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

namespace {

QByteArray readConfiguration(FolderView &view, const QString &path) {
    if (const std::optional<QByteArray> text = view.read(path))
        return *text;
    // Opened once more for the reason alone; what is no regular file might block there.
    int reason = EIO;
    if (view.isFile(path)) {
        const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        reason = descriptor < 0 ? errno : EFBIG;
        if (descriptor >= 0)
            ::close(descriptor);
    }
    throw std::system_error(reason, std::generic_category(), QFile::encodeName(path).toStdString());
}

/// The launch that follows when the game's configuration is known.
class DirectLaunch {
  public:
    DirectLaunch(const DosPlanInput &input, const DosConfigurationChoice &choice, FolderView &view)
        : m_input(input), m_choice(choice), m_view(view), m_version(input.request.version) {}

    DosPlan plan() {
        m_plan.plan.decisions = m_choice.decisions;
        m_plan.plan.route = m_choice.kind == DosConfigurationChoice::Kind::gameFolder ||
                                    m_choice.kind == DosConfigurationChoice::Kind::scriptFolder
                                ? QStringLiteral("DOSBox, directly")
                                : QStringLiteral("DOSBox, directly, without a configuration of the game's own");
        readBase();
        applyFix();
        gatherOverrides();
        decide(QStringLiteral("emulator"), m_input.flavour.text(), m_input.dosbox);
        addFile(temporaryPath(QStringLiteral("overlay.conf")),
                createIndependentOverlayConfig(m_input.settings, m_input.request.collection, m_version, m_view));
        m_launchFile = m_choice.confPath;
        m_workingDirectory = m_choice.gameDataFolder;
        if (m_version && !m_version->executable.trimmed().isEmpty() &&
            isValidDatabaseExecutable(m_version->executable)) {
            decide(QStringLiteral("executable"), m_version->executable, QStringLiteral("the version names it"));
            addLaunchConfig(*m_version);
            enterVersionFolder();
        } else {
            detect();
        }
        finish();
        return m_plan;
    }

  private:
    void decide(const QString &subject, const QString &choice, const QString &reason) {
        m_plan.plan.decisions.append({subject, choice, reason});
    }
    QString temporaryPath(const QString &name) const { return childPath(m_input.settings.temporaryFolder, name); }
    void addFile(const QString &path, const QByteArray &content) { m_plan.plan.files.append({path, content}); }
    QString gameName() const { return lastPathComponent(m_choice.gameDataFolder); }

    void readBase() {
        switch (m_choice.kind) {
        case DosConfigurationChoice::Kind::scriptFolder:
            m_base = m_choice.generated;
            addFile(m_choice.confPath, m_base);
            return;
        case DosConfigurationChoice::Kind::minimal:
            m_base = createMinimalDOSBoxConfig(m_input.settings, m_choice.gameDataFolder, m_version,
                                               m_input.request.collection, m_view);
            addFile(m_choice.confPath, m_base);
            return;
        case DosConfigurationChoice::Kind::gameFolder:
        case DosConfigurationChoice::Kind::versionFolder:
            m_base = readConfiguration(m_view, m_choice.confPath);
        }
    }

    void applyFix() {
        const std::optional<CommunityFix> &fix = m_input.fix;
        if (!fix)
            return;
        const QString version =
            fix->versionLabel.isNull() ? QString() : QStringLiteral(" version '%1'").arg(fix->versionLabel);
        Log::info(QStringLiteral("✅ Applying community fix for '%1'%2").arg(m_input.request.game->title, version));
        GameVersionOption fixed;
        fixed.label = m_version ? m_version->label : QStringLiteral("Community Fix");
        if (fix->configChanges)
            fixed.configChanges = *fix->configChanges;
        fixed.workingDirectory = fix->workingDirectory;
        fixed.executable = fix->correctExecutable;
        fixed.setupCommands = fix->setupCommands;
        m_version = fixed;
        decide(QStringLiteral("version"), fixed.label, QStringLiteral("a community fix takes the version's place"));
    }

    void gatherOverrides() {
        m_overrides = m_input.exceptionOverrides;
        if (m_version)
            for (auto it = m_version->configChanges.cbegin(); it != m_version->configChanges.cend(); ++it)
                m_overrides.insert(it.key(), it.value());
        for (auto it = m_overrides.cbegin(); it != m_overrides.cend(); ++it)
            decide(it.key(), it.value(), overrideReason(it.key()));
        const QString cycles = QStringLiteral("cycles");
        if (m_overrides.contains(cycles))
            return;
        if (const auto value = extractCyclesFromConfig(m_base)) {
            m_overrides.insert(cycles, *value);
            Log::info(QStringLiteral("   Using cycles from dosbox.conf: %1").arg(*value));
            decide(cycles, *value, QStringLiteral("the game's configuration sets them"));
        }
    }

    QString overrideReason(const QString &key) const {
        if (m_version && m_version->configChanges.contains(key))
            return QStringLiteral("set by the version \"%1\"").arg(m_version->label);
        const QString origin = m_input.exceptionOrigins.value(key);
        return origin.isEmpty() ? QStringLiteral("set by a known exception")
                                : QStringLiteral("set by the exception \"%1\"").arg(origin);
    }

    void addLaunchConfig(const GameVersionOption &version) {
        const IndependentLaunch made = createIndependentLaunchConfig(
            {m_base, m_choice.gameDataFolder, m_input.request.collection, version, m_input.settings.discSwapKeys},
            m_view);
        for (const QString &path : made.mountedPaths)
            checkLength(path);
        m_launchFile = temporaryPath(generatedConfigName(gameName(), QStringLiteral("_launch.conf")));
        addFile(m_launchFile, made.text);
        m_plan.plan.decisions += made.decisions;
    }

    void checkLength(const QString &path) const {
        const int longest = capabilitiesOf(m_input.flavour.family).longestMount;
        if (longest > 0 && QFile::encodeName(path).size() > longest)
            throw LaunchError(LaunchError::Case::launchFailed,
                              QStringLiteral("%1 cannot mount a path of more than %2 bytes: %3")
                                  .arg(m_input.flavour.text(), QString::number(longest), path));
    }

    void enterVersionFolder() {
        const QString working = m_version->workingDirectory;
        if (working.isEmpty())
            return;
        const QString inside = m_view.resolve(m_choice.gameDataFolder, working);
        if (working.compare(gameName(), Qt::CaseInsensitive) == 0) {
            Log::info(QStringLiteral("   Already in version folder '%1' - not appending").arg(working));
        } else if (m_view.isDirectory(inside)) {
            Log::info(QStringLiteral("   Working directory set to subfolder: %1").arg(working));
            m_workingDirectory = inside;
        } else {
            Log::info(QStringLiteral("   Version folder '%1' not found - using game root").arg(working));
        }
    }

    /// The program of a game whose version names none that can be used.
    void detect() {
        const bool named = m_version && !m_version->executable.trimmed().isEmpty();
        if (named)
            Log::warning(QStringLiteral("⚠️ Database executable '%1' is invalid, falling back to auto-detection")
                             .arg(m_version->executable));
        const bool folderAlone = m_version && !named && !m_version->workingDirectory.isEmpty();
        std::optional<DetectedExecutable> found;
        QString reason;
        if (folderAlone) {
            const QString working = m_version->workingDirectory;
            if (const QString folder = m_view.resolve(m_choice.gameDataFolder, working); m_view.isDirectory(folder)) {
                Log::info(QStringLiteral("🔧 Auto-detecting executable in version folder '%1'").arg(working));
                found = autoDetectExecutable(m_view, folder);
                reason = QStringLiteral("found in the version's folder");
                // The program's folder is named from the game's, as everything below expects it.
                if (found)
                    found->subfolder = found->subfolder.isNull() ? working : working + u'/' + found->subfolder;
            }
        }
        if (!found && !m_choice.originalScriptConfig.isNull()) {
            found = fromOriginalScript(folderAlone);
            reason = QStringLiteral("the collection's own configuration starts it");
        }
        if (!found) {
            Log::info(QStringLiteral("🔧 Auto-detecting executable (no database entry)"));
            found = autoDetectExecutable(m_view, m_choice.gameDataFolder);
            reason = QStringLiteral("found by looking at the game's folder");
            if (found)
                logAutoDetectInfo(m_view, m_input.request.game->title, m_choice.gameDataFolder, *found);
        }
        if (!found) {
            decide(QStringLiteral("executable"), QStringLiteral("none"),
                   QStringLiteral("nothing was found; the game's configuration runs as it stands"));
            return;
        }
        decide(QStringLiteral("executable"), found->executable, reason);
        GameVersionOption option;
        option.label = QStringLiteral("Auto-detected");
        option.workingDirectory = found->subfolder;
        option.executable = found->executable;
        addLaunchConfig(option);
        if (const QString inside = m_view.resolve(m_choice.gameDataFolder, found->subfolder);
            m_view.isDirectory(inside))
            m_workingDirectory = inside;
        m_plan.feedback = LaunchFeedback{m_input.request.game, found->executable, false,
                                         m_input.request.version ? m_input.request.version->label : QString()};
    }

    std::optional<DetectedExecutable> fromOriginalScript(bool folderAlone) {
        const auto text = m_view.read(m_choice.originalScriptConfig);
        if (!text)
            return std::nullopt;
        const auto original = extractExecutableFromOriginalConfig(*text, gameName());
        if (!original)
            return std::nullopt;
        if (folderAlone && (original->executable.contains(QStringLiteral("run"), Qt::CaseInsensitive) ||
                            original->executable.contains(QStringLiteral("menu"), Qt::CaseInsensitive))) {
            Log::info(
                QStringLiteral("   Skipping menu script '%1' - will auto-detect instead").arg(original->executable));
            return std::nullopt;
        }
        Log::info(QStringLiteral("🔧 Using executable from original autoexec: %1").arg(original->executable));
        return DetectedExecutable{original->executable, original->subpath};
    }

    void finish() {
        LaunchPlan &plan = m_plan.plan;
        const DosBoxCommandLine line{temporaryPath(QStringLiteral("overlay.conf")), m_launchFile, m_overrides,
                                     temporaryPath(QStringLiteral("overrides.conf")), m_workingDirectory};
        plan.emulator = QStringLiteral("DOSBox");
        plan.flavour = m_input.flavour.text();
        plan.program = m_input.dosbox;
        plan.arguments = dosBoxArguments(line, m_input.flavour.family);
        plan.workingDirectory = m_workingDirectory;
        if (const QByteArray overrides = overridesConfig(line, m_input.flavour.family); !overrides.isNull()) {
            addFile(line.overridesFile, overrides);
            decide(QStringLiteral("overrides"), QStringLiteral("configuration file"),
                   QStringLiteral("this build may pass over \"-set\""));
        }
        decide(QStringLiteral("working directory"), m_workingDirectory,
               m_workingDirectory == m_choice.gameDataFolder ? QStringLiteral("the game's folder")
                                                             : QStringLiteral("the program's folder"));
    }

    const DosPlanInput &m_input;
    const DosConfigurationChoice &m_choice;
    FolderView &m_view;
    std::optional<GameVersionOption> m_version;
    QByteArray m_base;
    QMap<QString, QString> m_overrides;
    QString m_launchFile;
    QString m_workingDirectory;
    DosPlan m_plan;
};

/// The version's folder inside the game's, null when it has none.
QString versionFolder(const DosLaunchRequest &request, FolderView &view) {
    if (!request.version || request.version->workingDirectory.isEmpty())
        return {};
    return view.resolve(request.gameDataFolder, request.version->workingDirectory);
}

} // namespace

DosConfigurationChoice chooseDosConfiguration(const DosPlanInput &input, FolderView &view) {
    using Kind = DosConfigurationChoice::Kind;
    const DosLaunchRequest &request = input.request;
    DosConfigurationChoice choice;
    choice.gameDataFolder = request.gameDataFolder;
    const auto chosen = [&](Kind kind, const QString &path, const QString &reason) {
        choice.kind = kind;
        choice.confPath = path;
        choice.decisions.append({QStringLiteral("configuration"), path, reason});
        return choice;
    };
    if (request.version) {
        const QString reason = request.version->isOnlyOne ? QStringLiteral("the only version known")
                                                          : QStringLiteral("chosen by the user");
        const QString &origin = request.version->origin;
        choice.decisions.append({QStringLiteral("version"), request.version->label,
                                 origin.isEmpty() ? reason : reason + QStringLiteral(", ") + origin});
    }
    // The spellings as listed go first; another one serves as well as it did on the collection's own system.
    const QStringList names{QStringLiteral("dosbox.conf"), QStringLiteral("DOSBOX.CONF"), QStringLiteral("Dosbox.conf"),
                            QStringLiteral("launch.conf"), QStringLiteral("game.conf")};
    for (const bool exact : {true, false})
        for (const QString &name : names) {
            const QString found = view.find(request.gameDataFolder, name);
            if (found.isNull() || (exact && found != name))
                continue;
            const QString path = childPath(request.gameDataFolder, found);
            if (view.isFile(path))
                return chosen(Kind::gameFolder, path, QStringLiteral("lies in the game's folder"));
        }
    if (const QString script = view.resolve(request.scriptFolder, QStringLiteral("dosbox.conf")); view.isFile(script)) {
        const QString adapted = childPath(
            input.settings.temporaryDirectory,
            QStringLiteral("adapted_%1.conf").arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()));
        choice.generated = adaptScriptFolderConfig(readConfiguration(view, script), input.settings,
                                                   request.gameDataFolder, request.collection, view);
        choice.originalScriptConfig = script;
        choice.decisions.append({QStringLiteral("original configuration"), script,
                                 QStringLiteral("the game's folder has none; adapted from the script folder")});
        return chosen(Kind::scriptFolder, adapted, QStringLiteral("adapted for this launch"));
    }
    Log::warning(
        QStringLiteral("⚠️ No dosbox.conf found in %1 or script folder - falling back to script-based launch")
            .arg(request.gameDataFolder));
    Log::info(QStringLiteral("🎮 Direct launch (no scripts) for: %1").arg(request.game->title));
    if (const QString folder = versionFolder(request, view); !folder.isNull()) {
        Log::info(QStringLiteral("   Using version folder: %1").arg(request.version->workingDirectory));
        choice.gameDataFolder = folder;
    } else if (request.version && !request.version->workingDirectory.isEmpty()) {
        Log::info(QStringLiteral("   Version folder '%1' not found - using game root")
                      .arg(request.version->workingDirectory));
    }
    if (const QString conf = view.resolve(choice.gameDataFolder, QStringLiteral("dosbox.conf")); view.isFile(conf)) {
        Log::info(QStringLiteral("   Found dosbox.conf in version folder"));
        return chosen(Kind::versionFolder, conf, QStringLiteral("lies in the version's folder"));
    }
    Log::info(QStringLiteral("   Creating minimal DOSBox config for direct launch"));
    const QString name = generatedConfigName(lastPathComponent(choice.gameDataFolder), QStringLiteral("_minimal.conf"));
    return chosen(Kind::minimal, childPath(input.settings.temporaryFolder, name),
                  QStringLiteral("the game has no configuration"));
}

FolderPreparation planDosPreparation(const DosPlanInput &input, const DosConfigurationChoice &choice,
                                     FolderView &view) {
    const DosLaunchRequest &request = input.request;
    FolderPreparation preparation;
    preparation.gameFolder = request.gameDataFolder;
    QString folder;
    switch (choice.kind) {
    case DosConfigurationChoice::Kind::versionFolder:
        return preparation;
    case DosConfigurationChoice::Kind::minimal:
        folder = choice.gameDataFolder;
        break;
    case DosConfigurationChoice::Kind::gameFolder:
    case DosConfigurationChoice::Kind::scriptFolder:
        folder = request.version && !request.version->workingDirectory.isEmpty() ? versionFolder(request, view)
                                                                                 : request.gameDataFolder;
    }
    // A version's folder that is not there has nothing to prepare.
    if (folder.isNull())
        return preparation;
    executeSetupDeleteCommands(preparation, view, folder, request.version);
    FolderPreparation copies{request.gameDataFolder, {}};
    copyAudioDriverFiles(copies, view, folder, request.version);
    pretend(copies, view);
    preparation.steps += copies.steps;
    return preparation;
}

DosPlan planDosLaunch(const DosPlanInput &input, const DosConfigurationChoice &choice, FolderView &view) {
    return DirectLaunch(input, choice, view).plan();
}

} // namespace ludarium
