#pragma once

#include <QString>
#include <array>

namespace ludarium {

/// The kinds of pictures. Each has a folder of its own below `Images/{platform}/`.
enum class ImageType {
    boxFront,
    boxBack,
    box3D,
    screenshot,
    titleScreen,
    clearLogo,
    fanart,
    banner,
    cart,
    disc,
};

using ImageTypes = std::array<ImageType, 10>;

/// In the order in which a gallery shows them.
inline constexpr ImageTypes imageTypes{
    ImageType::boxFront,  ImageType::boxBack, ImageType::box3D,  ImageType::screenshot, ImageType::titleScreen,
    ImageType::clearLogo, ImageType::fanart,  ImageType::banner, ImageType::cart,       ImageType::disc};
/// Which kind stands for a game in a grid: the first that there is.
inline constexpr ImageTypes gridPreference{
    ImageType::boxFront, ImageType::box3D,  ImageType::screenshot, ImageType::titleScreen, ImageType::clearLogo,
    ImageType::banner,   ImageType::fanart, ImageType::boxBack,    ImageType::cart,        ImageType::disc};
/// The same for a cover flow.
inline constexpr ImageTypes coverflowPreference{
    ImageType::box3D,     ImageType::boxFront, ImageType::screenshot, ImageType::titleScreen, ImageType::banner,
    ImageType::clearLogo, ImageType::fanart,   ImageType::boxBack,    ImageType::cart,        ImageType::disc};

/// The name of the folder, such as "Box - Front".
QString rawValue(ImageType type);
/// The name that users see, such as "Box Art".
QString displayName(ImageType type);

} // namespace ludarium
