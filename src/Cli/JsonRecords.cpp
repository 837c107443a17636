#include "Cli/JsonRecords.h"

#include "Cli/GameChoice.h"
#include "Cli/UserDataText.h"
#include "Models/Game.h"
#include "Models/LaunchPlan.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"
#include "Services/Library/UserData.h"

#include <QStringDecoder>
#include <cmath>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

void addLongText(Json &object, const char *key, const LongText &text) {
    if (!text.isEmpty())
        object[key] = text.toStdString();
}

void addFlag(Json &object, const char *key, const std::optional<bool> &flag) {
    if (flag)
        object[key] = *flag;
}

void addNumber(Json &object, const char *key, const std::optional<int> &number) {
    if (number)
        object[key] = *number;
}

void addNumber(Json &object, const char *key, const std::optional<double> &number) {
    if (number && std::isfinite(*number)) // JSON knows no other
        object[key] = *number;
}

void addWallClockTime(Json &object, const char *key, const std::optional<QDateTime> &date) {
    if (date && date->isValid())
        object[key] = date->toString(u"yyyy-MM-ddTHH:mm:ss").toStdString();
}

} // namespace

void addName(Json &object, const Game &game) {
    addText(object, "ID", game.id);
    addText(object, "Title", game.title);
}

void addState(Json &object, const Game &game) {
    addText(object, "state", gameStateText(game));
    object["installed"] = game.isInstalled;
    object["compressed"] = game.isCompressed;
    object["downloadable"] = game.isDownloadable;
    addText(object, "downloadSize", game.downloadSize);
}

void addUserData(Json &object, const Game &game, const UserData &user) {
    object["favorite"] = game.isFavorite;
    object["gameProgress"] = jsonText(progressWords().at(int(game.gameProgress)));
    if (const int rating = user.rating(game.id); rating > 0)
        object["userRating"] = rating;
    addText(object, "userNotes", user.notes(game.id));
    addPlayData(object, game.playCount, game.playTime, game.lastPlayed);
}

void addPlayData(Json &object, int count, double seconds, const std::optional<QDateTime> &last) {
    object["playCount"] = count;
    addNumber(object, "playTime", std::optional(seconds));
    addInstant(object, "lastPlayed", last);
}

void StateCounts::add(const Game &game) {
    ++games;
    ++(game.isInstalled ? installed : game.isCompressed ? compressed : game.isDownloadable ? downloadable : missing);
}

void addCounts(Json &object, const StateCounts &counts) {
    object["gameCount"] = counts.games;
    object["installedCount"] = counts.installed;
    object["compressedCount"] = counts.compressed;
    object["downloadableCount"] = counts.downloadable;
    object["missingCount"] = counts.missing;
}

Json toJson(const Game &game, const UserData &user) {
    Json object = Json::object();
    addName(object, game);
    addText(object, "SortTitle", game.sortTitle);
    addText(object, "Platform", game.platform);
    addWallClockTime(object, "ReleaseDate", game.releaseDate);
    addNumber(object, "releaseYear", game.releaseYear);
    addText(object, "Developer", game.developer);
    addText(object, "Publisher", game.publisher);
    addText(object, "Genre", game.genre);
    addText(object, "Series", game.series);
    addText(object, "PlayMode", game.playMode);
    addNumber(object, "MaxPlayers", game.maxPlayers);
    addFlag(object, "Cooperative", game.cooperative);
    addLongText(object, "Notes", game.notes);
    addLongText(object, "Overview", game.overview);
    addText(object, "Rating", game.rating);
    addNumber(object, "CommunityStarRating", game.communityRating);
    addNumber(object, "CommunityStarRatingTotalVotes", game.communityRatingCount);
    addText(object, "ApplicationPath", game.applicationPath);
    addText(object, "ConfigurationPath", game.configurationPath);
    addText(object, "CommandLine", game.commandLine);
    addText(object, "RootFolder", game.rootFolder);
    addText(object, "ManualPath", game.manualPath);
    addText(object, "MusicPath", game.musicPath);
    addText(object, "VideoPath", game.videoPath);
    addFlag(object, "Completed", game.completed);
    addFlag(object, "Hide", game.hide);
    addFlag(object, "Broken", game.broken);
    addFlag(object, "Portable", game.portable);
    addText(object, "Source", game.source);
    addText(object, "DatabaseID", game.databaseID);
    addText(object, "WikipediaURL", game.wikipediaURL);
    addText(object, "VideoURL", game.videoURL);
    addWallClockTime(object, "DateAdded", game.dateAdded);

    addState(object, game);
    addUserData(object, game, user);
    if (game.requiredEmulatorType)
        addText(object, "requiredEmulatorType", emulatorTypeText(*game.requiredEmulatorType));
    addText(object, "requiredEmulatorVersion", game.requiredEmulatorVersion);
    if (!game.additionalApplications.isEmpty()) {
        Json list = Json::array();
        for (const AdditionalApplication &application : game.additionalApplications)
            list.push_back(toJson(application));
        object["additionalApplications"] = std::move(list);
    }
    return object;
}

Json toJson(const AdditionalApplication &application) {
    Json object = Json::object();
    addText(object, "ID", application.id);
    addText(object, "GameID", application.gameId);
    addText(object, "Name", application.name);
    addText(object, "ApplicationPath", application.applicationPath);
    addText(object, "CommandLine", application.commandLine);
    object["AutoRunBefore"] = application.autoRunBefore;
    object["AutoRunAfter"] = application.autoRunAfter;
    object["WaitForExit"] = application.waitForExit;
    object["playCount"] = application.playCount;
    addNumber(object, "Priority", application.priority);
    addFlag(object, "SideA", application.sideA);
    addFlag(object, "SideB", application.sideB);
    return object;
}

Json toJson(const Platform &platform) {
    Json object = Json::object();
    addText(object, "Name", platform.name);
    addText(object, "Category", platform.category);
    addText(object, "Developer", platform.developer);
    addText(object, "Manufacturer", platform.manufacturer);
    if (platform.releaseDate)
        addWallClockTime(object, "ReleaseDate", platform.releaseDate->startOfDay(Qt::UTC));
    addText(object, "Notes", platform.notes);
    addText(object, "EmulatorPath", platform.emulatorPath);
    addText(object, "DefaultEmulator", platform.defaultEmulator);
    return object;
}

Json toJson(const Playlist &playlist) {
    Json object = Json::object();
    addText(object, "ID", playlist.id);
    addText(object, "Name", playlist.name);
    addText(object, "Notes", playlist.description);
    addNumber(object, "SortOrder", playlist.sortOrder);
    addTexts(object, "GameIDs", playlist.gameIds);
    addTexts(object, "NestedPlaylistIDs", playlist.nestedPlaylistIds);
    object["AutoPopulate"] = playlist.autoPopulate;
    if (playlist.filters.isEmpty())
        return object;
    Json filters = Json::array();
    for (const PlaylistFilter &filter : playlist.filters) {
        Json entry = Json::object();
        addText(entry, "Value", filter.value);
        addText(entry, "FieldKey", filter.fieldKey);
        addText(entry, "ComparisonTypeKey", filter.comparisonType);
        filters.push_back(std::move(entry));
    }
    object["PlaylistFilter"] = std::move(filters);
    return object;
}

namespace {

Json toJson(const LaunchProof &proof) {
    static constexpr const char *verdicts[] = {"unknown", "found", "missing"};
    Json object = Json::object();
    object["verdict"] = verdicts[int(proof.verdict)];
    addText(object, "program", proof.program);
    addText(object, "detail", proof.detail);
    return object;
}

} // namespace

Json toJson(const LaunchPlan &plan) {
    Json object = Json::object();
    addText(object, "route", plan.route);
    addText(object, "emulator", plan.emulator);
    addText(object, "flavour", plan.flavour);
    addText(object, "program", plan.program);
    object["arguments"] = jsonTexts(plan.arguments);
    addText(object, "workingDirectory", plan.workingDirectory);
    Json files = Json::array();
    for (const GeneratedFile &file : plan.files) {
        Json entry = Json::object();
        entry["path"] = jsonText(file.path);
        entry["isExecutable"] = file.executable;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder(file.content);
        if (decoder.hasError())
            entry["contentBase64"] = file.content.toBase64().toStdString();
        else
            entry["content"] = jsonText(text);
        files.push_back(std::move(entry));
    }
    object["files"] = std::move(files);
    object["preparations"] = jsonTexts(plan.preparations);
    object["proof"] = toJson(plan.proof);
    Json decisions = Json::array();
    for (const LaunchDecision &decision : plan.decisions) {
        Json entry = Json::object();
        entry["subject"] = jsonText(decision.subject);
        entry["choice"] = jsonText(decision.choice);
        entry["reason"] = jsonText(decision.reason);
        decisions.push_back(std::move(entry));
    }
    object["decisions"] = std::move(decisions);
    return object;
}

} // namespace ludarium
