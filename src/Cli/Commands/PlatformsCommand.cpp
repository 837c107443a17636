#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

struct Counts {
    int games = 0;
    int installed = 0;
};

class PlatformsCommand : public Command {
  public:
    const char *name() const override { return "platforms"; }
    const char *description() const override { return "List the platforms with the number of their games"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        QHash<QString, Counts> counts;
        for (const GamePtr &game : library->games()) {
            Counts &count = counts[game->platform];
            ++count.games;
            count.installed += game->isInstalled;
        }
        if (context.json())
            printAsJson(context.output(), library->platforms(), counts);
        else
            printAsTable(context.output(), library->platforms(), counts);
        co_return exitDone;
    }

  private:
    static void printAsJson(Output &output, const QList<Platform> &platforms, const QHash<QString, Counts> &counts) {
        JsonList list(output, "platforms");
        for (const Platform &platform : platforms) {
            Json element = toJson(platform);
            element["games"] = counts[platform.name].games;
            element["installed"] = counts[platform.name].installed;
            list.add(element);
        }
        list.finish();
    }

    static void printAsTable(Output &output, const QList<Platform> &platforms, const QHash<QString, Counts> &counts) {
        Table table({QStringLiteral("PLATFORM"), QStringLiteral("CATEGORY"), QStringLiteral("GAMES"),
                     QStringLiteral("INSTALLED")});
        for (const Platform &platform : platforms) {
            const Counts count = counts[platform.name];
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
