#include "Services/Emulators/PackageManager.h"
#include "Services/Emulators/PrerequisitesManager.h"
#include "Services/Emulators/ToolVersion.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

TEST(ToolVersion, ReadsTheVersionThatAProgramTells) {
    struct Case {
        QString output;
        QString version;
    };
    for (const auto &[output, version] :
         {Case{u"\nDOSBox version 0.74-3, copyright 2002-2019 DOSBox Team.\n"_s, u"0.74-3"_s},
          Case{u"dosbox-staging, version 0.82.0\n"_s, u"0.82.0"_s},
          Case{u"ScummVM 2.7.0git (Feb 17 2023 14:38:49)"_s, u"2.7.0"_s},
          Case{u"RetroArch: Frontend for libretro -- v1.14.0 -- b2ceb50 --"_s, u"1.14.0"_s},
          Case{u"wine-8.0 (Debian 8.0~repack-4)"_s, u"8.0"_s}, Case{u"0.251 (unknown)"_s, u"0.251"_s},
          Case{u"copyright 2002-2019"_s, QString()}, Case{QString(), QString()}})
        EXPECT_EQ(versionIn(output), version) << qPrintable(output);
    EXPECT_EQ(bashVersionIn(u"GNU bash, version 5.2.15(1)-release (x86_64)"_s), u"5.2"_s);
}

TEST(ToolVersion, AsksOnlyProgramsThatAnswerWithoutAWindow) {
    TestHost host;
    const QString program = host.putProgram(u"/usr/bin/anything"_s, "touch \"$0.ran\"; echo 'version 1.2.3'");
    EXPECT_EQ(await(emulatorVersion(host, EmulatorProgram::rpcs3, program)), QString());
    EXPECT_FALSE(QFile::exists(program + u".ran"_s));
    EXPECT_EQ(await(emulatorVersion(host, EmulatorProgram::wine, program)), u"1.2.3"_s);
    EXPECT_EQ(await(emulatorVersion(host, EmulatorProgram::wine, host.scratch() + u"/gone"_s)), QString());
}

TEST(PackageManager, NamesTheCommandOfTheMachine) {
    struct Case {
        HostLayout layout;
        QString program;
        QString name;
        QString command;
    };
    const QStringList packages{u"aria2"_s, u"wget"_s};
    for (const auto &[layout, program, name, command] :
         {Case{HostLayout::Linux, u"/usr/bin/apt-get"_s, u"APT"_s, u"sudo apt install aria2 wget"_s},
          Case{HostLayout::Linux, u"/usr/bin/dnf"_s, u"DNF"_s, u"sudo dnf install aria2 wget"_s},
          Case{HostLayout::Linux, u"/usr/bin/pacman"_s, u"pacman"_s, u"sudo pacman -S aria2 wget"_s},
          Case{HostLayout::MacOS, u"/usr/local/bin/brew"_s, u"Homebrew"_s, u"brew install aria2 wget"_s},
          Case{HostLayout::Linux, u"/usr/bin/nothing"_s, u"Package manager"_s, QString()}}) {
        TestHost host(layout);
        host.putProgram(program, "exit 0");
        const PackageManager found = findPackageManager(host.host().paths);
        EXPECT_EQ(found.name, name);
        EXPECT_EQ(installCommand(found.kind, packages), command) << qPrintable(program);
    }
    EXPECT_EQ(emulatorInstallCommand(EmulatorProgram::wine, HostLayout::MacOS), u"brew install --cask wine-stable"_s);
    EXPECT_EQ(emulatorInstallCommand(EmulatorProgram::pcsx2, HostLayout::Linux),
              u"flatpak install flathub net.pcsx2.PCSX2"_s);
    EXPECT_EQ(emulatorInstallCommand(EmulatorProgram::gsplus, HostLayout::Linux), QString());
}

TEST(Prerequisites, FindsToolsBashAndRoms) {
    TestHost host(HostLayout::MacOS);
    host.putProgram(u"/opt/homebrew/bin/brew"_s, "exit 0");
    host.putProgram(u"/usr/local/bin/gsed"_s, "exit 0");
    host.putProgram(u"/opt/homebrew/bin/bash"_s, "echo 'GNU bash, version 4.4.20(1)-release'");
    host.putProgram(u"/bin/bash"_s, "echo 'GNU bash, version 3.2.57(1)-release'");
    const QString roms = u"~/Library/Application Support/DOSBox Staging/mt32-roms/"_s;
    host.put(host.host().paths.resolve(roms + u"mt32_control.rom"_s), "x");
    PrerequisitesManager manager(host);
    EXPECT_FALSE(manager.isChecked());
    await(manager.checkAll());
    EXPECT_TRUE(manager.isChecked());
    EXPECT_FALSE(manager.isChecking());
    EXPECT_TRUE(manager.found().homebrewInstalled());
    EXPECT_TRUE(manager.found().gsedInstalled);
    EXPECT_FALSE(manager.found().aria2Installed);
    EXPECT_FALSE(manager.found().allRequiredInstalled());
    EXPECT_EQ(manager.found().bashVersion, u"3.2"_s) << "the one asked last";
    EXPECT_FALSE(manager.found().bashVersionOK);
    EXPECT_FALSE(manager.found().mt32RomsInstalled);

    host.putProgram(u"/usr/local/bin/bash"_s, "echo 'GNU bash, version 5.2.37(1)-release'");
    host.putProgram(u"/usr/local/bin/aria2c"_s, "exit 0");
    host.put(host.host().paths.resolve(roms + u"CM32L_PCM.ROM"_s), "x");
    await(manager.checkAll());
    EXPECT_TRUE(manager.found().allRequiredInstalled());
    EXPECT_EQ(manager.found().bashVersion, u"5.2"_s);
    EXPECT_TRUE(manager.found().bashVersionOK);
    EXPECT_TRUE(manager.found().mt32RomsInstalled) << "each ROM counts by its own name";
}

} // namespace ludarium::test
