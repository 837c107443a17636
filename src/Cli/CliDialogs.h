#pragma once

#include "Host/Dialogs.h"

namespace ludarium {

/// Questions without a window. Each is answered by the last button, which changes nothing; only a warning that offers
/// to go on anyway is passed, because what a command then does is its own business, and a game for a Windows build
/// goes to the DOSBox of this machine.
class CliDialogs : public Dialogs {
  public:
    QCoro::Task<int> ask(Alert alert) override;
    QCoro::Task<std::optional<QString>> chooseFolder(QString prompt) override;

    /// Whether a game starts although its program was not found, because the user said so on the command line.
    bool startsAnyway = false;

    /// The question with a choice that was last answered by its last button.
    const std::optional<Alert> &lastDeclined() const { return m_lastDeclined; }

  private:
    std::optional<Alert> m_lastDeclined;
};

} // namespace ludarium
