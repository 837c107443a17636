#include "Views/GameMedia.h"

#include "App/AppState.h"
#include "Services/Artwork/ImageLoader.h"
#include "Views/GalleryImageProvider.h"

#include <QPointer>

namespace ludarium {

GameMedia::GameMedia(AppState &state, QObject *parent) : QAbstractListModel(parent), m_state(state) {}

void GameMedia::setGame(const GamePtr &game) {
    ++m_request;
    show({}, game != nullptr);
    if (game)
        spawn(lookUp(game, m_state.collectionPath(), m_request), "looking for a game's pictures");
}

QCoro::Task<> GameMedia::lookUp(GamePtr game, QString collection, int request) {
    ImageLoader &images = m_state.imageLoader();
    const QPointer<GameMedia> self(this);
    auto work = [&images, game, collection] {
        Found found;
        for (const FoundImage &image : images.allImages(*game, collection))
            found.images.append({image.type, image.url});
        found.video = images.videoURL(*game, collection).value_or(QString());
        found.manual = images.manualURL(*game, collection).value_or(QString());
        found.music = images.musicFiles(*game, collection);
        return found;
    };
    Found found = co_await images.run(work);
    if (self && request == m_request)
        show(std::move(found), false);
}

void GameMedia::show(Found found, bool loading) {
    beginResetModel();
    m_found = std::move(found);
    m_loading = loading;
    endResetModel();
    Q_EMIT changed();
}

QString GameMedia::firstOf(ImageType type) const {
    for (const Picture &picture : m_found.images)
        if (picture.type == type)
            return GalleryImageProvider::url(picture.path);
    return {};
}

QString GameMedia::fanArt() const {
    QString picture = firstOf(ImageType::fanart);
    if (picture.isEmpty())
        picture = firstOf(ImageType::screenshot);
    return picture;
}

QString GameMedia::logo() const {
    return firstOf(ImageType::clearLogo);
}

int GameMedia::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant GameMedia::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= count())
        return {};
    const Picture &picture = m_found.images[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case nameRole:
        return displayName(picture.type);
    case sourceRole:
        return GalleryImageProvider::url(picture.path);
    case pathRole:
        return picture.path;
    default:
        return {};
    }
}

QHash<int, QByteArray> GameMedia::roleNames() const {
    return {{nameRole, "name"}, {sourceRole, "source"}, {pathRole, "path"}};
}

} // namespace ludarium
