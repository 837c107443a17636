#include "Cli/CommandContext.h"

#include "App/AppState.h"
#include "App/Composition.h"
#include "Cli/CliError.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Models/LaunchError.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"

#include <QFileInfo>

namespace ludarium {

CommandContext::CommandContext(Composition &composition, CliDialogs &dialogs, const GlobalOptions &options,
                               Output &output, Output &errors)
    : m_composition(composition), m_dialogs(dialogs), m_options(options), m_output(output), m_errors(errors) {}

Host &CommandContext::host() {
    return m_composition.host();
}

GameLauncher &CommandContext::launcherFor(const GameLibrary &library, bool prepare) {
    GameLauncher &launcher = m_composition.appState().gameLauncher();
    if (!prepare)
        launcher.collectionPreparation = {};
    if (launcher.collectionURL() != library.collectionURL())
        launcher.setCollectionURL(library.collectionURL());
    return launcher;
}

QCoro::Task<GameLibrary *> CommandContext::loadLibrary() {
    // Not by way of AppState::setCollectionPath: that remembers the folder.
    QString collection = m_options.collection;
    if (collection.isEmpty()) {
        collection = m_composition.host().settings.value(Settings::collectionPath);
        if (collection.isEmpty() || !QFileInfo::exists(collection))
            throw LaunchError(LaunchError::Case::noCollectionPath);
    }
    GameLibrary &library = m_composition.appState().gameLibrary();
    co_await library.loadCollection(collection);
    if (!library.errorMessage().isEmpty())
        throw CliError(library.errorMessage());
    co_return &library;
}

} // namespace ludarium
