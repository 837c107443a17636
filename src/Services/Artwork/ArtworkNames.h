#pragma once

#include "Models/Game.h"

#include <QString>
#include <QStringList>

/// The file names that pictures, videos and music of a game may have, as LaunchBox and its users give them.
namespace ludarium::ArtworkNames {

/// Extensions of pictures, in the order in which they are tried.
const QStringList &imageExtensions();
const QStringList &videoExtensions();
const QStringList &manualExtensions();
/// Extensions of a piece of music that is a file of its own, in the order in which they are tried.
const QStringList &musicFileExtensions();
/// What makes a folder one of music.
const QStringList &musicFolderExtensions();
/// What is played of such a folder.
const QStringList &trackExtensions();

/// Behind the last "."; empty without one. Lower case.
QString lowerExtension(const QString &fileName);
/// Composed, as macOS writes accents as characters of their own.
QString composed(const QString &name);
/// The form in which names are compared: lower case and composed.
QString folded(const QString &name);
/// What no file system takes replaced by "_".
QString safeName(QString name);
/// Letters and digits alone, in lower case.
QString normalizeForSearch(const QString &text);

/// File names of a picture without extension, best first.
QStringList imageCandidates(const Game &game);
/// Names of a video or of music without extension, best first.
QStringList mediaCandidates(const Game &game);
/// Beginnings of the names of all pictures of a game.
QStringList galleryPrefixes(const Game &game);

/// "Quarry, The" for "The Quarry"; null for a title without an article.
QString moveArticleToEnd(const QString &title);
/// "The Quarry (1994)"; null without a year.
QString titleWithYear(const Game &game);
/// "Quarry, The (1994)"; null without an article or a year.
QString titleWithArticleMovedAndYear(const Game &game);

} // namespace ludarium::ArtworkNames
