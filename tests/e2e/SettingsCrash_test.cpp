#include "support/SettingsKillLoop.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(SettingsCrashEndurance, LosesNothingOverManyKillsAtManyMoments) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        const QTemporaryDir folder;
        ludarium::test::runSettingsKillLoop(folder.path(), 60, seed);
    }
}
