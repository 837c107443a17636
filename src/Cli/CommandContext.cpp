#include "Cli/CommandContext.h"

#include "App/AppState.h"
#include "App/Composition.h"
#include "Cli/CliError.h"
#include "Cli/Output.h"
#include "Cli/TerminalText.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

CommandContext::CommandContext(Composition &composition, CliDialogs &dialogs, const GlobalOptions &options,
                               Output &output, Output &errors)
    : m_composition(composition), m_dialogs(dialogs), m_options(options), m_output(output), m_errors(errors),
      m_errorDetails(std::make_unique<Json>(Json::object())) {}

CommandContext::~CommandContext() = default;

Host &CommandContext::host() {
    return m_composition.host();
}

AppState &CommandContext::appState() {
    return m_composition.appState();
}

GameLauncher &CommandContext::launcherFor(const GameLibrary &library, bool prepare) {
    GameLauncher &launcher = appState().gameLauncher();
    if (!prepare)
        launcher.collectionPreparation = {};
    if (launcher.collectionURL() != library.collectionURL())
        launcher.setCollectionURL(library.collectionURL());
    return launcher;
}

QString CommandContext::collectionPath() {
    if (!m_options.collection.isEmpty())
        return m_options.collection;
    const QString remembered = host().settings.value(Settings::collectionPath);
    if (remembered.isEmpty())
        throw CliError(QStringLiteral("No collection path configured. Name one with --collection DIR, or select it in "
                                      "the desktop program."));
    return remembered;
}

void CommandContext::tellUnavailable(const GameLibrary &library) {
    if (library.unavailable().isEmpty())
        return;
    m_errors.line(
        QStringLiteral("ludarium-cli: %1 Games are told as they were last seen.").arg(oneLine(library.unavailable())));
    m_errors.flush();
}

QCoro::Task<GameLibrary *> CommandContext::loadLibrary() {
    GameLibrary *library = co_await loadLibraryAsSeen();
    const QString away = library->unavailable();
    co_await library->statusesVerified();
    if (library->unavailable() != away)
        tellUnavailable(*library);
    co_return library;
}

QCoro::Task<GameLibrary *> CommandContext::loadLibraryAsSeen() {
    // Of what the user did with games nothing is known then, and "nothing" would be the wrong answer.
    if (const QString problem = m_composition.settingsReadProblem(); !problem.isEmpty())
        throw CliError(QStringLiteral("The settings cannot be read: %1").arg(problem));
    // Not by way of AppState::setCollectionPath: that remembers the folder.
    const QString collection = collectionPath();
    GameLibrary &library = appState().gameLibrary();
    co_await library.loadCollection(collection);
    const QString away = library.unavailable();
    if (!library.errorMessage().isEmpty())
        throw CliError(away.isEmpty() ? library.errorMessage() : away + u' ' + library.errorMessage());
    tellUnavailable(library);
    co_return &library;
}

} // namespace ludarium
