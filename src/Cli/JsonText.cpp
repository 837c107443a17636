#include "Cli/JsonText.h"

#include "Cli/Output.h"
#include "Models/Game.h"
#include "Models/LaunchPlan.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

#include <QStringDecoder>
#include <cmath>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

void addLongText(Json &object, const char *key, const LongText &text) {
    if (!text.isNull())
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

/// One element as UTF-8. JSON leaves DEL and the C1 control characters as they are; a terminal obeys them.
QByteArray serialized(const Json &json, int indent) {
    const std::string text = json.dump(indent, ' ', false, Json::error_handler_t::replace);
    QByteArray result;
    result.reserve(qsizetype(text.size()));
    for (size_t i = 0; i < text.size(); ++i) {
        const uchar byte = uchar(text[i]);
        if (byte == 0x7F)
            result += "\\u007f";
        else if (byte == 0xC2 && i + 1 < text.size() && uchar(text[i + 1]) < 0xA0)
            result += "\\u00" + QByteArray::number(uint(uchar(text[++i])), 16);
        else
            result += text[i];
    }
    return result;
}

} // namespace

Json jsonText(const QString &text) {
    return text.toStdString();
}

void addText(Json &object, const char *key, const QString &text) {
    if (!text.isNull())
        object[key] = jsonText(text);
}

Json jsonTexts(const QStringList &texts) {
    Json list = Json::array();
    for (const QString &text : texts)
        list.push_back(jsonText(text));
    return list;
}

void addInstant(Json &object, const char *key, const std::optional<QDateTime> &moment) {
    if (moment && moment->isValid())
        object[key] = moment->toUTC().toString(Qt::ISODate).toStdString();
}

Json toJson(const Game &game) {
    Json object = Json::object();
    addText(object, "ID", game.id);
    addText(object, "Title", game.title);
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

    object["favorite"] = game.isFavorite;
    object["installed"] = game.isInstalled;
    object["compressed"] = game.isCompressed;
    object["downloadable"] = game.isDownloadable;
    addText(object, "downloadSize", game.downloadSize);
    object["playCount"] = game.playCount;
    addNumber(object, "playTime", std::optional(game.playTime));
    addInstant(object, "lastPlayed", game.lastPlayed);
    object["gameProgress"] = int(game.gameProgress);
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
    addText(object, "Id", application.id);
    addText(object, "GameID", application.gameId);
    addText(object, "Name", application.name);
    addText(object, "ApplicationPath", application.applicationPath);
    addText(object, "CommandLine", application.commandLine);
    object["AutoRunBefore"] = application.autoRunBefore;
    object["AutoRunAfter"] = application.autoRunAfter;
    object["WaitForExit"] = application.waitForExit;
    object["PlayCount"] = application.playCount;
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
    if (platform.releaseDate && platform.releaseDate->isValid())
        addText(object, "ReleaseDate", platform.releaseDate->toString(Qt::ISODate));
    addText(object, "Notes", platform.notes);
    addText(object, "EmulatorPath", platform.emulatorPath);
    addText(object, "DefaultEmulator", platform.defaultEmulator);
    return object;
}

Json toJson(const Playlist &playlist) {
    Json object = Json::object();
    addText(object, "PlaylistId", playlist.id);
    addText(object, "Name", playlist.name);
    addText(object, "Notes", playlist.description);
    addNumber(object, "SortOrder", playlist.sortOrder);
    object["GameId"] = jsonTexts(playlist.gameIds);
    object["NestedPlaylistId"] = jsonTexts(playlist.nestedPlaylistIds);
    object["AutoPopulate"] = playlist.autoPopulate;
    Json filters = Json::array();
    for (const PlaylistFilter &filter : playlist.filters) {
        Json entry = Json::object();
        addText(entry, "Value", filter.value);
        entry["FieldKey"] = jsonText(filter.fieldKey);
        entry["ComparisonTypeKey"] = jsonText(filter.comparisonType);
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
    object["route"] = jsonText(plan.route);
    object["emulator"] = jsonText(plan.emulator);
    object["flavour"] = jsonText(plan.flavour);
    object["program"] = jsonText(plan.program);
    object["arguments"] = jsonTexts(plan.arguments);
    object["workingDirectory"] = jsonText(plan.workingDirectory);
    Json files = Json::array();
    for (const GeneratedFile &file : plan.files) {
        Json entry = Json::object();
        entry["path"] = jsonText(file.path);
        entry["executable"] = file.executable;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder(file.content);
        if (decoder.hasError())
            entry["contentBase64"] = file.content.toBase64().toStdString();
        else
            entry["content"] = jsonText(text);
        files.push_back(std::move(entry));
    }
    object["files"] = std::move(files);
    object["proof"] = toJson(plan.proof);
    object["preparations"] = jsonTexts(plan.preparations);
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

Json jsonDocument() {
    Json document = Json::object();
    document["schema"] = jsonSchema;
    return document;
}

void printJson(Output &output, const Json &document) {
    output.write(serialized(document, 2) + '\n');
}

JsonList::JsonList(Output &output, const char *key) : m_output(output) {
    m_output.write("{\"schema\":" + QByteArray::number(jsonSchema) + ",\"" + key + "\":[");
}

void JsonList::add(const Json &element) {
    m_output.write(m_first ? "\n" : ",\n");
    m_output.write(serialized(element, -1));
    m_first = false;
}

void JsonList::finish() {
    m_output.write("\n]}\n");
}

} // namespace ludarium
