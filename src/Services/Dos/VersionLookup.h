#pragma once

#include "Services/Dos/VersionDatabase.h"
#include "Services/Dos/VersionTitles.h"

#include <QHash>

namespace ludarium {

/// Finds the games of a version database by titles that are written otherwise. Every form of a title that is compared
/// is made once, when the database is read. Between several titles that fit, the first in alphabetical order is taken.
class VersionLookup {
  public:
    VersionLookup() = default;
    explicit VersionLookup(VersionDatabase database);

    const VersionDatabase &database() const { return m_database; }

    /// The title of the database that fits `key` best; null when none does.
    QString find(const QString &key) const;
    /// The same for a game: by its title, its folder's name and the other forms of the title.
    QString findGame(const QString &title, const QString &folderName) const;
    /// All texts that `findGame` tries, in order.
    QStringList searchKeys(const QString &title, const QString &folderName) const;

  private:
    using Forms = QHash<QString, QList<qsizetype>>; ///< a form without its year, to places in m_titles
    struct Title {
        QString title;
        QString normalized;
        QString ownYear; ///< of the first "(YYYY)"
        VersionTitles::YearStripped stripped;
        VersionTitles::YearStripped simplified;
    };
    static VersionTitles::YearStripped simplifiedForm(const QString &title);
    QString firstMatch(const Forms &forms, const VersionTitles::YearStripped &wanted,
                       VersionTitles::YearStripped Title::*form) const;

    VersionDatabase m_database;
    QList<Title> m_titles; ///< sorted
    Forms m_normalized, m_stripped, m_simplified, m_withoutYear;
};

} // namespace ludarium
