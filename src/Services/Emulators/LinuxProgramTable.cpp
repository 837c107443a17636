#include "Host/Settings.h"
#include "Services/Emulators/ProgramTables.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Kind = ProgramCandidate::Kind;

/// One build of a program as Linux machines hold it. Looked at place by place: PATH, the folders of packages, Flatpak,
/// snap, AppImages.
struct Build {
    QString name;
    QStringList flatpakIds = {};
    QString snap = {};
    QString appImages = {}; ///< pattern
    QStringList elsewhere = {};
};

void append(ProgramRow &row, const Build &build) {
    const auto add = [&row](Kind kind, const QString &text) { row.candidates.append({kind, text, {}, {}, false}); };
    add(Kind::onPath, build.name);
    for (const QString &folder :
         {u"/usr/local/bin/"_s, u"/usr/bin/"_s, u"/usr/local/games/"_s, u"/usr/games/"_s, u"~/.local/bin/"_s})
        add(Kind::file, folder + build.name);
    for (const QString &path : build.elsewhere)
        add(Kind::file, path);
    // Flatpak exports one wrapper a program under its application id, for the machine and for the user.
    for (const QString &id : build.flatpakIds) {
        add(Kind::file, u"/var/lib/flatpak/exports/bin/"_s + id);
        add(Kind::file, u"~/.local/share/flatpak/exports/bin/"_s + id);
    }
    if (!build.snap.isEmpty())
        add(Kind::file, u"/snap/bin/"_s + build.snap);
    if (!build.appImages.isEmpty())
        add(Kind::appImage, build.appImages);
}

ProgramRow row(const Setting<QString> *setting, const QList<Build> &builds, const QStringList &inCollection = {}) {
    ProgramRow result{setting, {}};
    for (const Build &build : builds)
        append(result, build);
    for (const QString &path : inCollection)
        result.candidates.append({Kind::inCollection, path, {}, {}, false});
    return result;
}

const Build dosboxStaging{
    u"dosbox-staging"_s, {u"io.github.dosbox-staging"_s}, u"dosbox-staging"_s, u"dosbox-staging*.AppImage"_s};
const Build dosboxX{u"dosbox-x"_s, {u"com.dosbox_x.DOSBox-X"_s}, u"dosbox-x"_s, u"dosbox-x*.AppImage"_s};
const Build mame{u"mame"_s, {u"org.mamedev.MAME"_s}, u"mame"_s};

} // namespace

ProgramRow linuxProgramRow(LocatedProgram program) {
    switch (program) {
    case LocatedProgram::dosbox:
        // Staging first, wherever it is: a plain dosbox is mostly the 0.74 of a distribution.
        return row(&Settings::dosboxPath, {dosboxStaging, {u"dosbox"_s, {u"com.dosbox.DOSBox"_s}}, dosboxX},
                   {u"eXo/util/dosbox/dosbox"_s, u"eXo/dosbox/dosbox"_s, u"dosbox/dosbox"_s, u"util/dosbox/dosbox"_s});
    case LocatedProgram::dosboxStaging:
        return row(nullptr, {dosboxStaging});
    case LocatedProgram::scummvm:
        return row(nullptr, {{u"scummvm"_s, {u"org.scummvm.ScummVM"_s}, u"scummvm"_s, u"scummvm*.AppImage"_s}},
                   {u"eXo/emulators/scummvm/scummvm"_s, u"emulators/scummvm/scummvm"_s});
    case LocatedProgram::gzdoom:
        return row(
            nullptr,
            {{u"gzdoom"_s, {u"org.zdoom.GZDoom"_s}, u"gzdoom"_s, u"gzdoom*.AppImage"_s, {u"/opt/gzdoom/gzdoom"_s}}},
            {u"eXo/emulators/gzdoom/gzdoom"_s, u"emulators/gzdoom/gzdoom"_s});
    case LocatedProgram::dosboxX:
        return row(&Settings::dosboxXPath, {dosboxX});
    case LocatedProgram::wine:
        // The packages of the Wine project live in /opt/wine-stable, Debian's 64-bit loader in /usr/lib/wine.
        return row(&Settings::winePath,
                   {{u"wine64"_s, {}, {}, {}, {u"/opt/wine-stable/bin/wine64"_s, u"/usr/lib/wine/wine64"_s}},
                    {u"wine"_s,
                     {u"org.winehq.Wine"_s},
                     {},
                     {},
                     {u"/opt/wine-stable/bin/wine"_s, u"/opt/cxoffice/bin/wine"_s, u"~/cxoffice/bin/wine"_s}}});
    case LocatedProgram::retroArch:
        return row(&Settings::retroArchPath,
                   {{u"retroarch"_s, {u"org.libretro.RetroArch"_s}, u"retroarch"_s, u"RetroArch*.AppImage"_s}});
    case LocatedProgram::mame:
        return row(&Settings::mamePath, {mame});
    case LocatedProgram::mameFast:
        return row(nullptr, {mame});
    case LocatedProgram::gsplus:
        return row(nullptr, {{u"gsplus"_s, {}, {}, u"GSplus*.AppImage"_s}});
    case LocatedProgram::ryujinx:
        return row(
            &Settings::ryujinxPath,
            {{u"ryujinx"_s, {u"io.github.ryubing.Ryujinx"_s, u"org.ryujinx.Ryujinx"_s}, {}, u"Ryujinx*.AppImage"_s},
             {u"Ryujinx"_s},
             {u"Ryujinx.Ava"_s}});
    case LocatedProgram::cemu:
        return row(&Settings::cemuPath, {{u"cemu"_s, {u"info.cemu.Cemu"_s}, {}, u"Cemu*.AppImage"_s}, {u"Cemu"_s}});
    case LocatedProgram::rpcs3:
        return row(&Settings::rpcs3Path, {{u"rpcs3"_s, {u"net.rpcs3.RPCS3"_s}, u"rpcs3-emu"_s, u"rpcs3*.AppImage"_s}});
    case LocatedProgram::vita3k:
        return row(&Settings::vita3kPath,
                   {{u"vita3k"_s, {u"org.vita3k.Vita3K"_s}, {}, u"Vita3K*.AppImage"_s}, {u"Vita3K"_s}});
    case LocatedProgram::pcsx2:
        return row(&Settings::pcsx2Path,
                   {{u"pcsx2-qt"_s, {u"net.pcsx2.PCSX2"_s}, u"pcsx2-emu"_s, u"pcsx2*.AppImage"_s}, {u"pcsx2"_s}});
    case LocatedProgram::lime3ds:
        return row(&Settings::citraPath,
                   {{u"azahar"_s, {u"org.azahar_emu.Azahar"_s}, {}, u"azahar*.AppImage"_s},
                    {u"lime3ds-gui"_s, {u"io.github.lime3ds.Lime3DS"_s}, {}, u"lime3ds*.AppImage"_s},
                    {u"lime3ds"_s},
                    {u"lime3ds-cli"_s},
                    {u"citra-qt"_s, {u"org.citra_emu.citra"_s}, {}, u"citra*.AppImage"_s},
                    {u"citra"_s}});
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
