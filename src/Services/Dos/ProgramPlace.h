#pragma once

#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <optional>

namespace ludarium {

/// A command of a game's program taken apart: "loadfix -32 GAME.EXE /x".
struct GameCommand {
    QString loader;    ///< "loadfix -32"; empty for none
    QString program;   ///< "GAME.EXE"
    QString arguments; ///< "/x"
};
/// `command` stands behind a "call", if there is one.
GameCommand parsedCommand(const QString &command);

/// How a guest gets to a program that lies among a game's files.
struct ProgramPlace {
    QString hardDisk;   ///< folder of the host that becomes C:
    QByteArray folder;  ///< of the program on C:, with "/"; empty at its root
    QByteArray program; ///< the name under which the guest finds it
};

/// Looks for `program`, which may come with folders and without its ending, in `folder`, in `gameFolder` and then in
/// what lies below them, the nearest first. C: is `hardDisk` where DOS can spell the whole way, otherwise the lowest
/// folder on the way whose name it cannot.
std::optional<ProgramPlace> findProgramPlace(FolderView &view, const QString &program, const QString &folder,
                                             const QString &gameFolder, const QString &hardDisk);

} // namespace ludarium
