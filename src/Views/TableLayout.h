#pragma once

#include <QList>
#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

struct Host;

/// The widths of the columns of the list, in points at a text scale of 1, as the user left them.
class TableLayout : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QList<double> widths READ widths NOTIFY widthsChanged)
  public:
    explicit TableLayout(Host &host, QObject *parent = nullptr);

    /// The columns in their order: "title", "platform", "year", "developer", "genre", "rating", "playCount",
    /// "lastPlayed", "playTime", "status".
    static const QStringList &columns();
    QList<double> widths() const { return m_widths; }
    /// Between 40 and 1000. Nothing is kept before `save`, so that a drag does not write at every step.
    Q_INVOKABLE void setWidth(int column, double width);
    Q_INVOKABLE void resetWidth(int column);
    Q_INVOKABLE void save();

  Q_SIGNALS:
    void widthsChanged();
    void warned(const QString &text);

  private:
    Host &m_host;
    QList<double> m_widths;
};

} // namespace ludarium
