#include "Cli/Question.h"

#include "Cli/CommandContext.h"
#include "Cli/Output.h"
#include "Host/Async.h"

#include <QFile>
#include <unistd.h>

namespace ludarium {

namespace {

/// The first line of standard input, trimmed. Blocks until it is there.
QByteArray readAnswer() {
    QFile input;
    return input.open(STDIN_FILENO, QIODevice::ReadOnly) ? input.readLine(1024).trimmed() : QByteArray();
}

} // namespace

QCoro::Task<bool> askYesNo(CommandContext &context, QString question) {
    context.errors().write(question.toUtf8() + " [y/N] ");
    context.errors().flush();
    auto read = readAnswer;
    const QByteArray answer = (co_await runOnPool(read)).toLower();
    co_return answer == "y" || answer == "yes";
}

} // namespace ludarium
