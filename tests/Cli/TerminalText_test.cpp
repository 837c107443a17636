#include "Cli/TerminalText.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

TEST(TerminalText, ShowsWhatWouldSteerTheTerminal) {
    const struct {
        QString text;
        QString shown;
    } rows[] = {
        {QStringLiteral("Plain title: 100% \"fun\" \\ more"), QStringLiteral("Plain title: 100% \"fun\" \\ more")},
        {QStringLiteral("Ünïcode 日本 🎮"), QStringLiteral("Ünïcode 日本 🎮")},
        {QStringLiteral("two\nlines\tand\r"), QStringLiteral("two\\nlines\\tand\\r")},
        {QStringLiteral("\x1b[31mred\x7f"), QStringLiteral("\\x1b[31mred\\x7f")},
        {QStringLiteral("C1 \u009b2J"), QStringLiteral("C1 \\x9b2J")},
        {QStringLiteral("turned \u202eeman"), QStringLiteral("turned \\u{202e}eman")},
        {QStringLiteral("line\u2028separator"), QStringLiteral("line\\u{2028}separator")},
        {QString(QChar(0)), QStringLiteral("\\x00")},
    };
    for (const auto &row : rows)
        EXPECT_EQ(escapedForTerminal(row.text), row.shown);
}

TEST(TerminalText, MakesOneLineOfAMessage) {
    EXPECT_EQ(oneLine(u"First line\n\n• second\t \x1b[1mline\r\n"), QStringLiteral("First line • second [1mline"));
}

TEST(TerminalText, CountsColumnsOfWideAndCombiningCharacters) {
    const struct {
        QString text;
        int width;
    } rows[] = {
        {QString(), 0},
        {QStringLiteral("Zork"), 4},
        {QStringLiteral("日本語"), 6},
        {QStringLiteral("e\u0301te\u0301"), 3},    // accents as marks of their own
        {QStringLiteral("\u1112\u1161\u11ab"), 2}, // a Korean syllable in three pieces
        {QStringLiteral("🎮"), 2},
        {QStringLiteral("👨‍👩‍👧"), 2}, // a family, joined
        {QStringLiteral("❤️"), 2},             // an emoji by its selector
        {QStringLiteral("🇩🇪"), 2},
        {QStringLiteral("ﾊﾝｶｸ"), 4}, // half-width
        {QStringLiteral("a\u200bb"), 2},
    };
    for (const auto &row : rows)
        EXPECT_EQ(displayWidth(row.text), row.width) << row.text.toStdString();
}

TEST(TerminalText, CutsAndPadsToColumnsAndNeverInsideACharacter) {
    EXPECT_EQ(elided(QStringLiteral("Commander"), 9), QStringLiteral("Commander"));
    EXPECT_EQ(elided(QStringLiteral("Commander"), 5), QStringLiteral("Comm…"));
    EXPECT_EQ(elided(QStringLiteral("日本語"), 4), QStringLiteral("日…")); // a half of 本 would be left
    EXPECT_EQ(elided(QStringLiteral("e\u0301e\u0301e\u0301"), 2), QStringLiteral("e\u0301…"));
    EXPECT_EQ(padded(QStringLiteral("日本"), 6), QStringLiteral("日本  "));
    EXPECT_EQ(padded(QStringLiteral("long"), 2), QStringLiteral("long"));
}

} // namespace
} // namespace ludarium
