#pragma once

#include "Host/HostPaths.h"
#include "Host/Setting.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace ludarium {

/// Every lookup of an outside program that has a table of its own.
enum class LocatedProgram {
    dosbox,        ///< any DOSBox build that can play a DOS game
    dosboxStaging, ///< DOSBox Staging only
    scummvm,
    gzdoom,
    dosboxX,
    wine,
    retroArch,
    mame,
    mameFast, ///< MAME as the Apple IIGS runner looks for it
    gsplus,
    ryujinx,
    cemu,
    rpcs3,
    vita3k,
    pcsx2,
    lime3ds,
};

/// One place to look at.
struct ProgramCandidate {
    enum class Kind {
        file,         ///< `text` is an absolute path or begins with "~"
        inCollection, ///< `text` is a path below the collection folder
        onPath,       ///< `text` is a name, looked up as `which` does
        appImage,     ///< `text` is a file name pattern in ~/Applications; the file changed last counts
        bundle,       ///< `text` is the folder of a macOS application; the folder is the result
        spotlight,    ///< `text` is an mdfind query
    };
    Kind kind = Kind::file;
    QString text;
    /// For a file that only starts another one: the file counts when this one exists, and this one is the result.
    QString wrapped;
    /// For a query: the programs inside a found bundle, in order.
    QStringList executables;
    /// For a query: take the first hit whose name ends in ".app" instead of the first hit.
    bool bundlesOnly = false;
};

/// How one program is looked for: the user's setting, then the candidates in order.
struct ProgramRow {
    const Setting<QString> *setting = nullptr;
    QList<ProgramCandidate> candidates;
};

/// The table of a layout. Paths are those of the machine; `HostPaths::resolve` makes them real.
const ProgramRow &programRow(LocatedProgram program, HostLayout layout);

/// The tables' two halves.
ProgramRow macProgramRow(LocatedProgram program);
ProgramRow linuxProgramRow(LocatedProgram program);

const QList<LocatedProgram> &locatedPrograms();

} // namespace ludarium
