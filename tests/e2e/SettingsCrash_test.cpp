#include "support/SettingsKillLoop.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

class SettingsCrashEndurance : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Seeds, SettingsCrashEndurance, testing::Values(1u, 2u, 3u, 4u, 5u));

TEST_P(SettingsCrashEndurance, LosesNothingOverManyKillsAtManyMoments) {
    const QTemporaryDir folder;
    ludarium::test::runSettingsKillLoop(folder.path(), 40, GetParam());
}
