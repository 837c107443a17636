#include "Views/StartScreen.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Services/Library/GameLibrary.h"
#include "Views/KeptSetting.h"

#include <QPointer>
#include <chrono>

namespace ludarium {

namespace {

using std::chrono::milliseconds;
constexpr milliseconds shortest{800};
constexpr milliseconds pollInterval{100};
constexpr milliseconds afterHiding{300};

} // namespace

void StartScreen::begin() {
    spawn(run(), "the splash screen");
}

void StartScreen::completeFirstRun() {
    const QString reason = keepSetting(m_state.host().settings, Settings::hasCompletedFirstRun, true);
    if (!reason.isEmpty())
        Q_EMIT warned(tr("The next start will ask again, as nothing is kept: %1").arg(reason));
}

QCoro::Task<> StartScreen::run() {
    const QPointer<StartScreen> self(this);
    Clock &clock = m_state.host().clock;
    co_await clock.sleep(shortest);
    while (self && m_state.gameLibrary().isLoading())
        co_await clock.sleep(pollInterval);
    if (!self)
        co_return;
    m_visible = false;
    Q_EMIT visibleChanged();
    co_await clock.sleep(afterHiding);
    if (!self || !m_asking)
        co_return;
    if (!m_notice.isEmpty()) {
        Alert alert;
        alert.title = QStringLiteral("Settings");
        alert.text = m_notice;
        alert.buttons.append(QStringLiteral("OK"));
        alert.style = Alert::Style::Warning;
        co_await m_state.host().dialogs.ask(alert);
        if (!self)
            co_return;
    }
    if (!m_state.host().settings.value(Settings::hasCompletedFirstRun))
        Q_EMIT firstRunNeeded();
    else if (m_state.collectionPath().isEmpty() ||
             (m_state.gameLibrary().games().isEmpty() && !m_state.gameLibrary().unavailable().isEmpty()))
        Q_EMIT folderNeeded();
}

} // namespace ludarium
