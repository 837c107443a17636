#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>

namespace ludarium::test {

/// An HTTP server on 127.0.0.1 for tests, on a port of its own and a thread of its own. Records what it was asked.
class LoopbackServer {
  public:
    struct Request {
        QByteArray method;
        QString path;                          ///< decoded, without the query
        QHash<QString, QString> query;         ///< decoded
        QHash<QByteArray, QByteArray> headers; ///< names in lower case
        QByteArray body;
    };
    struct Response {
        int status = 200;
        QByteArray body = {};
        QList<std::pair<QByteArray, QByteArray>> headers = {};
        QByteArray contentType = "application/octet-stream";
        std::chrono::milliseconds delay{0}; ///< before anything is sent
        /// When not negative: only this many bytes of the body are sent although all are announced; the connection
        /// stays open for `hold` and is then closed.
        qint64 cutAfter = -1;
        std::chrono::milliseconds hold{0};
        bool announced = true; ///< false: sent in chunks, without a length
    };
    /// Called on a thread of the server's.
    using Handler = std::function<Response(const Request &request)>;

    LoopbackServer();
    /// Speaks TLS with a certificate and key in PEM files.
    LoopbackServer(const QString &certificate, const QString &key);
    ~LoopbackServer();

    /// Answers every request to `path` (a regular expression for the whole of it). Others get 404.
    void on(const QString &path, Handler handler);
    void on(const QString &path, Response response);

    quint16 port() const;
    /// `http://127.0.0.1:{port}{path}`, or https.
    QUrl url(const QString &path = QStringLiteral("/")) const;
    QList<Request> requests() const;

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace ludarium::test
