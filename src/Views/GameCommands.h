#pragma once

#include "Models/Game.h"

#include <QObject>
#include <QVariantList>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// What the menus do with the selected game, and what they say of it.
class GameCommands : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool hasGame READ hasGame NOTIFY changed)
    Q_PROPERTY(QString setupButtonTitle READ setupButtonTitle NOTIFY changed)
    Q_PROPERTY(bool favorite READ isFavorite NOTIFY changed)
    Q_PROPERTY(int rating READ rating NOTIFY changed)
    Q_PROPERTY(int progress READ progress NOTIFY changed)
    Q_PROPERTY(QStringList progressTexts READ progressTexts CONSTANT)
    Q_PROPERTY(QString gameId READ gameId NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString platform READ platform NOTIFY changed)
    Q_PROPERTY(QString developer READ developer NOTIFY changed)
  public:
    explicit GameCommands(AppState &state, QObject *parent = nullptr);

    bool hasGame() const { return m_game != nullptr; }
    QString setupButtonTitle() const;
    bool isFavorite() const { return m_game && m_game->isFavorite; }
    /// The user's own, 1 to 5, or 0.
    int rating() const;
    /// The number of the GameProgress, which is also its place in `progressTexts`.
    int progress() const;
    QStringList progressTexts() const;
    QString gameId() const { return m_game ? m_game->id : QString(); }
    QString title() const { return m_game ? m_game->title : QString(); }
    QString platform() const { return m_game ? m_game->platform : QString(); }
    QString developer() const { return m_game ? m_game->developer : QString(); }

    Q_INVOKABLE void toggleFavorite();
    Q_INVOKABLE void setRating(int rating);
    Q_INVOKABLE void setProgress(int progress);
    Q_INVOKABLE void showPlatform();
    Q_INVOKABLE void showDeveloper();
    Q_INVOKABLE void copyTitle();
    /// The other games of the selected group, and the selected one, as maps of `id` and `text`; empty when there is
    /// nothing to choose between.
    Q_INVOKABLE QVariantList variants() const;
    Q_INVOKABLE void selectVariant(const QString &id);

  Q_SIGNALS:
    void changed();

  private:
    void refresh();

    AppState &m_state;
    GamePtr m_game;
};

} // namespace ludarium
