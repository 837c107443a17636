#pragma once

#include "Host/Settings.h"

#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

struct Host;

/// What the look depends on outside of the views: the chosen theme, the desktop's wish for dark or light, the size of
/// text and whether things may move.
class Appearance : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY changed)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ hasReducedMotion WRITE setReducedMotion NOTIFY changed)
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)
  public:
    explicit Appearance(Host &host, QObject *parent = nullptr);

    /// "System", "Retro Purple", "Ocean Blue", "Forest Green" or "Midnight Glass".
    QString theme() const { return m_theme; }
    /// Keeps the theme in the settings. A name that is none of the five changes nothing.
    void setTheme(const QString &theme);
    /// The same for this run only; also "System Light" and "System Dark". False for a name that is none of them.
    bool showTheme(const QString &theme);
    static bool isTheme(const QString &name);
    /// Dark unless the desktop asks for light.
    bool isDark() const { return m_dark; }
    void setDark(bool dark);
    /// 1 to 2; kept in the settings, as whether things may move is.
    double textScale() const { return m_textScale; }
    void setTextScale(double scale);
    bool hasReducedMotion() const { return m_reducedMotion; }
    void setReducedMotion(bool reduced);
    /// The same for this run only.
    void showReducedMotion(bool reduced);
    QString fixedFamily() const;

  Q_SIGNALS:
    void changed();
    void warned(const QString &text);

  private:
    template<typename T>
    void keep(const Setting<T> &setting, const T &value);

    Host &m_host;
    QString m_theme;
    bool m_dark = true;
    double m_textScale = 1;
    bool m_reducedMotion = false;
};

} // namespace ludarium
