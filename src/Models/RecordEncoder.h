#pragma once

#include <QByteArray>

namespace ludarium {

struct AdditionalApplication;
struct Game;
struct Platform;
struct Playlist;
struct PlaylistGame;

// The written form of the records: each appends one JSON object, UTF-8 without white space, with its keys in the order
// of the cache file. The text is written here rather than by QJsonObject, which sorts keys.

/// The 24 keys of a cached game; ID, Title and Platform always, the others when they have a value.
void appendJson(QByteArray &out, const Game &game);
/// Name, and Category, Developer, Manufacturer and Notes when they have a value.
void appendJson(QByteArray &out, const Platform &platform);
/// All eight keys; null for an absent Notes or SortOrder, AutoPopulate as the text "true" or "false".
void appendJson(QByteArray &out, const Playlist &playlist);
/// GameId, PlaylistId and ManualOrder, which is null when absent.
void appendJson(QByteArray &out, const PlaylistGame &playlistGame);
/// Id, GameID, Name, and ApplicationPath when it has a value.
void appendJson(QByteArray &out, const AdditionalApplication &application);

/// A JSON string with its quotes, from UTF-8 and from UTF-16.
void appendJsonText(QByteArray &out, const QByteArray &utf8);
void appendJsonText(QByteArray &out, const QString &text);

} // namespace ludarium
