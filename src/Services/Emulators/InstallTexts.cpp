#include "Services/Emulators/InstallTexts.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

// Public pages of the outside projects.
const QString homebrewPage = u"https://brew.sh"_s;
const QString dosboxStagingPage = u"https://www.dosbox-staging.org"_s;
const QString dosboxXPage = u"https://dosbox-x.com"_s;
const QString winePage = u"https://www.winehq.org"_s;
const QString crossOverPage = u"https://www.codeweavers.com/crossover"_s;
const QString mamePage = u"https://www.mamedev.org"_s;
const QString retroArchPage = u"https://www.retroarch.com"_s;

const QString afterInstallation = u"\n\nAfter installation, restart Ludarium or refresh the emulator settings."_s;
const QString coresByRetroArch =
    u"1. Open RetroArch\n2. Go to Online Updater > Core Downloader\n3. Download the cores you need"_s;

PageButton homebrewButton() {
    return {u"Open Homebrew Website"_s, QUrl(homebrewPage)};
}

InstallTexts dosbox(bool mac) {
    InstallTexts texts;
    texts.name = u"DOSBox"_s;
    texts.title = u"DOSBox Not Found"_s;
    texts.question = u"DOSBox is required to play DOS games. Would you like to install it now?"_s;
    texts.installed = mac ? u"DOSBox Staging has been successfully installed via Homebrew."_s
                          : u"DOSBox Staging has been successfully installed."_s;
    texts.instructionsTitle = u"Install DOSBox"_s;
    const PageButton stagingButton{u"Open DOSBox Staging Website"_s, QUrl(dosboxStagingPage)};
    if (mac) {
        texts.instructions =
            u"To play DOS games, you need to install DOSBox.\n\nRecommended Installation Methods:\n\n1. Via Homebrew "
            u"(easiest):\n   • Install Homebrew from %1\n   • Run: brew install dosbox-staging\n\n2. Download DOSBox "
            u"Staging:\n   • Visit %2\n   • Download the macOS version\n   • Install to /Applications\n\n3. Download "
            u"DOSBox-X:\n   • Visit %3\n   • Download the macOS version\n   • Install to /Applications"_s.arg(
                homebrewPage, dosboxStagingPage, dosboxXPage) +
            afterInstallation;
        texts.pages = {homebrewButton(), stagingButton};
    } else {
        texts.instructions =
            u"To play DOS games, you need to install DOSBox.\n\nRecommended Installation Methods:\n\n1. Via Flatpak "
            u"(DOSBox Staging, easiest):\n   • Run: flatpak install flathub io.github.dosbox-staging\n\n2. Via the "
            u"package manager:\n   • Debian, Ubuntu: sudo apt install dosbox\n   • Fedora: sudo dnf install "
            u"dosbox-staging\n\n3. Download DOSBox Staging:\n   • Visit %1\n   • Download the Linux version\n   • "
            u"Unpack "
            u"it and set its path in Settings → Emulators\n\n4. DOSBox-X:\n   • Run: flatpak install flathub "
            u"com.dosbox_x.DOSBox-X\n   • Or visit %2"_s.arg(dosboxStagingPage, dosboxXPage) +
            afterInstallation;
        texts.pages = {stagingButton};
    }
    return texts;
}

InstallTexts dosboxX(bool mac) {
    InstallTexts texts;
    texts.name = u"DOSBox-X"_s;
    texts.title = u"DOSBox-X Not Found"_s;
    texts.question = u"This game requires DOSBox-X for specific features (printer support, special graphics modes). "
                     u"Would you like to install it now?"_s;
    texts.instructionsTitle = u"Install DOSBox-X"_s;
    const PageButton button{u"Open DOSBox-X Website"_s, QUrl(dosboxXPage)};
    if (mac) {
        texts.instructions =
            u"Some games require DOSBox-X for specific features.\n\nInstallation Methods:\n\n1. Via Homebrew "
            u"(easiest):\n   • Install Homebrew from %1\n   • Run: brew install dosbox-x\n\n2. Download DOSBox-X:\n   "
            u"• "
            u"Visit %2\n   • Download the macOS version\n   • Install to /Applications"_s.arg(homebrewPage,
                                                                                              dosboxXPage) +
            afterInstallation;
        texts.pages = {homebrewButton(), button};
    } else {
        texts.instructions =
            u"Some games require DOSBox-X for specific features.\n\nInstallation Methods:\n\n1. Via Flatpak "
            u"(easiest):\n   • Run: flatpak install flathub com.dosbox_x.DOSBox-X\n\n2. Via the package manager:\n   • "
            u"Fedora: sudo dnf install dosbox-x\n\n3. Download DOSBox-X:\n   • Visit %1\n   • Download the Linux "
            u"version\n   • Unpack it and set its path in Settings → Emulators"_s.arg(dosboxXPage) +
            afterInstallation;
        texts.pages = {button};
    }
    return texts;
}

InstallTexts wine(bool mac) {
    InstallTexts texts;
    texts.name = u"Wine"_s;
    texts.title = u"Wine Not Found"_s;
    texts.question =
        u"This game requires Wine to run the Windows version of DOSBox (ECE or custom build).\n\nWine is a "
        u"compatibility layer that allows Windows applications to run on %1.\n\nWould you like to install Wine "
        u"now?"_s.arg(mac ? u"macOS"_s : u"Linux"_s);
    texts.instructionsTitle = u"Install Wine"_s;
    const PageButton button{u"Open WineHQ Website"_s, QUrl(winePage)};
    if (mac) {
        texts.instructions =
            u"Wine is required to run Windows DOSBox builds (ECE, custom builds).\n\nInstallation Methods:\n\n1. Via "
            u"Homebrew (recommended):\n   • Install Homebrew from %1\n   • Run: brew install --cask wine-stable\n\n2. "
            u"Download Wine Stable:\n   • Visit %2\n   • Download Wine Stable\n   • Install the app\n\n3. CrossOver "
            u"(commercial):\n   • Visit %3\n   • Purchase and download CrossOver"_s.arg(homebrewPage, winePage,
                                                                                        crossOverPage) +
            afterInstallation;
        texts.pages = {homebrewButton(), button};
    } else {
        texts.instructions =
            u"Wine is required to run Windows DOSBox builds (ECE, custom builds).\n\nInstallation Methods:\n\n1. Via "
            u"the package manager (recommended):\n   • Debian, Ubuntu: sudo apt install wine\n   • Fedora: sudo dnf "
            u"install wine\n\n2. Via Flatpak:\n   • Run: flatpak install flathub org.winehq.Wine\n\n3. Wine Stable "
            u"from "
            u"the project:\n   • Visit %1\n\n4. CrossOver (commercial):\n   • Visit %2\n   • Purchase and download "
            u"CrossOver"_s.arg(winePage, crossOverPage) +
            afterInstallation;
        texts.pages = {button};
    }
    return texts;
}

InstallTexts retroArch(bool mac) {
    InstallTexts texts;
    texts.name = u"RetroArch"_s;
    texts.title = u"RetroArch Not Found"_s;
    texts.question = u"This game requires RetroArch to run ROM-based games.\n\nRetroArch is a frontend for emulators "
                     u"that supports many console and computer platforms.\n\nWould you like to install it now?"_s;
    texts.installed = u"RetroArch has been successfully installed.\n\nNote: You may need to install cores (emulators) "
                      u"from within RetroArch:\n"_s +
                      coresByRetroArch;
    texts.instructionsTitle = u"Install RetroArch"_s;
    const QString begin =
        u"RetroArch is required to play ROM-based games (NES, SNES, Genesis, etc.).\n\nInstallation:\n\n"_s;
    const QString end = u"\n\nAfter installation:\n"_s + coresByRetroArch +
                        u" for your games\n\nThen restart Ludarium or refresh the emulator settings."_s;
    if (mac)
        texts.instructions =
            begin +
            u"1. Download the Universal Metal build from %1\n   • This build works on both Intel and "
            u"Apple Silicon Macs\n   • Drag RetroArch.app to /Applications\n\n2. Alternatively, use the "
            u"automatic installer in Settings"_s.arg(retroArchPage) +
            end +
            u"\n\nNote: The Homebrew version is Intel-only and may have\narchitecture conflicts with "
            u"cores. Use the official build instead."_s;
    else
        texts.instructions = begin +
                             u"1. Via Flatpak (easiest):\n   • Run: flatpak install flathub "
                             u"org.libretro.RetroArch\n\n2. Via the package manager:\n   • Debian, Ubuntu: sudo apt "
                             u"install retroarch\n   • Fedora: sudo dnf install retroarch\n\n3. Or download it from "
                             u"%1"_s.arg(retroArchPage) +
                             end;
    texts.pages = {{u"Open RetroArch Website"_s, QUrl(retroArchPage)}};
    return texts;
}

InstallTexts mame(bool mac) {
    InstallTexts texts;
    texts.name = u"MAME"_s;
    texts.title = u"MAME Not Found"_s;
    texts.question =
        u"This arcade game can be played with standalone MAME.\n\nMAME (Multiple Arcade Machine Emulator) is the most "
        u"accurate arcade emulator.\n\nWould you like to install it now?\n\nNote: You can also use RetroArch with the "
        u"mame_libretro core as an alternative."_s;
    texts.instructionsTitle = u"Install MAME"_s;
    const QString begin = u"MAME is used for arcade games.\n\nInstallation Methods:\n\n"_s;
    const QString end = u"\n\nAlternatively, you can use RetroArch with the mame_libretro core."_s + afterInstallation;
    const PageButton button{u"Open MAME Website"_s, QUrl(mamePage)};
    if (mac) {
        texts.instructions =
            begin +
            u"1. Via Homebrew (easiest):\n   • Install Homebrew from %1\n   • Run: brew install "
            u"mame\n\n2. Download MAME:\n   • Visit %2\n   • Download the macOS version\n   • Install to "
            u"/Applications"_s.arg(homebrewPage, mamePage) +
            end;
        texts.pages = {homebrewButton(), button};
    } else {
        texts.instructions = begin +
                             u"1. Via the package manager (easiest):\n   • Debian, Ubuntu: sudo apt install mame\n   • "
                             u"Fedora: sudo dnf install mame\n\n2. Via Flatpak:\n   • Run: flatpak install flathub "
                             u"org.mamedev.MAME\n\n3. Other ways:\n   • Visit %1"_s.arg(mamePage) +
                             end;
        texts.pages = {button};
    }
    return texts;
}

} // namespace

InstallTexts installTexts(EmulatorProgram program, HostLayout layout) {
    const bool mac = layout == HostLayout::MacOS;
    InstallTexts texts;
    switch (program) {
    case EmulatorProgram::dosbox:
        texts = dosbox(mac);
        break;
    case EmulatorProgram::dosboxX:
        texts = dosboxX(mac);
        break;
    case EmulatorProgram::wine:
        texts = wine(mac);
        break;
    case EmulatorProgram::retroArch:
        texts = retroArch(mac);
        break;
    case EmulatorProgram::mame:
        texts = mame(mac);
        break;
    default:
        Q_UNREACHABLE();
    }
    if (texts.installed.isEmpty())
        texts.installed =
            (mac ? u"%1 has been successfully installed via Homebrew."_s : u"%1 has been successfully installed."_s)
                .arg(texts.name);
    return texts;
}

} // namespace ludarium
