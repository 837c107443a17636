#include "Services/Launch/LaunchClaim.h"

#include <QCryptographicHash>
#include <QDir>

namespace ludarium {

using namespace Qt::StringLiterals;

LaunchClaim::LaunchClaim(const QString &folder, const QString &gameId) {
    QDir().mkpath(folder);
    const QByteArray name = QCryptographicHash::hash(gameId.toUtf8(), QCryptographicHash::Sha256).toHex().first(32);
    m_lock = std::make_unique<QLockFile>(u"%1/launch-%2.lock"_s.arg(folder, QString::fromLatin1(name)));
    m_lock->setStaleLockTime(0); // a question may stay open for long; only the end of the process ends the claim
    m_held = m_lock->tryLock() || m_lock->error() != QLockFile::LockFailedError;
}

} // namespace ludarium
