#pragma once

#include <QColor>
#include <QPainter>
#include <QString>
#include <array>

namespace ludarium::demo {

/// A 5 by 7 letter, one byte a row, the highest of five bits at the left. Small letters look like capitals, accents are
/// dropped, anything else is blank.
std::array<unsigned char, 7> pixelLetter(QChar letter);

/// Writes a text in letters of 5 by 7 pixels, 6 apart.
void drawPixelText(QPainter &painter, int x, int y, const QString &text, const QColor &color);

} // namespace ludarium::demo
