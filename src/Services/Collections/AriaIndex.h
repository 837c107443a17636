#pragma once

#include "Services/Collections/IndexEntry.h"

#include <QHash>
#include <QList>
#include <QStringView>
#include <optional>

namespace ludarium {

/// The files of a collection's torrents, and the game that each of them is. An index that is filled is only read, by
/// any number of threads.
///
/// The text form has one file a line, `{index}:{size}:{path}`; the path may hold colons.
class AriaIndex {
  public:
    /// Takes over what a text lists. Lines of another shape, files that are no game archives and files outside the
    /// collection's folders are passed over. Of two games with one name, in any case, the later counts.
    void parseIndex(const QString &text, CollectionType type);

    /// Games in the order of their files; of a name that comes twice, the place of the first and the data of the last.
    const QList<IndexEntry> &entries() const { return m_entries; }
    qsizetype gameDataCount() const { return m_gameDataEntries.size(); }
    bool isEmpty() const { return m_entries.isEmpty(); }

    // All look-ups give null when there is nothing. What they give lives as long as the index.

    /// By the name of a game in any case.
    const IndexEntry *getDownloadInfo(const QString &name) const;
    /// By a title, which need not be the archive's name. `fastOnly` keeps to a few hash look-ups; without it the whole
    /// index is walked, in its order, for something that comes near, which takes tens of milliseconds.
    const IndexEntry *getDownloadInfoByTitle(const QString &title, bool fastOnly) const;
    /// The companion archive (images and manuals) of a game.
    const IndexEntry *getGameData(const QString &name) const;

    /// The text form of the table that `aria2c --show-files` prints; empty when there is none.
    static QString parseAria2cOutput(const QString &output);
    /// Bytes; 0 when the text is no size. "1.2GiB (1,234,567,890)" gives the exact count, "700MiB" 1024-based units.
    static qint64 parseSize(const QString &text);

  private:
    const IndexEntry *at(std::optional<qsizetype> position) const;
    const IndexEntry *similar(const QString &title, const QString &lower) const;

    QList<IndexEntry> m_entries;
    QHash<QString, qsizetype> m_indexEntries; ///< by lower-case name; values are places in `m_entries`
    QHash<QString, qsizetype> m_normalizedEntries;
    QHash<QString, qsizetype> m_wordSetEntries;
    QHash<QString, IndexEntry> m_gameDataEntries;
};

} // namespace ludarium
