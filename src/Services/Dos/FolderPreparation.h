#pragma once

#include "Models/GameVersionOption.h"
#include "Services/Dos/FolderView.h"

#include <QList>
#include <QStringList>
#include <optional>

namespace ludarium {

/// What a launch does to files of a game's folder before the start. Planning reads and changes nothing.
struct FolderPreparation {
    struct Step {
        enum class Kind { remove, copy };
        Kind kind;
        QString source; ///< what is copied; null for a removal
        QString target;
    };
    QString gameFolder; ///< nothing outside is touched, not even through a link
    QList<Step> steps;

    QStringList inWords() const;
    bool isEmpty() const { return steps.isEmpty(); }
};

/// The files that the version's "DEL" commands name, in `folder` of the game's folder. They are regular files inside
/// the game's folder; commands that name anything else are logged and do nothing. The view no longer shows them.
void executeSetupDeleteCommands(FolderPreparation &preparation, FolderView &view, const QString &folder,
                                const std::optional<GameVersionOption> &version);

/// The driver files of the version's sound hardware, which lie in a subfolder and go over the game's own.
void copyAudioDriverFiles(FolderPreparation &preparation, FolderView &view, const QString &folder,
                          const std::optional<GameVersionOption> &version);

/// Makes a view see the folder as it will be after the preparation.
void pretend(const FolderPreparation &preparation, FolderView &view);

/// Does the steps in order. Copies merge folders and lose nothing that only the game's own files hold; the first one
/// that fails ends the copying. What fails is logged: the game may run all the same.
void carryOut(const FolderPreparation &preparation);

} // namespace ludarium
