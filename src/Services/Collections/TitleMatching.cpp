#include "Services/Collections/TitleMatching.h"

#include <QHash>
#include <QVarLengthArray>
#include <algorithm>
#include <array>

namespace ludarium::TitleMatching {

using namespace Qt::StringLiterals;

namespace {

/// Where `$` may stand besides the end: before one line terminator at the end.
qsizetype lineEnd(QStringView text) {
    if (text.isEmpty())
        return 0;
    if (text.endsWith(u"\r\n"))
        return text.size() - 2;
    const char16_t last = text.back().unicode();
    const bool terminator = (last >= u'\n' && last <= u'\r') || last == 0x85 || last == 0x2028 || last == 0x2029;
    return terminator ? text.size() - 1 : text.size();
}

/// Cuts from `open` to `end`, and the white space before it.
QString cut(const QString &text, qsizetype open, qsizetype end) {
    while (open > 0 && text[open - 1].isSpace())
        --open;
    return text.first(open) + text.sliced(end);
}

/// Cuts the parenthesis at the end of a text when `accept` takes what is inside. It begins at the first "(" that has
/// no ")" between itself and the end.
template<typename Accept>
QString withoutLast(const QString &text, Accept accept) {
    const QStringView view(text);
    const qsizetype end = lineEnd(view);
    if (end < 2 || view[end - 1] != u')')
        return text;
    const qsizetype open = view.indexOf(u'(', view.first(end - 1).lastIndexOf(u')') + 1);
    const bool fits = open >= 0 && open < end - 1 && accept(view.sliced(open + 1, end - open - 2));
    return fits ? cut(text, open, end) : text;
}

bool hasFourDigits(QStringView text) {
    int run = 0;
    for (const QChar c : text) {
        run = c.isDigit() ? run + 1 : 0;
        if (run == 4)
            return true;
    }
    return false;
}

struct Numeral {
    std::u16string_view roman;
    std::u16string_view digits;
};
/// In an order that keeps VIII from being read as V and III.
constexpr Numeral numerals[]{{u"viii", u"8"}, {u"vii", u"7"}, {u"iii", u"3"}, {u"vi", u"6"}, {u"iv", u"4"},
                             {u"ix", u"9"},   {u"ii", u"2"},  {u"v", u"5"},   {u"x", u"10"}, {u"i", u"1"}};

constexpr char16_t lowerAscii(char16_t c) {
    return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
}

constexpr unsigned letterBit(char16_t c) {
    switch (lowerAscii(c)) {
    case u'i':
        return 1;
    case u'v':
        return 2;
    case u'x':
        return 4;
    default:
        return 0;
    }
}

void replaceAll(QString &text, bool blankBefore, const Numeral &numeral, bool blankAfter) {
    const qsizetype roman = qsizetype(numeral.roman.size());
    const qsizetype length = roman + blankBefore + blankAfter;
    for (qsizetype at = 0; at + length <= text.size(); ++at) {
        const char16_t *c = reinterpret_cast<const char16_t *>(text.constData()) + at;
        if (blankBefore && *c++ != u' ')
            continue;
        if (!std::equal(numeral.roman.begin(), numeral.roman.end(), c,
                        [](char16_t wanted, char16_t have) { return wanted == lowerAscii(have); }))
            continue;
        if (blankAfter && c[roman] != u' ')
            continue;
        text.replace(at + blankBefore, roman, reinterpret_cast<const QChar *>(numeral.digits.data()),
                     qsizetype(numeral.digits.size()));
        // Goes on behind what was written.
        at += blankBefore + qsizetype(numeral.digits.size()) + blankAfter - 1;
    }
}

constexpr QStringView stopWords[]{u"the", u"a", u"an", u"of", u"in", u"on", u"at", u"to", u"for", u"and", u"or"};

bool isStopWord(QStringView word) {
    return word.size() <= 3 && std::find(std::begin(stopWords), std::end(stopWords), word) != std::end(stopWords);
}

/// One character as a reader sees it: a pair of surrogates or a letter with its combining mark counts as one.
bool isSingleCharacter(QStringView word) {
    return word.size() == 1 || (word.size() == 2 && (word[0].isHighSurrogate() || word[1].isMark()));
}

using Words = QVarLengthArray<QStringView, 24>;
using Buffer = QVarLengthArray<QChar, 128>;

/// The significant words of a text, sorted and each once. They are views into `buffer`.
Words significantWords(const QString &text, Buffer &buffer) {
    const QString title = withoutTrailingYear(text);
    buffer.clear();
    buffer.reserve(title.size());
    for (const QChar c : title) {
        switch (c.unicode()) {
        case u':':
        case u'-':
        case u'/':
        case u',':
            buffer.append(u' ');
            break;
        case u'\'':
        case u'"':
            break;
        default:
            buffer.append(c);
        }
    }
    Words words;
    const QStringView cleaned(buffer.constData(), buffer.size());
    for (qsizetype from = 0; from < cleaned.size();) {
        qsizetype to = from;
        while (to < cleaned.size() && !cleaned[to].isSpace())
            ++to;
        QStringView word = cleaned.sliced(from, to - from);
        from = to + 1;
        while (!word.isEmpty() && word.front().isPunct())
            word = word.sliced(1);
        while (!word.isEmpty() && word.back().isPunct())
            word.chop(1);
        if (!word.isEmpty() && !isSingleCharacter(word) && !isStopWord(word))
            words.append(word);
    }
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

} // namespace

QString withoutTrailingParenthesis(const QString &text) {
    return withoutLast(text, [](QStringView inside) { return !inside.isEmpty(); });
}

QString withoutTrailingYear(const QString &text) {
    const qsizetype end = lineEnd(text);
    const qsizetype open = end - 6;
    if (open < 0 || text[open] != u'(' || text[end - 1] != u')')
        return text;
    const QStringView year = QStringView(text).sliced(open + 1, 4);
    const bool isYear = std::all_of(year.begin(), year.end(), [](QChar c) { return c.isDigit(); });
    return isYear ? cut(text, open, end) : text;
}

QString convertRomanToArabic(const QString &text) {
    // Which of I, V and X stand behind a blank and before one: most titles have none, and nothing below adds any.
    unsigned behindBlank = 0;
    unsigned beforeBlank = 0;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == u' ')
            behindBlank |= letterBit(text[i + 1].unicode());
        if (text[i + 1] == u' ')
            beforeBlank |= letterBit(text[i].unicode());
    }
    if ((behindBlank | beforeBlank) == 0)
        return text;
    QString result = text;
    for (const Numeral &numeral : numerals) {
        if ((behindBlank & letterBit(numeral.roman.front())) != 0) {
            replaceAll(result, true, numeral, true);
            replaceAll(result, true, numeral, false);
        }
        if ((beforeBlank & letterBit(numeral.roman.back())) != 0)
            replaceAll(result, false, numeral, true);
    }
    return result;
}

QString normalize(const QString &name) {
    const QString text = convertRomanToArabic(withoutTrailingParenthesis(name));
    const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    const QString lower = isAscii ? text : text.toLower();
    QString result;
    result.reserve(lower.size());
    for (const QChar c : lower) {
        switch (c.unicode()) {
        case u' ':
        case u'-':
        case u'/':
        case u'_':
        case u',':
        case u':':
        case u'\'':
        case u'"':
        case u'.':
        case u'!':
        case u'?':
        case u'(':
        case u')':
            break;
        case u'&':
            result += "and"_L1;
            break;
        default:
            result += QChar(lowerAscii(c.unicode()));
        }
    }
    return result;
}

QSet<QString> extractSignificantWords(const QString &text) {
    Buffer buffer;
    QSet<QString> result;
    for (const QStringView word : significantWords(text, buffer))
        result.insert(word.toString());
    return result;
}

QString makeWordSetKey(const QString &name) {
    return wordSetKeyOfLower(name.toLower());
}

QString wordSetKeyOfLower(const QString &lower) {
    Buffer buffer;
    const Words words = significantWords(lower, buffer);
    QString key;
    if (words.size() < 2)
        return key;
    key.reserve(lower.size());
    for (const QStringView word : words) {
        if (!key.isEmpty())
            key += u'-';
        key += word;
    }
    return key;
}

QSet<QString> normalizeSpellingVariants(const QSet<QString> &words) {
    static const QHash<QString, QString> variants{
        {u"judgement"_s, u"judgment"_s},
        {u"colour"_s, u"color"_s},
        {u"favour"_s, u"favor"_s},
        {u"honour"_s, u"honor"_s},
        {u"labour"_s, u"labor"_s},
        {u"neighbour"_s, u"neighbor"_s},
        {u"behaviour"_s, u"behavior"_s},
        {u"harbour"_s, u"harbor"_s},
        {u"saviour"_s, u"savior"_s},
        {u"recognise"_s, u"recognize"_s},
        {u"realise"_s, u"realize"_s},
        {u"organise"_s, u"organize"_s},
        {u"specialise"_s, u"specialize"_s},
        {u"centre"_s, u"center"_s},
        {u"theatre"_s, u"theater"_s},
        {u"metre"_s, u"meter"_s},
        {u"fibre"_s, u"fiber"_s},
        {u"dialogue"_s, u"dialog"_s},
        {u"catalogue"_s, u"catalog"_s},
        {u"defence"_s, u"defense"_s},
        {u"offence"_s, u"offense"_s},
        {u"licence"_s, u"license"_s},
        {u"grey"_s, u"gray"_s},
        {u"aeroplane"_s, u"airplane"_s},
        {u"aluminium"_s, u"aluminum"_s},
        {u"tyre"_s, u"tire"_s},
        {u"cheque"_s, u"check"_s},
        // No spellings, but editions that collections name one way or the other.
        {u"deluxe"_s, u"cd"_s},
        {u"enhanced"_s, u"cd"_s},
    };
    QSet<QString> result;
    for (const QString &word : words)
        result.insert(variants.value(word, word));
    return result;
}

QString extractSeriesPrefix(const QString &title) {
    static const QSet<QString> romans{u"I"_s,  u"II"_s, u"III"_s, u"IV"_s,  u"V"_s,    u"VI"_s,  u"VII"_s, u"VIII"_s,
                                      u"IX"_s, u"X"_s,  u"XI"_s,  u"XII"_s, u"XIII"_s, u"XIV"_s, u"XV"_s};
    QStringList words;
    QString word;
    const auto endsWithNumeral = [&] {
        if (!word.isEmpty())
            words.append(std::exchange(word, QString()));
        return words.size() > 1 && romans.contains(words.last().toUpper());
    };
    for (const QChar c : withoutLast(title, hasFourDigits)) {
        // A mark belongs to the letter before it; a surrogate is taken for one half of a letter.
        if (c.isLetterOrNumber() || c.isMark() || c.isSurrogate()) {
            word += c;
            continue;
        }
        if (!word.isEmpty() && endsWithNumeral())
            return words.join(u' ');
    }
    return endsWithNumeral() ? words.join(u' ') : QString();
}

} // namespace ludarium::TitleMatching
