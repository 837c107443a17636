#include "Host/LogUploader.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/HttpClient.h"
#include "Host/HttpRules.h"
#include "Host/SafeJson.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

namespace ludarium {

namespace {

/// Where logs go unless a setting says otherwise; it belongs to the deployment and may be empty.
constexpr const char16_t *defaultEndpoint = u"" LUDARIUM_LOG_ENDPOINT;

constexpr QLatin1StringView truncationMark{"[LOG TRUNCATED - Showing latest ~500KB of logs]\n\n"};

QString endpointOf(const SettingsStore &settings) {
    const QString endpoint = settings.value(Settings::logUploadURL);
    return endpoint.isEmpty() ? QString::fromUtf16(defaultEndpoint) : endpoint;
}

/// The user's names: the login name, and what the folders are called that are the home, which may be links.
QStringList currentUserNames() {
    const MachineInfo machine = MachineInfo::current();
    QStringList names{machine.userName};
    for (const QString &home : {machine.userHome, QDir::homePath()})
        names << QFileInfo(home).fileName() << QFileInfo(QFileInfo(home).canonicalFilePath()).fileName();
    names.removeDuplicates();
    return names;
}

/// Every way in which a path or a URL spells a name, as an alternative of an expression.
QStringList spellings(const QString &name) {
    QStringList result;
    for (const auto form : {QString::NormalizationForm_C, QString::NormalizationForm_D}) {
        const QString text = name.normalized(form);
        result << QRegularExpression::escape(text)
               << QRegularExpression::escape(QString::fromLatin1(QUrl::toPercentEncoding(text)))
               << QRegularExpression::escape(QString(text).replace(u' ', QLatin1String("\\ ")));
    }
    result.removeDuplicates();
    return result;
}

/// Takes the folders out that are called like the user.
void redactFolders(QString &text, const QStringList &names, const QString &mark) {
    QStringList alternatives;
    for (const QString &name : names)
        // "root" is nobody's name, and "/root" a folder of every machine.
        if (!name.isEmpty() && name != QLatin1String("root"))
            alternatives << spellings(name);
    if (alternatives.isEmpty())
        return;
    std::sort(alternatives.begin(), alternatives.end(),
              [](const QString &a, const QString &b) { return a.size() > b.size(); });
    const QRegularExpression folder(
        QLatin1String("(?<=[/\\\\~])(?:") + alternatives.join(u'|') + QLatin1String(")(?![\\p{L}\\p{M}\\p{N}_%-])"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    text.replace(folder, mark);
}

std::string textOf(LogUploadError::Kind kind, int status) {
    switch (kind) {
    case LogUploadError::Kind::NoLogs:
        return "No logs available to upload";
    case LogUploadError::Kind::InvalidUrl:
        return "Invalid server URL configured";
    case LogUploadError::Kind::SerializationFailed:
        return "Failed to prepare log data";
    case LogUploadError::Kind::NoResponse:
        return "No response from server";
    case LogUploadError::Kind::ServerError:
        return "Server returned error: " + std::to_string(status);
    }
    return {};
}

} // namespace

LogUploadError::LogUploadError(Kind kind, int status)
    : std::runtime_error(textOf(kind, status)), kind(kind), status(status) {}

LogUploader::LogUploader(Host &host, AppLogger &logger) : m_host(host), m_logger(logger) {}

QString LogUploader::unavailableReason(const SettingsStore &settings) {
    return endpointOf(settings).isEmpty() ? QStringLiteral("No address for log uploads is set.") : QString();
}

QCoro::Task<QString> LogUploader::uploadLogs() {
    const QString text = co_await m_logger.readAll();
    if (text.isEmpty())
        throw LogUploadError(LogUploadError::Kind::NoLogs);
    const Identity identity{m_host.paths.home(), MachineInfo::current().hostName, currentUserNames()};
    const auto prepare = [text, identity] { return preparedLogs(text, identity); };
    const QString logs = co_await runOnPool(prepare);

    HttpRequest request;
    request.url = QUrl(endpointOf(m_host.settings));
    if (!httpUrlProblem(request.url).isEmpty())
        throw LogUploadError(LogUploadError::Kind::InvalidUrl);
    request.method = "POST";
    request.headers = {{"Content-Type", "application/json"}};
    request.body = QJsonDocument(QJsonObject{
                                     {QStringLiteral("app"), QStringLiteral("Ludarium")},
                                     {QStringLiteral("version"), QStringLiteral(LUDARIUM_VERSION)},
                                     {QStringLiteral("timestamp"), m_host.clock.now().toUTC().toString(Qt::ISODate)},
                                     {QStringLiteral("logs"), logs},
                                 })
                       .toJson(QJsonDocument::Compact);
    if (request.body.isEmpty())
        throw LogUploadError(LogUploadError::Kind::SerializationFailed);
    const HttpResponse response = co_await m_host.http.send(request);
    if (response.status == 0)
        throw LogUploadError(LogUploadError::Kind::NoResponse);
    if (response.status != 200 && response.status != 201)
        throw LogUploadError(LogUploadError::Kind::ServerError, response.status);
    if (const auto answer = parseJson(response.body))
        if (const QJsonValue message = answer->object().value(QLatin1String("message")); message.isString())
            co_return message.toString();
    co_return QStringLiteral("Logs uploaded successfully");
}

QByteArray LogUploader::truncateToLatestLogs(const QByteArray &text, qsizetype maxSize) {
    if (text.size() <= maxSize)
        return text;
    const QByteArray tail = text.last(maxSize);
    const qsizetype banner = tail.indexOf(QByteArray(60, '='));
    if (banner >= 0)
        return tail.sliced(tail.lastIndexOf('\n', banner) + 1);
    const qsizetype lineEnd = tail.indexOf('\n');
    if (lineEnd >= 0)
        return tail.sliced(lineEnd + 1);
    // The cut may go through a character; its remaining bytes are no text.
    qsizetype start = 0;
    while (start < tail.size() && start < 4 && (uchar(tail[start]) & 0xc0) == 0x80)
        ++start;
    return tail.sliced(start);
}

QString LogUploader::anonymizeLogs(const QString &text, const Identity &identity) {
    static const QString mark = QStringLiteral("[REDACTED]");
    QString result = text;
    const QString name = QFileInfo(identity.home).fileName();
    if (!name.isEmpty()) {
        QStringList parents{QStringLiteral("/Users/"), QStringLiteral("/home/")};
        const QString parent = QFileInfo(identity.home).path() + QLatin1Char('/');
        // A home right below the root ("/root") names no person, and its pattern would match everywhere.
        if (parent != QLatin1String("//") && !parents.contains(parent))
            parents.append(parent);
        for (const QString &folder : std::as_const(parents)) {
            result.replace(folder + name + QLatin1Char('/'), folder + mark + QLatin1Char('/'));
            result.replace(folder + name, folder + mark);
        }
    }
    redactFolders(result, identity.userNames, mark);
    if (!identity.hostName.isEmpty())
        result.replace(QStringLiteral("Host: ") + identity.hostName, QStringLiteral("Host: ") + mark);
    return result;
}

QString LogUploader::preparedLogs(const QString &text, const Identity &identity) {
    const QByteArray bytes = text.toUtf8();
    if (bytes.size() <= AppLogger::maxUploadSize)
        return anonymizeLogs(text, identity);
    const QByteArray latest = truncateToLatestLogs(bytes, AppLogger::maxUploadSize);
    return truncationMark + anonymizeLogs(QString::fromUtf8(latest), identity);
}

} // namespace ludarium
