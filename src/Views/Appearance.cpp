#include "Views/Appearance.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QFontDatabase>
#include <algorithm>
#include <array>

namespace ludarium {

namespace {

constexpr std::array themes{"System", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"};

/// What the user chose holds for this run even when the store cannot keep it.
template<typename T>
void keep(Host &host, const Setting<T> &setting, const T &value) {
    try {
        host.settings.setValue(setting, value);
    } catch (const std::exception &error) {
        Log::error(QStringLiteral("Failed to save the setting %1: %2")
                       .arg(QString::fromUtf8(setting.key), QString::fromUtf8(error.what())));
    }
}

} // namespace

Appearance::Appearance(Host &host, QObject *parent) : QObject(parent), m_host(host) {
    const QString stored = host.settings.value(Settings::appTheme);
    m_theme = isTheme(stored) ? stored : QStringLiteral("System");
    m_textScale = std::clamp(host.settings.value(Settings::textScale), 1.0, 2.0);
    m_reducedMotion = host.settings.value(Settings::reducedMotion);
}

bool Appearance::isTheme(const QString &name) {
    return std::any_of(themes.begin(), themes.end(),
                       [&](const char *theme) { return name == QLatin1StringView(theme); });
}

void Appearance::setTheme(const QString &theme) {
    if (!isTheme(theme) || theme == m_theme)
        return;
    showTheme(theme);
    keep(m_host, Settings::appTheme, theme);
}

bool Appearance::showTheme(const QString &theme) {
    if (theme == QLatin1StringView("System Light") || theme == QLatin1StringView("System Dark")) {
        m_theme = QStringLiteral("System");
        m_dark = theme.endsWith(QLatin1StringView("Dark"));
    } else if (isTheme(theme)) {
        m_theme = theme;
    } else {
        return false;
    }
    Q_EMIT changed();
    return true;
}

void Appearance::setDark(bool dark) {
    if (std::exchange(m_dark, dark) != dark)
        Q_EMIT changed();
}

void Appearance::setTextScale(double scale) {
    const double wanted = std::clamp(scale, 1.0, 2.0);
    if (std::exchange(m_textScale, wanted) == wanted)
        return;
    keep(m_host, Settings::textScale, wanted);
    Q_EMIT changed();
}

void Appearance::setReducedMotion(bool reduced) {
    if (reduced == m_reducedMotion)
        return;
    showReducedMotion(reduced);
    keep(m_host, Settings::reducedMotion, reduced);
}

void Appearance::showReducedMotion(bool reduced) {
    if (std::exchange(m_reducedMotion, reduced) != reduced)
        Q_EMIT changed();
}

QString Appearance::fixedFamily() const {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

} // namespace ludarium
