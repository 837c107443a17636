#include "Cli/CliDialogs.h"

#include "Host/AppLogger.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Launch/LaunchPrompts.h"

#include <algorithm>

namespace ludarium {

QCoro::Task<int> CliDialogs::ask(Alert alert) {
    qsizetype goOn = -1;
    for (const QString &button :
         {QStringLiteral("Continue Anyway"), eceChoiceStagingButton.toString(), eceMissingStagingButton.toString()})
        goOn = std::max(goOn, alert.buttons.indexOf(button));
    if (startsAnyway)
        goOn = std::max(goOn, alert.buttons.indexOf(startAnywayButton.toString()));
    const qsizetype answer = goOn >= 0 ? goOn : std::max<qsizetype>(0, alert.buttons.size() - 1);
    Log::info(QStringLiteral("Question: %1. %2 Answer: %3").arg(alert.title, alert.text, alert.buttons.value(answer)));
    if (goOn < 0 && alert.buttons.size() > 1)
        m_lastDeclined = alert;
    co_return int(answer);
}

QCoro::Task<std::optional<QString>> CliDialogs::chooseFolder(QString) {
    co_return std::nullopt;
}

} // namespace ludarium
