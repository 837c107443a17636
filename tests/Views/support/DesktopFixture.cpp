#include "support/DesktopFixture.h"

#include "App/LaunchDatabases.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"
#include "support/DetailCollection.h"
#include "support/FixtureCollection.h"

#include <QDir>
#include <QElapsedTimer>

namespace ludarium::test {

DesktopFixture::DesktopFixture(bool systemClock)
    : host{machine.host().paths,        machine.host().settings,
           machine.host().processes,    machine.host().http,
           machine.host().workspace,    dialogs,
           machine.host().terminal,     systemClock ? static_cast<Clock &>(realClock) : machine.host().clock,
           machine.host().notifications},
      emulators(host), state(host, emulators, LaunchDatabases(host)), desktop(state, dialogs, *AppLogger::shared()) {
    desktop.appearance()->showReducedMotion(true);
    desktop.start()->setAsking(false);
    // Covers may come slowly enough here for the question whether to cache them.
    host.settings.setValue(Settings::dismissSlowLoadAlertPermanently, true);
}

DesktopFixture::~DesktopFixture() {
    waitUntil([&] { return !state.gameLibrary().isLoading(); });
}

QString DesktopFixture::collection() {
    const QString folder = machine.scratch() + QStringLiteral("/collection");
    if (!QDir(folder).exists())
        FixtureCollection::write(folder);
    return folder;
}

bool DesktopFixture::loadVariants() {
    const QString folder = machine.scratch() + QStringLiteral("/variants");
    FixtureCollection::write(folder, FixtureCollection::entriesWithVariants());
    return open(folder);
}

bool DesktopFixture::load() {
    return open(collection());
}

bool DesktopFixture::open(const QString &folder) {
    state.setCollectionPath(folder);
    return waitUntil([&] {
        return !state.gameLibrary().isLoading() && desktop.browse()->games()->count() > 0 &&
               desktop.sidebar()->platformCount() > 0;
    });
}

bool DesktopFixture::loadDetails(const QString &title) {
    const QString folder = machine.scratch() + QStringLiteral("/details");
    if (state.collectionPath() != folder) {
        if (!QDir(folder).exists())
            DetailCollection::write(folder);
        state.setSelectedGameId({});
        state.setCollectionPath(folder);
    }
    return waitUntil([&] { return !state.gameLibrary().isLoading() && state.gameLibrary().games().size() == 8; }) &&
           desktop.browse()->selectTitle(title);
}

QQuickWindow &DesktopFixture::window(QSize size) {
    if (m_engine.rootObjects().isEmpty()) {
        desktop.installInto(m_engine);
        m_engine.load(QUrl(QStringLiteral("qrc:/qml/Ludarium/Main.qml")));
        if (m_engine.rootObjects().isEmpty())
            throw std::runtime_error("the main window could not be made");
    }
    auto *window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());
    window->resize(size);
    window->show();
    window->requestActivate();
    return *window;
}

QImage DesktopFixture::picture(QQuickWindow &window) {
    int quiet = 0;
    waitUntil([&] {
        quiet = desktop.pendingPictures() == 0 ? quiet + 1 : 0;
        QThread::msleep(5);
        return quiet > 20;
    });
    return window.grabWindow();
}

} // namespace ludarium::test
