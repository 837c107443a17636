#include "Host/HostPaths.h"

#include <QFile>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>
#ifdef Q_OS_MACOS
#include <sys/sysctl.h>
#endif

namespace ludarium {

namespace {

QString readHardwareModel() {
#ifdef Q_OS_MACOS
    char model[256] = {};
    size_t size = sizeof model - 1;
    if (::sysctlbyname("hw.model", model, &size, nullptr, 0) == 0)
        return QString::fromUtf8(model);
    return QStringLiteral("Unknown");
#else
    // Set by the firmware; absent in containers and on boards with a device tree, which have a name of their own.
    for (const char *path : {"/sys/class/dmi/id/product_name", "/proc/device-tree/model"}) {
        QFile file(QString::fromLatin1(path));
        if (file.open(QIODevice::ReadOnly)) {
            const QString model = QString::fromUtf8(file.readAll()).remove(QChar::Null).simplified();
            if (!model.isEmpty())
                return model;
        }
    }
    return QSysInfo::currentCpuArchitecture();
#endif
}

double readMemoryGigabytes() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0 ? double(pages) * double(pageSize) / double(1 << 30) : 0;
}

struct User {
    QString name;
    QString home;
};

User readUser() {
    // The password file knows them where the environment lacks them (started by a service manager).
    char buffer[4096];
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found)
        return {QString::fromLocal8Bit(found->pw_name), QFile::decodeName(found->pw_dir)};
    return {qEnvironmentVariable("USER"), qEnvironmentVariable("HOME")};
}

} // namespace

MachineInfo MachineInfo::current() {
    static const MachineInfo info = [] {
        const User user = readUser();
        return MachineInfo{QSysInfo::prettyProductName() + QLatin1String(", kernel ") + QSysInfo::kernelVersion(),
                           readHardwareModel(),
                           readMemoryGigabytes(),
                           QSysInfo::machineHostName(),
                           user.name,
                           user.home};
    }();
    return info;
}

} // namespace ludarium
