#include "Views/TableLayout.h"

#include "Host/Host.h"
#include "Host/Settings.h"
#include "Views/KeptSetting.h"

#include <algorithm>
#include <cmath>

namespace ludarium {

namespace {

constexpr double least = 40;
constexpr double most = 1000;

const QList<double> &defaults() {
    static const QList<double> list{260, 110, 60, 150, 140, 70, 70, 100, 90, 110};
    return list;
}

} // namespace

const QStringList &TableLayout::columns() {
    static const QStringList names{QStringLiteral("title"),     QStringLiteral("platform"),
                                   QStringLiteral("year"),      QStringLiteral("developer"),
                                   QStringLiteral("genre"),     QStringLiteral("rating"),
                                   QStringLiteral("playCount"), QStringLiteral("lastPlayed"),
                                   QStringLiteral("playTime"),  QStringLiteral("status")};
    return names;
}

TableLayout::TableLayout(Host &host, QObject *parent) : QObject(parent), m_host(host), m_widths(defaults()) {
    const QMap<QString, double> stored = host.settings.value(Settings::tableColumnWidths);
    for (qsizetype i = 0; i < columns().size(); ++i)
        if (const double width = stored.value(columns()[i]); std::isfinite(width) && width > 0)
            m_widths[i] = std::clamp(width, least, most);
}

void TableLayout::setWidth(int column, double width) {
    if (column < 0 || column >= m_widths.size() || !std::isfinite(width))
        return;
    m_widths[column] = std::clamp(std::round(width), least, most);
    Q_EMIT widthsChanged();
}

void TableLayout::resetWidth(int column) {
    setWidth(column, defaults().value(column, least));
    save();
}

void TableLayout::save() {
    QMap<QString, double> stored;
    for (qsizetype i = 0; i < m_widths.size(); ++i)
        if (m_widths[i] != defaults()[i])
            stored.insert(columns()[i], m_widths[i]);
    if (const QString reason = keepSetting(m_host.settings, Settings::tableColumnWidths, stored); !reason.isEmpty())
        Q_EMIT warned(tr("The widths of the columns are not kept for the next start: %1").arg(reason));
}

} // namespace ludarium
