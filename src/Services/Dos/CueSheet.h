#pragma once

#include "Models/LaunchPlan.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <optional>

namespace ludarium {

/// The data track that a cue sheet begins with.
struct CueTrack {
    QString path;       ///< of the file that holds it, as it is on disk; null when there is none
    QByteArray mode;    ///< "MODE1/2352", …, in capitals
    qint64 firstSector; ///< of the track in its file
};
/// None for a text that is no cue sheet or begins with sound.
std::optional<CueTrack> firstDataTrack(FolderView &view, const QString &cuePath);

/// A cue sheet's text with the files that it names given by their paths on disk. None when DOSBox finds them all as the
/// sheet spells them, or when one of them is not there at all. DOSBox on Linux opens them as they are spelled, while
/// sheets come from systems where capitals do not matter.
std::optional<QByteArray> correctedCueSheet(FolderView &view, const QString &cuePath);

/// A configuration that mounts cue sheets, and the corrected copies that it mounts in their place.
struct CorrectedDiscs {
    QByteArray text;
    QList<GeneratedFile> files; ///< to be written into `folder`
};
/// `game` begins the copies' names; relative paths of the configuration begin at `workingDirectory`.
CorrectedDiscs correctDiscs(const QByteArray &configuration, const QString &workingDirectory, const QString &folder,
                            const QString &game, FolderView &view);

} // namespace ludarium
