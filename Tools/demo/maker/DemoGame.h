#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>

namespace ludarium::demo {

/// One game as games.json tells it.
struct DemoGame {
    QString title, sortTitle, platform, folder, developer, publisher, genre, series, playMode, rating, notes, overview;
    QDate date;
    int players = 1;
    bool cooperative = false, completed = false, hide = false, broken = false, wikipedia = false;
    double stars = 0;
    int votes = 0;
    QString state;                           ///< "installed", "archived", "absent"; empty for a cartridge
    QList<QPair<QString, QString>> programs; ///< path in the game's folder, program name or "text:…"
    QList<QPair<QString, QString>> disc;     ///< the same for the game's CD
    QStringList run;                         ///< the end of the autoexec
    QString scene;
    QStringList captures; ///< screenshots taken of the running program
    QStringList art;      ///< "box", "back", "box3d", "logo", "fanart", "cart", "disc", "shot"
    bool manual = false;
    int tune = 0; ///< seed of the game's music, 0 for none
    QList<QPair<QString, QString>> extras;

    QString id() const; ///< a UUID made from platform and title
    int databaseId() const;
    int year() const { return date.year(); }
    bool isDos() const { return platform == QStringLiteral("MS-DOS"); }
    bool isScummVM() const { return platform == QStringLiteral("ScummVM"); }
    bool isCartridge() const { return !isDos() && !isScummVM(); }
    /// The title as the sets write it in file names: "Title - Subtitle".
    QString fileTitle() const;
    QString fileTitleWithYear() const;
    /// The title as image files carry it, with "_" for ":".
    QString imageTitle() const;
};

struct DemoPlaylist {
    QString name, notes;
    QStringList games;          ///< "platform|title"
    QList<QStringList> filters; ///< field, comparison, value
    bool dynamic() const { return !filters.isEmpty(); }
    QString id() const;
};

/// Both throw std::runtime_error with the reason.
QList<DemoGame> readGames(const QString &file);
QList<DemoPlaylist> readPlaylists(const QString &file);

} // namespace ludarium::demo
