#include "Services/Dos/DosBoxFlavour.h"

#include "Models/LaunchError.h"
#include "Services/Dos/OverlayConfig.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

TEST(DosBoxBuilds, TellTheirFlavour) {
    struct Case {
        const char *output;
        const char *program;
        const char *expected;
        DosBoxFamily family;
    };
    const Case cases[] = {
        {"\nDOSBox version 0.74-3, copyright 2002-2019 DOSBox Team.\n", "dosbox", "DOSBox 0.74-3",
         DosBoxFamily::vanilla},
        {"dosbox-staging, version 0.81.1\n", "dosbox", "DOSBox Staging 0.81.1", DosBoxFamily::staging},
        {"DOSBox version 0.76.0, copyright 2020", "dosbox", "DOSBox Staging 0.76.0", DosBoxFamily::staging},
        {"DOSBox-X version 2024.03.01 SDL2, copyright 2011-2024 The DOSBox-X Team.", "dosbox", "DOSBox-X 2024.03.01",
         DosBoxFamily::x},
        {"DOSBox version SVN, copyright 2002-2021", "dosbox", "DOSBox SVN", DosBoxFamily::svn},
        {"DOSBox ECE r4482", "dosbox", "DOSBox SVN r4482", DosBoxFamily::svn},
        {"", "/opt/bin/dosbox-x", "DOSBox-X", DosBoxFamily::x},
        {"", "/Applications/DOSBox Staging.app/Contents/MacOS/dosbox", "DOSBox Staging", DosBoxFamily::staging},
        {"usage: dosbox", "/bin/dosbox", "unknown build", DosBoxFamily::unknown},
    };
    for (const Case &c : cases) {
        const DosBoxFlavour flavour = parseDosBoxVersion(c.output, QString::fromUtf8(c.program));
        EXPECT_EQ(flavour.family, c.family) << c.output;
        EXPECT_EQ(flavour.text().toStdString(), c.expected);
    }
}

DosBoxCommandLine line() {
    return {QStringLiteral("/t/overlay.conf"),
            QStringLiteral("/t/G_launch.conf"),
            {{QStringLiteral("cycles"), QStringLiteral("fixed 3000")},
             {QStringLiteral("gus"), QStringLiteral("true")},
             {QStringLiteral("SBType"), QStringLiteral("sb16")},
             {QStringLiteral("core"), QStringLiteral("normal")}},
            QStringLiteral("/t/overrides.conf"),
            QStringLiteral("/games/G")};
}

TEST(DosBoxArguments, SayToEachBuildWhatItUnderstands) {
    const QString files = QStringLiteral("-conf|/t/overlay.conf|-conf|/t/G_launch.conf");
    const QString sets = QStringLiteral(
        "|-set|sblaster SBType=sb16|-set|cpu core=normal|-set|cpu cycles=fixed 3000|-set|dosbox gus=true");
    const QString conf = QStringLiteral("|-conf|/t/overrides.conf");
    const std::pair<DosBoxFamily, QString> cases[] = {
        {DosBoxFamily::staging, files + sets},
        {DosBoxFamily::unknown, files + sets},
        {DosBoxFamily::svn, files + conf + sets},
        {DosBoxFamily::vanilla, files + conf},
        {DosBoxFamily::x, files + sets + QStringLiteral("|-nopromptfolder|-defaultdir|/games/G")},
    };
    for (const auto &[family, expected] : cases)
        EXPECT_EQ(dosBoxArguments(line(), family).join(u'|'), expected) << int(family);
    DosBoxCommandLine bare = line();
    bare.overlay = QString();
    bare.overrides.clear();
    EXPECT_EQ(dosBoxArguments(bare, DosBoxFamily::vanilla).join(u'|'), QStringLiteral("-conf|/t/G_launch.conf"));
    EXPECT_TRUE(overridesConfig(bare, DosBoxFamily::vanilla).isNull());
}

TEST(DosBoxArguments, PutOverridesInAFileByTheirSections) {
    EXPECT_EQ(overridesConfig(line(), DosBoxFamily::vanilla),
              "[cpu]\ncore=normal\ncycles=fixed 3000\n\n[dosbox]\ngus=true\n\n[sblaster]\nSBType=sb16\n\n");
    EXPECT_TRUE(overridesConfig(line(), DosBoxFamily::staging).isNull());
}

TEST(DosBoxArguments, RefuseOverridesThatWouldBecomeOtherSettings) {
    for (const auto &[key, value] : {std::pair{"a b", "x"}, {"cycles", "1\n[autoexec]"}, {"", "x"}, {"a=b", "x"}}) {
        DosBoxCommandLine hostile = line();
        hostile.overrides = {{QString::fromLatin1(key), QString::fromLatin1(value)}};
        EXPECT_THROW(dosBoxArguments(hostile, DosBoxFamily::staging), LaunchError) << key;
        EXPECT_THROW(overridesConfig(hostile, DosBoxFamily::vanilla), LaunchError) << key;
    }
}

TEST(DosBoxSettings, BelongToSections) {
    const std::pair<const char *, const char *> cases[] = {
        {"cputype", "cpu"},     {"CYCLES", "cpu"},     {"mpu401", "midi"},    {"tandy", "speaker"},
        {"sbtype", "sblaster"}, {"memsize", "dosbox"}, {"machine", "dosbox"}, {"glshader", "render"},
        {"output", "render"},   {"other", "dosbox"}};
    for (const auto &[key, section] : cases)
        EXPECT_EQ(sectionOfKey(QString::fromLatin1(key)).toStdString(), section) << key;
}

} // namespace
} // namespace ludarium
