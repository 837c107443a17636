#pragma once

#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <optional>

namespace ludarium {

/// What a batch file comes to that changes to a folder of the root which it was written for.
struct BatchBypass {
    QByteArray folder;  ///< as the batch file names it from that root, with "/"
    QByteArray command; ///< the last one that starts a program of the folder, as it stands
};
/// None when the batch file names no such folder in `root`, or starts nothing that lies in it.
std::optional<BatchBypass> bypassOf(const QByteArray &batch, const QString &root, FolderView &view);

} // namespace ludarium
