#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <optional>

namespace ludarium {

/// The text form of a window's rectangle, `{{x, y}, {w, h}}`, and what becomes of a rectangle on the screens of today.
namespace WindowFrame {

QByteArray toText(const QRectF &frame);
/// None for a text of another form, and for a rectangle without area or with a number that is not finite.
std::optional<QRectF> fromText(const QByteArray &text);

/// The frame as it is when it can be seen on any screen; otherwise, and when it is far larger than all of them, made to
/// fit into the main screen, the first one.
/// The screens are given by the parts of them that windows may use. Without a screen the frame stays.
QRectF onScreen(const QRectF &frame, const QList<QRectF> &screens);

} // namespace WindowFrame

} // namespace ludarium
