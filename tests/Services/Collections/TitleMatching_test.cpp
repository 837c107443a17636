#include "Services/Collections/TitleMatching.h"

#include <QRandomGenerator>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/regex.h>

namespace ludarium {

using namespace Qt::StringLiterals;
using namespace TitleMatching;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

struct Row {
    const char *input;
    const char *expected;
};

template<typename Function, size_t count>
void expectRows(Function function, const Row (&rows)[count]) {
    for (const Row &row : rows)
        EXPECT_EQ(function(QString::fromUtf8(row.input)).toStdString(), row.expected) << row.input;
}

QString replacedByIcu(const QString &text, const QString &pattern) {
    UErrorCode status = U_ZERO_ERROR;
    const auto toIcu = [](const QString &from) {
        return icu::UnicodeString(reinterpret_cast<const char16_t *>(from.constData()), int32_t(from.size()));
    };
    icu::RegexMatcher matcher(toIcu(pattern), 0, status);
    const icu::UnicodeString subject = toIcu(text);
    matcher.reset(subject);
    const icu::UnicodeString result = matcher.replaceAll(icu::UnicodeString(), status);
    EXPECT_TRUE(U_SUCCESS(status));
    return QString(reinterpret_cast<const QChar *>(result.getBuffer()), result.length());
}

/// The rule as it is told: thirty replacements, one after the other.
QString convertedPairByPair(QString text) {
    static const QList<QPair<QString, QString>> numerals{
        {u"VIII"_s, u"8"_s}, {u"VII"_s, u"7"_s}, {u"III"_s, u"3"_s}, {u"VI"_s, u"6"_s}, {u"IV"_s, u"4"_s},
        {u"IX"_s, u"9"_s},   {u"II"_s, u"2"_s},  {u"V"_s, u"5"_s},   {u"X"_s, u"10"_s}, {u"I"_s, u"1"_s}};
    for (const auto &[roman, digit] : numerals) {
        text.replace(u' ' + roman + u' ', u' ' + digit + u' ', Qt::CaseInsensitive);
        text.replace(u' ' + roman, u' ' + digit, Qt::CaseInsensitive);
        text.replace(roman + u' ', digit + u' ', Qt::CaseInsensitive);
    }
    return text;
}

QString randomText(QRandomGenerator &random, const QList<QString> &pieces, int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += pieces[random.bounded(int(pieces.size()))];
    return text;
}

} // namespace

TEST(TitleMatching, CutsTheEndOfATitleAsTheRegularExpressionsDo) {
    const QList<QString> pieces{u"("_s,  u")"_s,    u"1"_s,      u"1995"_s,   u"a"_s,      u" "_s,     u"\t"_s,
                                u"\n"_s, u"\r\n"_s, u"\u00a0"_s, u"\u2028"_s, u"\u0661"_s, u"(1990)"_s};
    QRandomGenerator random(20260314);
    int cuts = 0;
    for (int i = 0; i < 20'000; ++i) {
        const QString text = randomText(random, pieces, random.bounded(1, 8));
        const QString parenthesis = replacedByIcu(text, uR"(\s*\([^)]+\)$)"_s);
        EXPECT_EQ(withoutTrailingParenthesis(text), parenthesis) << text.toStdString();
        EXPECT_EQ(withoutTrailingYear(text), replacedByIcu(text, uR"(\s*\(\d{4}\)$)"_s)) << text.toStdString();
        cuts += parenthesis != text;
    }
    EXPECT_GT(cuts, 1000);
}

TEST(TitleMatching, ConvertsNumeralsAsThirtyReplacementsInARowWould) {
    const QList<QString> pieces{u" "_s, u" "_s, u"I"_s, u"i"_s, u"V"_s, u"X"_s, u"II"_s, u"viii"_s, u"Doom"_s, u"1"_s};
    QRandomGenerator random(20260315);
    for (int i = 0; i < 20'000; ++i) {
        const QString text = randomText(random, pieces, random.bounded(1, 10));
        EXPECT_EQ(convertRomanToArabic(text), convertedPairByPair(text)) << text.toStdString();
    }
    expectRows(convertRomanToArabic, {{"Doom II", "Doom 2"},
                                      {"Ultima VIII Gold", "Ultima 8 Gold"},
                                      {"IX Lives", "9 Lives"},
                                      {"Kings in Exile", "Kings 1n Exile"},
                                      {"Hawaii Open", "Hawa2 Open"},
                                      {"DoomII", "DoomII"}});
}

TEST(TitleMatching, NormalizesTitlesOfOneGameAlike) {
    expectRows(normalize, {{"Doom II", "doom2"},
                           {"Doom 2", "doom2"},
                           {"DOOM II (1994)", "doom2"},
                           {"Dungeons & Dragons", "dungeonsanddragons"},
                           {"Where in the World? (Deluxe) (1990)", "where1ntheworlddeluxe"},
                           {"K240: \"A-B_C/D\", its' So!", "k240abcd1tsso"},
                           {"Élan Vital", "élan6tal"},
                           {"(1995)", ""}});
}

TEST(TitleMatching, KeepsWordsThatSaySomething) {
    EXPECT_THAT(extractSignificantWords(u"the \"hero's\" quest, for: glory-or/death of a 2 (1989)"_s),
                UnorderedElementsAre(u"heros"_s, u"quest"_s, u"glory"_s, u"death"_s));
    EXPECT_THAT(extractSignificantWords(u"…wait… !go! \u00e9 e\u0301 x"_s), UnorderedElementsAre(u"wait"_s, u"go"_s));
    EXPECT_THAT(extractSignificantWords(u"the of a (1989)"_s), IsEmpty());
}

TEST(TitleMatching, MakesOneKeyOfWordsInAnyOrder) {
    expectRows(makeWordSetKey, {{"The Secret of Monkey Island (1990)", "island-monkey-secret"},
                                {"Monkey Island: The Secret", "island-monkey-secret"},
                                {"Monkey Monkey", ""},
                                {"Doom", ""}});
}

TEST(TitleMatching, MapsSpellings) {
    EXPECT_THAT(normalizeSpellingVariants({u"colour"_s, u"grey"_s, u"deluxe"_s, u"enhanced"_s, u"doom"_s}),
                UnorderedElementsAre(u"color"_s, u"gray"_s, u"cd"_s, u"doom"_s));
}

TEST(TitleMatching, FindsTheSeriesOfANumberedTitle) {
    expectRows(extractSeriesPrefix, {{"Ultima VI: The False Prophet", "Ultima VI"},
                                     {"Wing Commander iii - Heart (CD 1994)", "Wing Commander iii"},
                                     {"King's Quest V (1990)", "King s Quest V"},
                                     {"Game XVI", ""},
                                     {"X", ""},
                                     {"X I", "X I"},
                                     {"Star Trek (1991 II)", ""},
                                     {"Star Trek (II)", "Star Trek II"}});
    EXPECT_TRUE(extractSeriesPrefix(u"Doom"_s).isNull());
}

} // namespace ludarium
