#pragma once

#include "support/TestHost.h"

#include "App/AppState.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Views/Desktop.h"
#include "Views/QmlDialogs.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace ludarium::test {

/// The desktop program's parts on a machine of their own. The window is made on demand.
class DesktopFixture {
  public:
    /// With `systemClock` waits take real time, as a window needs them to.
    explicit DesktopFixture(bool systemClock = false);
    /// Waits for a load that is still going on.
    ~DesktopFixture();

    TestHost machine;
    QmlDialogs dialogs;
    SystemClock realClock;
    Host host;
    EmulatorManager emulators;
    AppState state;
    Desktop desktop;

    /// Writes the fixture collection, once, and returns its folder.
    QString collection();
    /// Opens the fixture collection and waits until it is loaded; false when that takes too long.
    bool load();
    /// The same with the collection of `DetailCollection`, of which the game of `title` is selected.
    bool loadDetails(const QString &title);
    /// The same with the variants and the hard titles.
    bool loadVariants();
    /// The main window, shown at `size`.
    QQuickWindow &window(QSize size = {1280, 800});
    QQmlEngine &engine() { return m_engine; }
    /// Waits until every cover has come, then draws the window.
    QImage picture(QQuickWindow &window);

  private:
    bool open(const QString &folder);

    QQmlApplicationEngine m_engine;
};

} // namespace ludarium::test
