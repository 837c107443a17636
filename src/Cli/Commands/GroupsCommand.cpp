#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryBrowser.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class GroupsCommand : public Command {
  public:
    const char *name() const override { return "groups"; }
    const char *description() const override { return "List the games that there are several variants of"; }

    void declare(CommandOptions &options) override {
        options.text("--search", "TEXT", m_search,
                     "Only variants with this text in title, developer, publisher, genre or series");
        options.number("--limit", "N", m_limit, "At most this many groups");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        BrowseQuery query;
        query.search = m_search;
        QList<GameGroup> groups = context.appState().browser().filteredGameGroups(query);
        groups.removeIf([](const GameGroup &group) { return group.variants.size() < 2; });
        if (m_limit && *m_limit < groups.size())
            groups.remove(*m_limit, groups.size() - *m_limit);
        if (context.json())
            printAsJson(context.output(), groups, library->userData());
        else
            printAsTable(context.output(), groups);
        co_return exitDone;
    }

  private:
    static void printAsJson(Output &output, const QList<GameGroup> &groups, const UserData &user) {
        JsonList list(output, "groups");
        for (const GameGroup &group : groups) {
            Json element = Json::object();
            element["normalizedTitle"] = jsonText(group.normalizedTitle);
            element["primaryID"] = jsonText(group.primaryVariant->id);
            element["platformNames"] = jsonTexts(group.availablePlatforms());
            element["playCount"] = group.playCount();
            addInstant(element, "lastPlayed", group.lastPlayed());
            Json variants = Json::array();
            for (const GamePtr &game : group.variants)
                variants.push_back(toJson(*game, user));
            element["variants"] = std::move(variants);
            list.add(element);
        }
        list.finish();
    }

    static void printAsTable(Output &output, const QList<GameGroup> &groups) {
        Table table({QStringLiteral("GROUP"), QStringLiteral("PLATFORM"), QStringLiteral("TITLE"),
                     QStringLiteral("PRIMARY"), QStringLiteral("STATE"), QStringLiteral("ID")},
                    2);
        for (const GameGroup &group : groups)
            for (const GamePtr &game : group.variants)
                table.add({game == group.variants.first() ? group.normalizedTitle : QString(), game->platform,
                           game->title, game == group.primaryVariant ? QStringLiteral("yes") : QString(),
                           gameStateText(*game), game->id});
        table.print(output);
    }

    QString m_search;
    std::optional<int> m_limit;
};

} // namespace

std::unique_ptr<Command> makeGroupsCommand() {
    return std::make_unique<GroupsCommand>();
}

} // namespace ludarium
