#include "Host/IcuPattern.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

TEST(IcuPattern, GivesTheFirstMatchWithItsGroups) {
    const auto match = IcuPattern(uR"(\((\d)(x)?\))"_s).find(u"ä (7) (8)"_s);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->start, 2);
    EXPECT_EQ(match->length, 3);
    EXPECT_EQ(match->groups.value(0), u"(7)"_s);
    EXPECT_EQ(match->groups.value(1), u"7"_s);
    EXPECT_TRUE(match->groups.value(2).isNull());
}

TEST(IcuPattern, ReplacesEveryMatch) {
    EXPECT_EQ(IcuPattern(u"a+"_s).replaceAll(u"caab a"_s, u"$0"_s), u"c$0b $0"_s);
    EXPECT_EQ(IcuPattern(u"x"_s).replaceAll({}, u"y"_s), QString());
}

TEST(IcuPattern, RefusesTextThatIsNoExpression) {
    EXPECT_FALSE(IcuPattern::compile(u"Doom (CD"_s));
    EXPECT_FALSE(IcuPattern::compile(u"[z-a]"_s));
}

TEST(IcuPattern, GivesUpOnASearchThatWouldNotEnd) {
    const auto pattern = IcuPattern::compile(u"(a|a)*b"_s);
    ASSERT_TRUE(pattern);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(pattern->matches(QString(64, u'a') + u'c'));
    EXPECT_LT(timer.elapsed(), 20'000);
}

} // namespace
} // namespace ludarium
