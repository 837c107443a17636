#pragma once

#include "Models/LaunchPlan.h"
#include "Services/Dos/DosBoxFlavour.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>

namespace ludarium {

/// Follows the autoexec sections of a configuration as DOSBox would: drives and images that they mount, changes of
/// drive and folder, batch files; and tells whether the program that they come to is there. A program that was found
/// ends the walk, since what it does afterwards is its own business; what sets the machine up before a game does not.
/// What depends on an answer, on a program's exit status or on an image that cannot be read is not known.
LaunchProof proveLaunch(const QByteArray &configuration, const QString &workingDirectory, DosBoxFamily family,
                        FolderView &view);

} // namespace ludarium
