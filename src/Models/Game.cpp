#include "Models/Game.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace ludarium {

bool Game::isDREAMMGame() const {
    return platform.contains(QLatin1String("dreamm"), Qt::CaseInsensitive);
}

int Game::starRating() const {
    if (!communityRating || std::isnan(*communityRating))
        return 0;
    return int(std::clamp(std::round(*communityRating), 0.0, 5.0));
}

OptionalText Game::gameFolderName() const {
    QString path = configurationPath;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QStringList pieces = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (pieces.isEmpty())
        return {};

    const QString &last = pieces.last();
    for (const char *ending : {".bat", ".bsh", ".msh", ".conf", ".exe", ".com"})
        if (last.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return pieces.size() > 1 ? pieces[pieces.size() - 2] : last;
    return last;
}

} // namespace ludarium
