#include "Views/DesktopColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

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

DesktopColorScheme::DesktopColorScheme(QObject *parent) : QObject(parent) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
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

void DesktopColorScheme::settingChanged(const QString &group, const QString &key, const QDBusVariant &value) {
    if (group == appearanceGroup && key == colorSchemeKey)
        setScheme(value.variant().toUInt());
}

void DesktopColorScheme::setScheme(uint scheme) {
    if (scheme == darkScheme || scheme == lightScheme)
        Q_EMIT darkChanged(scheme == darkScheme);
}

} // namespace ludarium
