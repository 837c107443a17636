#include "Host/Dialogs.h"

#include "Host/AppLogger.h"

namespace ludarium {

QCoro::Task<int> SilentDialogs::ask(Alert alert) {
    const int answer = qMax(0, int(alert.buttons.size()) - 1);
    Log::info(QStringLiteral("Not asked without a window: \"%1\" %2 Answered: \"%3\"")
                  .arg(alert.title, alert.text, alert.buttons.value(answer)));
    co_return answer;
}

QCoro::Task<std::optional<QString>> SilentDialogs::chooseFolder(QString prompt) {
    Log::info(QStringLiteral("No folder chosen without a window: \"%1\"").arg(prompt));
    co_return std::nullopt;
}

} // namespace ludarium
