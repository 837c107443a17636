#include "Host/AppLogger.h"
#include "Models/LaunchError.h"
#include "Services/Dos/CueSheet.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosPlanner.h"
#include "Services/Dos/ExecutableDetection.h"
#include "Services/Dos/IndependentLaunchConfig.h"
#include "Services/Dos/LaunchProof.h"
#include "Services/Dos/MinimalConfig.h"
#include "Services/Dos/OverlayConfig.h"
#include "Services/Dos/ScriptFolderConfig.h"

#include <QFile>
#include <functional>

namespace ludarium {

namespace {

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
        finish(bestWay());
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

    /// One way of starting the game, and whether it leads to a program.
    struct Way {
        QString launchFile;
        QString workingDirectory;
        QList<GeneratedFile> files;
        QList<LaunchDecision> decisions;
        std::optional<LaunchFeedback> feedback;
        LaunchProof proof;
        QString reason; ///< why this one, when it is not the told way
    };

    /// The program that the launch configuration starts, and who says so.
    struct Program {
        GameVersionOption version;
        QString workingDirectory;
        QString reason;
        bool isDetected = false;
    };

    Way bestWay() {
        const std::optional<Program> program = namedProgram();
        Way told = program ? wayOf(*program, false) : asItStands();
        if (!program)
            told.decisions.prepend({QStringLiteral("executable"), QStringLiteral("none"),
                                    QStringLiteral("nothing was found; the game's configuration runs as it stands")});
        using Verdict = LaunchProof::Verdict;
        if (told.proof.verdict != Verdict::missing)
            return told;
        Log::info(QStringLiteral("   %1: %2; looking for another way")
                      .arg(told.proof.program.isEmpty() ? QStringLiteral("Autoexec") : told.proof.program,
                           told.proof.detail));
        std::optional<Way> best;
        for (const std::function<std::optional<Way>()> &make : otherWays(program)) {
            std::optional<Way> way;
            try {
                way = make();
            } catch (const LaunchError &error) {
                Log::info(QStringLiteral("   Another way is barred: %1").arg(error.text()));
            }
            if (!way || way->proof.verdict == Verdict::missing)
                continue;
            // What is known to be there goes before what only may be.
            if (!best || (best->proof.verdict == Verdict::unknown && way->proof.verdict == Verdict::found))
                best = way;
            if (best->proof.verdict == Verdict::found)
                break;
        }
        if (!best)
            return told;
        const QString missing = told.proof.program.isEmpty()
                                    ? told.proof.detail
                                    : told.proof.program + QStringLiteral(" is ") + told.proof.detail;
        best->decisions.append({QStringLiteral("way"), best->reason, missing});
        return *best;
    }

    QList<std::function<std::optional<Way>()>> otherWays(const std::optional<Program> &program) {
        QList<std::function<std::optional<Way>()>> ways;
        const auto mended = [this](const Program &p) {
            return [this, p]() -> std::optional<Way> {
                Way way = wayOf(p, true);
                way.reason = QStringLiteral("the program from where it lies");
                return way;
            };
        };
        if (program) {
            ways.append([this]() -> std::optional<Way> {
                Way way = asItStands();
                way.reason = QStringLiteral("the configuration as it stands");
                return way;
            });
            // The configuration knows nothing of a version, and so nothing of its program.
            ways.insert(program->isDetected ? 1 : 0, mended(*program));
        }
        if (m_choice.kind == DosConfigurationChoice::Kind::gameFolder) {
            ways.append([this] { return adapted(m_base); });
            ways.append([this]() -> std::optional<Way> {
                const QString script = m_view.resolve(m_input.request.scriptFolder, QStringLiteral("dosbox.conf"));
                return m_view.isFile(script) ? adapted(readConfiguration(m_view, script)) : std::nullopt;
            });
        }
        // A version that the user chose is not exchanged for something else.
        const bool isChosen = m_input.request.version && !m_input.request.version->isOnlyOne;
        if (program && !program->isDetected && !isChosen)
            ways.append([this, mended]() -> std::optional<Way> {
                const auto found =
                    detectedProgram(m_choice.gameDataFolder, QStringLiteral("found by looking at the game's folder"));
                return found ? mended(*found)() : std::nullopt;
            });
        return ways;
    }

    Way wayOf(const Program &program, bool isMended) {
        IndependentLaunchInput input{m_base, m_choice.gameDataFolder, m_input.request.collection, program.version,
                                     m_input.settings.discSwapKeys};
        input.isMended = isMended;
        input.oneFloppyImage = capabilitiesOf(m_input.flavour.family).oneFloppyImage;
        const IndependentLaunch made = createIndependentLaunchConfig(input, m_view);
        for (const QString &path : made.mountedPaths)
            checkLength(path);
        Way way;
        way.decisions = {LaunchDecision{QStringLiteral("executable"), program.version.executable, program.reason}};
        way.decisions += made.decisions;
        way.workingDirectory = program.workingDirectory;
        if (program.isDetected)
            way.feedback = LaunchFeedback{m_input.request.game, program.version.executable, false,
                                          m_input.request.version ? m_input.request.version->label : QString()};
        way.launchFile = temporaryPath(generatedConfigName(gameName(), QStringLiteral("_launch.conf")));
        settle(way, made.text, true);
        return way;
    }

    Way asItStands() {
        Way way;
        way.workingDirectory = m_choice.gameDataFolder;
        way.launchFile = m_choice.confPath;
        const bool isGenerated = m_choice.kind == DosConfigurationChoice::Kind::scriptFolder ||
                                 m_choice.kind == DosConfigurationChoice::Kind::minimal;
        settle(way, m_base, isGenerated);
        return way;
    }

    std::optional<Way> adapted(const QByteArray &configuration) {
        const QByteArray text = adaptScriptFolderConfig(configuration, m_input.settings, m_input.request.gameDataFolder,
                                                        m_input.request.collection, m_view);
        Way way;
        way.reason = QStringLiteral("the configuration, adapted");
        way.workingDirectory = m_choice.gameDataFolder;
        way.launchFile = newAdaptedPath(m_input.settings);
        settle(way, text, true);
        return way;
    }

    /// Writes what a way needs and proves it. `isGenerated`: its text stands in no file yet.
    void settle(Way &way, const QByteArray &text, bool isGenerated) {
        const CorrectedDiscs corrected =
            correctDiscs(text, way.workingDirectory, m_input.settings.temporaryFolder, gameName(), m_view);
        if (!corrected.files.isEmpty()) {
            if (!isGenerated)
                way.launchFile = newAdaptedPath(m_input.settings);
            for (const GeneratedFile &file : corrected.files)
                way.decisions.append({QStringLiteral("disc"), lastPathComponent(file.path),
                                      QStringLiteral("the cue sheet spells its files otherwise than the disk")});
        }
        if (isGenerated || !corrected.files.isEmpty())
            way.files.append({way.launchFile, corrected.text});
        way.files += corrected.files;
        for (const GeneratedFile &file : std::as_const(corrected.files))
            m_view.pretendWritten(file.path, file.content);
        way.proof = proveLaunch(corrected.text, way.workingDirectory, m_input.flavour.family, m_view);
    }

    void checkLength(const QString &path) const {
        const int longest = capabilitiesOf(m_input.flavour.family).longestMount;
        if (longest > 0 && QFile::encodeName(path).size() > longest)
            throw LaunchError(LaunchError::Case::launchFailed,
                              QStringLiteral("%1 cannot mount a path of more than %2 bytes: %3")
                                  .arg(m_input.flavour.text(), QString::number(longest), path));
    }

    /// Where the process of a version that names its program works.
    QString versionWorkingDirectory() const {
        const QString working = m_version->workingDirectory;
        if (working.isEmpty())
            return m_choice.gameDataFolder;
        const QString inside = m_view.resolve(m_choice.gameDataFolder, working);
        if (working.compare(gameName(), Qt::CaseInsensitive) == 0) {
            Log::info(QStringLiteral("   Already in version folder '%1' - not appending").arg(working));
        } else if (m_view.isDirectory(inside)) {
            Log::info(QStringLiteral("   Working directory set to subfolder: %1").arg(working));
            return inside;
        } else {
            Log::info(QStringLiteral("   Version folder '%1' not found - using game root").arg(working));
        }
        return m_choice.gameDataFolder;
    }

    std::optional<Program> namedProgram() {
        if (m_version && !m_version->executable.trimmed().isEmpty() && isValidDatabaseExecutable(m_version->executable))
            return Program{*m_version, versionWorkingDirectory(), QStringLiteral("the version names it")};
        return lookedForProgram();
    }

    Program detected(const DetectedExecutable &found, const QString &reason) const {
        Program program;
        program.version.label = QStringLiteral("Auto-detected");
        program.version.workingDirectory = found.subfolder;
        program.version.executable = found.executable;
        const QString inside = m_view.resolve(m_choice.gameDataFolder, found.subfolder);
        program.workingDirectory = m_view.isDirectory(inside) ? inside : m_choice.gameDataFolder;
        program.reason = reason;
        program.isDetected = true;
        return program;
    }

    std::optional<Program> detectedProgram(const QString &folder, const QString &reason) {
        const auto found = autoDetectExecutable(m_view, folder);
        return found ? std::optional(detected(*found, reason)) : std::nullopt;
    }

    /// The program of a game whose version names none that can be used.
    std::optional<Program> lookedForProgram() {
        const bool named = m_version && !m_version->executable.trimmed().isEmpty();
        if (named)
            Log::warning(QStringLiteral("⚠️ Database executable '%1' is invalid, falling back to auto-detection")
                             .arg(m_version->executable));
        const bool folderAlone = m_version && !named && !m_version->workingDirectory.isEmpty();
        if (folderAlone) {
            const QString working = m_version->workingDirectory;
            if (const QString folder = m_view.resolve(m_choice.gameDataFolder, working); m_view.isDirectory(folder)) {
                Log::info(QStringLiteral("🔧 Auto-detecting executable in version folder '%1'").arg(working));
                // The program's folder is named from the game's, as everything below expects it.
                if (auto found = autoDetectExecutable(m_view, folder)) {
                    found->subfolder = found->subfolder.isNull() ? working : working + u'/' + found->subfolder;
                    return detected(*found, QStringLiteral("found in the version's folder"));
                }
            }
        }
        if (!m_choice.originalScriptConfig.isNull())
            if (const auto found = fromOriginalScript(folderAlone))
                return detected(*found, QStringLiteral("the collection's own configuration starts it"));
        Log::info(QStringLiteral("🔧 Auto-detecting executable (no database entry)"));
        const auto found = autoDetectExecutable(m_view, m_choice.gameDataFolder);
        if (!found)
            return std::nullopt;
        logAutoDetectInfo(m_view, m_input.request.game->title, m_choice.gameDataFolder, *found);
        return detected(*found, QStringLiteral("found by looking at the game's folder"));
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

    void finish(const Way &way) {
        LaunchPlan &plan = m_plan.plan;
        plan.decisions += way.decisions;
        plan.proof = way.proof;
        m_plan.feedback = way.feedback;
        for (const GeneratedFile &file : way.files) {
            plan.files.removeIf([&](const GeneratedFile &other) { return other.path == file.path; });
            plan.files.append(file);
        }
        const DosBoxCommandLine line{temporaryPath(QStringLiteral("overlay.conf")), way.launchFile, m_overrides,
                                     temporaryPath(QStringLiteral("overrides.conf")), way.workingDirectory};
        plan.emulator = QStringLiteral("DOSBox");
        plan.flavour = m_input.flavour.text();
        plan.program = m_input.dosbox;
        plan.arguments = dosBoxArguments(line, m_input.flavour.family);
        plan.workingDirectory = way.workingDirectory;
        if (const QByteArray overrides = overridesConfig(line, m_input.flavour.family); !overrides.isNull()) {
            addFile(line.overridesFile, overrides);
            decide(QStringLiteral("overrides"), QStringLiteral("configuration file"),
                   QStringLiteral("this build may pass over \"-set\""));
        }
        decide(QStringLiteral("working directory"), way.workingDirectory,
               way.workingDirectory == m_choice.gameDataFolder ? QStringLiteral("the game's folder")
                                                               : QStringLiteral("the program's folder"));
    }

    const DosPlanInput &m_input;
    const DosConfigurationChoice &m_choice;
    FolderView &m_view;
    std::optional<GameVersionOption> m_version;
    QByteArray m_base;
    QMap<QString, QString> m_overrides;
    DosPlan m_plan;
};

} // namespace

DosPlan planDosLaunch(const DosPlanInput &input, const DosConfigurationChoice &choice, FolderView &view) {
    return DirectLaunch(input, choice, view).plan();
}

} // namespace ludarium
