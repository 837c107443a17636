#include "maker/Brush.h"

#include <cmath>

namespace ludarium::demo {

Brush::Brush(QPainter &painterIn, const QRectF &area, const QString &seed)
    : painter(painterIn), dice(seed), m_area(area), m_unit(qMin(area.width(), area.height())) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
}

QPointF Brush::at(double x, double y) const {
    return {m_area.left() + x * m_area.width(), m_area.top() + y * m_area.height()};
}

void Brush::sky(const QList<QColor> &colors) {
    QLinearGradient gradient(m_area.topLeft(), m_area.bottomLeft());
    for (int i = 0; i < colors.size(); ++i)
        gradient.setColorAt(static_cast<double>(i) / static_cast<double>(qMax<qsizetype>(1, colors.size() - 1)),
                            colors[i]);
    painter.fillRect(m_area, gradient);
}

void Brush::stars(int count, double lowest) {
    for (int i = 0; i < count; ++i) {
        const double size = length(dice.between(0.0012, 0.0042));
        QColor color(255, 255, 255, 90 + dice.below(160));
        if (dice.below(4) == 0)
            color = QColor(255, 226, 180, 200);
        painter.setBrush(color);
        painter.drawEllipse(at(dice.between(0, 1), dice.between(0, lowest)), size, size);
    }
}

void Brush::glow(double x, double y, double radius, const QColor &color, double reach) {
    const QPointF center = at(x, y);
    QRadialGradient gradient(center, length(radius * reach));
    QColor edge = color;
    QColor middle = color;
    middle.setAlpha(150);
    edge.setAlpha(0);
    gradient.setColorAt(0, middle);
    gradient.setColorAt(0.4, QColor(color.red(), color.green(), color.blue(), 60));
    gradient.setColorAt(1, edge);
    painter.setBrush(gradient);
    painter.drawEllipse(center, length(radius * reach), length(radius * reach));
}

void Brush::disc(double x, double y, double radius, const QColor &color) {
    painter.setBrush(color);
    painter.drawEllipse(at(x, y), length(radius), length(radius));
}

void Brush::ball(double x, double y, double radius, const QColor &color) {
    const QPointF center = at(x, y);
    const double size = length(radius);
    QRadialGradient gradient(center, size * 1.6, center - QPointF(size * 0.5, size * 0.5));
    gradient.setColorAt(0, color.lighter(165));
    gradient.setColorAt(0.35, color);
    gradient.setColorAt(0.85, color.darker(260));
    gradient.setColorAt(1, color.darker(400));
    painter.setBrush(gradient);
    painter.drawEllipse(center, size, size);
}

void Brush::ridge(double y, double roughness, const QColor &top, const QColor &bottom, int peaks) {
    // Midpoint displacement: each pass halves the step and the height of the bumps.
    QList<double> heights;
    for (int i = 0; i <= peaks; ++i)
        heights.append(dice.between(-roughness, roughness));
    for (double rough = roughness * 0.5; heights.size() < 200; rough *= 0.52) {
        QList<double> finer;
        for (int i = 0; i + 1 < heights.size(); ++i) {
            finer.append(heights[i]);
            finer.append((heights[i] + heights[i + 1]) / 2 + dice.between(-rough, rough));
        }
        finer.append(heights.last());
        heights = finer;
    }
    QPolygonF land;
    for (int i = 0; i < heights.size(); ++i)
        land.append(at(static_cast<double>(i) / static_cast<double>(heights.size() - 1), y + heights[i]));
    land.append(at(1, 1));
    land.append(at(0, 1));
    QLinearGradient gradient(at(0, y - roughness), at(0, 1));
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.setBrush(gradient);
    painter.drawPolygon(land);
}

void Brush::water(double y, const QColor &top, const QColor &bottom, const QColor &crest) {
    QLinearGradient gradient(at(0, y), at(0, 1));
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.fillRect(QRectF(at(0, y), at(1, 1)), gradient);
    for (int i = 0; i < 70; ++i) {
        const double depth = dice.between(0, 1);
        const double row = y + (1 - y) * depth * depth;
        const double width = 0.02 + 0.12 * depth * dice.between(0.4, 1);
        const double x = dice.between(-0.05, 1);
        QColor color = crest;
        color.setAlpha(40 + dice.below(120));
        painter.setBrush(color);
        const QPointF left = at(x, row);
        painter.drawRoundedRect(QRectF(left, QSizeF(width * m_area.width(), length(0.002 + 0.006 * depth))),
                                length(0.004), length(0.004));
    }
}

void Brush::cloud(double x, double y, double width, const QColor &color) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (int i = 0; i < 7; ++i) {
        const double offset = (i - 3) / 3.0;
        const double size = width * (0.30 - 0.16 * offset * offset) * dice.between(0.8, 1.15);
        path.addEllipse(at(x, y) + QPointF(length(width * offset * 0.55), -length(size * 0.5)), length(size),
                        length(size * 0.75));
    }
    painter.save();
    painter.setClipRect(QRectF(m_area.left(), m_area.top(), m_area.width(), at(0, y).y() - m_area.top()),
                        Qt::IntersectClip);
    painter.setBrush(color);
    painter.drawPath(path);
    painter.restore();
}

void Brush::pine(double x, double foot, double height, const QColor &color) {
    for (int i = 0; i < 4; ++i) {
        const double top = foot - height + height * 0.2 * i;
        const double wide = height * (0.13 + 0.06 * i);
        const QPointF tip = at(x, top);
        const double drop = height * 0.36 * m_area.height();
        const double half = wide * m_area.height() * 0.5;
        painter.setBrush(i % 2 ? color : color.lighter(112));
        painter.drawPolygon(QPolygonF({tip, tip + QPointF(half, drop), tip + QPointF(-half, drop)}));
    }
}

void Brush::leafTree(double x, double foot, double height, const QColor &trunk, const QColor &leaves) {
    const double full = height * m_area.height();
    const QPointF base = at(x, foot);
    painter.setBrush(trunk);
    painter.drawRect(QRectF(base.x() - full * 0.05, base.y() - full * 0.5, full * 0.1, full * 0.5));
    for (int i = 0; i < 9; ++i) {
        const QPointF center = base + QPointF(full * dice.between(-0.28, 0.28), -full * dice.between(0.48, 0.92));
        painter.setBrush(leaves.lighter(85 + dice.below(40)));
        painter.drawEllipse(center, full * 0.17, full * 0.15);
    }
}

void Brush::polygon(const QList<QPointF> &points, const QColor &color) {
    polygon(points, QBrush(color));
}

void Brush::polygon(const QList<QPointF> &points, const QBrush &brush) {
    QPolygonF shape;
    for (const QPointF &point : points)
        shape.append(at(point.x(), point.y()));
    painter.setBrush(brush);
    painter.drawPolygon(shape);
}

void Brush::tower(double x, double foot, double width, double height, const QColor &color, const QColor &window,
                  bool pointed) {
    QLinearGradient shade(at(x, 0), at(x + width, 0));
    shade.setColorAt(0, color.lighter(135));
    shade.setColorAt(1, color.darker(150));
    const double top = foot - height;
    polygon({{x, foot}, {x, top}, {x + width, top}, {x + width, foot}}, QBrush(shade));
    if (pointed) {
        polygon({{x - width * 0.2, top}, {x + width / 2, top - height * 0.38}, {x + width * 1.2, top}},
                color.darker(140));
    } else {
        for (int i = 0; i < 3; ++i) {
            const double left = x + width * (0.40 * i);
            polygon({{left, top + 0.001},
                     {left, top - width * 0.2},
                     {left + width * 0.2, top - width * 0.2},
                     {left + width * 0.2, top + 0.001}},
                    QBrush(shade));
        }
    }
    const int floors = qMax(1, static_cast<int>(height / 0.09));
    for (int floor = 0; floor < floors; ++floor) {
        if (dice.below(3) == 0)
            continue;
        const QPointF center = at(x + width * dice.between(0.35, 0.65), top + height * (floor + 0.5) / floors);
        painter.setBrush(window);
        painter.drawRoundedRect(
            QRectF(center.x() - length(0.006), center.y() - length(0.012), length(0.012), length(0.024)), length(0.006),
            length(0.006));
    }
}

void Brush::building(double x, double foot, double width, double height, const QColor &color, const QColor &window) {
    const double top = foot - height;
    polygon({{x, foot}, {x, top}, {x + width, top}, {x + width, foot}}, color);
    const int columns = qMax(2, static_cast<int>(width / 0.022));
    const int rows = qMax(2, static_cast<int>(height / 0.026));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (dice.below(100) > 38)
                continue;
            const QPointF corner = at(x + width * (column + 0.25) / columns, top + height * (row + 0.3) / rows);
            QColor lit = window;
            lit.setAlpha(120 + dice.below(135));
            painter.setBrush(lit);
            painter.drawRect(
                QRectF(corner, QSizeF(width / columns * 0.5 * m_area.width(), height / rows * 0.45 * m_area.height())));
        }
    }
}

void Brush::line(double x1, double y1, double x2, double y2, double width, const QColor &color) {
    painter.setPen(QPen(color, length(width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(at(x1, y1), at(x2, y2));
    painter.setPen(Qt::NoPen);
}

void Brush::vignette(double strength) {
    QRadialGradient gradient(m_area.center(), std::hypot(m_area.width(), m_area.height()) * 0.56);
    gradient.setColorAt(0.45, QColor(0, 0, 0, 0));
    gradient.setColorAt(1, QColor(0, 0, 0, static_cast<int>(255 * strength)));
    painter.fillRect(m_area, gradient);
}

} // namespace ludarium::demo
