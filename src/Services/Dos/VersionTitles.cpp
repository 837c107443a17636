#include "Services/Dos/VersionTitles.h"

#include "Host/IcuPattern.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

const IcuPattern &yearPattern() {
    static const IcuPattern pattern(uR"(\((\d{4})\))"_s);
    return pattern;
}

const IcuPattern &trailingYear() {
    static const IcuPattern pattern(uR"(\s*\((\d{4})\)$)"_s);
    return pattern;
}

struct Numeral {
    QString roman;
    QString digit;
};
/// In the order in which they are looked for.
const QList<Numeral> &numerals() {
    static const QList<Numeral> list{{u"VIII"_s, u"8"_s}, {u"VII"_s, u"7"_s}, {u"VI"_s, u"6"_s}, {u"IV"_s, u"4"_s},
                                     {u"V"_s, u"5"_s},    {u"III"_s, u"3"_s}, {u"II"_s, u"2"_s}, {u"I"_s, u"1"_s}};
    return list;
}

QString collapsed(const QString &text) {
    return text.split(u' ', Qt::SkipEmptyParts).join(u' ');
}

class KeyList {
  public:
    void add(const QString &key) {
        if (!key.isEmpty() && !m_keys.contains(key))
            m_keys.append(key);
    }
    void addWithYears(const QString &text, const QStringList &years) {
        for (const QString &year : years)
            add(u"%1 (%2)"_s.arg(text, year));
    }
    QStringList keys() const { return m_keys; }

  private:
    QStringList m_keys;
};

} // namespace

QString VersionTitles::normalizeTitle(const QString &title) {
    QString text = title.toLower();
    for (const QChar apostrophe : {QChar(u'’'), QChar(u'`'), QChar(u'´')})
        text.replace(apostrophe, u'\'');
    for (const QChar dash : {QChar(u'–'), QChar(u'—')})
        text.replace(dash, u' ');
    for (const QLatin1StringView separator : {" - "_L1, "-"_L1, ": "_L1, ":"_L1})
        text.replace(separator, " "_L1);
    text.replace(" & "_L1, " and "_L1);
    static const QList<std::pair<QLatin1StringView, QLatin1StringView>> spellings{
        {"judgement"_L1, "judgment"_L1}, {"colour"_L1, "color"_L1},    {"honour"_L1, "honor"_L1},
        {"favour"_L1, "favor"_L1},       {"theatre"_L1, "theater"_L1}, {"centre"_L1, "center"_L1},
        {"defence"_L1, "defense"_L1}};
    for (const auto &[british, american] : spellings)
        text.replace(british, american);
    return collapsed(text);
}

QString VersionTitles::extractYear(const QString &title) {
    const auto match = yearPattern().find(title);
    return match ? match->groups.value(1) : QString();
}

QString VersionTitles::withoutYear(const QString &title) {
    const auto match = yearPattern().find(title);
    return match ? QString(title).remove(match->start, match->length) : title;
}

VersionTitles::YearStripped VersionTitles::stripYear(const QString &text) {
    const auto match = trailingYear().find(text);
    return match ? YearStripped{text.first(match->start), match->groups.value(1)} : YearStripped{text, {}};
}

QString VersionTitles::simplifySeriesTitle(const QString &title) {
    QString text = stripYear(title).text;
    for (const Numeral &numeral : numerals())
        for (const QChar behind : {QChar(u' '), QChar(u':'), QChar(u'-')})
            text.replace(u' ' + numeral.roman + behind, u' ' + numeral.digit + behind, Qt::CaseInsensitive);
    for (const Numeral &numeral : numerals())
        if (text.endsWith(u' ' + numeral.roman, Qt::CaseInsensitive)) {
            text.chop(numeral.roman.size());
            text += numeral.digit;
            break;
        }
    if (text.endsWith(" 1"_L1))
        text.chop(2);
    static const IcuPattern firstPart(uR"(\s+1\s*[-:]\s*)"_s);
    return firstPart.replaceAll(text, u" - "_s).trimmed();
}

QString VersionTitles::numberBehind(const QString &title) {
    static const IcuPattern numberFirst(uR"(^(\d+)\s+(.+)$)"_s);
    const auto match = numberFirst.find(stripYear(title).text);
    if (!match)
        return {};
    static const IcuPattern separator(u"[-:].*$"_s);
    const QString text = normalizeTitle(separator.replaceAll(match->groups.value(2), {}));
    return text.isEmpty() ? QString() : text + u' ' + match->groups.value(1);
}

QStringList VersionTitles::searchKeys(const QString &title, const QString &folderName, const QStringList &years) {
    KeyList list;
    list.add(title);
    list.add(folderName);
    const bool hasArticle = title.startsWith("The "_L1);
    const QString articleBehind = hasArticle ? title.sliced(4) + ", The"_L1 : QString();
    list.add(articleBehind);
    for (const QString &year : years) {
        list.addWithYears(title, {year});
        if (hasArticle)
            list.addWithYears(articleBehind, {year});
    }
    list.add(QString(title).replace(": "_L1, " "_L1).remove(u':').remove(u','));
    list.add(QString(title).replace(": "_L1, " - "_L1).remove(u','));
    if (const qsizetype colon = title.indexOf(": "_L1); colon >= 0) {
        const QString behind = title.sliced(colon + 2);
        list.add(behind);
        list.addWithYears(behind, years);
    }
    return list.keys();
}

} // namespace ludarium
