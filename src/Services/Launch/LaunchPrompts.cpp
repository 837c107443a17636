#include "Services/Launch/LaunchPrompts.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Host/Workspace.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Emulators/Mt32Roms.h"
#include "Services/Emulators/PackageManager.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView eceChoiceText =
    u"This game is marked for %1 in eXoDOS, which may indicate it needs specific CPU timing or features.\n\nDOSBox "
    "Staging (Recommended): Native %2 emulator with excellent graphics and performance. Most ECE games work fine, "
    "but timing-sensitive games may have issues.\n\nWine + %1: Runs original Windows DOSBox for accurate timing. "
    "However, graphics rendering through Wine often has visual glitches on %2.\n\nTry Staging first - if the game "
    "has timing issues (wrong speed, hangs, glitches), try Wine+ECE.";
constexpr QStringView noWineText =
    u"\"%1\" is designed for DOSBox ECE, which requires Wine to run on %2.\n\nWine is not installed. To install "
    "it:\n  %3\n\nYou can try launching with DOSBox Staging instead, but the game may not "
    "work correctly.";
constexpr QStringView noBuildText =
    u"\"%1\" is designed for DOSBox ECE, but the required DOSBox ECE files were not found in the collection.\n\nYou "
    "can try launching with DOSBox Staging instead, but the game may not work correctly.";
constexpr QStringView mt32Text =
    u"\"%1\" supports Roland MT-32 audio for enhanced music.\n\nTo enable MT-32 audio, you need:\n%2\n\nYou can "
    "install these in Settings → Dependencies.\n\nThe game will still play with standard audio.";

QString bulleted(const QStringList &items) {
    QStringList lines;
    for (const QString &item : items)
        lines.append(u"• "_s + item);
    return lines.join(u'\n');
}

/// What a person types to get Wine: the distribution's own, where its package manager is known.
QString wineCommand(const HostPaths &paths) {
    const PackageManager::Kind kind = findPackageManager(paths).kind;
    const bool distribution = kind != PackageManager::Kind::none && kind != PackageManager::Kind::homebrew;
    return distribution ? installCommand(kind, {u"wine"_s})
                        : emulatorInstallCommand(EmulatorProgram::wine, paths.layout());
}

/// What is remembered of a notice is worth no failed launch.
void keep(const Host *host, const Setting<bool> &setting) {
    try {
        host->settings.setValue(setting, true);
    } catch (const SettingsError &error) {
        Log::error(u"The MT-32 notice will come again: %1"_s.arg(QString::fromUtf8(error.what())));
    }
}

QCoro::Task<> showMT32Notification(const Host *host, GamePtr game, QStringList missingItems) {
    Alert alert;
    alert.title = u"MT-32 Audio Available"_s;
    alert.text = mt32Text.toString().arg(game->title, bulleted(missingItems));
    alert.buttons = QStringList{u"Open Settings"_s, u"Don't Show Again"_s, u"Continue"_s};
    const int answer = co_await host->dialogs.ask(alert);
    if (answer == 0) {
        if (const QUrl address(host->paths.systemSettingsAddress()); address.isValid() && !address.isEmpty())
            host->workspace.openUrl(address);
        host->notifications.post(Notifications::openDependenciesSettings);
    } else if (answer == 1) {
        keep(host, Settings::mt32NotificationsDisabled);
    }
}

} // namespace

QCoro::Task<ECELaunchChoice> LaunchPrompts::promptECELaunchChoice(const Host *host, GamePtr game,
                                                                  EmulatorType emulatorType) {
    const QString emulator = emulatorTypeName(emulatorType);
    Alert alert;
    alert.title = u"Choose Emulator for "_s + game->title;
    alert.text = eceChoiceText.toString().arg(emulator, host->paths.systemName());
    alert.buttons = QStringList{eceChoiceStagingButton.toString(), u"Wine + "_s + emulator, u"Cancel"_s};
    const int answer = co_await host->dialogs.ask(alert);
    if (answer == 0)
        co_return ECELaunchChoice::staging;
    co_return answer == 1 ? ECELaunchChoice::wineECE : ECELaunchChoice::cancelled;
}

QCoro::Task<ECELaunchChoice> LaunchPrompts::promptWineECENotAvailable(const Host *host, GamePtr game, bool hasWine) {
    Alert alert;
    alert.title = u"Wine + DOSBox ECE Required"_s;
    if (hasWine) {
        alert.text = noBuildText.toString().arg(game->title);
    } else {
        const auto look = [paths = host->paths] { return wineCommand(paths); };
        const QString command = co_await runOnPool(look);
        alert.text = noWineText.toString().arg(game->title, host->paths.systemName(), command);
    }
    alert.buttons = QStringList{eceMissingStagingButton.toString(), u"Cancel"_s};
    alert.style = Alert::Style::Critical;
    const int answer = co_await host->dialogs.ask(alert);
    if (answer == 0) {
        Log::info(u"🎮 User chose to try DOSBox Staging for ECE game"_s);
        co_return ECELaunchChoice::staging;
    }
    Log::info(u"🎮 User cancelled ECE game launch (Wine+ECE not available)"_s);
    co_return ECELaunchChoice::cancelled;
}

QCoro::Task<> LaunchPrompts::checkMT32Support(const Host *host, const EmulatorManager *emulators, GamePtr game) {
    Log::info(u"🎹 Game '%1' supports MT-32 audio"_s.arg(game->title));
    const auto look = [paths = host->paths] { return checkMT32Roms(paths); };
    const bool roms = co_await runOnPool(look);
    const bool staging = emulators->findDOSBoxStaging().has_value();
    if (staging && roms) {
        Log::info(u"   ✅ DOSBox Staging + MT-32 ROMs detected - MT-32 audio enabled"_s);
        co_return;
    }
    QStringList missingItems;
    if (!staging)
        missingItems.append(u"DOSBox Staging"_s);
    if (!roms)
        missingItems.append(u"MT-32 ROMs"_s);
    Log::info(u"   ⚠️ Missing for MT-32 audio: %1"_s.arg(missingItems.join(u", "_s)));
    Log::info(u"   💡 Install via Settings → Dependencies for enhanced audio"_s);
    QByteArray key;
    const Setting<bool> shown = Settings::mt32NotificationShown(key, game->id);
    if (host->settings.value(shown) || host->settings.value(Settings::mt32NotificationsDisabled))
        co_return;
    co_await showMT32Notification(host, game, missingItems);
    keep(host, shown);
}

} // namespace ludarium
