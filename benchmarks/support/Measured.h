#pragma once

#include <QList>
#include <QString>
#include <algorithm>
#include <limits>
#include <time.h>

namespace ludarium {

/// One duration, in milliseconds.
struct Measured {
    double wall = 0;
    double cpu = 0; ///< of all threads that worked on it, user and system

    /// Best of both, each on its own: what the machine needs when nobody else takes its time.
    Measured best(const Measured &other) const { return {std::min(wall, other.wall), std::min(cpu, other.cpu)}; }
    static Measured worst() {
        return {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    }
};

inline double milliseconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

template<typename Action>
Measured measured(const Action &action) {
    const double wall = milliseconds(CLOCK_MONOTONIC);
    const double cpu = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    action();
    return {milliseconds(CLOCK_MONOTONIC) - wall, milliseconds(CLOCK_PROCESS_CPUTIME_ID) - cpu};
}

template<typename Action>
Measured bestOf(int rounds, const Action &action) {
    Measured best = Measured::worst();
    for (int i = 0; i < rounds; ++i)
        best = best.best(measured(action));
    return best;
}

/// What a program of its own took: until its first byte of output, and what that output was. CPU time is that of the
/// whole run. The program has to end well.
struct ProgramRun {
    Measured time;
    QByteArray output;
};
ProgramRun runProgram(const QString &program, const QStringList &arguments);

} // namespace ludarium
