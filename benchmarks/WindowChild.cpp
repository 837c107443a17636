#include "WindowChild.h"

#include "App/AppState.h"
#include "App/Composition.h"
#include "Host/Heap.h"
#include "Host/Host.h"
#include "Host/HostPaths.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"
#include "Views/Desktop.h"
#include "Views/DesktopWorkspace.h"
#include "Views/QmlDialogs.h"
#include "support/Heartbeat.h"
#include "support/Measured.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <unistd.h>

Q_IMPORT_QML_PLUGIN(LudariumPlugin)

namespace ludarium {

namespace {

constexpr int frameInterval = 16;
constexpr double searchDebounce = 150;

double now() {
    return milliseconds(CLOCK_MONOTONIC);
}

void print(const char *name, double value) {
    std::printf("%s %.3f\n", name, value);
    std::fflush(stdout);
}

/// Runs the event loop as the program does, until `done` holds, looked at after every frame and event.
void runUntil(const std::function<bool()> &done, int milliseconds = 60'000) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > milliseconds)
            qFatal("the window did not do what it was asked for");
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

void idle(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

bool isA(const QQuickItem &item, const char *component) {
    return QByteArrayView(item.metaObject()->className()).startsWith(component);
}

QQuickItem *findItem(QQuickItem *root, const char *component) {
    if (!root->isVisible())
        return nullptr;
    if (isA(*root, component))
        return root;
    for (QQuickItem *child : root->childItems())
        if (QQuickItem *found = findItem(child, component))
            return found;
    return nullptr;
}

/// The program's parts, as its own main function puts them together.
class Window {
  public:
    Window(const QString &home, const QString &collection)
        : m_paths(HostPaths::native(home)), m_composition(options(home)), state(m_composition.appState()),
          m_desktop(state, *m_dialogs, m_composition.logger()) {
        m_composition.host().settings.setValue(Settings::hasCompletedFirstRun, true);
        m_desktop.installInto(m_engine);
        state.setCollectionPath(collection);
        m_engine.load(QUrl(QStringLiteral("qrc:/qml/Ludarium/Main.qml")));
        if (m_engine.rootObjects().isEmpty())
            qFatal("there is no window");
        window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());
        QObject::connect(window, &QQuickWindow::afterAnimating, window, [this] { beats.drawingStarts(); });
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [this] {
            beats.drawingEnds();
            ++frames;
        });
        window->show();
        m_desktop.start()->begin();
    }

    bool shows(const char *component) const { return findItem(window->contentItem(), component) != nullptr; }
    bool splashIsGone() { return !m_desktop.start()->isVisible(); }
    Browse &browse() { return *m_desktop.browse(); }
    /// Until the next frame that is drawn after `done` holds.
    void waitForFrame(const std::function<bool()> &done) {
        runUntil(done);
        const int before = frames;
        runUntil([&] { return frames > before; });
    }
    void settle() {
        runUntil([&] { return splashIsGone() && !state.gameLibrary().isLoading() && shows("GameCell"); });
        idle(3000);
    }
    void key(Qt::Key key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(window, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
        QCoreApplication::sendEvent(window, &release);
    }

  private:
    Composition::Options options(const QString &home) {
        auto dialogs = std::make_unique<QmlDialogs>();
        m_dialogs = dialogs.get();
        return {.home = home, .dialogs = std::move(dialogs), .workspace = std::make_unique<DesktopWorkspace>(m_paths)};
    }

    HostPaths m_paths;
    QmlDialogs *m_dialogs = nullptr;
    Composition m_composition;

  public:
    AppState &state;
    QQuickWindow *window = nullptr;
    Heartbeat beats;
    int frames = 0;

  private:
    Desktop m_desktop;
    QQmlApplicationEngine m_engine;
};

QQuickItem *findGrid(const Window &window) {
    QQuickItem *grid = nullptr;
    for (const char *component : {"GameGridView", "GameGroupGridView"})
        if (!grid)
            grid = findItem(window.window->contentItem(), component);
    if (!grid)
        qFatal("there is no grid");
    return grid;
}

/// `pixels` a frame, up to the end or for so many frames.
int scroll(Window &window, double pixels, int mostFrames) {
    QQuickItem *grid = findGrid(window);
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    int steps = 0;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        const double end =
            grid->property("originY").toDouble() + grid->property("contentHeight").toDouble() - grid->height();
        const double y = grid->property("contentY").toDouble();
        if (y >= end || steps++ >= mostFrames)
            return loop.quit();
        grid->setProperty("contentY", std::min(end, y + pixels));
    });
    timer.start(frameInterval);
    loop.exec();
    return steps;
}

double contentHeight(const Window &window) {
    return findGrid(window)->property("contentHeight").toDouble();
}

void printWaits(const char *what, const Heartbeat &beats) {
    const struct {
        const char *name;
        QList<double> list;
    } lists[] = {{"all", beats.waits()}, {"other", beats.waitsWithoutDrawing()}, {"draw", beats.drawings()}};
    for (const auto &[name, list] : lists) {
        if (list.isEmpty())
            qFatal("nothing was measured");
        const QByteArray prefix = QByteArray(what) + '.' + name;
        print(prefix + ".longest", list.last());
        print(prefix + ".p99", list[qsizetype(double(list.size() - 1) * 0.99)]);
        print(prefix + ".median", list[list.size() / 2]);
        print(prefix + ".count", double(list.size()));
    }
}

double residentMegabytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no /proc");
    return double(file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE)) / 1'048'576;
}

void search(Window &window) {
    double longest = 0;
    double sum = 0;
    int count = 0;
    int changes = 0;
    GameListModel *games = window.browse().games();
    const auto changed = [&changes] { ++changes; };
    QObject::connect(games, &QAbstractItemModel::modelReset, window.window, changed);
    QObject::connect(games, &QAbstractItemModel::rowsInserted, window.window, changed);
    QObject::connect(games, &QAbstractItemModel::rowsRemoved, window.window, changed);
    QMetaObject::invokeMethod(window.window, "focusSearch");
    for (const QChar letter : QStringLiteral("the quest")) {
        idle(400);
        const int before = changes;
        const double start = now();
        window.key(letter == u' ' ? Qt::Key_Space : Qt::Key(letter.toUpper().unicode()), QString(letter));
        QElapsedTimer timer;
        timer.start();
        runUntil([&] { return changes > before || timer.elapsed() > 1000; });
        if (changes == before)
            continue; // as many games as before
        window.waitForFrame([] { return true; });
        const double took = now() - start - searchDebounce;
        longest = std::max(longest, took);
        sum += took;
        ++count;
    }
    print("search.longest", longest);
    print("search.mean", sum / std::max(count, 1));
    print("search.count", count);
    window.browse().setSearchText({});
    idle(600);
}

void switchViews(Window &window) {
    const struct {
        const char *mode, *component, *name;
    } modes[] = {{"List", "TableRow", "view.list"}, {"Grid", "GameCell", "view.grid"}};
    for (const auto &mode : modes) {
        const double start = now();
        window.browse().setViewMode(QString::fromLatin1(mode.mode));
        window.waitForFrame([&] { return window.shows(mode.component); });
        print(mode.name, now() - start);
        idle(1000);
    }
}

void use(Window &window) {
    window.settle();
    print("memory.before", residentMegabytes());
    window.beats.restart();
    scroll(window, 40, 400); // a wheel that is turned steadily
    printWaits("slow", window.beats);
    idle(500);
    window.beats.restart();
    const int before = window.frames;
    const double start = now();
    // Nearly a page a frame, far faster than a finger can throw it; covers are still asked for.
    const int steps = scroll(window, 0.9 * findGrid(window)->height(), 100'000);
    print("whole.seconds", (now() - start) / 1000);
    print("whole.steps", steps);
    print("whole.frames", window.frames - before);
    printWaits("whole", window.beats);
    idle(500);
    findGrid(window)->setProperty("contentY", 0);
    window.beats.restart();
    scroll(window, contentHeight(window) / 400, 400); // the scroll bar pulled from end to end
    printWaits("pulled", window.beats);
    idle(3000);
    print("memory.after", residentMegabytes());
    search(window);
    switchViews(window);
}

void trace(Window &window) {
    window.settle();
    ::access("/bench-window-begins", F_OK);
    scroll(window, 400, 250);
    ::access("/bench-window-ends", F_OK);
    idle(300);
}

int emptyWindow() {
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nimport QtQuick.Controls.Basic\n"
                    "ApplicationWindow { visible: true; width: 1280; height: 800 }");
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    bool drawn = false;
    QObject::connect(window, &QQuickWindow::frameSwapped, window, [&] { drawn = true; });
    runUntil([&] { return drawn; });
    print("drawn", 0);
    return EXIT_SUCCESS;
}

} // namespace

int runWindowChild(int argc, char **argv) {
    keepLargeBlocksApart();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QStringList arguments = QGuiApplication::arguments().mid(2);
    const QString what = arguments.value(0);
    if (what == QLatin1String("empty"))
        return emptyWindow();
    Window window(arguments.value(1), arguments.value(2));
    if (what == QLatin1String("start")) {
        window.waitForFrame([&] { return window.shows("GameCell"); });
        print("games", 0);
        const double seen = now();
        window.waitForFrame([&] { return window.splashIsGone(); });
        print("splash", now() - seen);
        return EXIT_SUCCESS;
    }
    if (what == QLatin1String("prepare"))
        window.settle();
    else if (what == QLatin1String("trace"))
        trace(window);
    else
        use(window);
    print("done", 1);
    return EXIT_SUCCESS;
}

} // namespace ludarium
