#pragma once

#include "Host/HostPaths.h"
#include "Services/Emulators/EmulatorManager.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace ludarium {

/// A button that opens a web page.
struct PageButton {
    QString text;
    QUrl page;
};

/// What the user reads while a missing program is offered.
struct InstallTexts {
    QString name;
    QString title; ///< of the question
    QString question;
    QString installed; ///< after a successful installation
    QString instructionsTitle;
    QString instructions;
    QList<PageButton> pages; ///< buttons of the instructions, before "OK"
};

/// Texts for the programs that a launch may ask for: DOSBox, DOSBox-X, Wine, RetroArch, MAME. The instructions and
/// the success are those of the layout: Homebrew and disk images on macOS, package managers and Flatpak on Linux.
InstallTexts installTexts(EmulatorProgram program, HostLayout layout);

} // namespace ludarium
