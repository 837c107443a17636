#pragma once

#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Workspace.h"

#include <QString>
#include <memory>

namespace ludarium {

class AppLogger;
class AppState;
class EmulatorManager;

/// What a program of this project is made of: every instance, made once, in order. The desktop program passes its own
/// dialogs, workspace and terminal; the command line takes the plain ones.
class Composition {
  public:
    struct Options {
        QString home;           ///< everything that the program keeps goes below it; empty: the user's own
        bool mirrorLog = false; ///< log lines also to standard error
        std::unique_ptr<Dialogs> dialogs;
        std::unique_ptr<Workspace> workspace;
    };
    explicit Composition(Options options);
    ~Composition();

    Host &host();
    AppLogger &logger();
    EmulatorManager &emulators();
    AppState &appState();
    /// What the user has to know of the settings store, such as that nothing can be saved; mostly empty.
    QString settingsNotice() const;

  private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ludarium
