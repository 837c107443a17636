#pragma once

#include "Models/ViewSettings.h"

namespace ludarium {

/// Widths of a grid cell in points.
struct CellWidths {
    int minimum;
    int maximum;
};
CellWidths cellWidths(GridSize size);

/// The number of columns of a grid of this width: as many as fit with gaps of 16 points and margins of 16 points on
/// each side. A width that is not known yet (0) counts as a usual window's. Covers never get wider than the maximum;
/// what is left over widens the gaps.
int gridColumns(double width, GridSize size);

enum class Step { previous, next, up, down };

/// The row that a key leads to from `current` (-1: none), or `current` itself where the key does nothing. `columns` is
/// how far up and down go.
int stepRow(Step step, int current, int count, int columns);

} // namespace ludarium
