#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace ludarium {

/// Whether the desktop is dark or light. Its portal tells its wish (GNOME, KDE and others); "no wish", which is what
/// GNOME says when it is light, means the look of the toolkit's palette, as does a change of that palette on a desktop
/// that told nothing else. Without a portal and without a change there is no signal.
class DesktopColorScheme : public QObject {
    Q_OBJECT
  public:
    explicit DesktopColorScheme(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

  Q_SIGNALS:
    void darkChanged(bool dark);

  private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);

  private:
    void setScheme(uint scheme);
    void followPalette();

    uint m_scheme = 0;
};

} // namespace ludarium
