#pragma once

#include "Models/ViewSettings.h"

namespace ludarium {

/// Widths of a grid cell in points.
struct CellWidths {
    int minimum;
    int maximum;
};
CellWidths cellWidths(GridSize size);

/// As many columns as fit into a view of this width, with gaps of 16 points and margins of 16 points on each side.
int fittingColumns(double width, GridSize size);

/// The width that the grid takes of a view: all of it, or less where its cells would get wider than they may.
double gridWidth(double available, GridSize size);

/// The number of columns of a grid of this width. Where cells would get wider than they may there are fewer, down to
/// one; `gridWidth` gives no such width.
int calculateActualColumns(double width, GridSize size);
/// The number of columns of a usual window, for a grid whose width is not known yet.
int calculateEstimatedColumns(GridSize size);

enum class Step { previous, next, up, down };

/// The row that a key leads to from `current` (-1: none), or `current` itself where the key does nothing. `columns` is
/// how far up and down go.
int stepRow(Step step, int current, int count, int columns);

} // namespace ludarium
