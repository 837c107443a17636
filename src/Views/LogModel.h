#pragma once

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <QTimer>
#include <qqmlregistration.h>

namespace ludarium {

struct Host;
class AppLogger;

/// The lines of the log file, followed while somebody looks. Reading is done on the pool, from where the last reading
/// ended; a file that became shorter is read anew.
class LogModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool watching READ isWatching WRITE setWatching NOTIFY watchingChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
  public:
    enum Role { lineRole = Qt::UserRole + 1, levelRole };

    LogModel(Host &host, AppLogger &logger, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    bool isWatching() const { return m_timer.isActive(); }
    void setWatching(bool watching);
    QString filter() const { return m_filter; }
    /// Only lines that contain this text, in any case, are shown.
    void setFilter(const QString &filter);
    int count() const { return int(m_shown.size()); }

    /// The whole log, also what the filter hides.
    Q_INVOKABLE void copyAll();
    Q_INVOKABLE void clear();
    /// Selects the log file in the file manager.
    Q_INVOKABLE void reveal();

  Q_SIGNALS:
    void watchingChanged();
    void filterChanged();
    void countChanged();
    void copied();

  private:
    struct Chunk {
        bool restart = false;
        qint64 end = 0;
        QStringList lines;
        QByteArray rest;
    };
    static Chunk readFrom(const QString &file, qint64 start, QByteArray rest);
    QCoro::Task<> readMore();
    QCoro::Task<> copy();
    void show(const QStringList &added, bool restart);
    bool isShown(const QString &line) const;

    Host &m_host;
    AppLogger &m_logger;
    QTimer m_timer;
    QString m_filter;
    QStringList m_lines;
    QStringList m_shown;
    qint64 m_position = 0;
    QByteArray m_rest; ///< a line whose end is not written yet
    bool m_reading = false;
};

} // namespace ludarium
