#include "Models/CollectionDate.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

struct DateCase {
    const char *text;
    const char *expected; ///< null for no value
};

class CollectionDates : public testing::TestWithParam<DateCase> {};

TEST_P(CollectionDates, ReadAsWallClockTime) {
    const auto date = parseCollectionDate(GetParam().text);
    if (!GetParam().expected) {
        EXPECT_FALSE(date) << GetParam().text;
        return;
    }
    ASSERT_TRUE(date) << GetParam().text;
    EXPECT_EQ(date->timeSpec(), Qt::UTC);
    EXPECT_EQ(date->toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz")).toStdString(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Formats, CollectionDates,
                         testing::Values(DateCase{"1995-01-13T03:00:00", "1995-01-13T03:00:00.000"},
                                         DateCase{"1995-01-13T03:04:05.678", "1995-01-13T03:04:05.678"},
                                         DateCase{"1995-01-13", "1995-01-13T00:00:00.000"},
                                         DateCase{"01/13/1995", "1995-01-13T00:00:00.000"},
                                         DateCase{"1/3/1995", "1995-01-03T00:00:00.000"},
                                         DateCase{"1990", "1990-01-01T00:00:00.000"},
                                         DateCase{"2000-02-29", "2000-02-29T00:00:00.000"},
                                         DateCase{"0001-01-01T00:00:00", "0001-01-01T00:00:00.000"}));
INSTANTIATE_TEST_SUITE_P(WithSomethingBehindTheTime, CollectionDates,
                         testing::Values(DateCase{"1995-01-13T03:00:00-05:00", "1995-01-13T03:00:00.000"},
                                         DateCase{"2021-04-21T08:02:32.2482401-05:00", "2021-04-21T08:02:32.000"},
                                         DateCase{"2021-04-21T23:59:59.248+14:00", "2021-04-21T23:59:59.000"},
                                         DateCase{"2021-04-21T08:02:32Z", "2021-04-21T08:02:32.000"}));
INSTANTIATE_TEST_SUITE_P(NotDates, CollectionDates,
                         testing::Values(DateCase{"", nullptr}, DateCase{"circa 1990", nullptr},
                                         DateCase{"90", nullptr}, DateCase{"19901", nullptr},
                                         DateCase{"1990?", nullptr}, DateCase{"1990-13-01", nullptr},
                                         DateCase{"1990-02-30", nullptr}, DateCase{"0000-01-01", nullptr},
                                         DateCase{"1990-01-01T", nullptr}, DateCase{"1990-01-01T10:00", nullptr},
                                         DateCase{"1990-01-01T24:00:00", nullptr},
                                         DateCase{"1990-01-01 10:00:00", nullptr}, DateCase{"13/01/1995", nullptr},
                                         DateCase{"01/13/95", nullptr}, DateCase{"-1990", nullptr}));

TEST(PlatformDates, AreTheLeadingDay) {
    EXPECT_EQ(parseLeadingIsoDay("1981-08-12"), QDate(1981, 8, 12));
    EXPECT_EQ(parseLeadingIsoDay("1981-08-12T00:00:00-07:00"), QDate(1981, 8, 12));
    for (const char *text : {"", "1981", "1981-8-12", "08/12/1981", "1981-02-30"})
        EXPECT_FALSE(parseLeadingIsoDay(text)) << text;
}

} // namespace
} // namespace ludarium
