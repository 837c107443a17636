#pragma once

#include "Services/Dos/DosBoxFlavour.h"

#include <QCoro/QCoroTask>

namespace ludarium {

struct Host;

/// Asks a DOSBox build what it is, for at most five seconds. A program that cannot be started tells nothing.
QCoro::Task<DosBoxFlavour> probeDosBox(Host &host, QString program);

} // namespace ludarium
