#pragma once

#include <QString>
#include <QStringList>

namespace ludarium {

/// How the titles of a version database are compared with those of a collection.
namespace VersionTitles {

/// Lower case, one kind of apostrophe, no dashes and colons, American spelling, single blanks.
QString normalizeTitle(const QString &title);

/// The four digits of the first "(YYYY)"; null when there is none.
QString extractYear(const QString &title);
/// The title without its first "(YYYY)".
QString withoutYear(const QString &title);

/// Without a year at its end, with digits for Roman numbers up to VIII, and without a first part's "1".
QString simplifySeriesTitle(const QString &title);

/// A text without the year at its end, and that year.
struct YearStripped {
    QString text;
    QString year; ///< null when there was none

    /// Equal texts, and not two different years.
    bool matches(const YearStripped &other) const {
        return text == other.text && (year.isNull() || other.year.isNull() || year == other.year);
    }
};
YearStripped stripYear(const QString &text);

/// "688 Attack Sub: …" as "attack sub 688", which some collections write; null for a title without a number in front.
QString numberBehind(const QString &title);

/// Every text under which a database may hold a game, best first, each once. `years` are those of the title's
/// namesakes in the database.
QStringList searchKeys(const QString &title, const QString &folderName, const QStringList &years);

} // namespace VersionTitles

} // namespace ludarium
