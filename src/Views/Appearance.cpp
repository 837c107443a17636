#include "Appearance.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFontDatabase>
#include <algorithm>
#include <array>

namespace ludarium {

namespace {

constexpr std::array themes{"System", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"};

// The desktop portal, which GNOME, KDE and others answer: 0 no preference, 1 dark, 2 light.
constexpr QLatin1StringView portalService{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView portalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView portalInterface{"org.freedesktop.portal.Settings"};
constexpr QLatin1StringView appearanceGroup{"org.freedesktop.appearance"};
constexpr QLatin1StringView colorSchemeKey{"color-scheme"};
constexpr uint lightScheme = 2;

} // namespace

Appearance::Appearance(Host &host, QObject *parent) : QObject(parent), m_host(host) {
    const QString stored = host.settings.value(Settings::appTheme);
    m_theme = isTheme(stored) ? stored : QStringLiteral("System");
}

bool Appearance::isTheme(const QString &name) {
    return std::any_of(themes.begin(), themes.end(),
                       [&](const char *theme) { return name == QLatin1StringView(theme); });
}

void Appearance::setTheme(const QString &theme) {
    if (!isTheme(theme) || theme == m_theme)
        return;
    m_theme = theme;
    Q_EMIT changed();
    try {
        m_host.settings.setValue(Settings::appTheme, theme);
    } catch (const std::exception &error) {
        Log::error(QStringLiteral("Failed to save the theme: %1").arg(QString::fromUtf8(error.what())));
    }
}

void Appearance::setDark(bool dark) {
    if (std::exchange(m_dark, dark) != dark)
        Q_EMIT changed();
}

void Appearance::setTextScale(double scale) {
    const double wanted = std::clamp(scale, 1.0, 2.0);
    if (std::exchange(m_textScale, wanted) != wanted)
        Q_EMIT changed();
}

void Appearance::setReducedMotion(bool reduced) {
    if (std::exchange(m_reducedMotion, reduced) != reduced)
        Q_EMIT changed();
}

QString Appearance::fixedFamily() const {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

void Appearance::followDesktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(desktopSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("Read"));
    question << QString(appearanceGroup) << QString(colorSchemeKey);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isError())
            return; // no portal: the dark look stays
        // "Read" wraps its answer twice.
        QVariant value = reply.value().variant();
        if (value.canConvert<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        setColorScheme(value.toUInt());
    });
}

void Appearance::desktopSettingChanged(const QString &group, const QString &key, const QDBusVariant &value) {
    if (group == appearanceGroup && key == colorSchemeKey)
        setColorScheme(value.variant().toUInt());
}

void Appearance::setColorScheme(uint scheme) {
    setDark(scheme != lightScheme);
}

} // namespace ludarium
