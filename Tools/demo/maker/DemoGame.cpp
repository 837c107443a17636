#include "maker/DemoGame.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <stdexcept>

namespace ludarium::demo {

namespace {

const QUuid nameSpace(QStringLiteral("{6f1d4a0e-7c1b-5a51-9b43-0a4fd1b0a5c7}"));

QString madeId(const QString &name) {
    return QUuid::createUuidV5(nameSpace, name).toString(QUuid::WithoutBraces);
}

QJsonArray readArray(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(path + QStringLiteral(": ") + file.errorString()));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isArray())
        throw std::runtime_error(qPrintable(path + QStringLiteral(": ") + error.errorString()));
    return document.array();
}

QStringList texts(const QJsonValue &value) {
    QStringList list;
    for (const QJsonValue &entry : value.toArray())
        list.append(entry.toString());
    return list;
}

QList<QPair<QString, QString>> pairs(const QJsonValue &value) {
    QList<QPair<QString, QString>> list;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it)
        list.append({it.key(), it.value().toString()});
    return list;
}

} // namespace

QString DemoGame::id() const {
    return madeId(platform + u'|' + title);
}

int DemoGame::databaseId() const {
    return 900000 + static_cast<int>(QUuid(id()).data1 % 90000);
}

QString DemoGame::fileTitle() const {
    QString name = title;
    return name.replace(QStringLiteral(":"), QStringLiteral(" -")).remove(u'?').replace(u'/', u'-');
}

QString DemoGame::fileTitleWithYear() const {
    return QStringLiteral("%1 (%2)").arg(fileTitle()).arg(year());
}

QString DemoGame::imageTitle() const {
    QString name = title;
    return name.replace(u':', u'_').replace(u'/', u'_').replace(u'?', u'_');
}

QString DemoPlaylist::id() const {
    return madeId(QStringLiteral("playlist|") + name);
}

QList<DemoGame> readGames(const QString &file) {
    QList<DemoGame> games;
    for (const QJsonValue &value : readArray(file)) {
        const QJsonObject object = value.toObject();
        const auto text = [&object](const char *key) { return object[QLatin1StringView(key)].toString(); };
        const auto flag = [&object](const char *key) { return object[QLatin1StringView(key)].toBool(); };
        DemoGame game;
        game.title = text("title");
        game.sortTitle = text("sortTitle");
        game.platform = object[QStringLiteral("platform")].toString(QStringLiteral("MS-DOS"));
        game.folder = text("folder");
        game.developer = text("developer");
        game.publisher = text("publisher");
        game.genre = text("genre");
        game.series = text("series");
        game.playMode = text("playMode");
        game.rating = text("rating");
        game.notes = text("notes");
        game.overview = text("overview");
        game.date = QDate::fromString(text("date"), Qt::ISODate);
        game.players = object[QStringLiteral("players")].toInt(1);
        game.cooperative = flag("cooperative");
        game.completed = flag("completed");
        game.hide = flag("hide");
        game.broken = flag("broken");
        game.wikipedia = flag("wikipedia");
        game.stars = object[QStringLiteral("stars")].toDouble();
        game.votes = object[QStringLiteral("votes")].toInt();
        game.state = text("state");
        game.programs = pairs(object[QStringLiteral("programs")]);
        game.disc = pairs(object[QStringLiteral("cd")]);
        game.run = texts(object[QStringLiteral("run")]);
        game.scene = text("scene");
        game.captures = texts(object[QStringLiteral("captures")]);
        game.art = texts(object[QStringLiteral("art")]);
        game.manual = flag("manual");
        game.tune = object[QStringLiteral("tune")].toInt();
        game.extras = pairs(object[QStringLiteral("extras")]);
        if (game.title.isEmpty() || game.folder.isEmpty() || !game.date.isValid())
            throw std::runtime_error(qPrintable(file + QStringLiteral(": incomplete game ") + game.title));
        games.append(game);
    }
    return games;
}

QList<DemoPlaylist> readPlaylists(const QString &file) {
    QList<DemoPlaylist> playlists;
    for (const QJsonValue &value : readArray(file)) {
        const QJsonObject object = value.toObject();
        DemoPlaylist playlist;
        playlist.name = object[QStringLiteral("name")].toString();
        playlist.notes = object[QStringLiteral("notes")].toString();
        playlist.games = texts(object[QStringLiteral("games")]);
        for (const QJsonValue &filter : object[QStringLiteral("filters")].toArray())
            playlist.filters.append(texts(filter));
        playlists.append(playlist);
    }
    return playlists;
}

} // namespace ludarium::demo
