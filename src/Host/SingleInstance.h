#pragma once

#include <QObject>
#include <memory>

class QLocalServer;
class QLocalSocket;

namespace ludarium {

/// Makes sure that one instance of the program runs for each user. The first holds a lock and listens on a socket in
/// `folder`; a second one sends it a message and leaves. The lock ends with its process, so that nothing a crashed
/// instance leaves behind stands in the way.
class SingleInstance : public QObject {
    Q_OBJECT
  public:
    static constexpr qsizetype maxMessageSize = 64 * 1024;

    explicit SingleInstance(QString folder, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// True when this is the first instance: it holds the lock and hears messages from now on. A folder that cannot
    /// be used counts as being the first, as the program must start.
    bool tryBecomePrimary();

    /// Sends a message to the first instance and waits until that one has it, at most `timeout` milliseconds.
    bool sendToPrimary(const QByteArray &message, int timeout = 5000);

  Q_SIGNALS:
    void messageReceived(const QByteArray &message);

  private:
    void listen();
    void takeConnection();
    void read(QLocalSocket *socket);
    QString socketPath() const;

    const QString m_folder;
    int m_lock = -1;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace ludarium
