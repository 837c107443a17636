#include "Services/Emulators/EmulatorManager.h"

#include "Host/Settings.h"
#include "Services/Emulators/EmulatorError.h"
#include "Services/Emulators/InstallTexts.h"
#include "support/TestHost.h"

#include <QFile>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;
using State = EmulatorStatus::State;

namespace {

std::string text(const QString &value) {
    return value.toStdString();
}

struct WineCase {
    HostLayout layout;
    QString path;    ///< of the table, or the user's own when it is in none
    QString setting; ///< stored as winePath; "own" stands for `path`
    WineVariant expected;
};

class WineVariants : public testing::TestWithParam<WineCase> {};

} // namespace

TEST_P(WineVariants, AreToldByThePath) {
    const WineCase &wine = GetParam();
    TestHost host(wine.layout);
    QString path;
    if (!wine.path.isEmpty())
        path = host.putProgram(wine.path, "exit 0");
    if (!wine.setting.isNull())
        host.settings.setValue(Settings::winePath, wine.setting == u"own"_s ? path : wine.setting);
    EXPECT_EQ(EmulatorManager(host).getWineVariant(), wine.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, WineVariants,
    testing::Values(WineCase{HostLayout::MacOS, {}, {}, WineVariant::none},
                    WineCase{HostLayout::MacOS,
                             u"/Applications/CrossOver.app/Contents/SharedSupport/CrossOver/bin/wineloader"_s,
                             {},
                             WineVariant::crossOver},
                    WineCase{HostLayout::MacOS,
                             u"/Applications/Wine Stable.app/Contents/Resources/wine/bin/wine"_s,
                             {},
                             WineVariant::wineStable},
                    WineCase{HostLayout::MacOS, u"/opt/homebrew/bin/wine64"_s, {}, WineVariant::homebrew},
                    WineCase{HostLayout::MacOS, u"/usr/local/bin/wine"_s, {}, WineVariant::homebrew},
                    // A setting that leads nowhere does not make the hit of the table a custom one.
                    WineCase{HostLayout::MacOS, u"/usr/local/bin/wine"_s, u"/gone/wine"_s, WineVariant::homebrew},
                    WineCase{HostLayout::MacOS, u"/Users/Shared/Whisky/wine64"_s, u"own"_s, WineVariant::whisky},
                    WineCase{HostLayout::MacOS, u"/Users/Shared/wine"_s, u"own"_s, WineVariant::custom},
                    WineCase{HostLayout::Linux, u"/usr/bin/wine"_s, {}, WineVariant::none},
                    WineCase{HostLayout::Linux, u"/usr/bin/wine"_s, u""_s, WineVariant::none},
                    WineCase{HostLayout::Linux, u"/usr/bin/wine"_s, u"own"_s, WineVariant::custom},
                    WineCase{HostLayout::Linux, u"/opt/wine-stable/bin/wine64"_s, {}, WineVariant::wineStable},
                    WineCase{HostLayout::Linux, u"/opt/cxoffice/bin/wine"_s, {}, WineVariant::crossOver}));

TEST(EmulatorManager, KnowsNoStatusBeforeTheFirstCheck) {
    TestHost host;
    EXPECT_EQ(EmulatorManager(host).status(EmulatorProgram::dosbox), EmulatorStatus{});
}

TEST(EmulatorManager, PublishesAllStatusesAtOnceAndLogsThem) {
    TestHost host;
    const QString dosbox = host.putProgram(u"/usr/bin/dosbox"_s, "exit 0");
    const QString mame = host.putProgram(u"/usr/games/mame"_s, "exit 0");
    EmulatorManager manager(host);
    int changes = 0;
    QObject::connect(&manager, &EmulatorManager::statusChanged, &manager, [&] {
        ++changes;
        for (EmulatorProgram program : emulatorPrograms())
            EXPECT_NE(manager.status(program).state, State::unknown);
    });
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(manager.status(EmulatorProgram::dosbox), (EmulatorStatus{State::installed, dosbox}));
    EXPECT_EQ(manager.status(EmulatorProgram::mame), (EmulatorStatus{State::installed, mame}));
    EXPECT_EQ(manager.status(EmulatorProgram::wine), (EmulatorStatus{State::notInstalled, {}}));
    const std::string log = text(host.log());
    EXPECT_THAT(log, testing::HasSubstr("Checking emulator status..."));
    EXPECT_THAT(log, testing::HasSubstr("Emulator status: DOSBox=" + text(dosbox) + ", ScummVM=not installed"));
    EXPECT_THAT(log, testing::HasSubstr("Emulator status: RetroArch=not installed, MAME=" + text(mame)));

    ASSERT_TRUE(QFile::remove(dosbox));
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(manager.status(EmulatorProgram::dosbox).state, State::notInstalled);
}

TEST(EmulatorManager, KeepsTheFastAnswersUntilTheyAreForgotten) {
    TestHost host;
    EmulatorManager manager(host);
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(manager.findMAMEFast(), std::nullopt);
    const QString gsplus = host.putProgram(u"/usr/bin/gsplus"_s, "exit 0");
    const QString mame = host.putProgram(u"/usr/bin/mame"_s, "exit 0");
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(manager.status(EmulatorProgram::gsplus).state, State::notInstalled);
    EXPECT_EQ(manager.findMAMEFast(), std::nullopt);
    EXPECT_EQ(manager.findMAME(), mame);
    manager.forgetFastLookups();
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(manager.status(EmulatorProgram::gsplus).path, gsplus);
    EXPECT_EQ(manager.findMAMEFast(), mame);
}

TEST(EmulatorManager, AsksSpotlightWhenTheTableHasNothingAndRemembersTheAnswer) {
    TestHost host(HostLayout::MacOS);
    const QString binary = host.put(u"/Volumes/Games/RPCS3.app/Contents/MacOS/rpcs3"_s);
    const QString bundle = binary.chopped(QStringLiteral("/Contents/MacOS/rpcs3").size());
    host.putProgram(u"/usr/bin/mdfind"_s,
                    "[ \"$1\" = \"kMDItemCFBundleIdentifier == 'net.rpcs3.rpcs3'\" ] && [ $# = 1 ] && "
                    "echo '" +
                        bundle.toUtf8() + "'");
    EmulatorManager manager(host);
    EXPECT_EQ(manager.findRPCS3(), std::nullopt);
    EXPECT_EQ(await(manager.locate(EmulatorProgram::rpcs3)), binary);
    EXPECT_EQ(manager.findRPCS3(), binary);
    EXPECT_EQ(await(manager.locate(EmulatorProgram::pcsx2)), std::nullopt);
    await(manager.checkEmulatorStatus());
    EXPECT_EQ(manager.status(EmulatorProgram::rpcs3).path, binary);
    ASSERT_TRUE(QFile::remove(binary));
    EXPECT_EQ(manager.findRPCS3(), std::nullopt);
}

TEST(EmulatorManager, ReportsASpotlightThatCannotBeStarted) {
    TestHost host(HostLayout::MacOS);
    EmulatorManager manager(host);
    EXPECT_EQ(await(manager.locate(EmulatorProgram::vita3k)), std::nullopt);
    EXPECT_THAT(text(host.log()), testing::HasSubstr("Failed to search for Vita3K: "));
}

TEST(EmulatorError, TellsItsReason) {
    using Case = EmulatorError::Case;
    EXPECT_EQ(EmulatorError(Case::installationFailed, u"no disk"_s).text(), u"Installation failed: no disk"_s);
    EXPECT_EQ(EmulatorError(Case::notFound, u"MAME"_s).text(), u"MAME not found"_s);
    EXPECT_STREQ(EmulatorError(Case::invalidPath, u"/x"_s).what(), "Invalid path: /x");
}

namespace {

using Prompt = QCoro::Task<bool> (EmulatorManager::*)();
struct Asking {
    Prompt prompt;
    EmulatorProgram program;
    QString name;
    QString begin; ///< of the question
};

class Prompts : public testing::TestWithParam<Asking> {};

} // namespace

TEST_P(Prompts, OfferInstallationInstructionsAndCancel) {
    TestHost host;
    EmulatorManager manager(host);
    EXPECT_FALSE(await((manager.*GetParam().prompt)()));
    ASSERT_EQ(host.dialogs.asked.size(), 1);
    const Alert &alert = host.dialogs.asked.first();
    EXPECT_EQ(alert.title, GetParam().name + u" Not Found"_s);
    EXPECT_TRUE(alert.text.startsWith(GetParam().begin)) << text(alert.text);
    EXPECT_EQ(alert.buttons, QStringList({u"Install Automatically"_s, u"Manual Instructions"_s, u"Cancel"_s}));
    EXPECT_THAT(text(host.log()), testing::HasSubstr("   User cancelled " + text(GetParam().name) + " installation"));
}

TEST_P(Prompts, NeverPretendToHaveInstalledAnything) {
    TestHost host;
    EmulatorManager manager(host);
    host.dialogs.answers = QStringList{u"Install Automatically"_s, u"Show Instructions"_s, u"OK"_s};
    EXPECT_FALSE(await((manager.*GetParam().prompt)()));
    ASSERT_EQ(host.dialogs.asked.size(), 3);
    const Alert &failed = host.dialogs.asked.at(1);
    EXPECT_EQ(failed.title, u"Installation Failed"_s);
    EXPECT_TRUE(failed.text.startsWith(u"Installation failed: "_s));
    EXPECT_TRUE(failed.text.endsWith(u"\n\nWould you like to see manual installation instructions?"_s));
    EXPECT_EQ(failed.buttons, QStringList({u"Show Instructions"_s, u"Cancel"_s}));
    EXPECT_EQ(host.dialogs.asked.at(2).title, u"Install "_s + GetParam().name);
    EXPECT_THAT(text(host.log()), testing::HasSubstr("❌ " + text(GetParam().name) + " installation error: "));
}

TEST_P(Prompts, GiveTrueOnlyAfterAnInstallation) {
    TestHost host;
    EmulatorManager manager(host);
    QList<EmulatorProgram> installed;
    manager.installer = [&](EmulatorProgram program) -> QCoro::Task<> {
        installed.append(program);
        co_return;
    };
    host.dialogs.answers = QStringList{u"Install Automatically"_s, u"OK"_s};
    EXPECT_TRUE(await((manager.*GetParam().prompt)()));
    EXPECT_EQ(installed, QList{GetParam().program});
    EXPECT_EQ(host.dialogs.asked.last().title, GetParam().name + u" Installed"_s);
}

TEST_P(Prompts, GiveInstructionsOfTheMachineAndOpenTheirPages) {
    for (HostLayout layout : {HostLayout::MacOS, HostLayout::Linux}) {
        const InstallTexts texts = installTexts(GetParam().program, layout);
        for (const PageButton &page : texts.pages) {
            TestHost host(layout);
            EmulatorManager manager(host);
            host.dialogs.answers = QStringList{u"Manual Instructions"_s, page.text};
            EXPECT_FALSE(await((manager.*GetParam().prompt)()));
            EXPECT_EQ(host.workspace.actions, QStringList{u"url "_s + page.page.toString()});
            ASSERT_EQ(host.dialogs.asked.size(), 2);
            EXPECT_EQ(host.dialogs.asked.last().buttons.last(), u"OK"_s);
        }
        const bool isMac = layout == HostLayout::MacOS;
        EXPECT_EQ(texts.instructions.contains(u"/Applications"_s) || texts.instructions.contains(u"brew"_s), isMac);
        EXPECT_FALSE(texts.question.contains(isMac ? u"Linux"_s : u"macOS"_s));
        EXPECT_EQ(texts.instructions.contains(u"flatpak install"_s), !isMac);
        EXPECT_EQ(texts.installed.contains(u"Homebrew"_s), isMac && GetParam().program != EmulatorProgram::retroArch);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Prompts,
                         testing::Values(Asking{&EmulatorManager::promptInstallDOSBox, EmulatorProgram::dosbox,
                                                u"DOSBox"_s, u"DOSBox is required to play DOS games."_s},
                                         Asking{&EmulatorManager::promptInstallDOSBoxX, EmulatorProgram::dosboxX,
                                                u"DOSBox-X"_s, u"This game requires DOSBox-X for specific features"_s},
                                         Asking{&EmulatorManager::promptInstallWine, EmulatorProgram::wine, u"Wine"_s,
                                                u"This game requires Wine to run the Windows version"_s},
                                         Asking{&EmulatorManager::promptInstallRetroArch, EmulatorProgram::retroArch,
                                                u"RetroArch"_s,
                                                u"This game requires RetroArch to run ROM-based games."_s},
                                         Asking{&EmulatorManager::promptInstallMAME, EmulatorProgram::mame, u"MAME"_s,
                                                u"This arcade game can be played with standalone MAME."_s}));
