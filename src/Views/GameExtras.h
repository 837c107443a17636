#pragma once

#include "Models/Game.h"
#include "Services/Runners/ExtrasManager.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QVariantList>
#include <qqmlregistration.h>
#include <stop_token>

namespace ludarium {

class AppState;

/// What stands beside a game's main launch: its additional applications and the files of its `Extras` folder. The
/// files are looked up away from the main thread.
class GameExtras : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QVariantList applications READ applications NOTIFY changed)
    Q_PROPERTY(QVariantList files READ files NOTIFY changed)
    Q_PROPERTY(bool loading READ isLoading NOTIFY changed)
  public:
    explicit GameExtras(AppState &state, QObject *parent = nullptr);
    ~GameExtras() override;

    /// Null for no game.
    void setGame(const GamePtr &game);

    /// A file that stands elsewhere in the pane, or an empty path.
    void setShownElsewhere(const QString &path);

    // Both as `name`, `kind`, `detail` and `reason`, which says why an entry cannot be opened.
    QVariantList applications() const;
    QVariantList files() const;
    bool isLoading() const { return m_loading; }

    Q_INVOKABLE void openApplication(int index);
    Q_INVOKABLE void openFile(int index);
    /// A manual, video or track that `GameMedia` names.
    Q_INVOKABLE void openMedia(const QString &path);

  Q_SIGNALS:
    void changed();

  private:
    void refresh();
    QCoro::Task<> lookUp(GamePtr game, QString collection, std::stop_token stop);
    QCoro::Task<> launch(AdditionalApplication application, GamePtr game);
    QCoro::Task<> open(QString path, QString collection);
    QCoro::Task<> tell(QString title, QString text);

    AppState &m_state;
    ExtrasManager m_manager;
    GamePtr m_game;
    QList<ExtraItem> m_found; ///< type after type
    QList<ExtraItem> m_files; ///< without what is shown elsewhere
    QString m_shownElsewhere;
    std::stop_source m_stop; ///< of the look-up that is under way
    bool m_loading = false;
};

} // namespace ludarium
