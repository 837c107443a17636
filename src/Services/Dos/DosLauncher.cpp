#include "Services/Dos/DosLauncher.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/PrivateTemporaryFolder.h"
#include "Host/SafeFiles.h"
#include "Models/LaunchCancelled.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosBoxProbe.h"
#include "Services/Dos/DosPlanner.h"
#include "Services/Emulators/ProgramSandbox.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <system_error>

namespace ludarium {

using namespace Qt::StringLiterals;

/// Kept alive by the flows that use it, so that a launcher may go while one runs.
struct DosLauncher::Private {
    struct Core {
        Host &host;
        DosCollaborators collaborators;
        QHash<QString, DosBoxFlavour> flavours; ///< by path and time of the last change
        /// Folders for the files of sandboxed builds, by the folder that the sandbox shares.
        QHash<QString, std::shared_ptr<PrivateTemporaryFolder>> sharedFolders;
    };
    std::shared_ptr<Core> core;

    static QCoro::Task<DosBoxFlavour> probe(std::shared_ptr<Core> core, QString program);
    static QCoro::Task<> adjustToSandbox(std::shared_ptr<Core> core, QString program, QString collection,
                                         DosSettings *settings);
    static QCoro::Task<DosPlanInput> gather(std::shared_ptr<Core> core, DosLaunchRequest request);
    static QCoro::Task<LaunchPlan> plan(std::shared_ptr<Core> core, DosLaunchRequest request);
    static QCoro::Task<Started> launch(std::shared_ptr<Core> core, DosLaunchRequest request);
};

namespace {

/// The plan, and what has to be done to the game's folder for it. Changes nothing.
struct Considered {
    DosConfigurationChoice choice;
    FolderPreparation preparation;
    DosPlan result;
};

Considered consider(const DosPlanInput &input) {
    FolderView view;
    Considered considered;
    considered.choice = chooseDosConfiguration(input, view);
    considered.preparation = planDosPreparation(input, considered.choice, view);
    considered.result = planDosLaunch(input, considered.choice, view);
    considered.result.plan.preparations = considered.preparation.inWords();
    return considered;
}

/// The question before a start that would end at an empty prompt. Its first button starts all the same.
Alert missingProgramAlert(const LaunchProof &proof) {
    Alert alert;
    alert.title = proof.program.isEmpty() ? u"The game's configuration starts no program"_s
                                          : u"%1 is %2"_s.arg(proof.program, proof.detail);
    alert.text = u"DOSBox would open with an empty prompt. The game's files may be incomplete; installing the game "
                 u"again may bring back what is missing."_s;
    alert.buttons = {startAnywayButton.toString(), u"Cancel"_s};
    alert.style = Alert::Style::Warning;
    return alert;
}

/// Prepares the game's folder and writes the files of a launch. What refuses a launch did so before anything changed.
DosPlan prepareAndWrite(const DosPlanInput &input, Considered considered) {
    DosPlan result = std::move(considered.result);
    if (!considered.preparation.isEmpty()) {
        carryOut(considered.preparation);
        // A step that failed leaves another folder than the one foreseen.
        FolderView fresh;
        const QStringList preparations = result.plan.preparations;
        result = planDosLaunch(input, considered.choice, fresh);
        result.plan.preparations = preparations;
    }
    if (!QDir().mkpath(input.settings.temporaryFolder))
        throw std::system_error(errno, std::generic_category(), input.settings.temporaryFolder.toStdString());
    for (const GeneratedFile &file : std::as_const(result.plan.files))
        writeAtomicallyOrThrow(file.path, file.content);
    return result;
}

} // namespace

QCoro::Task<DosBoxFlavour> DosLauncher::Private::probe(std::shared_ptr<Core> core, QString program) {
    const QFileInfo info(program);
    const QString key = program + u'\n' + QString::number(info.lastModified().toMSecsSinceEpoch());
    if (const auto known = core->flavours.constFind(key); known != core->flavours.cend())
        co_return *known;
    const DosBoxFlavour flavour = co_await probeDosBox(core->host, program);
    core->flavours.insert(key, flavour);
    co_return flavour;
}

QCoro::Task<> DosLauncher::Private::adjustToSandbox(std::shared_ptr<Core> core, QString program, QString collection,
                                                    DosSettings *settings) {
    const HostPaths &paths = core->host.paths;
    const std::optional<ProgramSandbox> sandbox = sandboxOf(paths, program);
    if (!sandbox)
        co_return;
    const ProgramSandbox found = *sandbox;
    const QString problem = co_await whySandboxDoesNotSee(&core->host, found, collection);
    if (!problem.isEmpty())
        throw LaunchError(LaunchError::Case::launchFailed, problem);
    // Files in our own temporary folder would be passed over without a word, and the user's configuration taken.
    const QString shared = found.sharedFolder(paths);
    std::shared_ptr<PrivateTemporaryFolder> &folder = core->sharedFolders[shared];
    if (!folder)
        folder = std::make_shared<PrivateTemporaryFolder>(QStringList{shared});
    settings->temporaryDirectory = folder->path();
    settings->temporaryFolder = childPath(settings->temporaryDirectory, u"Ludarium"_s);
}

QCoro::Task<DosPlanInput> DosLauncher::Private::gather(std::shared_ptr<Core> core, DosLaunchRequest request) {
    const DosCollaborators &others = core->collaborators;
    DosPlanInput input;
    const QString title = request.game->title;
    if (others.communityFix)
        input.fix = others.communityFix(title, request.version ? request.version->label : QString());
    if (others.configOverrides)
        input.exceptionOverrides = others.configOverrides(title);
    if (others.configOverrideOrigins)
        input.exceptionOrigins = others.configOverrideOrigins(title);
    const std::optional<QString> dosbox = others.findDOSBox ? others.findDOSBox() : std::nullopt;
    if (!dosbox || dosbox->isEmpty())
        throw LaunchError(LaunchError::Case::emulatorNotFound, QStringLiteral("DOSBox Staging"));
    input.dosbox = *dosbox;
    input.settings = DosSettings::current(core->host);
    co_await adjustToSandbox(core, input.dosbox, request.collection, &input.settings);
    input.request = std::move(request);
    input.flavour = co_await probe(core, input.dosbox);
    co_return input;
}

QCoro::Task<LaunchPlan> DosLauncher::Private::plan(std::shared_ptr<Core> core, DosLaunchRequest request) {
    const DosPlanInput input = co_await gather(core, std::move(request));
    // Named first: g++ 12 destroys the captures of a lambda twice that is made inside the awaited expression.
    const auto work = [input] { return consider(input); };
    const Considered considered = co_await runOnPool(work);
    co_return considered.result.plan;
}

QCoro::Task<DosLauncher::Started> DosLauncher::Private::launch(std::shared_ptr<Core> core, DosLaunchRequest request) {
    const DosPlanInput input = co_await gather(core, std::move(request));
    const auto look = [input] { return consider(input); };
    const Considered considered = co_await runOnPool(look);
    if (considered.result.plan.proof.verdict == LaunchProof::Verdict::missing) {
        const Alert alert = missingProgramAlert(considered.result.plan.proof);
        const int answer = co_await core->host.dialogs.ask(alert);
        if (answer != 0)
            throw LaunchCancelled();
    }
    const auto work = [input, considered] { return prepareAndWrite(input, considered); };
    const DosPlan made = co_await runOnPool(work);
    ProcessSpec spec;
    spec.program = made.plan.program;
    spec.arguments = made.plan.arguments;
    spec.workingDirectory = made.plan.workingDirectory;
    spec.environment = core->host.paths.childEnvironment();
    Started started;
    started.plan = made.plan;
    started.process = co_await core->host.processes.startEmulator(spec);
    Log::info(QStringLiteral("✅ DOSBox launched successfully (PID: %1)").arg(started.process.pid));
    if (made.feedback && core->collaborators.scheduleLaunchFeedback)
        core->collaborators.scheduleLaunchFeedback(*made.feedback);
    co_return started;
}

DosLauncher::DosLauncher(Host &host, DosCollaborators collaborators)
    : d(new Private{std::make_shared<Private::Core>(Private::Core{host, std::move(collaborators), {}, {}})}) {}

DosLauncher::~DosLauncher() = default;

QCoro::Task<LaunchPlan> DosLauncher::plan(DosLaunchRequest request) {
    return Private::plan(d->core, std::move(request));
}

QCoro::Task<DosLauncher::Started> DosLauncher::launch(DosLaunchRequest request) {
    return Private::launch(d->core, std::move(request));
}

} // namespace ludarium
