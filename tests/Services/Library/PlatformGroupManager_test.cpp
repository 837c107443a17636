#include "Services/Library/PlatformGroupManager.h"

#include "Host/Settings.h"
#include "Models/Platform.h"
#include "support/TestHost.h"

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
    again.deleteGroup(consoles);
    EXPECT_EQ(again.getUngroupedPlatforms(all).size(), 2);
}

TEST(PlatformGroups, CountAsNoneWhenTheStoredDataCannotBeRead) {
    MemorySettings settings;
    for (const QByteArray &data : {QByteArray("nonsense"), QByteArray("{}"), QByteArray("[{\"name\":\"x\"}]")}) {
        settings.setValue(Settings::platformGroups, data);
        EXPECT_TRUE(PlatformGroupManager(settings).groups().isEmpty()) << data.constData();
        EXPECT_EQ(settings.value(Settings::platformGroups), data);
    }
}

} // namespace ludarium::test
