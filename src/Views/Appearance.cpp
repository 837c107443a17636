#include "Views/Appearance.h"

#include "Host/Host.h"
#include "Host/Settings.h"
#include "Views/KeptSetting.h"

#include <QFontDatabase>
#include <algorithm>
#include <array>

namespace ludarium {

namespace {

constexpr std::array themes{"System", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"};

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

template<typename T>
void Appearance::keep(const Setting<T> &setting, const T &value) {
    if (const QString reason = keepSetting(m_host.settings, setting, value); !reason.isEmpty())
        Q_EMIT warned(tr("The look is not kept for the next start: %1").arg(reason));
}

void Appearance::setTheme(const QString &theme) {
    if (!isTheme(theme) || theme == m_theme)
        return;
    showTheme(theme);
    keep(Settings::appTheme, theme);
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
    keep(Settings::textScale, wanted);
    Q_EMIT changed();
}

void Appearance::setReducedMotion(bool reduced) {
    if (reduced == m_reducedMotion)
        return;
    showReducedMotion(reduced);
    keep(Settings::reducedMotion, reduced);
}

void Appearance::showReducedMotion(bool reduced) {
    if (std::exchange(m_reducedMotion, reduced) != reduced)
        Q_EMIT changed();
}

QString Appearance::fixedFamily() const {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

} // namespace ludarium
