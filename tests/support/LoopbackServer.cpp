#include "support/LoopbackServer.h"

#include <QRegularExpression>
#include <atomic>
#include <condition_variable>
#include <httplib.h>
#include <mutex>
#include <thread>

namespace ludarium::test {

struct LoopbackServer::State {
    std::unique_ptr<httplib::Server> server;
    bool encrypted = false;
    int port = 0;
    std::thread thread;

    std::mutex mutex;
    std::condition_variable closing;
    bool closed = false;
    QList<std::pair<QRegularExpression, Handler>> handlers;
    QList<Request> requests;

    void start() {
        const auto answer = [this](const httplib::Request &request, httplib::Response &response) {
            handle(request, response);
        };
        const std::string any = R"(/.*)";
        server->Get(any, answer);
        server->Post(any, answer);
        server->Put(any, answer);
        server->Delete(any, answer);
        server->set_keep_alive_max_count(1); // an idle connection would hold up the end of the server
        port = server->bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server->listen_after_bind(); });
        while (!server->is_running()) // stopping a server that does not run yet would do nothing
            std::this_thread::yield();
    }

    void pause(std::chrono::milliseconds duration) {
        std::unique_lock lock(mutex);
        closing.wait_for(lock, duration, [this] { return closed; });
    }

    void handle(const httplib::Request &from, httplib::Response &to) {
        Request request{QByteArray::fromStdString(from.method),
                        QString::fromStdString(from.path),
                        {},
                        {},
                        QByteArray::fromStdString(from.body)};
        for (const auto &[name, value] : from.params)
            request.query.insert(QString::fromStdString(name), QString::fromStdString(value));
        for (const auto &[name, value] : from.headers)
            request.headers.insert(QByteArray::fromStdString(name).toLower(), QByteArray::fromStdString(value));
        Handler handler;
        {
            const std::lock_guard lock(mutex);
            requests.append(request);
            for (const auto &[path, candidate] : handlers)
                if (path.match(request.path).hasMatch())
                    handler = candidate;
        }
        if (!handler) {
            to.status = 404;
            return;
        }
        const Response response = handler(request);
        pause(response.delay);
        to.status = response.status;
        for (const auto &[name, value] : response.headers)
            to.set_header(name.toStdString(), value.toStdString());
        if (!response.announced) {
            to.set_chunked_content_provider(response.contentType.toStdString(),
                                            [response](size_t, httplib::DataSink &sink) {
                                                sink.write(response.body.constData(), size_t(response.body.size()));
                                                sink.done();
                                                return true;
                                            });
            return;
        }
        if (response.cutAfter < 0) {
            to.set_content(response.body.toStdString(), response.contentType.toStdString());
            return;
        }
        to.set_content_provider(size_t(response.body.size()), response.contentType.toStdString(),
                                [this, response](size_t offset, size_t, httplib::DataSink &sink) {
                                    if (offset == 0 && response.cutAfter > 0)
                                        return sink.write(response.body.constData(), size_t(response.cutAfter));
                                    pause(response.hold);
                                    return false;
                                });
    }
};

LoopbackServer::LoopbackServer() : m_state(std::make_unique<State>()) {
    m_state->server = std::make_unique<httplib::Server>();
    m_state->start();
}

LoopbackServer::LoopbackServer(const QString &certificate, const QString &key) : m_state(std::make_unique<State>()) {
    m_state->server =
        std::make_unique<httplib::SSLServer>(certificate.toStdString().c_str(), key.toStdString().c_str());
    m_state->encrypted = true;
    m_state->start();
}

LoopbackServer::~LoopbackServer() {
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->closed = true;
    }
    m_state->closing.notify_all();
    m_state->server->stop();
    m_state->thread.join();
}

void LoopbackServer::on(const QString &path, Handler handler) {
    const std::lock_guard lock(m_state->mutex);
    m_state->handlers.append({QRegularExpression(QRegularExpression::anchoredPattern(path)), std::move(handler)});
}

void LoopbackServer::on(const QString &path, Response response) {
    on(path, [response](const Request &) { return response; });
}

quint16 LoopbackServer::port() const {
    return quint16(m_state->port);
}

QUrl LoopbackServer::url(const QString &path) const {
    return QUrl((m_state->encrypted ? QStringLiteral("https") : QStringLiteral("http")) +
                QStringLiteral("://127.0.0.1:%1").arg(m_state->port) + path);
}

QList<LoopbackServer::Request> LoopbackServer::requests() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->requests;
}

} // namespace ludarium::test
