#include "Services/Dos/DosPlanner.h"

#include "Host/AppLogger.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/ScriptFolderConfig.h"

#include <QFile>
#include <QUuid>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

QString newAdaptedPath(const DosSettings &settings) {
    return childPath(
        settings.temporaryDirectory,
        QStringLiteral("adapted_%1.conf").arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()));
}

QByteArray readConfiguration(FolderView &view, const QString &path) {
    if (const std::optional<QByteArray> text = view.read(path))
        return *text;
    // Opened once more for the reason alone; what is no regular file might block there.
    int reason = EIO;
    if (view.isFile(path)) {
        const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        reason = descriptor < 0 ? errno : EFBIG;
        if (descriptor >= 0)
            ::close(descriptor);
    }
    throw std::system_error(reason, std::generic_category(), QFile::encodeName(path).toStdString());
}

namespace {

/// The version's folder inside the game's, null when it has none.
QString versionFolder(const DosLaunchRequest &request, FolderView &view) {
    if (!request.version || request.version->workingDirectory.isEmpty())
        return {};
    return view.resolve(request.gameDataFolder, request.version->workingDirectory);
}

} // namespace

DosConfigurationChoice chooseDosConfiguration(const DosPlanInput &input, FolderView &view) {
    using Kind = DosConfigurationChoice::Kind;
    const DosLaunchRequest &request = input.request;
    DosConfigurationChoice choice;
    choice.gameDataFolder = request.gameDataFolder;
    const auto chosen = [&](Kind kind, const QString &path, const QString &reason) {
        choice.kind = kind;
        choice.confPath = path;
        choice.decisions.append({QStringLiteral("configuration"), path, reason});
        return choice;
    };
    if (request.version) {
        const QString reason = request.version->isOnlyOne ? QStringLiteral("the only version known")
                                                          : QStringLiteral("chosen by the user");
        const QString &origin = request.version->origin;
        choice.decisions.append({QStringLiteral("version"), request.version->label,
                                 origin.isEmpty() ? reason : reason + QStringLiteral(", ") + origin});
    }
    // The spellings as listed go first; another one serves as well as it did on the collection's own system.
    const QStringList names{QStringLiteral("dosbox.conf"), QStringLiteral("DOSBOX.CONF"), QStringLiteral("Dosbox.conf"),
                            QStringLiteral("launch.conf"), QStringLiteral("game.conf")};
    for (const bool exact : {true, false})
        for (const QString &name : names) {
            const QString found = view.find(request.gameDataFolder, name);
            if (found.isNull() || (exact && found != name))
                continue;
            const QString path = childPath(request.gameDataFolder, found);
            if (view.isFile(path))
                return chosen(Kind::gameFolder, path, QStringLiteral("lies in the game's folder"));
        }
    if (const QString script = view.resolve(request.scriptFolder, QStringLiteral("dosbox.conf")); view.isFile(script)) {
        const QString adapted = newAdaptedPath(input.settings);
        choice.generated = adaptScriptFolderConfig(readConfiguration(view, script), input.settings,
                                                   request.gameDataFolder, request.collection, view);
        choice.originalScriptConfig = script;
        choice.decisions.append({QStringLiteral("original configuration"), script,
                                 QStringLiteral("the game's folder has none; adapted from the script folder")});
        return chosen(Kind::scriptFolder, adapted, QStringLiteral("adapted for this launch"));
    }
    Log::warning(
        QStringLiteral("⚠️ No dosbox.conf found in %1 or script folder - falling back to script-based launch")
            .arg(request.gameDataFolder));
    Log::info(QStringLiteral("🎮 Direct launch (no scripts) for: %1").arg(request.game->title));
    if (const QString folder = versionFolder(request, view); !folder.isNull()) {
        Log::info(QStringLiteral("   Using version folder: %1").arg(request.version->workingDirectory));
        choice.gameDataFolder = folder;
    } else if (request.version && !request.version->workingDirectory.isEmpty()) {
        Log::info(QStringLiteral("   Version folder '%1' not found - using game root")
                      .arg(request.version->workingDirectory));
    }
    if (const QString conf = view.resolve(choice.gameDataFolder, QStringLiteral("dosbox.conf")); view.isFile(conf)) {
        Log::info(QStringLiteral("   Found dosbox.conf in version folder"));
        return chosen(Kind::versionFolder, conf, QStringLiteral("lies in the version's folder"));
    }
    Log::info(QStringLiteral("   Creating minimal DOSBox config for direct launch"));
    const QString name = generatedConfigName(lastPathComponent(choice.gameDataFolder), QStringLiteral("_minimal.conf"));
    return chosen(Kind::minimal, childPath(input.settings.temporaryFolder, name),
                  QStringLiteral("the game has no configuration"));
}

FolderPreparation planDosPreparation(const DosPlanInput &input, const DosConfigurationChoice &choice,
                                     FolderView &view) {
    const DosLaunchRequest &request = input.request;
    FolderPreparation preparation;
    preparation.gameFolder = request.gameDataFolder;
    QString folder;
    switch (choice.kind) {
    case DosConfigurationChoice::Kind::versionFolder:
        return preparation;
    case DosConfigurationChoice::Kind::minimal:
        folder = choice.gameDataFolder;
        break;
    case DosConfigurationChoice::Kind::gameFolder:
    case DosConfigurationChoice::Kind::scriptFolder:
        folder = request.version && !request.version->workingDirectory.isEmpty() ? versionFolder(request, view)
                                                                                 : request.gameDataFolder;
    }
    // A version's folder that is not there has nothing to prepare.
    if (folder.isNull())
        return preparation;
    executeSetupDeleteCommands(preparation, view, folder, request.version);
    FolderPreparation copies{request.gameDataFolder, {}};
    copyAudioDriverFiles(copies, view, folder, request.version);
    pretend(copies, view);
    preparation.steps += copies.steps;
    return preparation;
}

} // namespace ludarium
