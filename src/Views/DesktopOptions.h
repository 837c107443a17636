#pragma once

#include <QSize>
#include <QString>
#include <optional>

namespace ludarium {

/// The command line of the desktop program.
struct DesktopOptions {
    QString folder; ///< absolute; empty: the collection of the last run
    QString home;   ///< absolute; empty: the user's own
    // For pictures.
    QString screenshot;
    std::optional<QSize> size;
    QString view; ///< "Grid", "List", "Coverflow" or empty
    QString theme;
    QString select;

    /// Either what to do, or that the program is to end with this status, after `output` has been written.
    struct Outcome;
    static Outcome parse(int argc, const char *const *argv);
};

struct DesktopOptions::Outcome {
    std::optional<DesktopOptions> options;
    int exitStatus = 0;
    QString output; ///< for standard output when the status is 0, else for standard error
};

} // namespace ludarium
