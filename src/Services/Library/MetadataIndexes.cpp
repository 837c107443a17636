#include "Services/Library/MetadataIndexes.h"

#include "Host/AppLogger.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <array>
#include <unordered_set>

namespace ludarium {

namespace {

constexpr std::array contentWords{"Books", "Videos", "Soundtracks", "Catalogs", "Magazines", "Newsletters"};

QStringList sorted(const QSet<QString> &texts) {
    QStringList list(texts.cbegin(), texts.cend());
    list.sort();
    return list;
}

/// Texts of a library repeat and share their memory, so most of them are recognised by their address alone. Only for
/// texts that outlive the set: the address of one that is gone may be that of another text.
class TextSet {
  public:
    bool insert(const QString &text) {
        if (!m_addresses.insert(text.constData()).second)
            return false;
        const qsizetype before = m_texts.size();
        m_texts.insert(text);
        return m_texts.size() != before;
    }
    QStringList sorted() const { return ::ludarium::sorted(m_texts); }

  private:
    QSet<QString> m_texts;
    std::unordered_set<const QChar *> m_addresses;
};

bool showsWithAnyGame(const Platform &platform) {
    static const QSet<QString> names{QStringLiteral("DREAMM"),      QStringLiteral("ScummVM"),
                                     QStringLiteral("ScummVM SVN"), QStringLiteral("Windows 3x"),
                                     QStringLiteral("Windows 3.x"), QStringLiteral("Apple IIGS")};
    return names.contains(platform.name) || platform.name.toLower().contains(QLatin1StringView("dreamm")) ||
           platform.isROMPlatform();
}

} // namespace

bool isContentPlatform(const QString &name) {
    return std::any_of(contentWords.begin(), contentWords.end(),
                       [&](const char *word) { return name.contains(QLatin1StringView(word)); });
}

MetadataIndexes MetadataIndexes::build(const GameList &games) {
    TextSet genreTexts;
    QSet<QString> genres; // pieces of texts, which do not stay
    TextSet developers;
    TextSet publishers;
    TextSet series;
    QSet<int> years;
    for (const GamePtr &game : games) {
        if (!game->genre.isEmpty() && genreTexts.insert(game->genre))
            for (const QString &piece : game->genre.split(u';'))
                genres.insert(piece.trimmed());
        if (!game->developer.isEmpty())
            developers.insert(game->developer);
        if (!game->publisher.isEmpty())
            publishers.insert(game->publisher);
        if (!game->series.isEmpty())
            series.insert(game->series);
        if (game->releaseYear)
            years.insert(*game->releaseYear);
    }
    MetadataIndexes result{sorted(genres), developers.sorted(), publishers.sorted(), series.sorted(),
                           QList<int>(years.cbegin(), years.cend())};
    std::sort(result.years.begin(), result.years.end());
    Log::info(QStringLiteral("Building indexes: %1 genres, %2 developers, %3 publishers")
                  .arg(result.genres.size())
                  .arg(result.developers.size())
                  .arg(result.publishers.size()));
    Log::info(QStringLiteral("✅ Indexes built successfully"));
    return result;
}

QList<Platform> platformsWithPlayableGames(const QList<Platform> &platforms, const GameList &games) {
    QElapsedTimer timer;
    timer.start();
    struct Count {
        int all = 0;
        int playable = 0;
    };
    QHash<QString, Count> counts;
    // Games come in runs of one platform.
    const QString *name = nullptr;
    Count *count = nullptr;
    for (const GamePtr &game : games) {
        if (!name || game->platform != *name) {
            name = &game->platform;
            count = &counts[*name];
        }
        ++count->all;
        if (game->isInstalled || game->isCompressed || game->isDownloadable)
            ++count->playable;
    }
    QList<Platform> kept;
    for (const Platform &platform : platforms) {
        if (platform.name == QLatin1StringView("Windows 9x") || platform.name == QLatin1StringView("Windows 9.x"))
            continue;
        const Count found = counts.value(platform.name);
        if (isContentPlatform(platform.name) || (showsWithAnyGame(platform) ? found.all : found.playable) > 0)
            kept.append(platform);
    }
    Log::info(QStringLiteral("🗂️ Filtered platforms: removed %1 with no playable games (kept %2)")
                  .arg(platforms.size() - kept.size())
                  .arg(kept.size()));
    Log::info(QStringLiteral("⏱️ Platform filtering: %1ms").arg(timer.elapsed()));
    return kept;
}

} // namespace ludarium
