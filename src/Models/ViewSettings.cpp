#include "Models/ViewSettings.h"

#include <array>

namespace ludarium {

namespace {

constexpr std::array viewModeTexts{"List", "Grid", "Coverflow"};
constexpr std::array gridSizeTexts{"Small", "Medium", "Large", "Extra Large"};
constexpr std::array sortOrderTexts{"Title", "Year", "Developer", "Rating", "Recently Played", "Most Played"};

template<typename Enum, size_t N>
std::optional<Enum> fromText(const QString &text, const std::array<const char *, N> &texts) {
    for (size_t i = 0; i < N; ++i)
        if (text == QLatin1StringView(texts[i]))
            return static_cast<Enum>(i);
    return std::nullopt;
}

template<typename Enum, size_t N>
QString toText(Enum value, const std::array<const char *, N> &texts) {
    return QLatin1StringView(texts.at(static_cast<size_t>(value)));
}

} // namespace

QString viewModeText(ViewMode mode) {
    return toText(mode, viewModeTexts);
}
QString gridSizeText(GridSize size) {
    return toText(size, gridSizeTexts);
}
QString sortOrderText(SortOrder order) {
    return toText(order, sortOrderTexts);
}
std::optional<ViewMode> viewModeFromText(const QString &text) {
    return fromText<ViewMode>(text, viewModeTexts);
}
std::optional<GridSize> gridSizeFromText(const QString &text) {
    return fromText<GridSize>(text, gridSizeTexts);
}
std::optional<SortOrder> sortOrderFromText(const QString &text) {
    return fromText<SortOrder>(text, sortOrderTexts);
}

} // namespace ludarium
