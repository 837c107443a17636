#pragma once

#include "maker/Scene.h"

#include <QFont>
#include <QPainter>
#include <QString>

namespace ludarium::demo {

/// The typeface of small print, `pixels` high.
QFont plainFont(double pixels, bool bold);

/// Letters a title into an area as a box of the time would: a typeface chosen by `style` (one look for each developer
/// and series), broken into lines, as large as fits, with outline, gradient and shadow. A subtitle behind ": " or in
/// brackets stands smaller below.
void paintTitle(QPainter &painter, const QRectF &area, const QString &title, const QString &style, const SceneInk &ink);

} // namespace ludarium::demo
