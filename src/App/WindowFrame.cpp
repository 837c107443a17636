#include "App/WindowFrame.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace ludarium::WindowFrame {

namespace {

/// No user makes a window this many times as large as all screens together: it was as large as screens that are gone.
constexpr double largestShare = 2;

bool isFarTooLarge(const QRectF &frame, const QList<QRectF> &screens) {
    QRectF all;
    for (const QRectF &screen : screens)
        all |= screen;
    return frame.width() > largestShare * all.width() || frame.height() > largestShare * all.height();
}

} // namespace

QByteArray toText(const QRectF &frame) {
    const auto number = [](double value) { return QByteArray::number(value, 'g', 15); };
    return "{{" + number(frame.x()) + ", " + number(frame.y()) + "}, {" + number(frame.width()) + ", " +
           number(frame.height()) + "}}";
}

std::optional<QRectF> fromText(const QByteArray &text) {
    static const QRegularExpression form(
        QStringLiteral("^\\{\\{([^,{}]+),([^,{}]+)\\},\\s*\\{([^,{}]+),([^,{}]+)\\}\\}$"));
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(text.left(256)).trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    double numbers[4];
    for (int i = 0; i < 4; ++i) {
        bool isNumber = false;
        numbers[i] = match.capturedView(i + 1).trimmed().toDouble(&isNumber);
        if (!isNumber || !std::isfinite(numbers[i]))
            return std::nullopt;
    }
    if (numbers[2] <= 0 || numbers[3] <= 0)
        return std::nullopt;
    return QRectF(numbers[0], numbers[1], numbers[2], numbers[3]);
}

QRectF onScreen(const QRectF &frame, const QList<QRectF> &screens) {
    const bool visible =
        std::any_of(screens.begin(), screens.end(), [&](const QRectF &screen) { return screen.intersects(frame); });
    if (screens.isEmpty() || (visible && !isFarTooLarge(frame, screens)))
        return frame;
    const QRectF main = screens.first();
    QRectF moved(frame.topLeft(),
                 QSizeF(std::min(frame.width(), main.width()), std::min(frame.height(), main.height())));
    moved.moveTo(std::clamp(moved.x(), main.left(), main.left() + main.width() - moved.width()),
                 std::clamp(moved.y(), main.top(), main.top() + main.height() - moved.height()));
    return moved;
}

} // namespace ludarium::WindowFrame
