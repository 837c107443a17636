#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/LoadReport.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Services/Library/GameLibrary.h"

#include <QElapsedTimer>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// Follows a load: one line a status as it comes, or the list of all of them.
class LoadWatch : public QObject {
  public:
    LoadWatch(GameLibrary &library, Output *output) : m_library(library), m_output(output) {
        m_timer.start();
        connect(&library, &GameLibrary::loadingChanged, this, &LoadWatch::take);
    }
    qint64 elapsed() const { return m_timer.elapsed(); }
    const Json &steps() const { return m_steps; }

  private:
    void take() {
        const qint64 milliseconds = m_timer.elapsed();
        const QString status = m_library.loadingStatus();
        if (status == m_last)
            return;
        m_last = status;
        Json step = Json::object();
        step["milliseconds"] = milliseconds;
        step["progress"] = m_library.loadingProgress();
        step["message"] = jsonText(status);
        m_steps.push_back(std::move(step));
        if (!m_output)
            return;
        m_output->line(QStringLiteral("%1 ms  %2 %  %3")
                           .arg(milliseconds, 7)
                           .arg(m_library.loadingProgress() * 100, 3, 'f', 0)
                           .arg(escapedForTerminal(status)));
        m_output->flush();
    }

    GameLibrary &m_library;
    Output *m_output;
    QElapsedTimer m_timer;
    QString m_last;
    Json m_steps = Json::array();
};

class LoadCommand : public Command {
  public:
    const char *name() const override { return "load"; }
    const char *description() const override { return "Load the library and tell each step with its time"; }

    QCoro::Task<int> run(CommandContext &context) override {
        Output &output = context.output();
        const LoadWatch watch(context.appState().gameLibrary(), context.json() ? nullptr : &output);
        const GameLibrary *library = co_await context.loadLibraryAsSeen();
        const qint64 milliseconds = watch.elapsed();
        if (context.json()) {
            Json document = jsonDocument();
            addLoadMembers(document, *library, milliseconds);
            document["steps"] = watch.steps();
            printJson(output, document);
        } else {
            output.line();
            loadFields(*library, milliseconds).print(output);
        }
        co_return exitDone;
    }
};

} // namespace

std::unique_ptr<Command> makeLoadCommand() {
    return std::make_unique<LoadCommand>();
}

} // namespace ludarium
