#pragma once

#include <QString>
#include <optional>

namespace ludarium {

/// How the games are shown.
enum class ViewMode { list, grid, coverflow };
/// Size of a grid cell.
enum class GridSize { small, medium, large, extraLarge };
enum class SortOrder { title, year, developer, rating, recentlyPlayed, playCount };

// Stored and shown texts: "List", "Grid", "Coverflow"; "Small", "Medium", "Large", "Extra Large"; "Title", "Year",
// "Developer", "Rating", "Recently Played", "Most Played". A text that matches none gives no value.
QString viewModeText(ViewMode mode);
QString gridSizeText(GridSize size);
QString sortOrderText(SortOrder order);
std::optional<ViewMode> viewModeFromText(const QString &text);
std::optional<GridSize> gridSizeFromText(const QString &text);
std::optional<SortOrder> sortOrderFromText(const QString &text);

} // namespace ludarium
