#include "Services/Dos/RequirementTable.h"

#include <algorithm>
#include <numeric>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

void count(RequirementStats &stats, EmulatorType type) {
    switch (type) {
    case EmulatorType::staging:
        ++stats.staging;
        return;
    case EmulatorType::dosboxX:
        ++stats.dosboxX;
        return;
    case EmulatorType::ece:
        ++stats.ece;
        return;
    case EmulatorType::vanilla:
        ++stats.vanilla;
        return;
    case EmulatorType::custom:
        ++stats.custom;
        return;
    }
}

/// The requirement of one line, none when the line holds none.
std::optional<EmulatorRequirement> parseLine(const QString &line) {
    const qsizetype colon = line.lastIndexOf(u':');
    if (colon < 0)
        return std::nullopt;
    EmulatorRequirement requirement;
    requirement.listedTitle = line.first(colon).trimmed();
    QString value = line.sliced(colon + 1).trimmed();
    if (requirement.listedTitle.isEmpty() || value.isEmpty())
        return std::nullopt;
    requirement.version = u"vanilla"_s;
    if (const qsizetype backslash = value.indexOf(u'\\'); backslash >= 0) {
        requirement.version = value.first(backslash);
        value.replace(u'\\', u'/');
    } else if (const qsizetype slash = value.indexOf(u'/'); slash >= 0) {
        requirement.version = value.first(slash);
    }
    requirement.emulatorType = classifyDOSBoxVersion(requirement.version);
    requirement.wineExecutablePath = value;
    return requirement;
}

/// A title without what tells its edition from others and without its article behind.
QString cleanedTitle(QString title) {
    for (const QLatin1StringView addition : {" (DOS)"_L1, " (CD)"_L1, " (Floppy)"_L1, ", The"_L1})
        title.remove(addition);
    return title;
}

} // namespace

EmulatorType classifyDOSBoxVersion(const QString &build) {
    const QString name = build.toLower();
    if (name.startsWith("staging"_L1))
        return EmulatorType::staging;
    if (name == "x"_L1 || name == "x2"_L1 || name.startsWith("x98"_L1))
        return EmulatorType::dosboxX;
    if (name.startsWith("ece"_L1))
        return EmulatorType::ece;
    for (const QLatin1StringView part :
         {"daum"_L1, "gunstick_dosbox"_L1, "gunstick"_L1, "tc_dosbox"_L1, "mpubuild"_L1, "dwddosbox"_L1})
        if (name.contains(part))
            return EmulatorType::custom;
    return EmulatorType::vanilla;
}

RequirementTable RequirementTable::parse(const QString &text) {
    RequirementTable table;
    QHash<QString, EmulatorRequirement> byTitle;
    int number = 0;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        ++number;
        std::optional<EmulatorRequirement> requirement = parseLine(line.trimmed().toString());
        if (!requirement)
            continue;
        requirement->line = number;
        count(table.m_stats, requirement->emulatorType);
        byTitle.insert(requirement->listedTitle, *requirement);
    }
    table.m_entries = byTitle.values();
    table.m_stats.total = table.m_entries.size();
    std::sort(table.m_entries.begin(), table.m_entries.end(),
              [](const EmulatorRequirement &a, const EmulatorRequirement &b) { return a.line < b.line; });

    std::vector<QString> lower;
    for (const EmulatorRequirement &entry : std::as_const(table.m_entries)) {
        const qsizetype place = qsizetype(lower.size());
        lower.push_back(entry.listedTitle.toLower());
        table.m_exact.insert(entry.listedTitle, place);
        if (!table.m_lower.contains(lower.back()))
            table.m_lower.insert(lower.back(), place);
    }
    table.m_sortedPlaces.resize(lower.size());
    std::iota(table.m_sortedPlaces.begin(), table.m_sortedPlaces.end(), qsizetype(0));
    std::stable_sort(table.m_sortedPlaces.begin(), table.m_sortedPlaces.end(),
                     [&](qsizetype a, qsizetype b) { return lower[a] < lower[b]; });
    for (const qsizetype place : table.m_sortedPlaces)
        table.m_sorted.push_back(lower[place]);
    return table;
}

const EmulatorRequirement *RequirementTable::exact(const QString &title) const {
    const auto found = m_exact.constFind(title);
    return found == m_exact.cend() ? nullptr : &m_entries[*found];
}

const EmulatorRequirement *RequirementTable::ignoringCase(const QString &lower) const {
    const auto found = m_lower.constFind(lower);
    return found == m_lower.cend() ? nullptr : &m_entries[*found];
}

const EmulatorRequirement *RequirementTable::beginningWith(const QString &lower) const {
    // Nothing is left of a title that is only an addition; it would fit every entry.
    if (lower.isEmpty())
        return nullptr;
    const auto begin = std::lower_bound(m_sorted.cbegin(), m_sorted.cend(), lower);
    const auto end =
        std::partition_point(begin, m_sorted.cend(), [&](const QString &key) { return key.startsWith(lower); });
    if (begin == end)
        return nullptr;
    const auto places = m_sortedPlaces.cbegin();
    return &m_entries[*std::min_element(places + (begin - m_sorted.cbegin()), places + (end - m_sorted.cbegin()))];
}

const EmulatorRequirement *RequirementTable::find(const QString &title) const {
    if (m_entries.isEmpty())
        return nullptr;
    if (const EmulatorRequirement *found = exact(title))
        return found;
    if (const EmulatorRequirement *found = ignoringCase(title.toLower()))
        return found;
    const QString cleaned = cleanedTitle(title);
    if (const EmulatorRequirement *found = exact(cleaned))
        return found;
    if (title.startsWith("The "_L1)) {
        const QString behind = title.sliced(4) + ", The"_L1;
        if (const EmulatorRequirement *found = exact(behind))
            return found;
        if (const EmulatorRequirement *found = ignoringCase(behind.toLower()))
            return found;
    }
    return beginningWith(cleaned.toLower());
}

} // namespace ludarium
