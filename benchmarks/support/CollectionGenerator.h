#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

namespace ludarium {

/// Writes the XML of a made-up collection: platform files of uneven size, shaped like those of real collections (about
/// 100 elements a game in the same order, 40 of them empty; texts, repeated values and companion elements of the same
/// lengths and frequencies), Platforms.xml, and playlists: the static ones of a dozen
/// games, a few of hundreds, with ids that the library lacks among them; the dynamic ones of two rules, some of more.
/// The same settings give the same bytes on every machine.
class CollectionGenerator {
  public:
    struct Shape {
        int games = 30'000;
        uint64_t seed = 1;
        /// Everything in one platform file.
        bool singlePlatform = false;
        /// One playlist for so many games, of which one in seven is dynamic; 0: none.
        int gamesAPlaylist = 30;
    };

    explicit CollectionGenerator(Shape shape) : m_shape(shape) {}

    /// Writes below `folder`, made if needed; throws std::runtime_error when a file cannot be written.
    void write(const QString &folder) const;

    /// Names of the platforms, the biggest first, and how many games each gets.
    struct PlatformShare {
        QString name;
        int games;
    };
    QList<PlatformShare> platforms() const;

    /// The id of a game by its number, 0 to games - 1, counted over all platforms.
    QString gameId(int number) const;

  private:
    void writePlaylists(const QString &folder) const;

    Shape m_shape;
};

} // namespace ludarium
