#pragma once

#include <QString>

/// Where things stand in a collection, relative to its root. A collection may hold several sets side by side; the lite
/// form has the same tree with empty or absent game archives.
namespace ludarium::CollectionLayout {

inline constexpr QLatin1StringView content{"Content"};                 ///< the packed archives of the collection
inline constexpr QLatin1StringView packedGameData{"Content/GameData"}; ///< companion archives, a folder a set
inline constexpr QLatin1StringView looseGameData{"GameData"};          ///< the same, as older collections have it
inline constexpr QLatin1StringView util{"eXo/util"};                   ///< tools, their archives and mapping files
inline constexpr QLatin1StringView aria{"eXo/util/aria"};              ///< torrents and download indexes
inline constexpr QLatin1StringView dosboxTools{"eXo/emulators/dosbox"};

/// In a lite collection, an archive up to this size only holds the place of one.
inline constexpr qint64 maxPlaceholderSize = 10'239;

/// Mapping files that come out of the archives of `util`.
inline constexpr QLatin1StringView mappingFiles[]{QLatin1StringView("dosbox.txt"), QLatin1StringView("scummvm.txt"),
                                                  QLatin1StringView("appleIIGS.txt")};

} // namespace ludarium::CollectionLayout
