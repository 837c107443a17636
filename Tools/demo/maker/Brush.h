#pragma once

#include "maker/Dice.h"

#include <QColor>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace ludarium::demo {

/// The few strokes of which all scenes are made. Coordinates are fractions of the picture, 0 to 1 from the top left;
/// `unit` is the shorter side in pixels.
class Brush {
  public:
    Brush(QPainter &painter, const QRectF &area, const QString &seed);

    QPointF at(double x, double y) const;
    double length(double part) const { return part * m_unit; }

    /// A vertical gradient over the whole picture.
    void sky(const QList<QColor> &colors);
    void stars(int count, double lowest = 1.0);
    /// A disc with a glow around it.
    void glow(double x, double y, double radius, const QColor &color, double reach = 3.0);
    void disc(double x, double y, double radius, const QColor &color);
    /// A ball lit from the upper left.
    void ball(double x, double y, double radius, const QColor &color);
    /// Land from a rough line at height `y` down to the bottom edge.
    void ridge(double y, double roughness, const QColor &top, const QColor &bottom, int peaks = 5);
    /// Water with wave crests from `y` down.
    void water(double y, const QColor &top, const QColor &bottom, const QColor &crest);
    void cloud(double x, double y, double width, const QColor &color);
    void pine(double x, double foot, double height, const QColor &color);
    void leafTree(double x, double foot, double height, const QColor &trunk, const QColor &leaves);
    void polygon(const QList<QPointF> &points, const QColor &color);
    void polygon(const QList<QPointF> &points, const QBrush &brush);
    /// A block with a pointed or crenellated top, windows lit.
    void tower(double x, double foot, double width, double height, const QColor &color, const QColor &window,
               bool pointed);
    void building(double x, double foot, double width, double height, const QColor &color, const QColor &window);
    void line(double x1, double y1, double x2, double y2, double width, const QColor &color);
    void vignette(double strength);

    QPainter &painter;
    Dice dice;

  private:
    QRectF m_area;
    double m_unit;
};

} // namespace ludarium::demo
