#include "Services/Dos/VersionLookup.h"
#include "Services/Dos/VersionTitles.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

TEST(VersionTitles, AreNormalizedForComparison) {
    for (const auto &[title, normalized] : {std::pair(u"King’s Quest V: Absence"_s, u"king's quest v absence"_s),
                                            {u"Rock`n´Roll"_s, u"rock'n'roll"_s},
                                            {u"A – B — C - D-E:F"_s, u"a b c d e f"_s},
                                            {u"Sam & Max  Hit   the Road "_s, u"sam and max hit the road"_s},
                                            {u"R&D"_s, u"r&d"_s},
                                            {u"Judgement of Colour, Honour, Favour; Theatre Centre Defence"_s,
                                             u"judgment of color, honor, favor; theater center defense"_s}})
        EXPECT_EQ(VersionTitles::normalizeTitle(title), normalized);
}

TEST(VersionTitles, AreSimplifiedForSeries) {
    for (const auto &[title, simple] : {std::pair(u"Ultima VI: The False Prophet"_s, u"Ultima 6: The False Prophet"_s),
                                        {u"King's Quest iii (1986)"_s, u"King's Quest 3"_s},
                                        {u"Ultima VIII - Pagan"_s, u"Ultima 8 - Pagan"_s},
                                        {u"Wizardry VII-Dark"_s, u"Wizardry 7-Dark"_s},
                                        {u"Quest for Glory I: So You Want"_s, u"Quest for Glory - So You Want"_s},
                                        {u"Doom II"_s, u"Doom 2"_s},
                                        {u"Populous I"_s, u"Populous"_s},
                                        {u"Ultima IX"_s, u"Ultima IX"_s},
                                        {u"Vikings"_s, u"Vikings"_s},
                                        {u"(1994)"_s, QString()}})
        EXPECT_EQ(VersionTitles::simplifySeriesTitle(title), simple) << qPrintable(title);
}

TEST(VersionTitles, AreSearchedUnderTheirKeysInOrder) {
    EXPECT_EQ(VersionTitles::searchKeys(u"The Foo: Bar, Baz"_s, u"foo (1990)"_s, {u"1990"_s, u"1991"_s}),
              (QStringList{u"The Foo: Bar, Baz"_s, u"foo (1990)"_s, u"Foo: Bar, Baz, The"_s,
                           u"The Foo: Bar, Baz (1990)"_s, u"Foo: Bar, Baz, The (1990)"_s, u"The Foo: Bar, Baz (1991)"_s,
                           u"Foo: Bar, Baz, The (1991)"_s, u"The Foo Bar Baz"_s, u"The Foo - Bar Baz"_s, u"Bar, Baz"_s,
                           u"Bar, Baz (1990)"_s, u"Bar, Baz (1991)"_s}));
    EXPECT_EQ(VersionTitles::searchKeys(u"Loom"_s, u"Loom"_s, {}), QStringList{u"Loom"_s});
}

VersionLookup lookupOf(const QStringList &titles) {
    VersionDatabase database;
    for (const QString &title : titles)
        database.insert(title, {});
    return VersionLookup(database);
}

TEST(VersionLookup, TakesTheYearOfTheFolderAndOfNamesakesInTheDatabase) {
    const VersionLookup lookup =
        lookupOf({u"Prince of Persia (1989)"_s, u"Prince of Persia (1992)"_s, u"Other (1992)"_s});
    EXPECT_EQ(lookup.searchKeys(u"Prince of Persia"_s, u"PoP (2003)"_s),
              (QStringList{u"Prince of Persia"_s, u"PoP (2003)"_s, u"Prince of Persia (2003)"_s,
                           u"Prince of Persia (1989)"_s, u"Prince of Persia (1992)"_s}));
}

struct LookupCase {
    const char *wanted;
    const char *found; ///< empty for none
};

class VersionOfKey : public testing::TestWithParam<LookupCase> {};

TEST_P(VersionOfKey, IsFoundInItsOrder) {
    static const VersionLookup lookup =
        lookupOf({u"Quest for Glory - So You Want to be a Hero"_s, u"Ultima 6: The False Prophet"_s, u"Doom 2"_s,
                  u"Doom (1993)"_s, u"Attack Sub 688"_s, u"Attack Sub 6"_s, u"Sam & Max"_s, u"SAM AND MAX (1993)"_s,
                  u"The Colour of Magic (1986)"_s, u"The Colour of Magic (1990)"_s, u"Zak"_s, u"zak"_s, u"..."_s});
    EXPECT_EQ(lookup.find(QString::fromUtf8(GetParam().wanted)), QString::fromUtf8(GetParam().found));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, VersionOfKey,
    testing::Values(LookupCase{"Quest for Glory: So You Want to be a Hero (1989)",
                               "Quest for Glory - So You Want to be a Hero"},
                    LookupCase{"Ultima VI: The False Prophet", "Ultima 6: The False Prophet"},
                    LookupCase{"Doom II", "Doom 2"}, LookupCase{"Doom (1993)", "Doom (1993)"},
                    LookupCase{"Doom", "Doom (1993)"}, LookupCase{"Doom (1994)", ""}, LookupCase{"Doom I (1994)", ""},
                    LookupCase{"Doom I (1993)", "Doom (1993)"}, LookupCase{"zak", "zak"}, LookupCase{"ZAK", "Zak"},
                    LookupCase{"sam and max", "Sam & Max"}, LookupCase{"Sam and Max (1993)", "SAM AND MAX (1993)"},
                    LookupCase{"The Color of Magic (1990)", "The Colour of Magic (1990)"},
                    LookupCase{"The Color of Magic", "The Colour of Magic (1986)"},
                    LookupCase{"688 Attack Sub (1989)", "Attack Sub 688"},
                    LookupCase{"688 Attack Sub: The Game - Part 1", "Attack Sub 688"},
                    LookupCase{"68 Attack Sub", "Attack Sub 688"}, // a beginning is enough
                    LookupCase{"7 Attack Sub", ""}, LookupCase{"688 -", ""}, LookupCase{"Doom 3", ""},
                    LookupCase{"", ""}, LookupCase{":", ""}, LookupCase{"(1993)", ""}));

TEST(VersionLookup, FindsAGameByItsFoldersNameOrThePartBehindTheColon) {
    const VersionLookup lookup =
        lookupOf({u"LOOM"_s, u"Malcolm's Revenge"_s, u"Secret of Monkey Island, The"_s, u"Dagger of Amon Ra (1992)"_s});
    EXPECT_EQ(lookup.findGame(u"Some Title"_s, u"loom"_s), u"LOOM"_s);
    EXPECT_EQ(lookup.findGame(u"Kyrandia 3: Malcolm’s Revenge"_s, u"kyra3"_s), u"Malcolm's Revenge"_s);
    EXPECT_EQ(lookup.findGame(u"The Secret of Monkey Island"_s, u"monkey1"_s), u"Secret of Monkey Island, The"_s);
    EXPECT_EQ(lookup.findGame(u"Laura Bow: Dagger of Amon Ra"_s, u"amon"_s), u"Dagger of Amon Ra (1992)"_s);
    EXPECT_TRUE(lookup.findGame(u"Another"_s, u"another"_s).isNull());
    EXPECT_TRUE(VersionLookup().findGame(u"Another"_s, u"another"_s).isNull());
}

} // namespace
} // namespace ludarium
