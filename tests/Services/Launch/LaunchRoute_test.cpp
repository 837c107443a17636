#include "Services/Launch/LaunchRoute.h"

#include <gtest/gtest.h>

using namespace ludarium;
using namespace Qt::StringLiterals;

namespace {

struct Routed {
    QString platform;
    QString title;
    QString applicationPath;
    LaunchRoute expected;
    QString configurationPath = {};
};

void PrintTo(const Routed &routed, std::ostream *out) {
    *out << qPrintable(routed.platform) << " / " << qPrintable(routed.title) << " / "
         << qPrintable(routed.applicationPath);
}

class Routing : public testing::TestWithParam<Routed> {};

} // namespace

TEST_P(Routing, SendsAGameToTheFirstRunnerThatFits) {
    Game game;
    game.platform = GetParam().platform;
    game.title = GetParam().title;
    game.applicationPath = GetParam().applicationPath;
    game.configurationPath = GetParam().configurationPath;
    const auto [route, reason] = launchRoute(game);
    EXPECT_EQ(launchRouteName(route).toStdString(), launchRouteName(GetParam().expected).toStdString());
    EXPECT_FALSE(reason.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, Routing,
    testing::Values(
        Routed{u"Magazines"_s, u"DOSBox Soundtrack Video"_s, {}, LaunchRoute::document},
        Routed{u"Gaming NEWSLETTERS"_s, u"A"_s, {}, LaunchRoute::document},
        Routed{u"MS-DOS Books"_s, u"A"_s, {}, LaunchRoute::document},
        Routed{u"Catalogs"_s, u"A"_s, {}, LaunchRoute::document}, Routed{u"Magazine"_s, u"A"_s, {}, LaunchRoute::dos},
        Routed{u"ScummVM"_s, u"Loom Soundtrack"_s, {}, LaunchRoute::scummVM},
        Routed{u"ScummVM SVN"_s, u"A"_s, {}, LaunchRoute::scummVM}, Routed{u"scummvm"_s, u"A"_s, {}, LaunchRoute::dos},
        Routed{u"DREAMM"_s, u"A"_s, {}, LaunchRoute::dreamm},
        Routed{u"eXo Dreamm 2"_s, u"A"_s, {}, LaunchRoute::dreamm},
        Routed{u"Windows 3x"_s, u"A"_s, {}, LaunchRoute::windows3x},
        Routed{u"Windows 3.x"_s, u"A"_s, {}, LaunchRoute::windows3x},
        Routed{u"Windows 9x"_s, u"A"_s, {}, LaunchRoute::windows9x},
        Routed{u"Windows 9.x"_s, u"A"_s, {}, LaunchRoute::windows9x},
        Routed{u"Apple IIGS"_s, u"A video"_s, {}, LaunchRoute::appleIIGS},
        Routed{u"Sony PlayStation"_s, u"Music CD"_s, u"Audio/x.chd"_s, LaunchRoute::retroArch},
        Routed{u"sony playstation"_s, u"A"_s, {}, LaunchRoute::dos},
        Routed{u"Arcade"_s, u"A"_s, {}, LaunchRoute::arcade}, Routed{u"MAME"_s, u"A"_s, {}, LaunchRoute::arcade},
        // A name that only sounds like an arcade is no platform of ROM files.
        Routed{u"Arcade Classics"_s, u"A"_s, {}, LaunchRoute::dos},
        Routed{u"MS-DOS"_s, u"Foo Soundtrack"_s, {}, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"Foo MUSIC CD"_s, {}, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"Foo Audio CD"_s, {}, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"Foo"_s, u"eXo\\Foobar2000\\foobar2000.exe"_s, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"Foo"_s, u"eXo\\eXoDOS\\!dos\\AudioGam\\a.bat"_s, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"Video soundtrack"_s, u"eXo\\Videos\\a.bat"_s, LaunchRoute::soundtrack},
        Routed{u"MS-DOS"_s, u"The Making of Doom Video"_s, {}, LaunchRoute::video},
        Routed{u"MS-DOS"_s, u"Foo"_s, u"eXo/Videos/Foo/play.bat"_s, LaunchRoute::video},
        Routed{u"MS-DOS"_s, u"Foo"_s, u"eXo\\videos\\Foo\\play.bat"_s, LaunchRoute::video},
        Routed{u"MS-DOS"_s, u"Foo"_s, u"Videos\\Foo.bat"_s, LaunchRoute::dos},
        Routed{u"MS-DOS"_s, u"Doom"_s, u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s, LaunchRoute::dos},
        Routed{u"MS-DOS"_s, u"Video Poker"_s, u"eXo\\eXoDOS\\!dos\\vpoker\\vpoker.bat"_s, LaunchRoute::dos,
               u"eXo\\eXoDOS\\!dos\\vpoker\\vpoker.bat"_s},
        Routed{u"MS-DOS"_s, u"Audio CD Soundtrack Lab"_s, u"eXo\\eXoDOS\\!dos\\AudioLab\\a.bat"_s, LaunchRoute::dos,
               u"exo/exodos/!dos/AudioLab/dosbox.conf"_s},
        Routed{u"MS-DOS"_s, u"The Making of Doom Video"_s, u"eXo\\Videos\\Doom\\a.bat"_s, LaunchRoute::video,
               u"eXo\\Videos\\Doom\\a.bat"_s},
        Routed{u"Unknown"_s, u""_s, {}, LaunchRoute::dos}));

TEST(SetupRoute, AsksThePlatformAlone) {
    Game game;
    game.title = u"A Soundtrack"_s;
    for (const auto &[platform, expected] : {std::pair{u"ScummVM"_s, LaunchRoute::scummVM},
                                             {u"my dreamm set"_s, LaunchRoute::dreamm},
                                             {u"Windows 3.x"_s, LaunchRoute::windows3x},
                                             {u"Windows 9x"_s, LaunchRoute::windows9x},
                                             {u"Apple IIGS"_s, LaunchRoute::appleIIGS},
                                             {u"Magazines"_s, LaunchRoute::dos},
                                             {u"Arcade"_s, LaunchRoute::dos}}) {
        game.platform = platform;
        EXPECT_EQ(setupRoute(game), expected) << qPrintable(platform);
    }
}
