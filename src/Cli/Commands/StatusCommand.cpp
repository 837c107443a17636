#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <QMap>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

QStringList cells(const QString &name, const StateCounts &counts) {
    QStringList cells{name};
    for (const int count : {counts.games, counts.installed, counts.compressed, counts.downloadable, counts.missing})
        cells << QString::number(count);
    return cells;
}

class StatusCommand : public Command {
  public:
    const char *name() const override { return "status"; }
    const char *description() const override { return "Tell which games are there, or look at one on the disk"; }

    void declare(CommandOptions &options) override {
        options.optionalArgument("ID-OR-TITLE", m_game, "Id, title or a part of the title; without it, all games");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        GameLibrary *library = co_await context.loadLibrary();
        if (!m_game.isNull()) {
            const GamePtr game = chooseGame(context, *library, m_game);
            co_await library->updateGameStatus(game->id);
            printOne(context, *library->game(game->id));
            co_return exitDone;
        }
        printTotals(context, library->games());
        co_return exitDone;
    }

  private:
    static void printOne(CommandContext &context, const Game &game) {
        if (context.json()) {
            Json document = jsonDocument();
            addName(document, game);
            addState(document, game);
            printJson(context.output(), document);
            return;
        }
        FieldList fields;
        fields.add(QStringLiteral("Title"), game.title);
        fields.add(QStringLiteral("State"), gameStateText(game));
        fields.add(QStringLiteral("Download size"), game.downloadSize);
        fields.add(QStringLiteral("ID"), game.id);
        fields.print(context.output());
    }

    static void printTotals(CommandContext &context, const GameList &games) {
        QMap<QString, StateCounts> platforms;
        StateCounts total;
        for (const GamePtr &game : games) {
            platforms[game->platform].add(*game);
            total.add(*game);
        }
        if (context.json()) {
            Json document = jsonDocument();
            Json list = Json::array();
            for (auto it = platforms.cbegin(); it != platforms.cend(); ++it) {
                Json element = Json::object();
                element["Name"] = jsonText(it.key());
                addCounts(element, *it);
                list.push_back(std::move(element));
            }
            document["platforms"] = std::move(list);
            Json &all = document["total"] = Json::object();
            addCounts(all, total);
            printJson(context.output(), document);
            return;
        }
        Table table({QStringLiteral("PLATFORM"), QStringLiteral("GAMES"), QStringLiteral("INSTALLED"),
                     QStringLiteral("COMPRESSED"), QStringLiteral("DOWNLOADABLE"), QStringLiteral("MISSING")});
        for (auto it = platforms.cbegin(); it != platforms.cend(); ++it)
            table.add(cells(it.key(), *it));
        table.add(cells(QStringLiteral("All"), total));
        table.print(context.output());
    }

    QString m_game;
};

} // namespace

std::unique_ptr<Command> makeStatusCommand() {
    return std::make_unique<StatusCommand>();
}

} // namespace ludarium
