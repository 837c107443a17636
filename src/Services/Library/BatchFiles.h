#pragma once

#include "Models/Game.h"

#include <QString>

/// What batch operations do to the disk. All of it blocks, for the thread pool.
namespace ludarium::BatchFiles {

/// The folder of an installed game, which can be removed to uninstall it; empty for a game that has none of its own,
/// such as a book or a ROM, or whose folder is one that other games share or a link out of the collection.
QString removableFolder(const Game &game, const QString &collection);
/// Removes such a folder. Returns why it could not, empty on success.
QString removeFolder(const QString &folder, const QString &collection);

/// The title as a file name: "/" and what no name can hold replaced, ".json" behind it. A name that is too long is cut
/// and told apart by a digest.
QString exportName(const QString &title);
/// Writes the record as indented JSON into the folder, made with its parents when missing; an older export of that
/// name is replaced. Returns why it could not, empty on success.
QString exportGame(const Game &game, const QString &folder);

} // namespace ludarium::BatchFiles
