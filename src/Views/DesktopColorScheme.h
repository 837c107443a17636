#pragma once

#include <QDBusVariant>
#include <QObject>

namespace ludarium {

/// Whether the desktop asks for dark or light, as its portal tells it (GNOME, KDE and others). Without a portal, and
/// for a desktop without a wish, there is no signal.
class DesktopColorScheme : public QObject {
    Q_OBJECT
  public:
    explicit DesktopColorScheme(QObject *parent = nullptr);

  Q_SIGNALS:
    void darkChanged(bool dark);

  private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

  private:
    void setScheme(uint scheme);
};

} // namespace ludarium
