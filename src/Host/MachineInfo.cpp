#include "Host/HostPaths.h"

#include <QFile>
#include <QSysInfo>
#include <pwd.h>
#include <unistd.h>
#include <vector>
#ifdef Q_OS_MACOS
#include <sys/sysctl.h>
#endif

namespace ludarium {

namespace {

QString hardwareModel() {
#ifdef Q_OS_MACOS
    std::size_t size = 0;
    if (::sysctlbyname("hw.model", nullptr, &size, nullptr, 0) == 0 && size > 0) {
        QByteArray model(static_cast<qsizetype>(size), '\0');
        if (::sysctlbyname("hw.model", model.data(), &size, nullptr, 0) == 0)
            return QString::fromUtf8(model.constData());
    }
#else
    // PCs tell their model through DMI, ARM boards through the device tree (which ends its text with a NUL).
    for (const char *path : {"/sys/devices/virtual/dmi/id/product_name", "/proc/device-tree/model"}) {
        QFile file(QString::fromLatin1(path));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString model = QString::fromUtf8(file.read(256)).remove(QChar(u'\0')).trimmed();
        if (!model.isEmpty())
            return model;
    }
#endif
    return QSysInfo::currentCpuArchitecture();
}

QString userName() {
    std::vector<char> buffer(16 * 1024);
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
        return QString::fromLocal8Bit(found->pw_name);
    return qEnvironmentVariable("USER");
}

} // namespace

MachineInfo MachineInfo::current() {
    MachineInfo info;
    info.systemVersion = QSysInfo::prettyProductName();
    info.hardwareModel = ludarium::hardwareModel();
    const double pages = static_cast<double>(::sysconf(_SC_PHYS_PAGES));
    const double pageSize = static_cast<double>(::sysconf(_SC_PAGESIZE));
    info.memoryGigabytes = pages > 0 ? pages * pageSize / (1024.0 * 1024.0 * 1024.0) : 0;
    info.hostName = QSysInfo::machineHostName();
    info.userName = ludarium::userName();
    return info;
}

} // namespace ludarium
