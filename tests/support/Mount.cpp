#include "support/Mount.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif

namespace ludarium::test {

#ifdef Q_OS_LINUX

Mount::Mount(const QString &source, const QString &folder, const char *type, unsigned long flags,
             const QByteArray &options)
    : m_folder(QFile::encodeName(folder)) {
    QDir().mkpath(folder);
    m_ok = ::mount(QFile::encodeName(source).constData(), m_folder.constData(), type, flags, options.constData()) == 0;
    if (!m_ok)
        m_reason = QStringLiteral("no right to mount: ") + qt_error_string(errno);
}

Mount Mount::memory(const QString &folder, const QString &size) {
    return Mount(QStringLiteral("tmpfs"), folder, "tmpfs", 0, "size=" + size.toLatin1());
}

Mount Mount::bind(const QString &source, const QString &folder) {
    return Mount(source, folder, nullptr, MS_BIND, {});
}

Mount::~Mount() {
    if (m_ok)
        ::umount2(m_folder.constData(), MNT_DETACH);
}

#else

Mount::Mount(const QString &, const QString &, const char *, unsigned long, const QByteArray &)
    : m_reason(QStringLiteral("mounting is tried on Linux only")) {}
Mount Mount::memory(const QString &folder, const QString &) {
    return Mount({}, folder, nullptr, 0, {});
}
Mount Mount::bind(const QString &, const QString &folder) {
    return Mount({}, folder, nullptr, 0, {});
}
Mount::~Mount() = default;

#endif

} // namespace ludarium::test
