#include "quick/QuickSetup.h"

#include "Host/Async.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickStyle>

namespace ludarium::test {

QuickSetup::QuickSetup() = default;

QuickSetup::~QuickSetup() = default;

void QuickSetup::qmlEngineAvailable(QQmlEngine *engine) {
    // The one of the file before goes first: each puts the program's log back to what it found.
    m_fixture.reset();
    m_fixture = std::make_unique<DesktopFixture>();
    m_fixture->machine.settings.setValue(Settings::logUploadURL, QStringLiteral("http://127.0.0.1:9/nobody"));
    m_fixture->desktop.installInto(*engine);
    engine->rootContext()->setContextProperty(QStringLiteral("setup"), this);
    m_fixture->desktop.start()->begin();
    if (!m_fixture->load())
        qFatal("The fixture collection could not be loaded");
}

void QuickSetup::cleanupTestCase() {
    m_fixture.reset();
}

void QuickSetup::ask(const QString &title, const QString &text, const QStringList &buttons) {
    spawn(
        [](QuickSetup &setup, Alert alert) -> QCoro::Task<> {
            const int button = co_await setup.m_fixture->dialogs.ask(alert);
            Q_EMIT setup.answered(button);
        }(*this, Alert{title, text, buttons, Alert::Style::Informational}),
        "a test's question");
}

QVariant QuickSetup::stored(const QString &key) const {
    return m_fixture->machine.settings.rawValue(key);
}

void QuickSetup::play(double seconds) {
    GameLibrary &library = m_fixture->state.gameLibrary();
    library.recordPlay(library.games().first()->id, seconds);
}

void QuickSetup::openVariants() {
    if (!m_fixture->loadVariants())
        qFatal("The collection with variants could not be loaded");
}

void QuickSetup::askForFolder() {
    spawn(
        [](QuickSetup &setup) -> QCoro::Task<> {
            const QString prompt = QStringLiteral("Select");
            const std::optional<QString> folder = co_await setup.m_fixture->dialogs.chooseFolder(prompt);
            Q_EMIT setup.folderAnswered(folder.value_or(QStringLiteral("none")));
        }(*this),
        "a test's question for a folder");
}

bool QuickSetup::showDetails(const QString &title) {
    return m_fixture->loadDetails(title);
}

QStringList QuickSetup::takeOpened() {
    return std::exchange(m_fixture->machine.workspace.actions, {});
}

void QuickSetup::setStatus(const QString &gameId, const QString &status) {
    GameStatus wanted;
    wanted.isInstalled = status == QLatin1StringView("installed");
    wanted.isCompressed = status == QLatin1StringView("compressed");
    wanted.isDownloadable = status == QLatin1StringView("downloadable");
    if (wanted.isDownloadable)
        wanted.downloadSize = QStringLiteral("12 MB");
    m_fixture->state.gameLibrary().setGameStatus(gameId, wanted);
}

int QuickSetup::shownGames() const {
    return int(m_fixture->state.filteredGames().size());
}

QString QuickSetup::takeLaunchedVersion() {
    const QString log = m_fixture->machine.log();
    const QString fresh = log.mid(m_logRead);
    m_logRead = log.size();
    const QString mark = QStringLiteral("   Version: ");
    const qsizetype start = fresh.lastIndexOf(mark);
    return start < 0 ? QString() : fresh.mid(start + mark.size()).section(QLatin1Char('\n'), 0, 0).trimmed();
}

QString QuickSetup::savedNotes(const QString &gameId) const {
    return m_fixture->state.gameLibrary().userData().notes(gameId);
}

} // namespace ludarium::test
