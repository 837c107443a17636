#include "App/AppState.h"
#include "App/Composition.h"
#include "App/Handover.h"
#include "Host/Gamepad.h"
#include "Host/Heap.h"
#include "Host/HostPaths.h"
#include "Host/InterruptWatch.h"
#include "Host/SingleInstance.h"
#include "Views/Desktop.h"
#include "Views/DesktopNotification.h"
#include "Views/DesktopOptions.h"
#include "Views/DesktopWorkspace.h"
#include "Views/GamepadKeys.h"
#include "Views/QmlDialogs.h"
#include "Views/ScreenshotTaker.h"
#include "Views/WindowFramePersistence.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(LudariumPlugin)

namespace ludarium {

namespace {

constexpr int gamepadWait = 1000; ///< milliseconds

QList<QRectF> usableScreens() {
    QList<QRectF> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        if (screen == QGuiApplication::primaryScreen())
            screens.prepend(screen->availableGeometry());
        else
            screens.append(screen->availableGeometry());
    return screens;
}

/// For programs that were not installed, and desktops without themes of icons.
QIcon builtInIcon() {
    QIcon icon;
    for (const char *size : {"32", "64", "256"})
        icon.addFile(QStringLiteral(":/app-icon/%1.png").arg(QLatin1StringView(size)));
    return icon;
}

void openFirstCollection(AppState &state, const QString &folder) {
    if (folder.isEmpty())
        state.restoreCollection();
    else
        state.setCollectionPath(folder);
}

constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

Handover handoverOf(const DesktopOptions &options) {
    QByteArray token = qgetenv(tokenVariable);
    if (token.contains('\n'))
        token.clear();
    return {token, options.folder};
}

/// To the front, keeping a window maximised that is.
void raise(QWindow &window, const QByteArray &token) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.setVisible(true);
    window.raise();
    // Qt hands the token on to the compositor from there.
    if (!token.isEmpty())
        qputenv(tokenVariable, token);
    window.requestActivate();
}

int runDesktop(const DesktopOptions &options) {
    const bool picture = !options.screenshot.isEmpty();
    // A picture is taken beside a running instance and disturbs it as little as it is disturbed.
    const HostPaths paths = HostPaths::native(options.home);
    SingleInstance instance(paths.state());
    if (!picture && !instance.tryBecomePrimary()) {
        if (instance.sendToPrimary(handoverOf(options).message()))
            return EXIT_SUCCESS;
        // Who started the program from a desktop does not see what it writes.
        constexpr char problem[] = "Ludarium is running already but does not answer.";
        std::fprintf(stderr, "%s\n", problem);
        showDesktopNotification(QStringLiteral("Ludarium"), QString::fromLatin1(problem));
        return EXIT_FAILURE;
    }
    auto ownedDialogs = std::make_unique<QmlDialogs>();
    QmlDialogs &dialogs = *ownedDialogs;
    Composition composition({.home = options.home,
                             .dialogs = std::move(ownedDialogs),
                             .workspace = std::make_unique<DesktopWorkspace>(paths)});
    AppState &state = composition.appState();
    Desktop desktop(state, dialogs, composition.logger());
    QQmlApplicationEngine engine;
    desktop.installInto(engine);
    if (!options.view.isEmpty())
        state.setViewMode(viewModeFromText(options.view).value_or(ViewMode::grid));
    if (!picture)
        desktop.followDesktopColors();
    if (!options.theme.isEmpty())
        desktop.appearance()->showTheme(options.theme);
    if (picture)
        desktop.appearance()->showReducedMotion(true);

    // A picture shows the library, not a question.
    desktop.start()->setAsking(!picture);
    desktop.thumbnails()->setAsking(!picture);
    // The library is read while the window is made.
    openFirstCollection(state, options.folder);
    engine.load(QUrl(QStringLiteral("qrc:/qml/Ludarium/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    WindowFramePersistence frame(composition.host().paths);
    if (options.size)
        window->resize(*options.size);
    else if (const std::optional<QRectF> saved = picture ? std::nullopt : frame.restore(usableScreens()))
        window->setGeometry(
            QRect(saved->topLeft().toPoint(), saved->size().toSize().expandedTo(window->minimumSize())));
    window->show();
    if (!picture)
        frame.startObserving(*window);
    QObject::connect(&instance, &SingleInstance::messageReceived, &desktop,
                     [&desktop, window](const QByteArray &message) {
                         const Handover handover = Handover::fromMessage(message);
                         raise(*window, handover.activationToken);
                         if (!handover.folder.isEmpty())
                             desktop.openCollection(handover.folder);
                     });
    desktop.start()->setNotice(composition.settingsNotice());
    composition.onSettingsRepaired(&desktop, [&] { Q_EMIT desktop.warned(composition.settingsRepair()); });
    desktop.start()->begin();

    // The end of a desktop session is a SIGTERM: it closes the program as its own command does.
    InterruptWatch ending({SIGINT, SIGTERM, SIGHUP});
    QObject::connect(&ending, &InterruptWatch::interrupted, &desktop, &QCoreApplication::quit);

    Gamepad gamepad;
    std::unique_ptr<GamepadKeys> gamepadKeys;
    if (!picture) // looking for gamepads can wait until the window has come
        QTimer::singleShot(gamepadWait, &desktop, [&] { gamepadKeys = std::make_unique<GamepadKeys>(state, gamepad); });

    std::unique_ptr<ScreenshotTaker> taker;
    if (picture) {
        taker = std::make_unique<ScreenshotTaker>(*window, desktop, options.screenshot, options.select);
        QObject::connect(taker.get(), &ScreenshotTaker::finished, &desktop,
                         [](bool saved) { QCoreApplication::exit(saved ? EXIT_SUCCESS : EXIT_FAILURE); });
    }
    return QCoreApplication::exec();
}

} // namespace

} // namespace ludarium

int main(int argc, char **argv) {
    using namespace ludarium;
    keepLargeBlocksApart();
    const DesktopOptions::Outcome outcome = DesktopOptions::parse(argc, argv);
    if (!outcome.options) {
        std::fputs(qUtf8Printable(outcome.output), outcome.exitStatus == 0 ? stdout : stderr);
        return outcome.exitStatus;
    }
    if (!outcome.options->screenshot.isEmpty()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Ludarium"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUDARIUM_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.ludarium.app"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("com.ludarium.app"), builtInIcon()));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    return runDesktop(*outcome.options);
}
