#include "Models/PlayTime.h"

namespace ludarium {

using namespace Qt::StringLiterals;

QString formatPlayTime(double seconds) {
    const auto whole = static_cast<qint64>(seconds);
    if (whole < 3600)
        return u"%1m"_s.arg(whole / 60);
    return u"%1h %2m"_s.arg(whole / 3600).arg(whole % 3600 / 60);
}

QString formatSessionDuration(double seconds) {
    const auto whole = static_cast<qint64>(seconds);
    if (whole < 60)
        return u"%1s"_s.arg(whole);
    if (whole < 3600)
        return u"%1m %2s"_s.arg(whole / 60).arg(whole % 60);
    return u"%1h %2m %3s"_s.arg(whole / 3600).arg(whole % 3600 / 60).arg(whole % 60);
}

} // namespace ludarium
