#include "Host/SingleInstance.h"

#include "Host/AppLogger.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>
#include <QtEndian>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace ludarium {

namespace {

// A message is its length in four bytes, the most significant first, and its bytes; the answer is one byte.
constexpr qsizetype headerSize = 4;
constexpr char acknowledged = '+';

/// A sender that says nothing more is not waited for.
constexpr int senderPatience = 5000;

/// `folder` when it is, or can be made, a folder that only this user can enter.
bool makePrivateFolder(const QString &folder) {
    if (!QDir().mkpath(QFileInfo(folder).path()))
        return false;
    const QByteArray path = QFile::encodeName(folder);
    ::mkdir(path.constData(), 0700);
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() &&
           ((info.st_mode & 077) == 0 || ::chmod(path.constData(), 0700) == 0);
}

} // namespace

SingleInstance::SingleInstance(QString folder, QObject *parent) : QObject(parent), m_folder(std::move(folder)) {}

SingleInstance::~SingleInstance() {
    m_server.reset(); // removes the socket, while the lock still says whose it is
    if (m_lock >= 0)
        ::close(m_lock);
}

QString SingleInstance::socketPath() const {
    const QString path = m_folder + QStringLiteral("/instance.socket");
    // The operating system limits the path of a socket to about a hundred bytes, and QLocalServer needs some more
    // while it makes one. A longer one goes to a private folder with a short name.
    if (QFile::encodeName(path).size() + 16 < qsizetype(sizeof(sockaddr_un::sun_path)))
        return path;
    const QByteArray hash = QCryptographicHash::hash(m_folder.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("/tmp/ludarium-%1/%2").arg(::geteuid()).arg(QString::fromLatin1(hash.first(16)));
}

bool SingleInstance::tryBecomePrimary() {
    if (m_server)
        return true;
    if (!makePrivateFolder(m_folder)) {
        Log::warning(
            QStringLiteral("⚠️ %1 cannot be used: other instances of the program cannot be noticed").arg(m_folder));
        return true;
    }
    if (m_lock < 0)
        m_lock = ::open(QFile::encodeName(m_folder + QStringLiteral("/instance.lock")).constData(),
                        O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_lock >= 0 && ::flock(m_lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    listen();
    return true;
}

void SingleInstance::listen() {
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, &SingleInstance::takeConnection);
    const QString path = socketPath();
    // Whoever holds the lock owns the socket: one that is there was left by a crash.
    QLocalServer::removeServer(path);
    if (!makePrivateFolder(QFileInfo(path).path()) || !m_server->listen(path))
        Log::warning(
            QStringLiteral("⚠️ Other instances of the program cannot be heard: %1").arg(m_server->errorString()));
}

void SingleInstance::takeConnection() {
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        socket->setReadBufferSize(headerSize + maxMessageSize);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        QTimer::singleShot(senderPatience, socket, [socket] { socket->abort(); });
        read(socket);
    }
}

void SingleInstance::read(QLocalSocket *socket) {
    if (socket->bytesAvailable() < headerSize)
        return;
    const qsizetype size = qFromBigEndian<quint32>(socket->peek(headerSize).constData());
    if (size > maxMessageSize) {
        Log::warning(QStringLiteral("⚠️ A message of %1 bytes from another instance was refused").arg(size));
        socket->abort();
        return;
    }
    if (socket->bytesAvailable() < headerSize + size)
        return;
    socket->skip(headerSize);
    const QByteArray message = socket->read(size);
    socket->write(&acknowledged, 1);
    socket->disconnectFromServer(); // after the answer is sent
    Q_EMIT messageReceived(message);
}

bool SingleInstance::sendToPrimary(const QByteArray &message, int timeout) {
    if (message.size() > maxMessageSize)
        return false;
    const QDeadlineTimer deadline(timeout);
    QLocalSocket socket;
    // The first instance may hold its lock a moment before it listens.
    do {
        socket.connectToServer(socketPath());
        if (socket.waitForConnected(int(deadline.remainingTime())))
            break;
        ::usleep(20'000);
    } while (!deadline.hasExpired());
    if (socket.state() != QLocalSocket::ConnectedState)
        return false;
    QByteArray header(headerSize, '\0');
    qToBigEndian(quint32(message.size()), header.data());
    socket.write(header + message);
    while (socket.bytesAvailable() < 1)
        if (!socket.waitForReadyRead(int(deadline.remainingTime())))
            return false;
    return socket.read(1) == QByteArray(1, acknowledged);
}

} // namespace ludarium
