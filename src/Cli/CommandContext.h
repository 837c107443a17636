#pragma once

#include "Cli/CommandLine.h"
#include "Cli/JsonText.h"

#include <QCoro/QCoroTask>

namespace ludarium {

class AppState;
class CliDialogs;
class Composition;
class GameLauncher;
class GameLibrary;
class Output;
struct Host;

/// What a command works with.
class CommandContext {
  public:
    CommandContext(Composition &composition, CliDialogs &dialogs, const GlobalOptions &options, Output &output,
                   Output &errors);
    ~CommandContext();

    const GlobalOptions &options() const { return m_options; }
    bool json() const { return m_options.json; }
    /// Data for the user or for a script.
    Output &output() { return m_output; }
    /// Standard error, for what is no data.
    Output &errors() { return m_errors; }

    /// What the object of an error holds besides its message, with `json`.
    Json &errorDetails() { return *m_errorDetails; }

    Composition &composition() { return m_composition; }
    Host &host();
    AppState &appState();
    CliDialogs &dialogs() { return m_dialogs; }
    /// The launcher, told the collection of a loaded library. Only what launches calls this: with `prepare` the
    /// launcher makes the collection ready, and listing writes nothing.
    GameLauncher &launcherFor(const GameLibrary &library, bool prepare);

    /// The folder that is named on the command line, else the remembered one. Throws CliError without either.
    QString collectionPath();
    /// The library of that collection, loaded, its games as they are on the disk. Throws CliError, with the library's
    /// own message where it has one.
    QCoro::Task<GameLibrary *> loadLibrary();
    /// The same for what tells nothing of the disk: games that come from the cache may stand as they were last seen.
    QCoro::Task<GameLibrary *> loadLibraryAsSeen();

  private:
    void tellUnavailable(const GameLibrary &library);

    Composition &m_composition;
    CliDialogs &m_dialogs;
    const GlobalOptions &m_options;
    Output &m_output;
    Output &m_errors;
    std::unique_ptr<Json> m_errorDetails;
};

} // namespace ludarium
