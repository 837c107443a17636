#include "Host/Settings.h"
#include "Services/Emulators/ProgramTables.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Kind = ProgramCandidate::Kind;

/// Puts rows together in the order of their calls.
class Row {
  public:
    explicit Row(const Setting<QString> *setting = nullptr) { m_row.setting = setting; }
    Row &&files(const QStringList &paths) && { return std::move(*this).all(Kind::file, paths); }
    Row &&inCollection(const QStringList &paths) && { return std::move(*this).all(Kind::inCollection, paths); }
    Row &&bundles(const QStringList &paths) && { return std::move(*this).all(Kind::bundle, paths); }
    Row &&which(const QStringList &names) && { return std::move(*this).all(Kind::onPath, names); }
    Row &&wrappers(const QStringList &paths, const QString &wrapped) && {
        for (const QString &path : paths)
            m_row.candidates.append({Kind::file, path, wrapped, {}, false});
        return std::move(*this);
    }
    Row &&spotlight(const QString &query, const QStringList &executables, bool bundlesOnly = false) && {
        m_row.candidates.append({Kind::spotlight, query, {}, executables, bundlesOnly});
        return std::move(*this);
    }
    operator ProgramRow() && { return std::move(m_row); }

  private:
    Row &&all(Kind kind, const QStringList &texts) && {
        for (const QString &text : texts)
            m_row.candidates.append({kind, text, {}, {}, false});
        return std::move(*this);
    }
    ProgramRow m_row;
};

const QString gsplusBinary = u"/Applications/GSplus/GSplus.app/Contents/MacOS/gsplus"_s;

} // namespace

ProgramRow macProgramRow(LocatedProgram program) {
    switch (program) {
    case LocatedProgram::dosbox:
        return Row(&Settings::dosboxPath)
            .files({u"/Applications/DOSBox.app/Contents/MacOS/DOSBox"_s,
                    u"/Applications/DOSBox Staging.app/Contents/MacOS/dosbox"_s,
                    u"/Applications/dosbox-staging.app/Contents/MacOS/dosbox"_s,
                    u"/Applications/dosbox-x.app/Contents/MacOS/dosbox-x"_s,
                    u"/Applications/DOSBox-X.app/Contents/MacOS/dosbox-x"_s, u"/opt/homebrew/bin/dosbox"_s,
                    u"/opt/homebrew/bin/dosbox-staging"_s, u"/opt/homebrew/bin/dosbox-x"_s, u"/usr/local/bin/dosbox"_s,
                    u"/usr/local/bin/dosbox-staging"_s, u"/usr/local/bin/dosbox-x"_s})
            .inCollection(
                {u"eXo/util/dosbox/dosbox"_s, u"eXo/dosbox/dosbox"_s, u"dosbox/dosbox"_s, u"util/dosbox/dosbox"_s});
    case LocatedProgram::dosboxStaging:
        return Row().files({u"/Applications/DOSBox Staging.app/Contents/MacOS/dosbox"_s,
                            u"/Applications/dosbox-staging.app/Contents/MacOS/dosbox"_s,
                            u"/opt/homebrew/bin/dosbox-staging"_s, u"/usr/local/bin/dosbox-staging"_s});
    case LocatedProgram::scummvm:
        return Row()
            .files({u"/Applications/ScummVM.app/Contents/MacOS/scummvm"_s, u"/opt/homebrew/bin/scummvm"_s,
                    u"/usr/local/bin/scummvm"_s})
            .inCollection({u"eXo/emulators/scummvm/scummvm"_s,
                           u"eXo/emulators/scummvm/ScummVM.app/Contents/MacOS/scummvm"_s,
                           u"emulators/scummvm/scummvm"_s});
    case LocatedProgram::gzdoom:
        return Row()
            .files({u"/Applications/GZDoom.app/Contents/MacOS/gzdoom"_s, u"/opt/homebrew/bin/gzdoom"_s,
                    u"/usr/local/bin/gzdoom"_s})
            .inCollection({u"eXo/emulators/gzdoom/gzdoom"_s, u"eXo/emulators/gzdoom/GZDoom.app/Contents/MacOS/gzdoom"_s,
                           u"emulators/gzdoom/gzdoom"_s});
    case LocatedProgram::dosboxX:
        return Row(&Settings::dosboxXPath)
            .files({u"/Applications/dosbox-x.app/Contents/MacOS/dosbox-x"_s,
                    u"/Applications/DOSBox-X.app/Contents/MacOS/dosbox-x"_s, u"/opt/homebrew/bin/dosbox-x"_s,
                    u"/usr/local/bin/dosbox-x"_s});
    case LocatedProgram::wine:
        return Row(&Settings::winePath)
            .files({u"/Applications/Wine Stable.app/Contents/Resources/wine/bin/wine64"_s,
                    u"/Applications/Wine Stable.app/Contents/Resources/wine/bin/wine"_s, u"/opt/homebrew/bin/wine64"_s,
                    u"/opt/homebrew/bin/wine"_s, u"/usr/local/bin/wine64"_s, u"/usr/local/bin/wine"_s,
                    u"/Applications/CrossOver.app/Contents/SharedSupport/CrossOver/bin/wineloader"_s,
                    u"~/Library/Application Support/com.isaacmarovitz.Whisky/Libraries/Wine/bin/wine64"_s});
    case LocatedProgram::retroArch:
        return Row(&Settings::retroArchPath)
            .files({u"/Applications/RetroArch.app/Contents/MacOS/RetroArch"_s, u"/opt/homebrew/bin/retroarch"_s,
                    u"/usr/local/bin/retroarch"_s, u"~/Applications/RetroArch.app/Contents/MacOS/RetroArch"_s})
            .which({u"retroarch"_s});
    case LocatedProgram::mame:
        return Row(&Settings::mamePath)
            .files({u"/Applications/MAME.app/Contents/MacOS/mame"_s, u"/opt/homebrew/bin/mame"_s,
                    u"/usr/local/bin/mame"_s, u"~/Applications/MAME.app/Contents/MacOS/mame"_s})
            .which({u"mame"_s});
    case LocatedProgram::mameFast:
        return Row().files(
            {u"/opt/homebrew/bin/mame"_s, u"/usr/local/bin/mame"_s, u"/Applications/MAME.app/Contents/MacOS/mame"_s});
    case LocatedProgram::gsplus:
        return Row()
            .files({gsplusBinary})
            .wrappers({u"/opt/homebrew/bin/gsplus"_s, u"/usr/local/bin/gsplus"_s}, gsplusBinary);
    case LocatedProgram::ryujinx:
        return Row(&Settings::ryujinxPath)
            .files({u"/Applications/Ryujinx.app/Contents/MacOS/Ryujinx"_s,
                    u"/Applications/Ryujinx.app/Contents/MacOS/Ryujinx.Ava"_s,
                    u"~/Applications/Ryujinx.app/Contents/MacOS/Ryujinx"_s,
                    u"~/Applications/Ryujinx.app/Contents/MacOS/Ryujinx.Ava"_s, u"/opt/homebrew/bin/ryujinx"_s,
                    u"/usr/local/bin/ryujinx"_s})
            .which({u"ryujinx"_s});
    case LocatedProgram::cemu:
        return Row(&Settings::cemuPath)
            .files({u"/Applications/Cemu.app/Contents/MacOS/Cemu"_s, u"~/Applications/Cemu.app/Contents/MacOS/Cemu"_s,
                    u"/opt/homebrew/bin/cemu"_s, u"/usr/local/bin/cemu"_s})
            .which({u"cemu"_s});
    case LocatedProgram::rpcs3:
        return Row(&Settings::rpcs3Path)
            .files(
                {u"/Applications/RPCS3.app/Contents/MacOS/rpcs3"_s, u"~/Applications/RPCS3.app/Contents/MacOS/rpcs3"_s})
            .spotlight(u"kMDItemCFBundleIdentifier == 'net.rpcs3.rpcs3'"_s, {u"Contents/MacOS/rpcs3"_s});
    case LocatedProgram::vita3k:
        return Row(&Settings::vita3kPath)
            .files({u"/Applications/Vita3K.app/Contents/MacOS/Vita3K"_s,
                    u"~/Applications/Vita3K.app/Contents/MacOS/Vita3K"_s})
            .spotlight(u"kMDItemDisplayName == 'Vita3K'"_s, {u"Contents/MacOS/Vita3K"_s}, true);
    case LocatedProgram::pcsx2: {
        const QStringList executables{u"Contents/MacOS/PCSX2"_s, u"Contents/MacOS/pcsx2-qt"_s,
                                      u"Contents/MacOS/AetherSX2"_s};
        return Row(&Settings::pcsx2Path)
            .files({u"/Applications/PCSX2.app/Contents/MacOS/PCSX2"_s,
                    u"/Applications/PCSX2.app/Contents/MacOS/pcsx2-qt"_s,
                    u"~/Applications/PCSX2.app/Contents/MacOS/PCSX2"_s,
                    u"~/Applications/PCSX2.app/Contents/MacOS/pcsx2-qt"_s,
                    u"/Applications/AetherSX2.app/Contents/MacOS/AetherSX2"_s,
                    u"~/Applications/AetherSX2.app/Contents/MacOS/AetherSX2"_s})
            .spotlight(u"kMDItemCFBundleIdentifier == 'net.pcsx2.PCSX2'"_s, executables)
            .spotlight(u"kMDItemCFBundleIdentifier == 'dev.tahlreth.AetherSX2'"_s, executables);
    }
    case LocatedProgram::lime3ds:
        return Row(&Settings::citraPath)
            .files({u"/Applications/Azahar.app/Contents/MacOS/azahar"_s,
                    u"/Applications/Azahar.app/Contents/MacOS/Azahar"_s,
                    u"/Applications/azahar.app/Contents/MacOS/azahar"_s,
                    u"~/Applications/Azahar.app/Contents/MacOS/azahar"_s,
                    u"~/Applications/Azahar.app/Contents/MacOS/Azahar"_s,
                    u"/Applications/Lime3DS.app/Contents/MacOS/lime3ds-gui"_s,
                    u"/Applications/Lime3DS.app/Contents/MacOS/lime3ds-cli"_s,
                    u"~/Applications/Lime3DS.app/Contents/MacOS/lime3ds-gui"_s,
                    u"/Applications/Citra.app/Contents/MacOS/citra-qt"_s,
                    u"/Applications/Citra.app/Contents/MacOS/citra"_s,
                    u"~/Applications/Citra.app/Contents/MacOS/citra-qt"_s,
                    u"~/Applications/Citra.app/Contents/MacOS/citra"_s, u"/opt/homebrew/bin/azahar"_s,
                    u"/opt/homebrew/bin/lime3ds"_s, u"/opt/homebrew/bin/citra"_s, u"/usr/local/bin/azahar"_s,
                    u"/usr/local/bin/lime3ds"_s, u"/usr/local/bin/citra"_s})
            .bundles({u"/Applications/Azahar.app"_s, u"/Applications/azahar.app"_s, u"~/Applications/Azahar.app"_s,
                      u"/Applications/Lime3DS.app"_s, u"~/Applications/Lime3DS.app"_s, u"/Applications/Citra.app"_s,
                      u"~/Applications/Citra.app"_s})
            .which({u"azahar"_s, u"lime3ds"_s, u"citra"_s});
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
