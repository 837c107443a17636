#pragma once

#include "Models/Game.h"
#include "Views/GameActions.h"
#include "Views/GameExtras.h"
#include "Views/GameMedia.h"
#include "Views/GameVariants.h"

#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <memory>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;
class CoverStore;

/// The selected game as the detail pane shows it, and the notes that the user writes there.
class GameDetail : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool hasGame READ hasGame NOTIFY changed)
    Q_PROPERTY(QString gameId READ gameId NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString cover READ cover NOTIFY changed)
    Q_PROPERTY(QString initials READ initials NOTIFY changed)
    Q_PROPERTY(double hue READ hue NOTIFY changed)
    Q_PROPERTY(QVariantList chips READ chips NOTIFY changed)
    Q_PROPERTY(QVariantList facts READ facts NOTIFY changed)
    Q_PROPERTY(QVariantList issues READ issues NOTIFY changed)
    Q_PROPERTY(bool critical READ isCritical NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(ludarium::GameMedia *media READ media CONSTANT)
    Q_PROPERTY(ludarium::GameVariants *variants READ variants CONSTANT)
    Q_PROPERTY(ludarium::GameExtras *extras READ extras CONSTANT)
    Q_PROPERTY(ludarium::GameActions *actions READ actions CONSTANT)
  public:
    GameDetail(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);
    /// Keeps the notes that are being written.
    ~GameDetail() override;

    GamePtr game() const { return m_game; }
    bool hasGame() const { return m_game != nullptr; }
    QString gameId() const { return m_game ? m_game->id : QString(); }
    QString title() const;
    QString cover() const;
    QString initials() const;
    double hue() const;
    QVariantList chips() const;
    QVariantList facts() const;
    QVariantList issues() const;
    /// Whether one of the issues is critical.
    bool isCritical() const;
    /// The overview, or else the collection's notes.
    QString text() const;
    /// The user's own.
    QString notes() const;
    GameMedia *media() { return &m_media; }
    GameVariants *variants() { return &m_variants; }
    GameExtras *extras() { return &m_extras; }
    GameActions *actions() { return &m_actions; }
    bool isLookingForPictures() const { return m_media.isLoading() || m_extras.isLoading(); }

    /// Narrows the main view to a chip's or a fact's value and nothing else.
    Q_INVOKABLE void narrowTo(const QString &kind, const QString &value);
    /// The notes as they are being written; kept when the writing pauses, by `saveNotes`, and when another game is
    /// selected before that.
    Q_INVOKABLE void editNotes(const QString &text);
    Q_INVOKABLE void saveNotes();

    /// The cover and the gallery are looked up again.
    void showPicturesAnew();
    /// Forgets what is known of the game's pictures, after one of them was replaced.
    Q_INVOKABLE void clearImageCache();

  Q_SIGNALS:
    void changed();
    /// Another game, or none, is shown from now on.
    void gameSelected();

  private:
    void refresh();
    /// False when the store refused them.
    bool keepNotes();

    AppState &m_state;
    std::shared_ptr<CoverStore> m_covers;
    GamePtr m_game;
    GameMedia m_media;
    GameVariants m_variants;
    GameExtras m_extras;
    GameActions m_actions;
    std::optional<QString> m_writtenNotes; ///< of `m_game`, still being written
    QTimer m_writingPause;
};

} // namespace ludarium
