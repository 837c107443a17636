#include "Services/Launch/VersionCheck.h"

#include "support/TestHost.h"

#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;
using Action = VersionCheck::Result::Action;

namespace {

GameVersionMenu menuOf(int options) {
    GameVersionMenu menu;
    for (int i = 0; i < options; ++i) {
        GameVersionOption option;
        option.label = u"Version %1"_s.arg(i + 1);
        menu.options.append(option);
    }
    return menu;
}

/// A game of a platform, a table that knows `known` versions of it and a folder with `inFolder` ones; -1: no answer.
struct Check {
    QString platform;
    int known = -1;
    int inFolder = -1;
    QString configurationPath = u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s;

    VersionCheck::Result run() {
        Game game;
        game.id = u"1"_s;
        game.title = u"Doom"_s;
        game.platform = platform;
        game.configurationPath = configurationPath;
        const auto answer = [](int options) { return options < 0 ? std::nullopt : std::optional(menuOf(options)); };
        VersionCheck::Collaborators collaborators;
        collaborators.currentGame = [game](const QString &id) {
            return id == game.id ? std::make_shared<const Game>(game) : GamePtr();
        };
        collaborators.detectVersions = [this, answer](const QString &title, const QString &folder) {
            asked.append(title + u" in "_s + folder);
            return answer(known);
        };
        collaborators.detectVersionsFromFolders = [this, answer](const QString &folder) {
            asked.append(folder);
            return answer(inFolder);
        };
        return await(VersionCheck(collaborators).checkVersionsAndLaunch(u"1"_s, u"/c"_s));
    }
    QStringList asked = {};
};

} // namespace

TEST(VersionCheck, DoesNothingForAGameThatIsGone) {
    const VersionCheck::Result result = await(VersionCheck({}).checkVersionsAndLaunch(u"1"_s, u"/c"_s));
    EXPECT_EQ(result.action, Action::nothing);
}

TEST(VersionCheck, IsSkippedForMediaAndForOtherSystems) {
    TestHost host;
    for (const auto &[platform, line] :
         {std::pair{u"MS-DOS Demos"_s, u"📄 Skipping version check for document/media: Doom"_s},
          {u"Magazines"_s, u"📄 Skipping version check for document/media: Doom"_s},
          {u"MS-DOS VIDEO"_s, u"📄 Skipping version check for document/media: Doom"_s},
          {u"Windows 3x"_s, u"🎮 Skipping version check for: Windows 3x"_s},
          {u"MS-DOSBox"_s, u"🎮 Skipping version check for: MS-DOSBox"_s}}) {
        Check check{platform, 2, 2};
        const VersionCheck::Result result = check.run();
        EXPECT_EQ(result.action, Action::launch) << qPrintable(platform);
        EXPECT_FALSE(result.version) << qPrintable(platform);
        EXPECT_TRUE(check.asked.isEmpty()) << qPrintable(platform);
        EXPECT_TRUE(host.log().contains(line)) << qPrintable(platform);
    }
}

TEST(VersionCheck, LaunchesAsksOrTakesTheOnlyVersion) {
    TestHost host;
    for (const QString &platform : {u"MS-DOS"_s, u"MS-DOS (Japan)"_s, u"ScummVM"_s, u"ScummVM SVN"_s}) {
        VersionCheck::Result result = Check{platform}.run();
        EXPECT_EQ(result.action, Action::launch);
        EXPECT_FALSE(result.version);

        result = Check{platform, 1}.run();
        EXPECT_EQ(result.action, Action::launch);
        ASSERT_TRUE(result.version);
        EXPECT_EQ(result.version->label, u"Version 1"_s);

        result = Check{platform, -1, 3}.run();
        EXPECT_EQ(result.action, Action::ask);
        ASSERT_TRUE(result.menu);
        EXPECT_EQ(result.menu->options.size(), 3);

        EXPECT_EQ(Check({platform, 0, 3}).run().action, Action::launch);
    }
    EXPECT_TRUE(host.log().contains(u"   No multiple versions detected, launching directly"_s));
    EXPECT_TRUE(host.log().contains(u"   Single version detected, launching with: Version 1"_s));
}

TEST(VersionCheck, AsksTheTableFirstAndTheFolderOnlyWithoutAnAnswer) {
    Check check{u"MS-DOS"_s, -1, -1};
    check.run();
    EXPECT_EQ(check.asked, QStringList({u"Doom in /c/eXo/eXoDOS/doom"_s, u"/c/eXo/eXoDOS/doom"_s}));
    Check known{u"MS-DOS"_s, 2, 2};
    known.run();
    EXPECT_EQ(known.asked.size(), 1);
}

TEST(VersionCheck, DoesNotLookIntoAFolderThatHasNoUsableName) {
    Check check{u"MS-DOS"_s, 2, 2, u"eXo/!dos/../x.bat"_s};
    EXPECT_EQ(check.run().action, Action::launch);
    EXPECT_TRUE(check.asked.isEmpty());
}
