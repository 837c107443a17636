#pragma once

#include "Host/LogUploader.h"

#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

/// The command that sends the log to the support endpoint: asks once, sends, and tells how it went.
class LogUpload : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool uploading READ isUploading NOTIFY uploadingChanged)
  public:
    LogUpload(Host &host, AppLogger &logger, QObject *parent = nullptr);

    bool isUploading() const { return m_uploading; }
    Q_INVOKABLE void upload();

  Q_SIGNALS:
    void uploadingChanged();

  private:
    QCoro::Task<> run();
    QCoro::Task<bool> mayUpload();
    void setUploading(bool uploading);

    Host &m_host;
    LogUploader m_uploader;
    bool m_uploading = false;
};

} // namespace ludarium
