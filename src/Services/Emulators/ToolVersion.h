#pragma once

#include "Services/Emulators/EmulatorManager.h"

#include <QCoro/QCoroTask>
#include <QString>
#include <QStringList>

namespace ludarium {

/// What a program writes to its two outputs before it ends, or within 5 seconds; then it is ended. Empty when it
/// cannot be started. `program` has to be one that answers these arguments without a window.
QCoro::Task<QString> toolOutput(Host &host, QString program, QStringList arguments);

/// The version that an installed emulator tells of itself. Null for those that can only be asked by opening their
/// window, and when the answer holds none.
QCoro::Task<QString> emulatorVersion(Host &host, EmulatorProgram program, QString path);

/// The first version in a text: "0.74-3" of "DOSBox version 0.74-3, copyright". Null when there is none.
QString versionIn(const QString &text);
/// The same for the words of bash: "5.2" of "GNU bash, version 5.2.15(1)-release".
QString bashVersionIn(const QString &text);

} // namespace ludarium
