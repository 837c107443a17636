#include "Host/ProcessTable.h"

#include <QFile>
#include <QString>
#include <ctime>
#include <unistd.h>
#ifdef Q_OS_MACOS
#include <sys/sysctl.h>
#include <sys/time.h>
#include <sys/types.h>
#endif

namespace ludarium {

#ifdef Q_OS_MACOS

std::optional<qint64> processStartTime(qint64 pid) {
    int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, static_cast<int>(pid)};
    kinfo_proc info{};
    std::size_t size = sizeof info;
    if (::sysctl(name, 4, &info, &size, nullptr, 0) != 0 || size == 0 || info.kp_proc.p_stat == SZOMB)
        return std::nullopt;
    const timeval start = info.kp_proc.p_starttime;
    return qint64(start.tv_sec) * 1'000'000 + start.tv_usec;
}

double secondsSinceProcessStart(qint64 startTime) {
    timeval now{};
    ::gettimeofday(&now, nullptr); // the system moves the recorded starts when its clock is set
    return static_cast<double>(qint64(now.tv_sec) * 1'000'000 + now.tv_usec - startTime) / 1e6;
}

#else

std::optional<qint64> processStartTime(qint64 pid) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (pid <= 0 || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // "pid (name) state …": the name is the program's own choice and may hold blanks and parentheses. The start time
    // is field 22, the twentieth after the name.
    const QByteArray stat = file.readAll();
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 1).trimmed().split(' ');
    if (fields.size() < 20 || fields[0] == "Z" || fields[0] == "X")
        return std::nullopt;
    return fields[19].toLongLong();
}

double secondsSinceProcessStart(qint64 startTime) {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9 -
           static_cast<double>(startTime) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

#endif

} // namespace ludarium
