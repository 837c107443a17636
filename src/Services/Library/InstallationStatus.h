#pragma once

#include "Services/Library/LibraryServices.h"

#include <QString>
#include <memory>

namespace ludarium {

class AriaIndexManager;

/// Decides whether games are extracted, archived, downloadable or absent. Both checks look at the disk and block, so
/// they are for the thread pool; calls from several threads do not get in each other's way.
class InstallationStatus {
  public:
    explicit InstallationStatus(std::shared_ptr<const AriaIndexManager> downloads);

    /// The status of every game, in order, from one listing of each directory of the collection. Only a DOS game of a
    /// lite collection that is found under none of its names costs a listing of its own, of its script folder.
    QList<GameStatus> check(const GameList &games, const QString &collection) const;
    /// The status of one game from a closer look: a folder with launch scripts only is no installation, and names of
    /// archives may be longer than the game's. None for a game without configuration path.
    std::optional<GameStatus> checkGame(const GamePtr &game, const QString &collection) const;

  private:
    std::shared_ptr<const AriaIndexManager> m_downloads;
};

/// The two names in a game's configuration path, which are views into it: its folder, and the file in it without
/// extension. A path without file, and so without a "." in its last piece, names the folder only.
struct ConfigurationNames {
    QStringView folder;
    QStringView configBase;

    static ConfigurationNames of(QStringView path);
};

/// The name of a game's launch script, which is often its title, without extension; null when there is none or the
/// folder cannot be listed. `extensions` have four characters.
QString scriptName(const QString &collection, const QString &folder,
                   std::initializer_list<QLatin1StringView> extensions, QLatin1StringView exceptPrefix = {});

} // namespace ludarium
