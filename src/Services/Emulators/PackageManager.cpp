#include "Services/Emulators/PackageManager.h"

#include "Host/HostPaths.h"

#include <QFileInfo>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Kind = PackageManager::Kind;

/// The program that installs, its name for people, and the words before the packages.
struct Row {
    Kind kind;
    const char *program;
    const char *name;
    const char *command;
};

constexpr Row linuxManagers[] = {
    {Kind::apt, "apt-get", "APT", "sudo apt install "},
    {Kind::dnf, "dnf", "DNF", "sudo dnf install "},
    {Kind::pacman, "pacman", "pacman", "sudo pacman -S "},
    {Kind::zypper, "zypper", "Zypper", "sudo zypper install "},
};

QString homebrewPackage(EmulatorProgram program) {
    switch (program) {
    case EmulatorProgram::dosbox:
        return u"dosbox-staging"_s;
    case EmulatorProgram::scummvm:
        return u"scummvm"_s;
    case EmulatorProgram::gzdoom:
        return u"gzdoom"_s;
    case EmulatorProgram::dosboxX:
        return u"dosbox-x"_s;
    case EmulatorProgram::wine:
        return u"--cask wine-stable"_s;
    case EmulatorProgram::mame:
        return u"mame"_s;
    default:
        return {};
    }
}

QString flatpakId(EmulatorProgram program) {
    switch (program) {
    case EmulatorProgram::dosbox:
        return u"io.github.dosbox-staging"_s;
    case EmulatorProgram::scummvm:
        return u"org.scummvm.ScummVM"_s;
    case EmulatorProgram::gzdoom:
        return u"org.zdoom.GZDoom"_s;
    case EmulatorProgram::dosboxX:
        return u"com.dosbox_x.DOSBox-X"_s;
    case EmulatorProgram::wine:
        return u"org.winehq.Wine"_s;
    case EmulatorProgram::retroArch:
        return u"org.libretro.RetroArch"_s;
    case EmulatorProgram::mame:
        return u"org.mamedev.MAME"_s;
    case EmulatorProgram::ryujinx:
        return u"io.github.ryubing.Ryujinx"_s;
    case EmulatorProgram::cemu:
        return u"info.cemu.Cemu"_s;
    case EmulatorProgram::rpcs3:
        return u"net.rpcs3.RPCS3"_s;
    case EmulatorProgram::pcsx2:
        return u"net.pcsx2.PCSX2"_s;
    case EmulatorProgram::lime3ds:
        return u"org.azahar_emu.Azahar"_s;
    case EmulatorProgram::gsplus:
    case EmulatorProgram::vita3k:
        return {};
    }
    Q_UNREACHABLE();
}

} // namespace

PackageManager findPackageManager(const HostPaths &paths) {
    if (paths.layout() == HostLayout::MacOS) {
        for (const QString &path : {u"/opt/homebrew/bin/brew"_s, u"/usr/local/bin/brew"_s})
            if (const QString real = paths.resolve(path); QFileInfo::exists(real))
                return {Kind::homebrew, u"Homebrew"_s, real};
        return {Kind::none, u"Homebrew"_s, {}};
    }
    for (const Row &row : linuxManagers)
        if (const QString path = paths.which(QString::fromLatin1(row.program)); !path.isEmpty())
            return {row.kind, QString::fromLatin1(row.name), path};
    return {Kind::none, u"Package manager"_s, {}};
}

QString installCommand(PackageManager::Kind kind, const QStringList &packages) {
    const QString list = packages.join(u' ');
    if (kind == Kind::homebrew)
        return u"brew install "_s + list;
    for (const Row &row : linuxManagers)
        if (row.kind == kind)
            return QString::fromLatin1(row.command) + list;
    return {};
}

QString emulatorInstallCommand(EmulatorProgram program, HostLayout layout) {
    const bool mac = layout == HostLayout::MacOS;
    const QString package = mac ? homebrewPackage(program) : flatpakId(program);
    if (package.isEmpty())
        return {};
    return (mac ? u"brew install "_s : u"flatpak install flathub "_s) + package;
}

} // namespace ludarium
