#pragma once

#include "Services/Dos/VersionLookup.h"

#include <QSet>
#include <functional>
#include <memory>

namespace ludarium {

/// Knows in which versions a game can be played: from a database, otherwise by looking at the game's folder. May be
/// used from any thread; the folder is looked at in the calling one.
class GameVersionDetector {
  public:
    struct Sources {
        QByteArray database;   ///< JSON; null when there is none
        QString usersDatabase; ///< path of the user's own file of the same form, whose titles replace ours
        /// How titles are compared for the set of MT-32 games. An absent function leaves them as they are.
        std::function<QString(const QString &)> normalizeForMT32;
    };
    explicit GameVersionDetector(Sources sources);
    ~GameVersionDetector();

    /// The versions of a game; none when nothing is known of it and its folder shows none.
    std::optional<GameVersionMenu> detectVersions(const QString &gameTitle, const QString &gameDataFolder) const;
    std::optional<GameVersionMenu> detectVersionsFromFolders(const QString &gameDataFolder) const;

    /// The titles of the database with MT-32 music, as written and normalised.
    const QSet<QString> &mt32GameTitles() const;
    const QSet<QString> &mt32NormalizedTitles() const;

    /// The database, read on first use.
    const VersionLookup &lookup() const;

    /// Where the user's own database lies, in the folder of the settings.
    static constexpr QStringView usersFileName = u"GameVersionDatabase.json";

  private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Drops options that lead to one and the same start: only those with a program stay if any has one, else only those
/// with a folder if any has one, and of equal ones the first.
QList<GameVersionOption> filterDuplicateVersions(const QList<GameVersionOption> &options);

} // namespace ludarium
