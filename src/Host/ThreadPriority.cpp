#include "Host/ThreadPriority.h"

#include <QtGlobal>
#ifdef Q_OS_MACOS
#include <pthread/qos.h>
#else
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace ludarium {

void lowerThreadPriority() {
#ifdef Q_OS_MACOS
    pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0);
#else
    constexpr int niceness = 10;
    // Of the thread alone, unlike what POSIX says of processes.
    ::setpriority(PRIO_PROCESS, id_t(::syscall(SYS_gettid)), niceness);
#endif
}

} // namespace ludarium
