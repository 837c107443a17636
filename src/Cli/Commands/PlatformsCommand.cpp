#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class PlatformsCommand : public Command {
  public:
    const char *name() const override { return "platforms"; }
    const char *description() const override { return "List the platforms with the number of their games"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        QHash<QString, StateCounts> counts;
        for (const GamePtr &game : library->games())
            counts[game->platform].add(*game);
        if (context.json())
            printAsJson(context.output(), library->platforms(), counts);
        else
            printAsTable(context.output(), library->platforms(), counts);
        co_return exitDone;
    }

  private:
    static void printAsJson(Output &output, const QList<Platform> &platforms,
                            const QHash<QString, StateCounts> &counts) {
        JsonList list(output, "platforms");
        for (const Platform &platform : platforms) {
            Json element = toJson(platform);
            addCounts(element, counts[platform.name]);
            list.add(element);
        }
        list.finish();
    }

    static void printAsTable(Output &output, const QList<Platform> &platforms,
                             const QHash<QString, StateCounts> &counts) {
        Table table({QStringLiteral("PLATFORM"), QStringLiteral("CATEGORY"), QStringLiteral("GAMES"),
                     QStringLiteral("INSTALLED")});
        for (const Platform &platform : platforms) {
            const StateCounts count = counts[platform.name];
            table.add(
                {platform.name, platform.category, QString::number(count.games), QString::number(count.installed)});
        }
        table.print(output);
    }
};

} // namespace

std::unique_ptr<Command> makePlatformsCommand() {
    return std::make_unique<PlatformsCommand>();
}

} // namespace ludarium
