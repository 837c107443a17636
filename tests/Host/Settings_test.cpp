#include "Host/Settings.h"

#include "support/TestHost.h"

using namespace ludarium;

TEST(Settings, ShowAFreshStartAsIntended) {
    const test::MemorySettings fresh;
    EXPECT_EQ(fresh.value(Settings::viewMode), QStringLiteral("Grid"));
    EXPECT_EQ(fresh.value(Settings::gridSize), QStringLiteral("Medium"));
    EXPECT_EQ(fresh.value(Settings::sortOrder), QStringLiteral("Title"));
    EXPECT_TRUE(fresh.value(Settings::groupDuplicateGames));
    EXPECT_TRUE(fresh.value(Settings::launchFullscreen));
    EXPECT_TRUE(fresh.value(Settings::collectionPath).isNull());
}

TEST(Settings, GiveFamiliesOfKeysOneKeyForEachMember) {
    test::MemorySettings settings;
    QByteArray storage;
    settings.setValue(Settings::retroArchCoreOverride(storage, QStringLiteral("NES é")), QStringLiteral("nestopia"));
    settings.setValue(Settings::retroArchGameCore(storage, QStringLiteral("id-1")), QStringLiteral("mesen"));
    settings.setValue(Settings::mt32NotificationShown(storage, QStringLiteral("Doom")), true);
    EXPECT_EQ(settings.keys(), (QStringList{QStringLiteral("mt32NotificationShown_Doom"),
                                            QStringLiteral("retroarch_core_override_NES é"),
                                            QStringLiteral("retroarch_game_core_id-1")}));
}
