#pragma once

#include "Services/Library/PlayStatistics.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The figures of the statistics window as texts and as shares of the longest bar. They are worked out on the pool,
/// while somebody looks.
class Statistics : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool watching READ isWatching WRITE setWatching NOTIFY watchingChanged)
    Q_PROPERTY(bool ready READ isReady NOTIFY changed)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY changed)
    Q_PROPERTY(QStringList ranges READ ranges CONSTANT)
    Q_PROPERTY(QString range READ range WRITE setRange NOTIFY changed)
    Q_PROPERTY(QVariantList cards READ cards NOTIFY changed)
    Q_PROPERTY(QString averageSession READ averageSession NOTIFY changed)
    Q_PROPERTY(QVariantList platforms READ platforms NOTIFY changed)
    Q_PROPERTY(QVariantList genres READ genres NOTIFY changed)
    Q_PROPERTY(QVariantList mostPlayed READ mostPlayed NOTIFY changed)
    Q_PROPERTY(QVariantList history READ history NOTIFY changed)
    Q_PROPERTY(double longestDay READ longestDay NOTIFY changed)
    Q_PROPERTY(QVariantList streaks READ streaks NOTIFY changed)
  public:
    explicit Statistics(AppState &state, QObject *parent = nullptr);

    bool isWatching() const { return m_watching; }
    void setWatching(bool watching);
    bool isReady() const { return m_ready; }
    /// Nothing was ever played.
    bool isEmpty() const { return m_whole.gamesPlayed == 0 && m_whole.totalPlayTime <= 0; }
    /// "This Week", "This Month", "This Year", "All Time".
    QStringList ranges() const;
    /// Narrows the platforms, the genres and the most played games to what was last played within it. The cards, the
    /// days and the streaks are those of the whole library.
    QString range() const { return m_range; }
    void setRange(const QString &range);

    QVariantList cards() const;
    QString averageSession() const;
    QVariantList platforms() const { return shares(m_ranged.platformPlayTime); }
    QVariantList genres() const { return shares(m_ranged.genrePlayTime); }
    QVariantList mostPlayed() const;
    /// Each with "day", "text" and its "share" of the longest one.
    QVariantList history() const;
    /// Hours of the longest day.
    double longestDay() const;
    QVariantList streaks() const;

  Q_SIGNALS:
    void watchingChanged();
    void changed();

  private:
    QCoro::Task<> compute();
    static QVariantList shares(const QList<PlayStatistics::Share> &list);
    static QDate firstDay(const QString &range, QDate today);

    AppState &m_state;
    QTimer m_soon;
    bool m_watching = false;
    bool m_ready = false;
    int m_run = 0; ///< tells the newest computation from those that it overtook
    QString m_range = QStringLiteral("All Time");
    PlayStatistics m_whole;
    PlayStatistics m_ranged;
};

} // namespace ludarium
