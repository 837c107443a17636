#pragma once

#include "Host/LogUploader.h"

#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

/// Sending the log for analysis, which the user agrees to once.
class LogUpload : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool uploading READ isUploading NOTIFY uploadingChanged)
    /// Why nothing can be uploaded at the moment; empty when it can.
    Q_PROPERTY(QString unavailable READ unavailable NOTIFY uploadingChanged)
  public:
    LogUpload(Host &host, AppLogger &logger, QObject *parent = nullptr);

    bool isUploading() const { return m_isUploading; }
    QString unavailable() const;
    Q_INVOKABLE void upload();

  Q_SIGNALS:
    void uploadingChanged();

  private:
    QCoro::Task<> askAndUpload();
    QCoro::Task<> performLogUpload();

    Host &m_host;
    AppLogger &m_logger;
    bool m_isUploading = false;
    bool m_isAsking = false;
};

} // namespace ludarium
