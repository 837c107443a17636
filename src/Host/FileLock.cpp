#include "Host/FileLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace ludarium {

FileLock::FileLock(const QString &file)
    : m_descriptor(
          ::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600)) {
    while (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FileLock::~FileLock() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace ludarium
