#include "Views/DesktopNotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace ludarium {

namespace {

constexpr int answerWait = 1000;    ///< milliseconds; the program is about to end
constexpr int usualDuration = -1;   ///< the desktop's own
constexpr uint replacesNothing = 0; ///< no earlier note

} // namespace

void showDesktopNotification(const QString &title, const QString &text) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage note = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    note << QStringLiteral("Ludarium") << replacesNothing << QStringLiteral("com.ludarium.app") << title << text
         << QStringList() << QVariantMap() << usualDuration;
    bus.call(note, QDBus::Block, answerWait);
}

} // namespace ludarium
