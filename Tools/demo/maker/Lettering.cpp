#include "maker/Lettering.h"

#include "maker/Artwork.h"
#include "maker/Dice.h"

#include <QDir>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QRegularExpression>

namespace ludarium::demo {

namespace {

struct Typeface {
    const char *family;
    QFont::Weight weight;
    bool italic;
    double spacing; ///< percent
};

constexpr Typeface typefaces[] = {
    {"URW Bookman", QFont::DemiBold, false, 100},
    {"URW Gothic", QFont::DemiBold, false, 104},
    {"C059", QFont::Bold, false, 100},
    {"Nimbus Sans Narrow", QFont::Bold, true, 102},
    {"P052", QFont::Bold, true, 100},
    {"Nimbus Sans", QFont::Bold, false, 108},
    {"Nimbus Mono PS", QFont::Bold, false, 92},
};

// Breaks a text into `lines` lines of about the same length.
QStringList broken(const QString &text, int lines) {
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    QStringList result;
    QString line;
    const double wanted = static_cast<double>(text.size()) / lines;
    for (const QString &word : words) {
        if (!line.isEmpty() && static_cast<double>(line.size()) + static_cast<double>(word.size()) / 2.0 > wanted &&
            result.size() + 1 < lines) {
            result.append(line);
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    result.append(line);
    return result;
}

QFont sized(const Typeface &face, double pixels) {
    QFont font(QString::fromLatin1(face.family));
    font.setWeight(face.weight);
    font.setItalic(face.italic);
    font.setLetterSpacing(QFont::PercentageSpacing, face.spacing);
    font.setPixelSize(qMax(6, static_cast<int>(pixels)));
    return font;
}

// The largest size at which `lines` fit the area.
double fitting(const Typeface &face, const QStringList &lines, const QSizeF &area) {
    const QFontMetricsF metrics(sized(face, 100));
    double widest = 1;
    for (const QString &line : lines)
        widest = qMax(widest, metrics.horizontalAdvance(line));
    return qMin(100 * area.width() / widest, area.height() / (static_cast<double>(lines.size()) * 1.02));
}

QStringList bestLines(const Typeface &face, const QString &text, const QSizeF &area) {
    QStringList best;
    double largest = 0;
    for (int count = 1; count <= 7; ++count) {
        const QStringList lines = broken(text, count);
        const double size = fitting(face, lines, area);
        if (size > largest * 1.02) {
            largest = size;
            best = lines;
        }
    }
    return best;
}

QPainterPath letters(const Typeface &face, const QStringList &lines, double pixels, const QRectF &area) {
    QPainterPath path;
    const QFont font = sized(face, pixels);
    const QFontMetricsF metrics(font);
    const double step = pixels * 1.02;
    double y = area.top() + (area.height() - step * static_cast<double>(lines.size())) / 2 + pixels * 0.80;
    for (const QString &line : lines) {
        path.addText(area.left() + (area.width() - metrics.horizontalAdvance(line)) / 2, y, font, line);
        y += step;
    }
    path.setFillRule(Qt::WindingFill);
    return path;
}

void paintLetters(QPainter &painter, const QPainterPath &path, double pixels, int look, const SceneInk &ink) {
    const QRectF box = path.boundingRect();
    const double edge = qMax(1.2, pixels * 0.055);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(edge * 1.2, edge * 1.6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawPath(path);
    painter.translate(-edge * 1.2, -edge * 1.6);
    if (look == 0) // raised letters: a block behind them
        for (int depth = 4; depth > 0; --depth) {
            painter.translate(edge * 0.35 * depth, edge * 0.35 * depth);
            painter.setBrush(ink.accent.darker(160 + depth * 12));
            painter.drawPath(path);
            painter.translate(-edge * 0.35 * depth, -edge * 0.35 * depth);
        }
    painter.setPen(QPen(ink.dark, edge * 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    if (look == 1) {
        painter.setPen(QPen(ink.accent, edge * 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(path);
    }
    QLinearGradient fill(box.topLeft(), box.bottomLeft());
    if (look == 2) { // chrome
        fill.setColorAt(0, Qt::white);
        fill.setColorAt(0.48, ink.light);
        fill.setColorAt(0.5, ink.accent.darker(130));
        fill.setColorAt(1, ink.light);
    } else {
        fill.setColorAt(0, ink.light);
        fill.setColorAt(1, look == 3 ? ink.light.darker(112) : ink.accent);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawPath(path);
    painter.restore();
}

} // namespace

void loadTypefaces(const QString &folder) {
    const QDir dir(folder);
    for (const QString &name :
         dir.entryList({QStringLiteral("*.otf"), QStringLiteral("*.ttf")}, QDir::Files, QDir::Name))
        QFontDatabase::addApplicationFont(dir.filePath(name));
}

QFont plainFont(double pixels, bool bold) {
    QFont font(QStringLiteral("Nimbus Sans"));
    font.setBold(bold);
    font.setPixelSize(qMax(6, static_cast<int>(pixels)));
    return font;
}

void paintTitle(QPainter &painter, const QRectF &area, const QString &title, const QString &style,
                const SceneInk &ink) {
    Dice dice(style);
    const Typeface &face = typefaces[dice.below(static_cast<int>(std::size(typefaces)))];
    const int look = dice.below(4);
    static const QRegularExpression parts(QStringLiteral("^(.*?)(?::\\s+(.*)|\\s+\\((.*)\\))?$"));
    const QRegularExpressionMatch match = parts.match(title);
    QString main = match.captured(1);
    QString sub = match.captured(2) + match.captured(3);
    if (main.size() > 60) { // a title that long is its own subtitle
        sub = main.section(u' ', 3).replace(QStringLiteral("("), QString());
        main = main.section(u' ', 0, 2);
    }
    if (dice.below(2) == 0)
        main = main.toUpper();
    QRectF mainArea = area;
    if (!sub.isEmpty()) {
        const double share = sub.size() > 60 ? 0.5 : 0.68;
        mainArea.setHeight(area.height() * share);
        const QRectF subArea(area.left(), mainArea.bottom(), area.width(), area.height() * (1 - share));
        const QStringList lines = bestLines(face, sub, subArea.size() * 0.94);
        const double pixels = qMin(fitting(face, lines, subArea.size() * 0.94), area.height() * 0.2);
        paintLetters(painter, letters(face, lines, pixels, subArea), pixels, 3, ink);
    }
    const QStringList lines = bestLines(face, main, mainArea.size() * 0.97);
    const double pixels = fitting(face, lines, mainArea.size() * 0.97);
    paintLetters(painter, letters(face, lines, pixels, mainArea), pixels, look, ink);
}

} // namespace ludarium::demo
