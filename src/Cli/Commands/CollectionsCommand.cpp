#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"
#include "Cli/JsonText.h"
#include "Cli/NamedChoice.h"
#include "Cli/Table.h"
#include "Services/Library/LibraryBrowser.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class CollectionsCommand : public Command {
  public:
    const char *name() const override { return "collections"; }
    const char *description() const override { return "List the smart collections, or the games of one"; }

    void declare(CommandOptions &options) override {
        options.optionalArgument("ID-OR-NAME", m_collection, "Lists the games of this one, in its own order");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        co_await context.loadLibrary();
        LibraryBrowser &browser = context.appState().browser();
        if (m_collection.isNull())
            printCounts(context, browser.counts().collections);
        else
            printGames(context, browser.games(chooseSmartCollection(context, m_collection)));
        co_return exitDone;
    }

  private:
    static void printCounts(CommandContext &context, const QHash<QString, int> &counts) {
        if (context.json()) {
            JsonList list(context.output(), "collections");
            for (const SmartCollectionSection &section : smartCollectionSections())
                for (const SmartCollection &collection : section.collections) {
                    Json element = Json::object();
                    element["section"] = jsonText(section.title);
                    element["ID"] = jsonText(collection.id);
                    element["Name"] = jsonText(collection.name);
                    element["gameCount"] = counts[collection.id];
                    list.add(element);
                }
            list.finish();
            return;
        }
        Table table(
            {QStringLiteral("SECTION"), QStringLiteral("COLLECTION"), QStringLiteral("GAMES"), QStringLiteral("ID")});
        for (const SmartCollectionSection &section : smartCollectionSections())
            for (const SmartCollection &collection : section.collections)
                table.add({section.title, collection.name, QString::number(counts[collection.id]), collection.id});
        table.print(context.output());
    }

    QString m_collection;
};

} // namespace

std::unique_ptr<Command> makeCollectionsCommand() {
    return std::make_unique<CollectionsCommand>();
}

} // namespace ludarium
