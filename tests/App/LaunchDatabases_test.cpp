#include "App/LaunchDatabases.h"

#include "Host/Settings.h"
#include "Services/Dos/DOSBoxRequirementsManager.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryIndex.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;
using test::await;

/// A collection with one DOS game, and everything that decides its start.
class LaunchDecisions : public testing::Test {
  protected:
    LaunchDecisions() : emulators(host) {
        put(u"eXo/eXoDOS/!dos/game/dosbox.conf"_s, "[autoexec]\n");
        put(u"eXo/eXoDOS/game/dosbox.conf"_s, "[autoexec]\necho hello\n");
        put(u"eXo/eXoDOS/game/GAME.EXE"_s, "MZ");
        host.putProgram(u"/usr/bin/dosbox-staging"_s, "exit 0");
    }
    void put(const QString &path, const QByteArray &content) { host.put(u"/coll/"_s + path, content); }
    QString collection() const { return host.root() + u"/coll"_s; }

    /// "choice (reason)" of each decision by its subject, as `play --dry-run` shows them.
    QMap<QString, QString> decisions(const QString &title, const QString &label = {},
                                     std::optional<EmulatorType> recorded = {}) {
        const LaunchDatabases databases(host);
        databases.requirements->loadDatabase(collection());
        GameLauncher launcher(host, emulators, databases.dosCollaborators());
        launcher.setDosRouteCollaborators(databases.dosRouteCollaborators(host, emulators));
        launcher.setCollectionURL(collection());
        auto game = std::make_shared<Game>();
        game->id = u"1"_s;
        game->title = title;
        game->platform = u"MS-DOS"_s;
        game->configurationPath = u"eXo\\eXoDOS\\!dos\\game\\game.bat"_s;
        game->requiredEmulatorType = recorded;
        GameLibrary library(host);
        VersionCheck::Collaborators collaborators = databases.versionCheckCollaborators(library);
        collaborators.currentGame = [&](const QString &) { return game; };
        const VersionCheck check(collaborators);
        const VersionCheck::Result versions = await(check.checkVersionsAndLaunch(game->id, collection()));
        std::optional<GameVersionOption> version = versions.version;
        if (versions.menu)
            for (const GameVersionOption &option : versions.menu->options)
                if (option.label == label)
                    version = option;
        const LaunchPlan plan = await(launcher.plan(game, version));
        QMap<QString, QString> result;
        for (const LaunchDecision &decision : plan.decisions)
            result.insert(decision.subject, u"%1 (%2)"_s.arg(decision.choice, decision.reason));
        return result;
    }

    test::TestHost host;
    EmulatorManager emulators;
};

TEST_F(LaunchDecisions, NameTheLineOfTheCollectionsDatabase) {
    put(u"eXo/util/dosbox.txt"_s, "Other:x\\dosbox.exe\nGame, The:ECE4481\\dosbox.exe\n");
    const QString expected =
        u"ece (the collection names the build \"ECE4481\" (eXo/util/dosbox.txt, line 2, \"Game, The\"))"_s;
    EXPECT_EQ(decisions(u"The Game"_s).value(u"emulator type"_s), expected);
    EXPECT_EQ(decisions(u"The Game"_s, {}, EmulatorType::ece).value(u"emulator type"_s), expected);
    EXPECT_EQ(decisions(u"The Game"_s, {}, EmulatorType::staging).value(u"emulator type"_s),
              u"staging (required by the game's record)"_s);
}

TEST_F(LaunchDecisions, NameTheExceptionsThatTakePart) {
    const QMap<QString, QString> beholder = decisions(u"Eye of the Beholder III"_s);
    EXPECT_EQ(beholder.value(u"emulator type"_s), u"ece (the exception \"eob1\" asks for it)"_s);
    const QMap<QString, QString> warcraft = decisions(u"Warcraft III"_s);
    EXPECT_EQ(warcraft.value(u"cycles"_s), u"fixed 20000 (set by the exception \"warcraft\")"_s);
    EXPECT_EQ(warcraft.value(u"machine"_s), u"svga_s3 (set by the exception \"svga-games\")"_s);
    EXPECT_EQ(
        decisions(u"The Dig"_s).value(u"emulator type"_s),
        u"vanilla (the collection names no build; the exception \"lucasarts-scumm\" recommends ScummVM, which only "
        "its own games use)"_s);
}

TEST_F(LaunchDecisions, NameTheDosboxThatTheUserSet) {
    EXPECT_TRUE(decisions(u"Game"_s).value(u"DOSBox"_s).endsWith(u"(looked for among the programs of this machine)"_s));
    const QString own = host.putProgram(u"/home/own-dosbox"_s, "exit 0");
    host.settings.setValue(Settings::dosboxPath, own);
    EXPECT_EQ(decisions(u"Game"_s).value(u"DOSBox"_s), own + u" (the path in the user's settings)"_s);
}

TEST_F(LaunchDecisions, NameTheChosenVersionAndWhereItIsKnownFrom) {
    const QMap<QString, QString> loom = decisions(u"Loom"_s, u"EGA with MT-32"_s);
    EXPECT_EQ(loom.value(u"version"_s), u"EGA with MT-32 (chosen by the user, \"Loom\" of the version database)"_s);
    EXPECT_EQ(loom.value(u"mididevice"_s), u"mt32 (set by the version \"EGA with MT-32\")"_s);
    // The user's own file replaces ours, and a single version needs no choice.
    const QString settings = host.host().paths.settingsFolder().mid(host.root().size());
    host.put(settings + u"/GameVersionDatabase.json"_s,
             R"({"Loom": {"versions": [{"label": "Mine", "type": "ega", "config": {"machine": "ega"}}]}})");
    const QMap<QString, QString> own = decisions(u"Loom"_s);
    EXPECT_EQ(own.value(u"version"_s), u"Mine (the only version known, \"Loom\" of the user's own version database)"_s);
    EXPECT_EQ(own.value(u"machine"_s), u"ega (set by the version \"Mine\")"_s);
}

TEST_F(LaunchDecisions, AreWhatTheLibraryLearns) {
    put(u"eXo/util/dosbox.txt"_s, "Game:x98\\dosbox.exe\n");
    LibraryServices services;
    LaunchDatabases(host).addTo(services);
    EXPECT_FALSE(services.requirement(u"Game"_s));
    services.loadRequirements(collection());
    const auto requirement = services.requirement(u"GAME"_s);
    ASSERT_TRUE(requirement);
    EXPECT_EQ(requirement->type, EmulatorType::dosboxX);
    EXPECT_EQ(requirement->version, u"x98"_s);
    EXPECT_TRUE(services.mt32Titles().contains(normalizeForMT32(u"Ultima VII: The Black Gate (1992)"_s)));
    EXPECT_FALSE(services.mt32Titles().contains(normalizeForMT32(u"Wolfenstein 3D"_s)));
}

} // namespace
} // namespace ludarium
