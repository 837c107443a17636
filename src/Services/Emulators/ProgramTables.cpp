#include "Services/Emulators/ProgramTables.h"

#include <QMap>
#include <utility>

namespace ludarium {

const QList<LocatedProgram> &locatedPrograms() {
    static const QList<LocatedProgram> programs{
        LocatedProgram::dosbox,   LocatedProgram::dosboxStaging, LocatedProgram::scummvm,   LocatedProgram::gzdoom,
        LocatedProgram::dosboxX,  LocatedProgram::wine,          LocatedProgram::retroArch, LocatedProgram::mame,
        LocatedProgram::mameFast, LocatedProgram::gsplus,        LocatedProgram::ryujinx,   LocatedProgram::cemu,
        LocatedProgram::rpcs3,    LocatedProgram::vita3k,        LocatedProgram::pcsx2,     LocatedProgram::lime3ds,
    };
    return programs;
}

const ProgramRow &programRow(LocatedProgram program, HostLayout layout) {
    using Table = QMap<std::pair<HostLayout, LocatedProgram>, ProgramRow>;
    static const Table table = [] {
        Table rows;
        for (LocatedProgram each : locatedPrograms()) {
            rows.insert({HostLayout::MacOS, each}, macProgramRow(each));
            rows.insert({HostLayout::Linux, each}, linuxProgramRow(each));
        }
        return rows;
    }();
    return table.constFind({layout, program}).value();
}

} // namespace ludarium
