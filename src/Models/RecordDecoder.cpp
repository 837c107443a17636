#include "Models/RecordDecoder.h"

#include "Models/CollectionDate.h"
#include "Models/FieldTable.h"
#include "Models/FieldText.h"

#include <QUuid>

namespace ludarium {

namespace {

QString newId() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

void setDefault(QString &value, const QString &text) {
    if (value.isNull())
        value = text;
}

} // namespace

// --- Platform

namespace {
enum PlatformField : int {
    platformName,
    platformCategory,
    platformDeveloper,
    platformManufacturer,
    platformReleaseDate,
    platformNotes,
    platformEmulatorPath,
    platformDefaultEmulator
};
constexpr FieldTable platformFields({
    {"Name", platformName},
    {"Category", platformCategory},
    {"Developer", platformDeveloper},
    {"Manufacturer", platformManufacturer},
    {"ReleaseDate", platformReleaseDate},
    {"Notes", platformNotes},
    {"EmulatorPath", platformEmulatorPath},
    {"DefaultEmulator", platformDefaultEmulator},
});
} // namespace

template<>
int PlatformDecoder::field(std::string_view key) {
    return platformFields.find(key);
}

template<>
void PlatformDecoder::assign(int field, std::string_view text, bool again) {
    if (again)
        return;
    switch (PlatformField(field)) {
    case platformName:
        m_record.name = fieldText(text);
        break;
    case platformCategory:
        m_record.category = fieldText(text);
        break;
    case platformDeveloper:
        m_record.developer = fieldText(text);
        break;
    case platformManufacturer:
        m_record.manufacturer = fieldText(text);
        break;
    case platformReleaseDate:
        m_record.releaseDate = parseLeadingIsoDay(text);
        break;
    case platformNotes:
        m_record.notes = fieldText(text);
        break;
    case platformEmulatorPath:
        m_record.emulatorPath = fieldText(text);
        break;
    case platformDefaultEmulator:
        m_record.defaultEmulator = fieldText(text);
        break;
    }
}

template<>
void PlatformDecoder::applyDefaults() {
    setDefault(m_record.name, QStringLiteral("Unknown"));
}

// --- Playlist

namespace {
enum PlaylistField : int {
    playlistId,
    playlistName,
    playlistNotes,
    playlistSortOrder,
    playlistGameId,
    playlistNestedId,
    playlistAutoPopulate
};
constexpr FieldTable playlistFields({
    {"PlaylistId", playlistId},
    {"Name", playlistName},
    {"Notes", playlistNotes},
    {"SortOrder", playlistSortOrder},
    {"GameId", playlistGameId},
    {"NestedPlaylistId", playlistNestedId},
    {"AutoPopulate", playlistAutoPopulate},
});
} // namespace

template<>
int PlaylistDecoder::field(std::string_view key) {
    return playlistFields.find(key);
}

template<>
void PlaylistDecoder::assign(int field, std::string_view text, bool again) {
    if (field == playlistGameId)
        m_record.gameIds.append(fieldText(text));
    else if (field == playlistNestedId)
        m_record.nestedPlaylistIds.append(fieldText(text));
    if (again)
        return;
    switch (PlaylistField(field)) {
    case playlistId:
        m_record.id = fieldText(text);
        break;
    case playlistName:
        m_record.name = fieldText(text);
        break;
    case playlistNotes:
        m_record.description = fieldText(text);
        break;
    case playlistSortOrder:
        m_record.sortOrder = fieldInteger(text);
        break;
    case playlistAutoPopulate:
        m_record.autoPopulate = fieldFlag(text);
        break;
    case playlistGameId:
    case playlistNestedId:
        break;
    }
}

template<>
void PlaylistDecoder::applyDefaults() {
    if (m_record.id.isNull())
        m_record.id = newId();
    setDefault(m_record.name, QStringLiteral("Unnamed Playlist"));
}

// --- PlaylistGame

namespace {
enum PlaylistGameField : int { linkGameId, linkPlaylistId, linkManualOrder };
constexpr FieldTable playlistGameFields({
    {"GameId", linkGameId},
    {"PlaylistId", linkPlaylistId},
    {"ManualOrder", linkManualOrder},
});
} // namespace

template<>
int PlaylistGameDecoder::field(std::string_view key) {
    return playlistGameFields.find(key);
}

template<>
void PlaylistGameDecoder::assign(int field, std::string_view text, bool again) {
    if (again)
        return;
    switch (PlaylistGameField(field)) {
    case linkGameId:
        m_record.gameId = fieldText(text);
        break;
    case linkPlaylistId:
        m_record.playlistId = fieldText(text);
        break;
    case linkManualOrder:
        m_record.order = fieldInteger(text);
        break;
    }
}

template<>
void PlaylistGameDecoder::applyDefaults() {
    setDefault(m_record.gameId, QLatin1String(""));
    setDefault(m_record.playlistId, QLatin1String(""));
}

// --- PlaylistFilter

namespace {
enum PlaylistFilterField : int { filterValue, filterFieldKey, filterComparisonTypeKey };
constexpr FieldTable playlistFilterFields({
    {"Value", filterValue},
    {"FieldKey", filterFieldKey},
    {"ComparisonTypeKey", filterComparisonTypeKey},
});
} // namespace

template<>
int PlaylistFilterDecoder::field(std::string_view key) {
    return playlistFilterFields.find(key);
}

template<>
void PlaylistFilterDecoder::assign(int field, std::string_view text, bool again) {
    if (again)
        return;
    switch (PlaylistFilterField(field)) {
    case filterValue:
        m_record.value = fieldText(text);
        break;
    case filterFieldKey:
        m_record.fieldKey = fieldText(text);
        break;
    case filterComparisonTypeKey:
        m_record.comparisonType = fieldText(text);
        break;
    }
}

template<>
void PlaylistFilterDecoder::applyDefaults() {
    setDefault(m_record.fieldKey, QLatin1String(""));
}

// --- AdditionalApplication

namespace {
enum ApplicationField : int {
    applicationId,
    applicationGameId,
    applicationName,
    applicationPath,
    applicationCommandLine,
    applicationAutoRunBefore,
    applicationAutoRunAfter,
    applicationWaitForExit,
    applicationPlayCount,
    applicationPriority,
    applicationSideA,
    applicationSideB
};
constexpr FieldTable applicationFields({
    {"Id", applicationId},
    {"GameID", applicationGameId},
    {"Name", applicationName},
    {"ApplicationPath", applicationPath},
    {"CommandLine", applicationCommandLine},
    {"AutoRunBefore", applicationAutoRunBefore},
    {"AutoRunAfter", applicationAutoRunAfter},
    {"WaitForExit", applicationWaitForExit},
    {"PlayCount", applicationPlayCount},
    {"Priority", applicationPriority},
    {"SideA", applicationSideA},
    {"SideB", applicationSideB},
});
} // namespace

template<>
int AdditionalApplicationDecoder::field(std::string_view key) {
    return applicationFields.find(key);
}

template<>
void AdditionalApplicationDecoder::assign(int field, std::string_view text, bool again) {
    if (again)
        return;
    switch (ApplicationField(field)) {
    case applicationId:
        m_record.id = fieldText(text);
        break;
    case applicationGameId:
        m_record.gameId = fieldText(text);
        break;
    case applicationName:
        m_record.name = fieldText(text);
        break;
    case applicationPath:
        m_record.applicationPath = fieldText(text);
        break;
    case applicationCommandLine:
        m_record.commandLine = fieldText(text);
        break;
    case applicationAutoRunBefore:
        m_record.autoRunBefore = fieldFlag(text);
        break;
    case applicationAutoRunAfter:
        m_record.autoRunAfter = fieldFlag(text);
        break;
    case applicationWaitForExit:
        m_record.waitForExit = fieldFlag(text);
        break;
    case applicationPlayCount:
        m_record.playCount = fieldInteger(text).value_or(0);
        break;
    case applicationPriority:
        m_record.priority = fieldInteger(text);
        break;
    case applicationSideA:
        m_record.sideA = fieldFlag(text);
        break;
    case applicationSideB:
        m_record.sideB = fieldFlag(text);
        break;
    }
}

template<>
void AdditionalApplicationDecoder::applyDefaults() {
    if (m_record.id.isNull())
        m_record.id = newId();
    setDefault(m_record.gameId, QLatin1String(""));
    setDefault(m_record.name, QStringLiteral("Unknown"));
}

} // namespace ludarium
