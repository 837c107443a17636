#include "support/FigureTable.h"

#include <QStringList>
#include <cstdio>

namespace ludarium {

namespace {

QString number(double value) {
    return QString::number(value, 'f', value < 10 ? 3 : 1);
}

void printLine(const QStringList &cells) {
    static constexpr int widths[] = {52, 12, 12, 7, 26, 8};
    QString line = QStringLiteral("|");
    for (qsizetype i = 0; i < cells.size(); ++i)
        line += QLatin1Char(' ') +
                (i == 0 || i > 3 ? cells[i].leftJustified(widths[i]) : cells[i].rightJustified(widths[i])) +
                QStringLiteral(" |");
    std::printf("%s\n", qUtf8Printable(line));
}

} // namespace

void printFigures(const QString &title, const QList<Figure> &figures) {
    std::printf("\n%s\n", qUtf8Printable(title));
    printLine({QStringLiteral("what"), QStringLiteral("figure"), QStringLiteral("floor"), QStringLiteral("ratio"),
               QStringLiteral("wanted"), QStringLiteral("met")});
    for (const Figure &figure : figures) {
        QStringList wanted;
        if (figure.wantedRatio > 0)
            wanted.append(QStringLiteral("at most %1 times").arg(figure.wantedRatio));
        if (figure.wantedValue > 0)
            wanted.append(QStringLiteral("%1 %2").arg(figure.wantedValue).arg(figure.unit));
        printLine({figure.what, number(figure.value) + QLatin1Char(' ') + figure.unit,
                   figure.floor > 0 ? number(figure.floor) + QLatin1Char(' ') + figure.unit : QString(),
                   figure.floor > 0 ? QString::number(figure.ratio(), 'f', 2) : QString(),
                   wanted.join(QStringLiteral(", ")),
                   wanted.isEmpty() ? QString()
                   : figure.isMet() ? QStringLiteral("yes")
                                    : QStringLiteral("NO")});
    }
    std::printf("\nThe floors:\n");
    for (const Figure &figure : figures)
        if (!figure.floorName.isEmpty())
            std::printf("  %s: %s\n", qUtf8Printable(figure.what), qUtf8Printable(figure.floorName));
    std::fflush(stdout);
}

void printGrowth(int fromSize, const QList<Figure> &from, int toSize, const QList<Figure> &to) {
    std::printf("\nFrom %d games to %d, %.2f times as many, the figures grow by\n", fromSize, toSize,
                double(toSize) / fromSize);
    for (qsizetype i = 0; i < std::min(from.size(), to.size()); ++i)
        std::printf("  %-52s %6.2f times\n", qUtf8Printable(from[i].what), to[i].value / from[i].value);
    std::fflush(stdout);
}

} // namespace ludarium
