#include "support/SettingsKillLoop.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(SettingsCrash, LosesNothingThatWasAcknowledgedWhenTwoWritersAreKilled) {
    const QTemporaryDir folder;
    ludarium::test::runSettingsKillLoop(folder.path(), 8, 20260314);
}
