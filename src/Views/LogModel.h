#pragma once

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <QTimer>
#include <qqmlregistration.h>

namespace ludarium {

struct Host;
class AppLogger;

/// The lines of the log file, followed while somebody looks. Reading is done on the pool, from where the last reading
/// ended; a file that begins otherwise than before, or became shorter, is read anew.
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
    /// What is known of the file that was read: how far, how it began, and the start of a line without its end.
    struct Place {
        qint64 position = 0;
        QByteArray head;
        QByteArray rest;
    };
    struct Chunk {
        bool restart = false;
        QStringList lines;
        Place place;
    };
    static Chunk readFrom(const QString &file, Place place);
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
    Place m_place;
    bool m_reading = false;
};

} // namespace ludarium
