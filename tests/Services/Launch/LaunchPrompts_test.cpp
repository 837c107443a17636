#include "Services/Launch/LaunchPrompts.h"

#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Emulators/Mt32Roms.h"
#include "support/TestHost.h"

#include <QFileInfo>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;

namespace {

GamePtr loom() {
    auto game = std::make_shared<Game>();
    game->id = u"loom-1"_s;
    game->title = u"Loom %1"_s;
    return game;
}

struct ChoiceCase {
    const char *button;
    ECELaunchChoice choice;
};

class EceChoice : public testing::TestWithParam<std::tuple<ChoiceCase, HostLayout>> {};

TEST_P(EceChoice, FollowsTheButton) {
    const auto &[expected, layout] = GetParam();
    const QString system = layout == HostLayout::MacOS ? u"macOS"_s : u"Linux"_s;
    TestHost host(layout);
    host.dialogs.answers = {QString::fromUtf8(expected.button)};
    EXPECT_EQ(await(LaunchPrompts::promptECELaunchChoice(&host.host(), loom(), EmulatorType::custom)), expected.choice);
    const Alert &alert = host.dialogs.asked.first();
    EXPECT_EQ(alert.title, u"Choose Emulator for Loom %1"_s);
    EXPECT_TRUE(alert.text.startsWith(
        u"This game is marked for Custom DOSBox in eXoDOS, which may indicate it needs "
        "specific CPU timing or features.\n\nDOSBox Staging (Recommended): Native %1 emulator"_s.arg(system)));
    EXPECT_TRUE(alert.text.contains(u"\n\nWine + Custom DOSBox: Runs original Windows DOSBox for accurate timing. "_s));
    EXPECT_TRUE(alert.text.contains(u"glitches on %1.\n"_s.arg(system)));
    EXPECT_TRUE(alert.text.endsWith(u"(wrong speed, hangs, glitches), try Wine+ECE."_s));
    EXPECT_EQ(alert.buttons, (QStringList{u"DOSBox Staging (Recommended)"_s, u"Wine + Custom DOSBox"_s, u"Cancel"_s}));
    EXPECT_EQ(alert.style, Alert::Style::Informational);
}

INSTANTIATE_TEST_SUITE_P(Buttons, EceChoice,
                         testing::Combine(testing::Values(ChoiceCase{"DOSBox Staging (Recommended)",
                                                                     ECELaunchChoice::staging},
                                                          ChoiceCase{"Wine + Custom DOSBox", ECELaunchChoice::wineECE},
                                                          ChoiceCase{"Cancel", ECELaunchChoice::cancelled}),
                                          testing::Values(HostLayout::MacOS, HostLayout::Linux)));

TEST(WindowsBuildNotice, SaysWhatIsMissingAndFollowsTheButton) {
    TestHost host(HostLayout::MacOS);
    host.dialogs.answers = {u"Try DOSBox Staging"_s, u"Cancel"_s};
    EXPECT_EQ(await(LaunchPrompts::promptWineECENotAvailable(&host.host(), loom(), false)), ECELaunchChoice::staging);
    EXPECT_TRUE(host.log().contains(u"🎮 User chose to try DOSBox Staging for ECE game"_s));
    EXPECT_EQ(await(LaunchPrompts::promptWineECENotAvailable(&host.host(), loom(), true)), ECELaunchChoice::cancelled);
    EXPECT_TRUE(host.log().contains(u"🎮 User cancelled ECE game launch (Wine+ECE not available)"_s));
    ASSERT_EQ(host.dialogs.asked.size(), 2);
    for (const Alert &alert : host.dialogs.asked) {
        EXPECT_EQ(alert.title, u"Wine + DOSBox ECE Required"_s);
        EXPECT_EQ(alert.style, Alert::Style::Critical);
    }
    EXPECT_EQ(host.dialogs.asked[0].text,
              u"\"Loom %1\" is designed for DOSBox ECE, which requires Wine to run on macOS.\n\nWine is not installed. "
              "To install it:\n  brew install --cask wine-stable\n\nYou can try launching with DOSBox Staging instead, "
              "but the game may not work correctly."_s);
    EXPECT_EQ(host.dialogs.asked[1].text,
              u"\"Loom %1\" is designed for DOSBox ECE, but the required DOSBox ECE files were not found in the "
              "collection.\n\nYou can try launching with DOSBox Staging instead, but the game may not work "
              "correctly."_s);
}

TEST(WindowsBuildNotice, NamesThePackageManagerOfTheMachine) {
    const struct {
        const char *program; ///< that the machine has
        const char *command;
    } rows[] = {{nullptr, "flatpak install flathub org.winehq.Wine"},
                {"/usr/bin/apt-get", "sudo apt install wine"},
                {"/usr/bin/pacman", "sudo pacman -S wine"}};
    for (const auto &[program, command] : rows) {
        TestHost host(HostLayout::Linux);
        if (program)
            host.putProgram(QString::fromUtf8(program), "exit 0");
        host.dialogs.answers = {u"Cancel"_s};
        await(LaunchPrompts::promptWineECENotAvailable(&host.host(), loom(), false));
        EXPECT_TRUE(host.dialogs.asked[0].text.contains(
            u"requires Wine to run on Linux.\n\nWine is not installed. To install it:\n  %1\n\n"_s.arg(
                QString::fromUtf8(command))))
            << host.dialogs.asked[0].text.toStdString();
    }
}

/// A machine of one layout, with DOSBox Staging and the ROMs put on it as needed.
class Mt32Notice : public testing::TestWithParam<HostLayout> {
  protected:
    Mt32Notice() : host(GetParam()), emulators(host) {
        QObject::connect(&host.notifications, &NotificationCenter::posted, &host.notifications,
                         [this](const QString &name) { posted.append(name); });
    }
    void putStaging() {
        host.putProgram(GetParam() == HostLayout::MacOS ? u"/Applications/DOSBox Staging.app/Contents/MacOS/dosbox"_s
                                                        : u"/usr/bin/dosbox-staging"_s,
                        "exit 0");
    }
    void putRoms(const QString &control, const QString &pcm) {
        const QString folder = mt32RomFolder(host.host().paths);
        for (const QString &name : {control, pcm})
            host.put((folder + u'/' + name).mid(host.root().size()), "rom");
    }
    void check(GamePtr game = loom()) { await(LaunchPrompts::checkMT32Support(&host.host(), &emulators, game)); }

    TestHost host;
    EmulatorManager emulators;
    QStringList posted;
};

TEST_P(Mt32Notice, IsNotShownWhenNothingIsMissing) {
    putStaging();
    ASSERT_TRUE(emulators.findDOSBoxStaging());
    putRoms(u"CM32L_CONTROL.ROM"_s, u"mt32_pcm.rom"_s);
    check();
    EXPECT_TRUE(host.dialogs.asked.isEmpty());
    EXPECT_TRUE(host.log().contains(u"🎹 Game 'Loom %1' supports MT-32 audio"_s));
    EXPECT_TRUE(host.log().contains(u"   ✅ DOSBox Staging + MT-32 ROMs detected - MT-32 audio enabled"_s));
}

TEST_P(Mt32Notice, NamesWhatIsMissing) {
    host.dialogs.answers = {u"Continue"_s, u"Continue"_s};
    check();
    ASSERT_EQ(host.dialogs.asked.size(), 1);
    EXPECT_EQ(host.dialogs.asked[0].title, u"MT-32 Audio Available"_s);
    EXPECT_EQ(host.dialogs.asked[0].text,
              u"\"Loom %1\" supports Roland MT-32 audio for enhanced music.\n\nTo enable MT-32 audio, you need:\n"
              "• DOSBox Staging\n• MT-32 ROMs\n\nYou can install these in Settings → Dependencies.\n\nThe game will "
              "still play with standard audio."_s);
    EXPECT_EQ(host.dialogs.asked[0].buttons, (QStringList{u"Open Settings"_s, u"Don't Show Again"_s, u"Continue"_s}));
    EXPECT_TRUE(host.log().contains(u"DOSBox Staging, MT-32 ROMs"_s));
    EXPECT_TRUE(host.log().contains(u"   💡 Install via Settings → Dependencies for enhanced audio"_s));
    EXPECT_TRUE(QFileInfo(mt32RomFolder(host.host().paths)).isDir());

    // A control ROM alone plays nothing.
    putStaging();
    putRoms(u"MT32_CONTROL.ROM"_s, u"CM32L_CONTROL.ROM"_s);
    auto other = std::make_shared<Game>(*loom());
    other->id = u"loom-2"_s;
    check(other);
    ASSERT_EQ(host.dialogs.asked.size(), 2);
    EXPECT_TRUE(host.dialogs.asked[1].text.contains(u"you need:\n• MT-32 ROMs\n\n"_s));
}

TEST_P(Mt32Notice, IsShownOnceForEachGameWhicheverButtonIsPressed) {
    for (const QString &button : {u"Open Settings"_s, u"Continue"_s}) {
        auto game = std::make_shared<Game>(*loom());
        game->id = button;
        host.dialogs.asked.clear();
        host.dialogs.answers = {button};
        check(game);
        check(game);
        EXPECT_EQ(host.dialogs.asked.size(), 1) << qPrintable(button);
    }
    EXPECT_EQ(posted, QStringList{u"OpenDependenciesSettings"_s});
    EXPECT_EQ(host.workspace.actions,
              GetParam() == HostLayout::MacOS ? QStringList{u"url x-apple.systempreferences:"_s} : QStringList());
}

TEST_P(Mt32Notice, IsShownForNoGameAnyMoreWhenTheUserSaysSo) {
    host.dialogs.answers = {u"Don't Show Again"_s};
    check();
    EXPECT_TRUE(host.settings.value(Settings::mt32NotificationsDisabled));
    QByteArray key;
    EXPECT_TRUE(host.settings.value(Settings::mt32NotificationShown(key, u"loom-1"_s)));
    auto other = std::make_shared<Game>(*loom());
    other->id = u"loom-2"_s;
    check(other);
    EXPECT_EQ(host.dialogs.asked.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Layouts, Mt32Notice, testing::Values(HostLayout::MacOS, HostLayout::Linux));

TEST(Mt32Roms, MayLieInAnyFolderOnLinuxButNotInTwo) {
    TestHost host;
    host.put(u"/usr/share/mt32-rom-data/MT32_CONTROL.ROM"_s, "rom");
    host.put(u"/usr/local/share/mt32-rom-data/MT32_PCM.ROM"_s, "rom");
    EXPECT_FALSE(checkMT32Roms(host.host().paths));
    host.put(u"/usr/share/mt32-rom-data/MT32_PCM.ROM"_s, "rom");
    EXPECT_TRUE(checkMT32Roms(host.host().paths));
}

} // namespace
