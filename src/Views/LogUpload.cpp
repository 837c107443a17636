#include "Views/LogUpload.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QPointer>

namespace ludarium {

LogUpload::LogUpload(Host &host, AppLogger &logger, QObject *parent)
    : QObject(parent), m_host(host), m_uploader(host, logger) {}

void LogUpload::upload() {
    if (!m_uploading)
        spawn(run(), "uploading the log");
}

QCoro::Task<bool> LogUpload::mayUpload() {
    if (m_host.settings.value(Settings::logUploadConsent))
        co_return true;
    const QPointer<LogUpload> self(this);
    Alert alert;
    alert.title = QStringLiteral("Upload Logs for Analysis");
    alert.text = QStringLiteral("Your logs will be uploaded to help diagnose issues. Personal information like "
                                "usernames and hostnames will be redacted before upload.\n\nDo you want to continue?");
    alert.buttons = QStringList{QStringLiteral("Upload"), QStringLiteral("Cancel")};
    const int answer = co_await m_host.dialogs.ask(alert);
    if (!self || answer != 0)
        co_return false;
    try {
        m_host.settings.setValue(Settings::logUploadConsent, true);
    } catch (const SettingsError &error) {
        // The consent holds for this upload; the next one asks again.
        Log::error(QStringLiteral("Failed to keep the consent to uploads: %1").arg(QString::fromUtf8(error.what())));
    }
    co_return true;
}

QCoro::Task<> LogUpload::run() {
    const QPointer<LogUpload> self(this);
    setUploading(true);
    const bool allowed = co_await mayUpload();
    if (!self)
        co_return;
    if (!allowed) {
        setUploading(false);
        co_return;
    }
    Alert result;
    result.buttons = QStringList{QStringLiteral("OK")};
    try {
        result.text = co_await m_uploader.uploadLogs();
        result.title = QStringLiteral("Upload Complete");
    } catch (const std::exception &error) {
        result.text = QString::fromUtf8(error.what());
        result.title = QStringLiteral("Upload Failed");
        result.style = Alert::Style::Warning;
    }
    if (!self)
        co_return;
    setUploading(false);
    co_await m_host.dialogs.ask(result);
}

void LogUpload::setUploading(bool uploading) {
    if (std::exchange(m_uploading, uploading) != uploading)
        Q_EMIT uploadingChanged();
}

} // namespace ludarium
