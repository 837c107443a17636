#include "App/AppState.h"
#include "Cli/CliDialogs.h"
#include "Cli/CliError.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/PlanText.h"
#include "Cli/TerminalText.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/InterruptWatch.h"
#include "Host/ProcessRunner.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Launch/VersionCheck.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"

#include <QCoro/QCoroFuture>
#include <QPromise>
#include <QScopeGuard>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// What ended the waiting for a game.
struct WaitOutcome {
    bool interrupted = false;
    std::optional<int> exitCode;
};

QCoro::Task<> forwardEnd(ProcessRunner &processes, ProcessId id, std::shared_ptr<QPromise<WaitOutcome>> promise) {
    const std::optional<int> exitCode = co_await processes.waitForEmulator(id);
    promise->addResult(WaitOutcome{false, exitCode});
    promise->finish();
}

/// Until the game ends or the user presses Ctrl-C, which ends the waiting and not the game.
QCoro::Task<WaitOutcome> waitForGame(ProcessRunner &processes, ProcessId id) {
    InterruptWatch watch;
    auto promise = std::make_shared<QPromise<WaitOutcome>>();
    promise->start();
    QFuture<WaitOutcome> outcome = promise->future();
    QObject::connect(&watch, &InterruptWatch::interrupted, &watch, [promise] {
        promise->addResult(WaitOutcome{true, std::nullopt});
        promise->finish();
    });
    spawn(forwardEnd(processes, id, promise), "Waiting for the game");
    co_return co_await outcome;
}

class PlayCommand : public Command {
  public:
    const char *name() const override { return "play"; }
    const char *description() const override { return "Start a game"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
        options.text("--game-version,--version", "LABEL", m_label, "Version to play, when the game comes in several");
        options.flag("--wait", m_wait, "Wait until the game has ended; Ctrl-C ends the waiting, not the game");
        options.flag("--dry-run", m_dryRun, "Print what would be started and why, and start nothing");
        options.flag("--anyway", m_anyway, "Start it even when its program was not found");
        options.exclusive("--wait", "--dry-run");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibraryAsSeen();
        const GamePtr game = chooseGame(context, *library, m_game);
        const VersionCheck &check = context.appState().versionCheck();
        const VersionCheck::Result versions = co_await check.checkVersionsAndLaunch(game->id, library->collectionURL());
        const std::optional<GameVersionOption> version = chooseVersion(context, versions);
        GameLauncher &launcher = context.launcherFor(*library, !m_dryRun);
        if (m_dryRun)
            co_await printPlan(context, launcher, game, version, versions.menu && !version);
        else
            co_await play(context, launcher, game, version);
        co_return exitDone;
    }

  private:
    /// The version that was named, or the only one. Without a name a game of several starts as it is installed.
    std::optional<GameVersionOption> chooseVersion(CommandContext &context, const VersionCheck::Result &versions) {
        QList<GameVersionOption> options;
        if (versions.menu)
            options = versions.menu->options;
        else if (versions.version)
            options = {*versions.version};
        QStringList labels;
        for (const GameVersionOption &option : std::as_const(options)) {
            if (option.label.compare(m_label, Qt::CaseInsensitive) == 0)
                return option;
            labels.append(u'"' + escapedForTerminal(option.label) + u'"');
        }
        const QString list = labels.join(QStringLiteral(", "));
        if (!m_label.isEmpty())
            throw CliError(labels.isEmpty() ? QStringLiteral("No versions of this game are known.")
                                            : QStringLiteral("No such version. It comes in: %1").arg(list));
        if (versions.menu)
            context.errors().line(QStringLiteral("Versions (name one with --game-version): %1").arg(list));
        return versions.version;
    }

    QCoro::Task<> printPlan(CommandContext &context, GameLauncher &launcher, GamePtr game,
                            std::optional<GameVersionOption> version, bool noneChosen) {
        LaunchPlan plan = co_await launcher.plan(game, version);
        if (noneChosen)
            plan.decisions.prepend({QStringLiteral("version"), QStringLiteral("none"),
                                    QStringLiteral("the user chose none of those known; as it is installed")});
        if (context.json()) {
            Json document = jsonDocument();
            addName(document, *game);
            document.update(toJson(plan));
            printJson(context.output(), document);
        } else {
            printLaunchPlan(context.output(), *game, plan);
        }
    }

    QCoro::Task<> play(CommandContext &context, GameLauncher &launcher, GamePtr game,
                       std::optional<GameVersionOption> version) {
        context.dialogs().startsAnyway = m_anyway;
        QString refusal;
        const QMetaObject::Connection refused =
            QObject::connect(&context.appState().gameLibrary(), &GameLibrary::userDataRefused, &launcher,
                             [&refusal](const QString &reason) { refusal = reason; });
        const auto disconnected = qScopeGuard([refused] { QObject::disconnect(refused); });
        co_await launcher.launch(game, LaunchMode::play, version);
        if (!launcher.launchError().isEmpty())
            throw CliError(launcher.launchError());
        const std::optional<ProcessId> process = launcher.lastProcess();
        const std::optional<Alert> declined = context.dialogs().lastDeclined();
        if (!process && declined) {
            const bool canInsist = declined->buttons.contains(startAnywayButton);
            throw CliError(QStringLiteral("Nothing was started: %1%2")
                               .arg(escapedForTerminal(declined->title),
                                    canInsist ? QStringLiteral(" (--anyway starts it all the same)") : QString()));
        }

        WaitOutcome outcome;
        if (m_wait && process)
            outcome = co_await waitForGame(context.host().processes, *process);
        // The tracker looks once a second: the play time is stored before the program leaves only when it is told.
        QString timeRefusal;
        if (m_wait && process && !outcome.interrupted)
            timeRefusal = context.appState().sessionTracker().endSession();
        report(context, *game, process, outcome);
        if (!timeRefusal.isEmpty())
            throw CliError(QStringLiteral("The play time is stored at the next start, not now: %1").arg(timeRefusal));
        if (!refusal.isEmpty())
            throw CliError(QStringLiteral("The game was started but not counted: %1").arg(refusal));
    }

    void report(CommandContext &context, const Game &game, const std::optional<ProcessId> &process,
                const WaitOutcome &outcome) {
        if (context.json()) {
            Json document = jsonDocument();
            addName(document, game);
            document["started"] = true;
            if (process)
                document["pid"] = process->pid;
            if (m_wait)
                document["ended"] = process && !outcome.interrupted;
            if (outcome.exitCode)
                document["exitCode"] = *outcome.exitCode;
            printJson(context.output(), document);
            return;
        }
        const QString title = escapedForTerminal(game.title);
        if (!process)
            context.output().line(m_wait ? QStringLiteral("Opened %1, which cannot be waited for.").arg(title)
                                         : QStringLiteral("Opened %1.").arg(title));
        else if (!m_wait)
            context.output().line(QStringLiteral("Started %1 (process %2).").arg(title).arg(process->pid));
        else if (outcome.interrupted)
            context.output().line(QStringLiteral("%1 goes on (process %2).").arg(title).arg(process->pid));
        else
            context.output().line(QStringLiteral("%1 has ended.").arg(title));
    }

    QString m_game;
    QString m_label;
    bool m_wait = false;
    bool m_dryRun = false;
    bool m_anyway = false;
};

} // namespace

std::unique_ptr<Command> makePlayCommand() {
    return std::make_unique<PlayCommand>();
}

} // namespace ludarium
