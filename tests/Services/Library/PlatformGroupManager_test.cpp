#include "Services/Library/PlatformGroupManager.h"

#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "Models/Platform.h"
#include "support/TestHost.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ludarium::test {

TEST(PlatformGroups, HoldAPlatformOnceAndComeBackFromTheSettings) {
    MemorySettings settings;
    QUuid consoles;
    {
        PlatformGroupManager manager(settings);
        consoles = manager.createGroup(QStringLiteral("Consoles"));
        const QUuid computers = manager.createGroup(QStringLiteral("Computers"));
        manager.addPlatform(QStringLiteral("Sega Genesis"), computers);
        manager.addPlatform(QStringLiteral("Sega Genesis"), consoles);
        manager.addPlatform(QStringLiteral("Nowhere"), QUuid::createUuid());
        manager.renameGroup(computers, QStringLiteral("PCs"));
        manager.setExpanded(consoles, false);
    }
    PlatformGroupManager again(settings);
    ASSERT_EQ(again.groups().size(), 2);
    EXPECT_EQ(again.groups()[0].platformNames, QStringList{QStringLiteral("Sega Genesis")});
    EXPECT_FALSE(again.groups()[0].isExpanded);
    EXPECT_TRUE(again.groups()[1].platformNames.isEmpty());
    EXPECT_EQ(again.groups()[1].name, QStringLiteral("PCs"));

    const QList<Platform> all{Platform::named(QStringLiteral("MS-DOS"), {}),
                              Platform::named(QStringLiteral("Sega Genesis"), {})};
    ASSERT_EQ(again.getUngroupedPlatforms(all).size(), 1);
    EXPECT_EQ(again.getUngroupedPlatforms(all)[0].name, QStringLiteral("MS-DOS"));
    again.moveGroup(consoles, 99);
    EXPECT_EQ(PlatformGroupManager(settings).groups()[1].id, consoles) << "past the end is the last";
    again.deleteGroup(consoles);
    EXPECT_EQ(again.getUngroupedPlatforms(all).size(), 2);
}

TEST(PlatformGroups, AreChangedAsTheStoreHoldsThem) {
    const QTemporaryDir folder;
    SqliteSettingsStore one(folder.path());
    SqliteSettingsStore other(folder.path());
    PlatformGroupManager mine(one);
    PlatformGroupManager theirs(other);
    const QUuid first = theirs.createGroup(QStringLiteral("Theirs"));
    mine.createGroup(QStringLiteral("Mine"));
    theirs.addPlatform(QStringLiteral("MS-DOS"), first);
    mine.renameGroup(first, QStringLiteral("Renamed"));
    const PlatformGroupManager kept(one);
    ASSERT_EQ(kept.groups().size(), 2);
    EXPECT_EQ(kept.groups()[0].name, QStringLiteral("Renamed"));
    EXPECT_EQ(kept.groups()[0].platformNames, QStringList{QStringLiteral("MS-DOS")});
    theirs.setExpanded(first, true); // a read notices
    EXPECT_EQ(theirs.groups(), kept.groups());
}

TEST(PlatformGroups, AreNoneWhenTheStoredDataCannotBeReadWhichIsKeptAside) {
    const QByteArray numbers =
        R"([{"id":"6d1c3b52-0f7e-4f0a-9c55-2e8a417bd390","name":"x","platformNames":[1],"isExpanded":true}])";
    for (const QVariant &stored :
         {QVariant(QByteArray("nonsense")), QVariant(QByteArray("{}")), QVariant(QByteArray("[{\"name\":\"x\"}]")),
          QVariant(numbers), QVariant(QByteArray(1'000'000, '[')), QVariant(QStringLiteral("a text"))}) {
        MemorySettings settings;
        settings.setRawValue(QStringLiteral("platformGroups"), stored);
        PlatformGroupManager manager(settings);
        EXPECT_TRUE(manager.groups().isEmpty());
        manager.createGroup(QStringLiteral("New"));
        EXPECT_EQ(PlatformGroupManager(settings).groups(), manager.groups());
        const QStringList aside = settings.keys().filter(QStringLiteral("platformGroups.corrupt-"));
        ASSERT_EQ(aside.size(), 1);
        EXPECT_EQ(settings.rawValue(aside.first()), stored);
    }
}

} // namespace ludarium::test
