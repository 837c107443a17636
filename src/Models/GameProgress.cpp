#include "Models/GameProgress.h"

namespace ludarium {

QString gameProgressText(GameProgress progress) {
    switch (progress) {
    case GameProgress::notPlayed:
        return QStringLiteral("Not Played");
    case GameProgress::playing:
        return QStringLiteral("Playing");
    case GameProgress::beaten:
        return QStringLiteral("Beaten");
    case GameProgress::completed:
        return QStringLiteral("Completed");
    case GameProgress::mastered:
        return QStringLiteral("Mastered");
    }
    Q_UNREACHABLE();
}

std::optional<GameProgress> gameProgressFromNumber(qint64 number) {
    if (number < qint64(GameProgress::notPlayed) || number > qint64(GameProgress::mastered))
        return std::nullopt;
    return static_cast<GameProgress>(number);
}

} // namespace ludarium
