#include "App/AppState.h"
#include "Cli/CliError.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Question.h"
#include "Cli/TerminalText.h"
#include "Host/InterruptWatch.h"
#include "Services/Library/BatchOperationsManager.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// "addToFavorites" as "add-to-favorites".
QString kebab(const QString &name) {
    QString text;
    for (const QChar c : name) {
        if (c.isUpper())
            text += u'-';
        text += c.toLower();
    }
    return text;
}

class BatchCommand : public Command {
  public:
    const char *name() const override { return "batch"; }
    const char *description() const override { return "Do one thing to many games"; }

    void declare(CommandOptions &options) override {
        options.argument("OPERATION", m_operation,
                         "install, uninstall, add-to-favorites, remove-from-favorites, add-to-playlist, "
                         "export-metadata or verify-files");
        options.arguments("ID-OR-TITLE", m_games, "Games by id, title or a part of the title");
        options.flag("--all", m_all, "Every game");
        options.flag("--installed", m_installed, "Every game that is installed");
        options.flag("--not-installed", m_notInstalled, "Every game that is not installed");
        options.flag("--yes", m_yes, "Uninstall without asking");
        options.flag("--without-archive", m_withoutArchive,
                     "Uninstall also games that no archive can bring back: they are gone for good");
        options.exclusive("--all", "--installed");
        options.exclusive("--all", "--not-installed");
        options.exclusive("--installed", "--not-installed");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const BatchOperationType type = operationType();
        if (m_games.isEmpty() != (m_all || m_installed || m_notInstalled))
            throw CliError(QStringLiteral("Name games, or use one of --all, --installed and --not-installed."),
                           exitWrongUsage);
        if (m_withoutArchive && type != BatchOperationType::uninstall)
            throw CliError(QStringLiteral("--without-archive belongs to uninstall."), exitWrongUsage);
        GameLibrary *library = co_await context.loadLibrary();
        BatchOperationsManager &manager = context.appState().batchOperations();
        choose(context, *library, manager);
        if (type == BatchOperationType::uninstall && !m_yes)
            co_await confirm(context, manager.selectedGameIds().size());
        using OnlyCopies = BatchOperationsManager::OnlyCopies;
        const OnlyCopies onlyCopies = m_withoutArchive ? OnlyCopies::remove : OnlyCopies::keep;
        // There is no window to be kept live.
        manager.setPause(std::chrono::milliseconds(0));

        InterruptWatch watch;
        QObject::connect(&watch, &InterruptWatch::interrupted, &manager, &BatchOperationsManager::cancelOperation);
        qsizetype told = 0;
        const auto progress = QObject::connect(
            &manager, &BatchOperationsManager::currentOperationChanged, &manager, [&context, &manager, &told] {
                printProgress(context.json() ? context.errors() : context.output(), *manager.currentOperation(), told);
            });
        co_await manager.execute(type, {}, onlyCopies);
        QObject::disconnect(progress);
        const BatchOperation &operation = *manager.currentOperation();
        report(context, operation);
        const bool isWhole = operation.count(BatchOperationStatus::pending) == 0;
        co_return operation.failureCount() == 0 && isWhole ? exitDone : exitFailed;
    }

  private:
    BatchOperationType operationType() const {
        QStringList names;
        for (const BatchOperationType type : batchOperationTypes()) {
            const QString name = batchOperationName(type);
            if (m_operation == name || m_operation == kebab(name))
                return type;
            names.append(kebab(name));
        }
        throw CliError(
            QStringLiteral("\"%1\" is no operation. There are: %2").arg(m_operation, names.join(QStringLiteral(", "))),
            exitWrongUsage);
    }

    void choose(CommandContext &context, const GameLibrary &library, BatchOperationsManager &manager) const {
        GameList games;
        for (const QString &text : m_games)
            games.append(chooseGame(context, library, text));
        if (m_installed)
            manager.selectInstalled();
        else if (m_notInstalled)
            manager.selectNotInstalled();
        else
            manager.selectAll(m_all ? library.games() : games);
    }

    QCoro::Task<> confirm(CommandContext &context, qsizetype count) {
        QString question = QStringLiteral("Remove the files of %1 from the disk?")
                               .arg(count == 1 ? QStringLiteral("1 game") : QStringLiteral("%1 games").arg(count));
        if (m_withoutArchive)
            question += QStringLiteral(" Nothing can bring back what has no archive.");
        if (!co_await askYesNo(context, question))
            throw CliError(QStringLiteral("Nothing was uninstalled."));
    }

    /// A line for each game that has ended since the last call; `told` counts the results that were looked at.
    static void printProgress(Output &output, const BatchOperation &operation, qsizetype &told) {
        for (; told < operation.results.size(); ++told) {
            const BatchOperationResult &result = operation.results[told];
            if (result.status == BatchOperationStatus::pending || result.status == BatchOperationStatus::inProgress)
                break;
            output.line(QStringLiteral("[%1/%2] %3: %4")
                            .arg(told + 1)
                            .arg(operation.results.size())
                            .arg(escapedForTerminal(result.gameTitle), escapedForTerminal(result.message)));
        }
        output.flush();
    }

    static void report(CommandContext &context, const BatchOperation &operation) {
        const qsizetype skipped = operation.count(BatchOperationStatus::skipped);
        const qsizetype pending = operation.count(BatchOperationStatus::pending);
        if (context.json()) {
            Json document = jsonDocument();
            addText(document, "operation", batchOperationName(operation.type));
            document["completedCount"] = operation.successCount();
            document["failedCount"] = operation.failureCount();
            document["skippedCount"] = skipped;
            document["pendingCount"] = pending;
            document["results"] = Json::array();
            for (const BatchOperationResult &result : operation.results) {
                Json entry;
                addText(entry, "ID", result.gameId);
                addText(entry, "Title", result.gameTitle);
                addText(entry, "status", batchOperationStatusName(result.status));
                addText(entry, "message", result.message);
                document["results"].push_back(entry);
            }
            printJson(context.output(), document);
            return;
        }
        QString text = QStringLiteral("%1: %2 done, %3 failed, %4 skipped")
                           .arg(batchOperationTitle(operation.type))
                           .arg(operation.successCount())
                           .arg(operation.failureCount())
                           .arg(skipped);
        if (pending > 0)
            text += QStringLiteral(", %1 not begun").arg(pending);
        context.output().line(text);
    }

    QString m_operation;
    QStringList m_games;
    bool m_all = false;
    bool m_installed = false;
    bool m_notInstalled = false;
    bool m_yes = false;
    bool m_withoutArchive = false;
};

} // namespace

std::unique_ptr<Command> makeBatchCommand() {
    return std::make_unique<BatchCommand>();
}

} // namespace ludarium
