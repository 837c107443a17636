#pragma once

#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Workspace.h"

#include <QString>
#include <functional>
#include <memory>

class QObject;

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
    /// What became of a damaged settings store, at its opening or since; empty when it is whole.
    QString settingsRepair() const;
    void onSettingsRepaired(QObject *context, const std::function<void()> &function);
    /// Why the settings are not those that were stored, but none or older ones; empty when they could be read.
    QString settingsReadProblem() const;

  private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ludarium
