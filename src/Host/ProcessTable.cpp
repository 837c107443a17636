#include "Host/ProcessTable.h"

#include <QFile>
#include <QString>
#ifdef Q_OS_MACOS
#include <sys/sysctl.h>
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

#endif

} // namespace ludarium
