#include "Host/SystemTerminal.h"

#include "Host/HostPaths.h"
#include "Host/LocalProcessRunner.h"

#include <QFileInfo>

namespace ludarium {

namespace {

/// A terminal emulator and what stands before the program that it shall run. Only forms that take the program as an
/// argument of its own: some terminals split the text after "-e" at blanks.
struct TerminalProgram {
    const char *name;
    const char *arguments; ///< separated by blanks
};

/// In the order of preference: the user's and the system's own choice, the desktops' terminals, the rest.
constexpr TerminalProgram terminals[] = {
    {"xdg-terminal-exec", ""},
    {"x-terminal-emulator", "-e"},
    {"gnome-terminal", "--"},
    {"ptyxis", "--"},
    {"kgx", "--"},
    {"konsole", "-e"},
    {"xfce4-terminal", "-x"},
    {"mate-terminal", "-x"},
    {"terminator", "-x"},
    {"kitty", ""},
    {"foot", ""},
    {"wezterm", "start --"},
    {"alacritty", "-e"},
    {"urxvt", "-e"},
    {"st", "-e"},
    {"xterm", "-e"},
};

QStringList argumentsFor(const QString &program, const QString &script) {
    QStringList arguments{QStringLiteral("-e")}; // what nearly all understand
    for (const TerminalProgram &terminal : terminals)
        if (QFileInfo(program).fileName() == QLatin1StringView(terminal.name))
            arguments = QString::fromLatin1(terminal.arguments).split(u' ', Qt::SkipEmptyParts);
    return arguments << script;
}

} // namespace

SystemTerminal::SystemTerminal(const HostPaths &paths) : m_paths(paths) {}

void SystemTerminal::run(const QString &script) {
    const auto start = [this](const QString &program, const QStringList &arguments) {
        LocalProcessRunner::startDetached({program, arguments, m_paths.home(), m_paths.childEnvironment(), {}});
    };
    if (m_paths.layout() == HostLayout::MacOS) {
        start(m_paths.resolve(QStringLiteral("/usr/bin/open")),
              {QStringLiteral("-a"), QStringLiteral("Terminal.app"), script});
        return;
    }
    QStringList candidates;
    if (const QString chosen = m_paths.environment().value(QStringLiteral("TERMINAL")); !chosen.isEmpty())
        candidates << (chosen.contains(u'/') ? chosen : m_paths.which(chosen));
    for (const TerminalProgram &terminal : terminals)
        candidates << m_paths.which(QString::fromLatin1(terminal.name));
    candidates.removeAll(QString());

    std::string failure = "no terminal program was found";
    for (const QString &program : std::as_const(candidates)) {
        try {
            start(program, argumentsFor(program, script));
            return;
        } catch (const ProcessError &error) {
            failure = program.toStdString() + ": " + error.what();
        }
    }
    throw ProcessError(failure);
}

} // namespace ludarium
