#pragma once

#include <QCoro/QCoroTask>
#include <QString>

namespace ludarium {

class CommandContext;

/// Asks on standard error and reads the answer from standard input; anything but "y" and "yes" is no.
QCoro::Task<bool> askYesNo(CommandContext &context, QString question);

} // namespace ludarium
