#include "Services/Dos/VariantDetector.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

GamePtr game(const QString &title, const QString &platform) {
    auto game = std::make_shared<Game>();
    game->id = u"7"_s;
    game->title = title;
    game->platform = platform;
    return game;
}

struct Case {
    const char *title;
    const char *platform;
    VariantType type;
    const char *name;
    const char *suffix;
};

class VariantOfTitle : public testing::TestWithParam<Case> {};

TEST_P(VariantOfTitle, IsReadFromItsBracketOrItsPlatform) {
    const Case &expected = GetParam();
    const GamePtr record = game(QString::fromUtf8(expected.title), QString::fromUtf8(expected.platform));
    const auto variant = VariantDetector::detectVariant(record);
    ASSERT_TRUE(variant);
    EXPECT_EQ(variant->id, record->id);
    EXPECT_EQ(variant->game, record);
    EXPECT_EQ(variant->variantType, expected.type);
    EXPECT_EQ(variant->variantName, QString::fromUtf8(expected.name));
    EXPECT_EQ(variant->variantSuffix, QString::fromUtf8(expected.suffix));
}

INSTANTIATE_TEST_SUITE_P(
    Titles, VariantOfTitle,
    testing::Values(Case{"Doom (CD Version)", "MS-DOS", VariantType::media, "CD Version", "(CD Version)"},
                    Case{"Doom (cd-rom)", "MS-DOS", VariantType::media, "CD Version", "(cd-rom)"},
                    Case{"Doom (CD)", "MS-DOS", VariantType::media, "CD Version", "(CD)"},
                    Case{"Doom (CD 2)", "MS-DOS", VariantType::media, "CD 2", "(CD 2)"},
                    Case{"Doom (Disk 3) (MT-32)", "MS-DOS", VariantType::media, "Disk 3", "(Disk 3)"},
                    Case{"Doom (MT-32) (Disk12)", "MS-DOS", VariantType::media, "Disk 12", "(Disk12)"},
                    Case{"Doom (Floppy)", "MS-DOS", VariantType::media, "Floppy Version", "(Floppy)"},
                    Case{"Doom (mt32) (VGA)", "MS-DOS", VariantType::audio, "MT-32", "(mt32)"},
                    Case{"Doom (SoundBlaster)", "MS-DOS", VariantType::audio, "SoundBlaster", "(SoundBlaster)"},
                    Case{"Doom (Hercules)", "MS-DOS", VariantType::graphics, "Hercules", "(Hercules)"},
                    Case{"Doom (MultiLanguage)", "MS-DOS", VariantType::language, "Multi-Language", "(MultiLanguage)"},
                    Case{"Doom (v1.9a)", "MS-DOS", VariantType::version, "Version 1.9a", "(v1.9a)"},
                    Case{"Doom (1.2)", "MS-DOS", VariantType::version, "Version 1.2", "(1.2)"},
                    Case{"Doom (Directors Cut)", "MS-DOS", VariantType::version, "Director's Cut", "(Directors Cut)"},
                    Case{"Doom (CD)", "ScummVM", VariantType::media, "CD Version", "(CD)"},
                    Case{"Doom", "ScummVM", VariantType::platform, "ScummVM", ""},
                    Case{"Doom (1993)", "ScummVM SVN", VariantType::platform, "ScummVM", ""},
                    Case{"Doom", "My dreamm Games", VariantType::platform, "DREAMM", ""}));

TEST(VariantDetector, FindsNoneWithoutABracketOrPlatformThatTells) {
    for (const auto &[title, platform] : {std::pair(u"Doom"_s, u"MS-DOS"_s),
                                          {u"Doom (1993)"_s, u"MS-DOS"_s},
                                          {u"Doom CD Version"_s, u"MS-DOS"_s},
                                          {u"Doom (v2)"_s, u"MS-DOS"_s},
                                          {u"Doom"_s, u"scummvm"_s},
                                          {u""_s, u""_s}})
        EXPECT_FALSE(VariantDetector::detectVariant(game(title, platform))) << qPrintable(title);
}

TEST(VariantDetector, FindsTheFamiliesOfDREAMMWhateverTheCase) {
    for (const QString &platform : {u"DREAMM"_s, u"eXoDREAMM"_s})
        EXPECT_EQ(VariantDetector::detectVariant(game(u"Zak"_s, platform)).value_or(GameVariant{}).variantName,
                  u"DREAMM"_s);
}

TEST(VariantType, IsStoredAsItsName) {
    QStringList texts;
    for (const VariantType type : variantTypes()) {
        texts.append(variantTypeText(type));
        EXPECT_EQ(variantTypeFromText(texts.last()), type);
    }
    EXPECT_EQ(texts.join(u' '), u"media audio graphics language version platform other"_s);
    EXPECT_FALSE(variantTypeFromText(u"Media"_s));
}

} // namespace
} // namespace ludarium
