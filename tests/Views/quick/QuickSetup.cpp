#include "quick/QuickSetup.h"

#include "Host/Async.h"
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

} // namespace ludarium::test
