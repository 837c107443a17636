#include "Services/Dos/VersionLookup.h"

#include "Host/AppLogger.h"

namespace ludarium {

using namespace Qt::StringLiterals;
using namespace VersionTitles;

VersionLookup::VersionLookup(VersionDatabase database) : m_database(std::move(database)) {
    for (const QString &title : m_database.keys()) {
        const QString normalized = normalizeTitle(title);
        const Title made{title, normalized, extractYear(title), stripYear(normalized), simplifiedForm(title)};
        const qsizetype place = m_titles.size();
        m_normalized[made.normalized].append(place);
        m_stripped[made.stripped.text].append(place);
        m_simplified[made.simplified.text].append(place);
        if (!made.ownYear.isNull())
            m_withoutYear[normalizeTitle(withoutYear(title))].append(place);
        m_titles.append(made);
    }
}

/// The year is kept aside, as the simplified text has none.
YearStripped VersionLookup::simplifiedForm(const QString &title) {
    return {normalizeTitle(simplifySeriesTitle(title)), stripYear(normalizeTitle(title)).year};
}

QString VersionLookup::firstMatch(const Forms &forms, const YearStripped &wanted, YearStripped Title::*form) const {
    if (!wanted.text.isEmpty())
        for (const qsizetype place : forms.value(wanted.text))
            if ((m_titles[place].*form).matches(wanted))
                return m_titles[place].title;
    return {};
}

QString VersionLookup::find(const QString &key) const {
    if (m_database.contains(key))
        return key;
    const QString normalized = normalizeTitle(key);
    if (normalized.isEmpty())
        return {};
    if (const auto found = m_normalized.constFind(normalized); found != m_normalized.cend()) {
        Log::info(u"GameVersionDetector: Normalized match '%1' -> '%2'"_s.arg(key, normalized));
        return m_titles[found->first()].title;
    }
    if (const QString title = firstMatch(m_stripped, stripYear(normalized), &Title::stripped); !title.isNull())
        return title;
    if (const QString title = firstMatch(m_simplified, simplifiedForm(key), &Title::simplified); !title.isNull()) {
        Log::info(u"GameVersionDetector: Fuzzy match '%1'"_s.arg(key));
        return title;
    }
    if (const QString reordered = numberBehind(key); !reordered.isNull())
        for (const Title &title : m_titles)
            if (title.normalized.startsWith(reordered))
                return title.title;
    return {};
}

QStringList VersionLookup::searchKeys(const QString &title, const QString &folderName) const {
    QStringList years;
    if (const QString year = extractYear(folderName); !year.isNull())
        years.append(year);
    for (const qsizetype place : m_withoutYear.value(normalizeTitle(title)))
        if (!years.contains(m_titles[place].ownYear))
            years.append(m_titles[place].ownYear);
    return VersionTitles::searchKeys(title, folderName, years);
}

QString VersionLookup::findGame(const QString &title, const QString &folderName) const {
    for (const QString &key : searchKeys(title, folderName))
        if (const QString found = find(key); !found.isNull())
            return found;
    return {};
}

} // namespace ludarium
