#include "Host/CurlTransfer.h"

#include "Host/HttpRules.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ludarium {

namespace {

constexpr auto progressInterval = std::chrono::milliseconds(100);

QString systemReason() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool isRedirect(long status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

bool hasControlCharacter(const QByteArray &text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

} // namespace

struct CurlTransfer::Relay {
    HttpClient::Progress callback;
    std::atomic<bool> live = true;
};

CurlTransfer::CurlTransfer(HttpRequest request, CurlHttpClient::Limits limits, QString file,
                           HttpClient::Progress progress)
    : m_request(std::move(request)), m_firstOrigin(httpOrigin(m_request.url)), m_limits(limits),
      m_file(std::move(file)) {
    if (progress) {
        m_relay = std::make_shared<Relay>();
        m_relay->callback = std::move(progress);
    }
    m_promise.start();
}

CurlTransfer::~CurlTransfer() {
    dropFile();
    curl_slist_free_all(m_headerList);
    curl_easy_cleanup(m_curl);
}

bool CurlTransfer::begin() {
    m_problem = httpUrlProblem(m_request.url);
    for (const auto &[name, value] : std::as_const(m_request.headers))
        if (hasControlCharacter(name) || hasControlCharacter(value) || name.contains(':'))
            m_problem = QStringLiteral("A header holds characters that are not allowed");
    if (m_problem.isEmpty()) {
        m_curl = curl_easy_init();
        if (!m_curl)
            m_problem = QStringLiteral("The connection could not be prepared");
    }
    if (!m_problem.isEmpty()) {
        finish();
        return false;
    }
    m_deadline = std::chrono::steady_clock::now() + m_request.timeout;
    prepare();
    return true;
}

void CurlTransfer::prepare() {
    const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(m_curl, option, value); };
    curl_easy_reset(m_curl);
    m_response = {};
    m_bodySize = 0;
    m_errorText[0] = '\0';
    m_lastBytes = 0;
    m_lastChange = std::chrono::steady_clock::now();

    const bool plain = m_request.url.scheme() == QLatin1String("http");
    const QByteArray url = m_request.url.toEncoded(QUrl::RemoveFragment);
    set(CURLOPT_URL, url.constData());
    set(CURLOPT_PROTOCOLS_STR, plain ? "http" : "https");
    set(CURLOPT_FOLLOWLOCATION, 0L); // each hop is checked here
    if (plain)
        set(CURLOPT_PROXY, ""); // a proxy would resolve "localhost" as itself
    set(CURLOPT_OPENSOCKETFUNCTION, &CurlTransfer::onOpenSocket);
    set(CURLOPT_OPENSOCKETDATA, this);

    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_ERRORBUFFER, m_errorText);
    set(CURLOPT_USERAGENT, "Ludarium/" LUDARIUM_VERSION);
    set(CURLOPT_CONNECTTIMEOUT_MS, long(std::chrono::milliseconds(m_limits.connect).count()));
    if (m_request.timeout.count() > 0) {
        // The limit is for the whole exchange: a redirect gets what is left of it.
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now());
        set(CURLOPT_TIMEOUT_MS, long(std::max<qint64>(1, left.count())));
    }

    const bool head = m_request.method == "HEAD";
    if (m_file.isEmpty())
        set(CURLOPT_ACCEPT_ENCODING, ""); // a download counts bytes, and its archives gain nothing
    if (head) {
        set(CURLOPT_NOBODY, 1L);
    } else if (m_request.method != "GET" || !m_request.body.isEmpty()) {
        set(CURLOPT_POST, 1L);
        set(CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
        set(CURLOPT_POSTFIELDS, m_request.body.constData());
        set(CURLOPT_CUSTOMREQUEST, m_request.method.constData());
    }

    curl_slist_free_all(std::exchange(m_headerList, nullptr));
    const auto add = [this](const QByteArray &line) {
        if (curl_slist *longer = curl_slist_append(m_headerList, line.constData()))
            m_headerList = longer;
    };
    add("Expect:"); // no pause before a body
    bool hasType = false;
    for (const auto &[name, value] : std::as_const(m_request.headers)) {
        // "Name;" is how libcurl is told to send a header without a value.
        add(value.isEmpty() ? name + ";" : name + ": " + value);
        hasType = hasType || name.compare("Content-Type", Qt::CaseInsensitive) == 0;
    }
    if (!hasType)
        add("Content-Type:"); // libcurl's own default claims a web form
    set(CURLOPT_HTTPHEADER, m_headerList);

    set(CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &CurlTransfer::onProgress);
    set(CURLOPT_XFERINFODATA, this);
}

bool CurlTransfer::advance(CURLcode result) {
    if (result != CURLE_OK) {
        if (m_problem.isEmpty())
            m_problem = fail(result);
        finish();
        return false;
    }
    long status = 0;
    curl_easy_getinfo(m_curl, CURLINFO_RESPONSE_CODE, &status);
    m_response.status = int(status);
    const QByteArray location = m_response.header("Location");
    if (isRedirect(status) && !location.isEmpty())
        return follow(m_request.url.resolved(QUrl::fromEncoded(location)));
    finish();
    return false;
}

bool CurlTransfer::follow(const QUrl &target) {
    if (m_redirects == maxRedirects)
        m_problem = QStringLiteral("%1 redirects too often").arg(m_firstOrigin);
    else
        m_problem = httpRedirectProblem(m_request.url, target);
    if (!m_problem.isEmpty()) {
        finish();
        return false;
    }
    ++m_redirects;
    const int status = m_response.status;
    if ((status == 303 && m_request.method != "HEAD") ||
        (status != 307 && status != 308 && m_request.method == "POST")) {
        m_request.method = "GET";
        m_request.body.clear();
        m_request.headers.removeIf([](const auto &header) {
            return header.first.startsWith("Content-") || header.first.startsWith("content-");
        });
    }
    if (httpOrigin(target) != httpOrigin(m_request.url))
        m_request.headers.removeIf([](const auto &header) {
            const QByteArray name = header.first.toLower();
            return name == "authorization" || name == "cookie" || name.contains("key") || name.contains("token");
        });
    m_request.url = target;
    prepare();
    return true;
}

QString CurlTransfer::fail(CURLcode result) const {
    if (m_cancelled)
        return QStringLiteral("The request to %1 was cancelled").arg(m_firstOrigin);
    if (result == CURLE_FILESIZE_EXCEEDED)
        return QStringLiteral("The answer of %1 is too large").arg(httpOrigin(m_request.url));
    // libcurl's own text names hosts and numbers, never paths or query strings.
    const QString detail = QString::fromLocal8Bit(m_errorText[0] ? m_errorText : curl_easy_strerror(result));
    return QStringLiteral("%1: %2").arg(httpOrigin(m_request.url), detail);
}

void CurlTransfer::fail(const QString &problem) {
    m_problem = problem;
    finish();
}

void CurlTransfer::finish() {
    if (std::exchange(m_finished, true))
        return;
    if (m_problem.isEmpty()) {
        // A 200 with an empty body makes an empty file.
        if (!m_file.isEmpty() && m_response.status == 200 && m_descriptor < 0)
            openFile();
        reportProgress(m_bodySize, m_bodySize, true);
    }
    if (!m_problem.isEmpty())
        dropFile(); // before the caller hears of it
    m_promise.finish();
}

HttpResponse CurlTransfer::takeResponse() {
    if (!m_problem.isEmpty())
        throw HttpError(m_problem.toStdString());
    return std::move(m_response);
}

// --- what libcurl calls --------------------------------------------------------------------------------------------

void CurlTransfer::takeHeader(QByteArray line) {
    line = line.trimmed();
    if (line.startsWith("HTTP/")) { // an interim answer (100, 103) came before
        m_response.headers.clear();
        return;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon > 0)
        m_response.headers.append({line.first(colon).trimmed(), line.sliced(colon + 1).trimmed()});
}

size_t CurlTransfer::takeBody(const char *data, size_t size) {
    const auto refuse = [&](const QString &problem) -> size_t {
        m_problem = problem;
        return size + 1;
    };
    m_bodySize += qint64(size);
    if (m_bodySize > m_request.limit)
        return refuse(QStringLiteral("The answer of %1 is too large").arg(httpOrigin(m_request.url)));
    if (m_file.isEmpty()) {
        m_response.body.append(data, qsizetype(size));
        return size;
    }
    long status = 0;
    curl_easy_getinfo(m_curl, CURLINFO_RESPONSE_CODE, &status);
    if (status != 200)
        return size;
    if (m_descriptor < 0 && !openFile())
        return size + 1;
    for (size_t done = 0; done < size;) {
        const ssize_t written = ::write(m_descriptor, data + done, size - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return refuse(QStringLiteral("%1 could not be written: %2").arg(m_file, systemReason()));
        done += size_t(written);
    }
    return size;
}

size_t CurlTransfer::onBody(char *data, size_t size, size_t count, void *self) {
    return static_cast<CurlTransfer *>(self)->takeBody(data, size * count);
}

size_t CurlTransfer::onHeader(char *data, size_t size, size_t count, void *self) {
    static_cast<CurlTransfer *>(self)->takeHeader(QByteArray(data, qsizetype(size * count)));
    return size * count;
}

bool CurlTransfer::takeProgress(qint64 received, qint64 total, qint64 sent) {
    if (m_cancelled)
        return false;
    if (m_request.method != "HEAD" && total > m_request.limit) {
        m_problem = QStringLiteral("The answer of %1 is too large").arg(httpOrigin(m_request.url));
        return false;
    }
    // libcurl's own watch over slow connections averages over seconds and notices a stall late.
    const auto now = std::chrono::steady_clock::now();
    if (received + sent != m_lastBytes) {
        m_lastBytes = received + sent;
        m_lastChange = now;
    } else if (now - m_lastChange > m_limits.stall) {
        m_problem = QStringLiteral("%1: no data for %2 seconds")
                        .arg(httpOrigin(m_request.url))
                        .arg(qint64(m_limits.stall.count()));
        return false;
    }
    if (received > 0)
        reportProgress(received, total > 0 ? total : -1, false);
    return true;
}

int CurlTransfer::onProgress(void *self, curl_off_t total, curl_off_t received, curl_off_t, curl_off_t sent) {
    return static_cast<CurlTransfer *>(self)->takeProgress(received, total, sent) ? 0 : 1;
}

curl_socket_t CurlTransfer::onOpenSocket(void *self, curlsocktype, curl_sockaddr *address) {
    const auto *transfer = static_cast<CurlTransfer *>(self);
    if (transfer->m_request.url.scheme() == QLatin1String("http")) {
        // A name such as "localhost" is what the machine's resolver says it is; the address decides.
        const sockaddr &socketAddress = address->addr;
        const bool loopback =
            (address->family == AF_INET &&
             (ntohl(reinterpret_cast<const sockaddr_in &>(socketAddress).sin_addr.s_addr) >> 24) == 127) ||
            (address->family == AF_INET6 &&
             IN6_IS_ADDR_LOOPBACK(&reinterpret_cast<const sockaddr_in6 &>(socketAddress).sin6_addr));
        if (!loopback)
            return CURL_SOCKET_BAD;
    }
#ifdef SOCK_CLOEXEC
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
#else
    const curl_socket_t descriptor = ::socket(address->family, address->socktype, address->protocol);
    if (descriptor != CURL_SOCKET_BAD)
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return descriptor;
#endif
}

void CurlTransfer::reportProgress(qint64 received, qint64 total, bool last) {
    if (!m_relay || m_file.isEmpty())
        return;
    const auto now = std::chrono::steady_clock::now();
    if (!last && now - m_lastReport < progressInterval)
        return;
    m_lastReport = now;
    QCoreApplication *application = QCoreApplication::instance();
    if (!application)
        return;
    QMetaObject::invokeMethod(
        application,
        [relay = m_relay, received, total] {
            if (relay->live)
                relay->callback(received, total);
        },
        Qt::QueuedConnection);
}

void CurlTransfer::endProgress() {
    if (m_relay)
        m_relay->live = false;
}

// --- the file ------------------------------------------------------------------------------------------------------

bool CurlTransfer::openFile() {
    m_temporaryFile = QFileInfo(m_file).absolutePath() + QLatin1String("/.ludarium-") +
                      QUuid::createUuid().toString(QUuid::Id128) + QLatin1String(".part");
    m_descriptor =
        ::open(QFile::encodeName(m_temporaryFile).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor >= 0)
        return true;
    m_problem = QStringLiteral("%1 could not be written: %2").arg(m_file, systemReason());
    m_temporaryFile.clear();
    return false;
}

void CurlTransfer::dropFile() {
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
    if (!m_temporaryFile.isEmpty())
        QFile::remove(std::exchange(m_temporaryFile, QString()));
}

void CurlTransfer::commitFile() {
    if (m_descriptor < 0)
        return;
    const auto check = [this](bool succeeded) {
        if (!succeeded)
            throw HttpError(QStringLiteral("%1 could not be written: %2").arg(m_file, systemReason()).toStdString());
    };
    check(::fsync(m_descriptor) == 0);
    check(::close(std::exchange(m_descriptor, -1)) == 0);
    check(::rename(QFile::encodeName(m_temporaryFile).constData(), QFile::encodeName(m_file).constData()) == 0);
    m_temporaryFile.clear();
    const int folder = ::open(QFile::encodeName(QFileInfo(m_file).absolutePath()).constData(), O_RDONLY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
}

} // namespace ludarium
