#include "support/BuildFolders.h"

namespace ludarium {

QString inSources(const char *path) {
    return QStringLiteral(LUDARIUM_SOURCE_DIR "/") + QString::fromUtf8(path);
}

QString inBuild(const char *path) {
    return QStringLiteral(LUDARIUM_BINARY_DIR "/") + QString::fromUtf8(path);
}

} // namespace ludarium
