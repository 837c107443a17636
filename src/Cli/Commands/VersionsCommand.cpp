#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Cli/TerminalText.h"
#include "Services/Launch/VersionCheck.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

QString textOf(const std::optional<AudioType> &audio) {
    return audio ? audioTypeText(*audio) : QString();
}

Json toJson(const GameVersionOption &option) {
    Json object = Json::object();
    addText(object, "label", option.label);
    addText(object, "type", versionTypeText(option.versionType));
    addText(object, "audio", textOf(option.audioType));
    addText(object, "folder", option.workingDirectory);
    addText(object, "executable", option.executable);
    for (auto it = option.configChanges.cbegin(); it != option.configChanges.cend(); ++it)
        object["config"][it.key().toStdString()] = jsonText(it.value());
    addTexts(object, "setup", option.setupCommands.value_or(QStringList()));
    object["mountAtGameLevel"] = option.mountAtGameLevel;
    return object;
}

class VersionsCommand : public Command {
  public:
    const char *name() const override { return "versions"; }
    const char *description() const override { return "List the versions that a game can be played in"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        const GamePtr game = chooseGame(context, *library, m_game);
        const VersionCheck &check = context.appState().versionCheck();
        const VersionCheck::Result found = co_await check.checkVersionsAndLaunch(game->id, library->collectionURL());
        QList<GameVersionOption> options;
        if (found.menu)
            options = found.menu->options;
        else if (found.version)
            options.append(*found.version);
        if (context.json())
            printAsJson(context.output(), *game, options);
        else if (options.isEmpty())
            context.output().line(QStringLiteral("No versions of \"%1\" are known: it starts as the collection has it.")
                                      .arg(escapedForTerminal(game->title)));
        else
            printAsTable(context.output(), options);
        co_return exitDone;
    }

  private:
    static void printAsJson(Output &output, const Game &game, const QList<GameVersionOption> &options) {
        Json document = jsonDocument();
        addName(document, game);
        Json list = Json::array();
        for (const GameVersionOption &option : options)
            list.push_back(toJson(option));
        document["versions"] = std::move(list);
        printJson(output, document);
    }

    static void printAsTable(Output &output, const QList<GameVersionOption> &options) {
        Table table({QStringLiteral("VERSION"), QStringLiteral("TYPE"), QStringLiteral("AUDIO"),
                     QStringLiteral("FOLDER"), QStringLiteral("EXECUTABLE")});
        for (const GameVersionOption &option : options)
            table.add({option.label, versionTypeText(option.versionType), textOf(option.audioType),
                       option.workingDirectory, option.executable});
        table.print(output);
    }

    QString m_game;
};

} // namespace

std::unique_ptr<Command> makeVersionsCommand() {
    return std::make_unique<VersionsCommand>();
}

} // namespace ludarium
