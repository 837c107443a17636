#include "Views/LogUpload.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QPointer>

namespace ludarium {

LogUpload::LogUpload(Host &host, AppLogger &logger, QObject *parent) : QObject(parent), m_host(host), m_logger(logger) {
    connect(&host.settings, &SettingsStore::changed, this, [this](const QString &key) {
        if (key == QLatin1String(Settings::logUploadURL.key))
            Q_EMIT uploadingChanged();
    });
}

QString LogUpload::unavailable() const {
    return m_isUploading ? tr("The logs are being uploaded.") : LogUploader::unavailableReason(m_host.settings);
}

void LogUpload::upload() {
    if (unavailable().isEmpty() && !m_isAsking)
        spawn(askAndUpload(), "uploading the log");
}

QCoro::Task<> LogUpload::askAndUpload() {
    const QPointer<LogUpload> self(this);
    if (!m_host.settings.value(Settings::logUploadConsent)) {
        Alert alert;
        alert.title = QStringLiteral("Upload Logs");
        alert.text = LogUploader::consentQuestion.toString();
        alert.buttons = QStringList{QStringLiteral("Upload"), QStringLiteral("Cancel")};
        m_isAsking = true;
        const int button = co_await m_host.dialogs.ask(alert);
        if (!self)
            co_return;
        m_isAsking = false;
        if (button != 0)
            co_return;
        try {
            m_host.settings.setValue(Settings::logUploadConsent, true);
        } catch (const SettingsError &error) {
            // It holds for this upload; the next one asks again.
            Log::warning(
                QStringLiteral("The consent to uploads could not be saved: %1").arg(QString::fromUtf8(error.what())));
        }
    }
    co_await performLogUpload();
}

QCoro::Task<> LogUpload::performLogUpload() {
    const QPointer<LogUpload> self(this);
    m_isUploading = true;
    Q_EMIT uploadingChanged();
    Host &host = m_host;
    LogUploader uploader(host, m_logger);
    Alert alert;
    alert.title = QStringLiteral("Upload Complete");
    alert.buttons = QStringList{QStringLiteral("OK")};
    try {
        alert.text = co_await uploader.uploadLogs();
    } catch (...) {
        alert.title = QStringLiteral("Upload Failed");
        alert.text = currentExceptionText();
        alert.style = Alert::Style::Warning;
    }
    if (!self)
        co_return;
    m_isUploading = false;
    Q_EMIT uploadingChanged();
    co_await host.dialogs.ask(alert);
}

} // namespace ludarium
