#pragma once

#include "Host/Setting.h"

/// Every key of the settings store, declared once. Reads and writes name the descriptor, never a bare text. Values
/// are read each time they are needed, so a change takes effect at the next use.
namespace ludarium::Settings {

// --- Library and view
inline constexpr Setting<QString> collectionPath{"collectionPath"};
inline constexpr Setting<QByteArray> collectionBookmark{"collectionBookmark"};
inline constexpr Setting<bool> hasCompletedFirstRun{"hasCompletedFirstRun", false};
inline constexpr Setting<QString> viewMode{"viewMode", u"Grid"};
inline constexpr Setting<QString> gridSize{"gridSize", u"Medium"};
inline constexpr Setting<QString> sortOrder{"sortOrder", u"Title"};
inline constexpr Setting<bool> groupDuplicateGames{"groupDuplicateGames", true};
inline constexpr Setting<QMap<QString, double>> tableColumnWidths{"tableColumnWidths"}; ///< points, by column
inline constexpr Setting<QString> platformSortOrder{"platformSortOrder",
                                                    u"alphabetical"};  ///< "alphabetical" or "byGameCount"
inline constexpr Setting<QByteArray> platformGroups{"platformGroups"}; ///< JSON list of platform groups
inline constexpr Setting<bool> sidebarShown{"sidebarShown", true};
inline constexpr Setting<qint64> sidebarWidth{"sidebarWidth", 0}; ///< pixels at a text scale of 1; 0 suits the window
inline constexpr Setting<QStringList> sidebarCollapsedSections{
    "sidebarCollapsedSections"}; ///< titles, and `playlist:{id}`
inline constexpr Setting<QString> appTheme{
    "appTheme", u"System"}; ///< "System", "Retro Purple", "Ocean Blue", "Forest Green" or "Midnight Glass"
inline constexpr Setting<double> textScale{"textScale", 1}; ///< 1 to 2
inline constexpr Setting<bool> reducedMotion{"reducedMotion", false};
inline constexpr Setting<bool> spotlightIndexingEnabled{"spotlightIndexingEnabled", false};
inline constexpr Setting<QDateTime> spotlightLastIndexDate{"spotlightLastIndexDate"};
inline constexpr Setting<qint64> spotlightLastIndexedCount{"spotlightLastIndexedCount", 0};
inline constexpr Setting<bool> enableThumbnailDiskCache{"enableThumbnailDiskCache", true};
inline constexpr Setting<bool> dismissSlowLoadAlertPermanently{"dismissSlowLoadAlertPermanently", false};
inline constexpr Setting<bool> skipInstallCheck{
    "skipInstallCheck",
    false}; ///< Trust that every game is installed instead of looking at the disk during a full load

// --- User data, keyed by game id
inline constexpr Setting<QStringList> favoriteGames{"favoriteGames"};
inline constexpr Setting<QMap<QString, qint64>> playCounts{"playCounts"};
inline constexpr Setting<QMap<QString, double>> playTimes{"playTimes"}; ///< seconds
inline constexpr Setting<QMap<QString, QDateTime>> lastPlayedDates{"lastPlayedDates"};
inline constexpr Setting<QStringList> recentlyPlayedIds{"recentlyPlayedIds"};
inline constexpr Setting<QMap<QString, QString>> gameNotes{"gameNotes"};
inline constexpr Setting<QMap<QString, qint64>> gameRatings{"gameRatings"};
inline constexpr Setting<QMap<QString, qint64>> gameProgress{"gameProgress"};

// --- Older keys, only removed at a reset
inline constexpr Setting<QStringList> installedGames{"installedGames"};
inline constexpr Setting<QByteArray> cachedGamesData{"cachedGamesData"};
inline constexpr Setting<QString> cachedGamesVersion{"cachedGamesVersion"};
inline constexpr Setting<QStringList> compressedGames{"compressedGames"};
inline constexpr Setting<QString> retroachievements_username{"retroachievements_username"};
inline constexpr Setting<QString> retroachievements_apiKey{"retroachievements_apiKey"};

// --- Launch and emulators. An empty path means: search the usual places
inline constexpr Setting<QString> dosboxPath{"dosboxPath"};
inline constexpr Setting<QString> dosboxXPath{"dosboxXPath"};
inline constexpr Setting<QString> dreammPath{"dreammPath"};
inline constexpr Setting<QString> winePath{"winePath"};
inline constexpr Setting<QString> retroArchPath{"retroArchPath"};
inline constexpr Setting<QString> mamePath{"mamePath"};
inline constexpr Setting<QString> ryujinxPath{"ryujinxPath"};
inline constexpr Setting<QString> cemuPath{"cemuPath"};
inline constexpr Setting<QString> rpcs3Path{"rpcs3Path"};
inline constexpr Setting<QString> vita3kPath{"vita3kPath"};
inline constexpr Setting<QString> pcsx2Path{"pcsx2Path"};
inline constexpr Setting<QString> citraPath{"citraPath"};
inline constexpr Setting<bool> launchFullscreen{"launchFullscreen", true};
inline constexpr Setting<bool> disableCRTEffects{"disableCRTEffects", false};
inline constexpr Setting<bool> preferStandaloneMAME{"preferStandaloneMAME", false};
inline constexpr Setting<QString> appleIIGSEmulator{"appleIIGSEmulator", u"MAME"}; ///< "MAME" or "GSplus"
inline constexpr Setting<QMap<QString, QString>> platformROMPaths{"platformROMPaths"};
inline constexpr Setting<QByteArray> customGameExceptions{"customGameExceptions"};
inline constexpr Setting<QByteArray> gameCheatsConfig{"gameCheatsConfig"};
inline constexpr Setting<QByteArray> gameShaderConfigs{"gameShaderConfigs"};
inline constexpr Setting<bool> mt32NotificationsDisabled{"mt32NotificationsDisabled", false};
inline constexpr Setting<bool> disablePostLaunchFeedback{"disablePostLaunchFeedback", false};
inline constexpr Setting<QByteArray> pendingAutoDetectFeedback{"pendingAutoDetectFeedback"}; ///< JSON list of maps
inline constexpr Setting<QByteArray> communityFixesCache{"communityFixesCache"};
inline constexpr Setting<QByteArray> pendingGameFixes{"pendingGameFixes"};
inline constexpr Setting<QDateTime> lastGameFixesFetch{"lastGameFixesFetch"};
inline constexpr Setting<QDateTime> biosLastScanDate{"biosLastScanDate"};
inline constexpr Setting<bool> coreAutoCheckEnabled{"coreAutoCheckEnabled", false};
inline constexpr Setting<bool> coreAutoUpdateEnabled{"coreAutoUpdateEnabled", false};
inline constexpr Setting<QDateTime> coreUpdateLastCheck{"coreUpdateLastCheck"};
inline constexpr Setting<QDateTime> emulatorHealthLastCheck{"emulatorHealthLastCheck"};

// --- Services
inline constexpr Setting<QString> screenscraper_username{"screenscraper_username"};
inline constexpr Setting<QString> screenscraper_password{"screenscraper_password"};
inline constexpr Setting<QString> raUsername{"raUsername"};
inline constexpr Setting<QString> raApiKey{"raApiKey"};
inline constexpr Setting<QString> brightGuildApiKey{"brightGuildApiKey"};
inline constexpr Setting<bool> cloudSyncEnabled{"cloudSyncEnabled", false};
inline constexpr Setting<bool> cloudAutoSyncEnabled{"cloudAutoSyncEnabled", false};
inline constexpr Setting<QDateTime> cloudLastSyncDate{"cloudLastSyncDate"};
inline constexpr Setting<bool> enableSeeding{"enableSeeding", false};
inline constexpr Setting<qint64> seedingUploadLimit{"seedingUploadLimit", 0}; ///< 0 means no limit
inline constexpr Setting<bool> logUploadConsent{"logUploadConsent", false};
inline constexpr Setting<QString> logUploadURL{"logUploadURL"};
inline constexpr Setting<bool> SUAutomaticallyChecksForUpdates{"SUAutomaticallyChecksForUpdates", true};

// --- Shell
inline constexpr Setting<bool> musicEnabled{"musicEnabled", true};
inline constexpr Setting<bool> musicAutoplay{"musicAutoplay", true};
inline constexpr Setting<bool> musicMuted{"musicMuted", false};
inline constexpr Setting<double> musicVolume{"musicVolume", 0.5}; ///< 0 to 1; a stored 0 counts as unset
inline constexpr Setting<bool> menuBarEnabled{"menuBarEnabled", false};
inline constexpr Setting<qint64> menuBarRecentGamesCount{"menuBarRecentGamesCount",
                                                         5}; ///< a value below 1 counts as unset
inline constexpr Setting<bool> screensaverEnabled{"screensaverEnabled", false};
inline constexpr Setting<QString> screensaverMode{"screensaverMode", u"Bouncing Images"};
inline constexpr Setting<qint64> screensaverIdleTimeout{"screensaverIdleTimeout", 5}; ///< minutes

// --- Families of keys: one key for each platform or game
inline Setting<QString> retroArchCoreOverride(QByteArray &keyStorage, const QString &platform) {
    keyStorage = "retroarch_core_override_" + platform.toUtf8();
    return {keyStorage.constData()};
}
inline Setting<QString> retroArchGameCore(QByteArray &keyStorage, const QString &gameId) {
    keyStorage = "retroarch_game_core_" + gameId.toUtf8();
    return {keyStorage.constData()};
}
inline Setting<bool> mt32NotificationShown(QByteArray &keyStorage, const QString &game) {
    keyStorage = "mt32NotificationShown_" + game.toUtf8();
    return {keyStorage.constData()};
}

} // namespace ludarium::Settings
