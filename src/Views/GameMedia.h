#pragma once

#include "Models/Game.h"
#include "Services/Artwork/ImageType.h"

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <QStringList>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The pictures of one game, kind after kind, with its video, manual and music. Looked up away from the main thread:
/// after another game was set the model is empty and `loading` until the answer is there.
class GameMedia : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(bool loading READ isLoading NOTIFY changed)
    Q_PROPERTY(QString fanArt READ fanArt NOTIFY changed)
    Q_PROPERTY(QString logo READ logo NOTIFY changed)
    Q_PROPERTY(QString video READ video NOTIFY changed)
    Q_PROPERTY(QString manual READ manual NOTIFY changed)
    Q_PROPERTY(QStringList music READ music NOTIFY changed)
  public:
    enum Role {
        nameRole = Qt::UserRole, ///< "Box Art"
        sourceRole,              ///< for an Image
        pathRole,                ///< of the file
    };

    explicit GameMedia(AppState &state, QObject *parent = nullptr);

    /// Null for no game.
    void setGame(const GamePtr &game);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The picture of a row, whole, and the name of its kind; empty for a row that there is not.
    Q_INVOKABLE QString sourceAt(int row) const { return data(index(row), sourceRole).toString(); }
    Q_INVOKABLE QString nameAt(int row) const { return data(index(row), nameRole).toString(); }

    int count() const { return int(m_found.images.size()); }
    bool isLoading() const { return m_loading; }
    /// What stands behind a game's title: the first fan art, else screenshot, for an Image; empty when there is none.
    QString fanArt() const;
    /// What stands for its title.
    QString logo() const;
    /// Paths; empty when there is none.
    QString video() const { return m_found.video; }
    QString manual() const { return m_found.manual; }
    /// Tracks, in order.
    QStringList music() const { return m_found.music; }

  Q_SIGNALS:
    void changed();

  private:
    struct Picture {
        ImageType type = ImageType::boxFront;
        QString path;
    };
    struct Found {
        QList<Picture> images;
        QString video;
        QString manual;
        QStringList music;
    };
    QCoro::Task<> lookUp(GamePtr game, QString collection, int request);
    void show(Found found, bool loading);
    QString firstOf(ImageType type) const;

    AppState &m_state;
    Found m_found;
    bool m_loading = false;
    int m_request = 0; ///< number of the latest game; answers to others come too late
};

} // namespace ludarium
