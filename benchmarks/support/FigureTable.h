#pragma once

#include <QList>
#include <QString>

namespace ludarium {

/// One measured figure beside its floor.
struct Figure {
    QString what;
    double value = 0;
    QString unit; ///< "ms" or "MB"
    /// What the machine needs at least for the same; empty when nothing compares.
    QString floorName;
    double floor = 0;
    /// The most that is wanted, as a multiple of the floor and by itself; 0 is no limit.
    double wantedRatio = 0;
    double wantedValue = 0;

    double ratio() const { return floor > 0 ? value / floor : 0; }
    bool isMet() const {
        return (wantedRatio == 0 || ratio() <= wantedRatio) && (wantedValue == 0 || value <= wantedValue);
    }
};

/// Prints a table with a line for each figure.
void printFigures(const QString &title, const QList<Figure> &figures);
/// How each figure grew from one size to another, beside the growth of the size.
void printGrowth(int fromSize, const QList<Figure> &from, int toSize, const QList<Figure> &to);

} // namespace ludarium
