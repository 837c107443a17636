#pragma once

#include "Models/Game.h"
#include "Views/GameMedia.h"

#include <QObject>
#include <memory>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;
class CoverStore;

/// The selected game as the detail pane shows it.
class GameDetail : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool hasGame READ hasGame NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString cover READ cover NOTIFY changed)
    Q_PROPERTY(QString initials READ initials NOTIFY changed)
    Q_PROPERTY(double hue READ hue NOTIFY changed)
    Q_PROPERTY(QStringList chips READ chips NOTIFY changed)
    Q_PROPERTY(QString genre READ genre NOTIFY changed)
    Q_PROPERTY(QString publisher READ publisher NOTIFY changed)
    Q_PROPERTY(QString series READ series NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(ludarium::GameMedia *media READ media CONSTANT)
  public:
    GameDetail(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);

    GamePtr game() const { return m_game; }
    bool hasGame() const { return m_game != nullptr; }
    QString title() const;
    QString cover() const;
    QString initials() const;
    double hue() const;
    /// Platform, year and developer, as far as they are known.
    QStringList chips() const;
    QString genre() const;
    QString publisher() const;
    QString series() const;
    /// The overview, or else the collection's notes.
    QString text() const;
    GameMedia *media() { return &m_media; }
    bool isLookingForPictures() const { return m_media.isLoading(); }

    /// The cover and the gallery are looked up again.
    void showPicturesAnew();
    /// Forgets what is known of the game's pictures, after one of them was replaced.
    Q_INVOKABLE void clearImageCache();

  Q_SIGNALS:
    void changed();

  private:
    void refresh();

    AppState &m_state;
    std::shared_ptr<CoverStore> m_covers;
    GamePtr m_game;
    GameMedia m_media;
};

} // namespace ludarium
