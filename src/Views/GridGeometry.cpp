#include "Views/GridGeometry.h"

#include "Models/ViewSettings.h"

#include <algorithm>

namespace ludarium {

namespace {

constexpr double gap = 16;
constexpr double margin = 16;
constexpr double estimatedWidth = 784;

} // namespace

CellWidths cellWidths(GridSize size) {
    switch (size) {
    case GridSize::small:
        return {120, 170};
    case GridSize::medium:
        return {160, 210};
    case GridSize::large:
        return {200, 250};
    case GridSize::extraLarge:
        return {250, 300};
    }
    return {160, 210};
}

int fittingColumns(double width, GridSize size) {
    return std::max(1, int((width - 2 * margin + gap) / (cellWidths(size).minimum + gap)));
}

double gridWidth(double available, GridSize size) {
    const int columns = fittingColumns(available, size);
    return std::min(available, columns * cellWidths(size).maximum + (columns - 1) * gap + 2 * margin);
}

int calculateActualColumns(double width, GridSize size) {
    const double usable = width - 2 * margin;
    int columns = fittingColumns(width, size);
    while (columns > 1 && (usable - gap * (columns - 1)) / columns > cellWidths(size).maximum)
        --columns;
    return columns;
}

int calculateEstimatedColumns(GridSize size) {
    return std::max(1, int(estimatedWidth / (cellWidths(size).minimum + gap)));
}

int stepRow(Step step, int current, int count, int columns) {
    if (count == 0)
        return -1;
    if (current < 0 || current >= count)
        return 0;
    const int far = std::max(1, columns);
    int wanted = current;
    switch (step) {
    case Step::previous:
        wanted -= 1;
        break;
    case Step::next:
        wanted += 1;
        break;
    case Step::up:
        wanted -= far;
        break;
    case Step::down:
        wanted += far;
        break;
    }
    return wanted < 0 || wanted >= count ? current : wanted;
}

} // namespace ludarium
