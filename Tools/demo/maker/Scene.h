#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace ludarium::demo {

/// Paints one of the landscapes of the demo collection ("space", "castle", …) over the whole of `area`. The same seed
/// always gives the same picture; the picture scales with the area, so that box, background and screenshot agree.
void paintScene(QPainter &painter, const QRectF &area, const QString &scene, const QString &seed);

/// The colour in which titles stand out on a scene, and the one of its shadow.
struct SceneInk {
    QColor light;
    QColor dark;
    QColor accent;
};
SceneInk sceneInk(const QString &scene);

} // namespace ludarium::demo
