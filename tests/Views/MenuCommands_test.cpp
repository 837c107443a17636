#include "Host/Settings.h"
#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <gtest/gtest.h>

namespace ludarium::test {

TEST(LogUpload, AsksOnceAndTellsHowItEnded) {
    DesktopFixture fixture;
    LogUpload &upload = *fixture.desktop.logUpload();
    EXPECT_EQ(upload.unavailable(), QStringLiteral("No address for log uploads is set."));
    upload.upload();
    EXPECT_FALSE(fixture.dialogs.isActive());
    bool told = false;
    QObject::connect(&upload, &LogUpload::uploadingChanged, &upload, [&told] { told = true; });
    fixture.machine.settings.setValue(Settings::logUploadURL, QStringLiteral("http://127.0.0.1:9/nobody"));
    EXPECT_TRUE(told && upload.unavailable().isEmpty());
    upload.upload();
    upload.upload();
    EXPECT_EQ(fixture.dialogs.buttons(), (QStringList{QStringLiteral("Upload"), QStringLiteral("Cancel")}));
    EXPECT_TRUE(fixture.dialogs.text().startsWith(QStringLiteral("Your logs will be uploaded to help diagnose")));
    fixture.dialogs.dismiss();
    EXPECT_FALSE(fixture.dialogs.isActive()) << "a second request while one is open asks nothing more";
    EXPECT_FALSE(fixture.machine.settings.value(Settings::logUploadConsent));

    ASSERT_TRUE(waitUntil([&] {
        upload.upload();
        return fixture.dialogs.isActive();
    }));
    fixture.dialogs.answer(0);
    ASSERT_TRUE(waitUntil([&] { return upload.isUploading(); }));
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    EXPECT_EQ(fixture.dialogs.title(), QStringLiteral("Upload Failed"));
    EXPECT_FALSE(fixture.dialogs.text().isEmpty());
    EXPECT_FALSE(upload.isUploading());
    fixture.dialogs.dismiss();

    EXPECT_TRUE(fixture.machine.settings.value(Settings::logUploadConsent));
    upload.upload();
    EXPECT_TRUE(upload.isUploading()) << "the consent is remembered";
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    EXPECT_EQ(fixture.dialogs.title(), QStringLiteral("Upload Failed"));
}

TEST(SupportPages, OpenOnlyAddressesThatAreSafeToOpen) {
    TestHost machine;
    SupportPages pages(machine.host().workspace);
    for (const char *address : {"", "http://example.org", "file:///etc/passwd", "javascript:alert(1)"}) {
        pages.setAddress(QStringLiteral("help"), QString::fromUtf8(address));
        EXPECT_FALSE(pages.isAvailable(QStringLiteral("help"))) << address;
        pages.open(QStringLiteral("help"));
    }
    EXPECT_TRUE(machine.workspace.actions.isEmpty());
    pages.setAddress(QStringLiteral("help"), QStringLiteral("https://example.org/help"));
    pages.open(QStringLiteral("help"));
    EXPECT_EQ(machine.workspace.actions, QStringList{QStringLiteral("url https://example.org/help")});
}

TEST(GameCommands, FollowTheSelectedGame) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    GameCommands &game = *fixture.desktop.game();
    EXPECT_EQ(game.setupButtonTitle(), QStringLiteral("Setup/Install Game"));
    game.toggleFavorite();
    ASSERT_TRUE(fixture.desktop.browse()->selectTitle(QStringLiteral("Copper Harbor")));
    EXPECT_EQ(game.setupButtonTitle(), QStringLiteral("Install Selected Game"));
    GameStatus installed;
    installed.isInstalled = true;
    fixture.state.gameLibrary().setGameStatus(game.gameId(), installed);
    EXPECT_EQ(game.setupButtonTitle(), QStringLiteral("Setup Selected Game"));
    game.setRating(4);
    game.setProgress(3);
    game.setProgress(9);
    EXPECT_EQ(game.rating(), 4);
    EXPECT_EQ(game.progressTexts()[game.progress()], QStringLiteral("Completed"));
    game.copyTitle();
    EXPECT_EQ(fixture.machine.workspace.actions, QStringList{QStringLiteral("copy Copper Harbor")});
    game.showDeveloper();
    EXPECT_EQ(fixture.desktop.browse()->facets()->value(QStringLiteral("developer")), game.developer());
    EXPECT_TRUE(game.variants().isEmpty()) << "a game of its own has nothing to choose between";
}

} // namespace ludarium::test
