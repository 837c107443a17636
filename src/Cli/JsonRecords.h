#pragma once

#include "Cli/JsonText.h"

namespace ludarium {

struct AdditionalApplication;
struct Game;
struct LaunchPlan;
struct Platform;
struct Playlist;
class UserData;

/// The records of all documents. A field has one name and one form wherever it stands, and is left out without a value,
/// an empty text or list being none. Fields of a collection's records have their serial names, with "ID" for what a
/// record is known by; what the program adds begins in lower case. Numbers are numbers, flags booleans, moments ISO
/// texts in UTC (those of a collection wall-clock times without a zone), durations seconds, choices the words that
/// commands take.

/// "ID" and "Title", which stand for a game in a document that is not about the whole of it.
void addName(Json &object, const Game &game);
/// What the disk has of it: "state", "installed", "compressed", "downloadable", "downloadSize".
void addState(Json &object, const Game &game);
/// What the user gave it: "favorite", "gameProgress", "userRating", "userNotes", and the play data.
void addUserData(Json &object, const Game &game, const UserData &user);
/// "playCount", "playTime", "lastPlayed".
void addPlayData(Json &object, int count, double seconds, const std::optional<QDateTime> &last);

/// How many games there are in each state; every game counts once.
struct StateCounts {
    int games = 0;
    int installed = 0;
    int compressed = 0;
    int downloadable = 0;
    int missing = 0;
    void add(const Game &game);
};
/// "gameCount", "installedCount", "compressedCount", "downloadableCount", "missingCount".
void addCounts(Json &object, const StateCounts &counts);

/// The whole record with all of that.
Json toJson(const Game &game, const UserData &user);
Json toJson(const AdditionalApplication &application);
Json toJson(const Platform &platform);
Json toJson(const Playlist &playlist);
/// The members of a plan. The content of a file is text, or Base64 under "contentBase64" when it is not UTF-8.
Json toJson(const LaunchPlan &plan);

} // namespace ludarium
