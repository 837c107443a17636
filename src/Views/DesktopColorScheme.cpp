#include "Views/DesktopColorScheme.h"

#include "Host/AppLogger.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace ludarium {

namespace {

constexpr QLatin1StringView portalService{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView portalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView portalInterface{"org.freedesktop.portal.Settings"};
constexpr QLatin1StringView appearanceGroup{"org.freedesktop.appearance"};
constexpr QLatin1StringView colorSchemeKey{"color-scheme"};
constexpr uint darkScheme = 1;
constexpr uint lightScheme = 2;

} // namespace

DesktopColorScheme::DesktopColorScheme(QDBusConnection bus, QObject *parent) : QObject(parent) {
    qApp->installEventFilter(this);
    // There the palette is the system's from the first moment on; elsewhere it may be nobody's choice.
    if (QGuiApplication::platformName() == QLatin1StringView("cocoa"))
        QMetaObject::invokeMethod(this, &DesktopColorScheme::followPalette, Qt::QueuedConnection);
    if (!bus.isConnected())
        return;
    // The whole message: a slot that takes a QDBusVariant is refused as long as nothing has made Qt register that type.
    if (!bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QDBusMessage))))
        Log::warning(QStringLiteral("⚠️ A change of the desktop's colours will not be noticed"));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("Read"));
    question << QString(appearanceGroup) << QString(colorSchemeKey);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isError())
            return;
        // "Read" wraps its answer twice.
        QVariant value = reply.value().variant();
        if (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        setScheme(value.toUInt());
    });
}

void DesktopColorScheme::settingChanged(const QDBusMessage &message) {
    const QVariantList told = message.arguments();
    if (told.size() == 3 && told[0].toString() == appearanceGroup && told[1].toString() == colorSchemeKey)
        setScheme(told[2].value<QDBusVariant>().variant().toUInt());
}

void DesktopColorScheme::setScheme(uint scheme) {
    m_scheme = scheme;
    if (scheme == darkScheme || scheme == lightScheme)
        Q_EMIT darkChanged(scheme == darkScheme);
    else
        followPalette();
}

void DesktopColorScheme::followPalette() {
    constexpr int middle = 128;
    Q_EMIT darkChanged(QGuiApplication::palette().color(QPalette::Window).lightness() < middle);
}

bool DesktopColorScheme::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp && m_scheme != darkScheme &&
        m_scheme != lightScheme)
        followPalette();
    return QObject::eventFilter(watched, event);
}

} // namespace ludarium
