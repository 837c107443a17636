#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/LoadReport.h"
#include "Services/Library/GameLibrary.h"

#include <QElapsedTimer>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class RefreshCommand : public Command {
  public:
    const char *name() const override { return "refresh"; }
    const char *description() const override { return "Load the library again and look which games are there"; }

    void declare(CommandOptions &options) override {
        options.flag("--clear-cache", m_clearCache, "Read the collection's own files instead of the cache");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        QElapsedTimer timer;
        timer.start();
        const QString collection = context.collectionPath();
        if (m_clearCache)
            context.appState().gameLibrary().clearCache(collection);
        const GameLibrary *library = co_await context.loadLibrary();
        if (context.json()) {
            Json document = jsonDocument();
            addLoadMembers(document, *library, timer.elapsed());
            printJson(context.output(), document);
        } else {
            loadFields(*library, timer.elapsed()).print(context.output());
        }
        co_return exitDone;
    }

  private:
    bool m_clearCache = false;
};

} // namespace

std::unique_ptr<Command> makeRefreshCommand() {
    return std::make_unique<RefreshCommand>();
}

} // namespace ludarium
