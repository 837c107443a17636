#include "Views/GroupChange.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"

#include <QCoro/QCoroTask>

namespace ludarium {

namespace {

QCoro::Task<> tell(Dialogs &dialogs, QString reason) {
    Alert alert{QStringLiteral("The group could not be saved"), reason, QStringList(QStringLiteral("OK")),
                Alert::Style::Warning};
    co_await dialogs.ask(alert);
}

} // namespace

void changeGroups(Host &host, const std::function<void()> &change) {
    try {
        change();
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("Failed to save the platform groups: %1").arg(reason));
        spawn(tell(host.dialogs, reason), "telling why a group was not saved");
    }
}

} // namespace ludarium
