#include "Services/Launch/AdditionalApp.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Models/LaunchError.h"
#include "Services/Launch/GameFolders.h"

#include <QFileInfo>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

bool isSoundtrack(const AdditionalApplication &app) {
    const QString name = app.name.toLower();
    return name.contains(u"soundtrack"_s) || name.contains(u"music"_s);
}

QString extensionOf(const QString &path) {
    return QFileInfo(path).suffix().toLower();
}

/// "run.bsh", else "run.command", in a folder; empty when it has neither. `where` ends the log line.
QString runScript(const QString &folder, const QString &where) {
    if (folder.isEmpty())
        return {};
    for (const QString &name : {u"run.bsh"_s, u"run.command"_s})
        if (const QString path = folder + u'/' + name; QFileInfo(path).isFile()) {
            Log::info(u"   ✅ Found %1%2"_s.arg(name, where));
            return path;
        }
    return {};
}

QString videoScript(const QString &path, const Game &game, const QString &collection) {
    const QStringList pieces = pathComponents(path);
    const qsizetype videos = pieces.indexOf(u"Videos"_s);
    const QString name = videos < 0 ? QString() : pieces.value(videos + 1);
    const QString folder = pathInside(collection, {u"eXo"_s, u"Videos"_s, name}).value_or(QString());
    Log::info(u"   📂 Checking video folder: %1"_s.arg(folder));
    QString script = runScript(folder, {});
    if (!script.isEmpty())
        return script;
    Log::info(u"   ⚠️  No run.bsh or run.command found in video folder"_s);
    if (game.configurationPath.isEmpty())
        return {};
    const QString other = GameFolders::scriptFolder(game.configurationPath, collection);
    Log::info(u"   📂 Fallback: Checking config folder: %1"_s.arg(other));
    return runScript(other, u" in config folder"_s);
}

/// The collection's scripts for Windows have twins of the same name.
QString twinOfBatchFile(const QString &path, const QString &system) {
    Log::info(u"   ⚠️  Found .bat file, looking for %1 equivalent..."_s.arg(system));
    const QString stem = path.chopped(4);
    for (const QString &extension : {u".bsh"_s, u".command"_s})
        if (QFileInfo(stem + extension).isFile()) {
            Log::info(u"   ✅ Found %1 version: %2"_s.arg(extension, stem + extension));
            return stem + extension;
        }
    Log::info(u"   ❌ No %1 version found"_s.arg(system));
    throw LaunchError(LaunchError::Case::unsupportedFileType,
                      u"Windows batch file (.bat) found, but no %1 equivalent (.bsh or .command) exists in the same "
                      "directory."_s.arg(system));
}

} // namespace

AdditionalApp::Action AdditionalApp::likelyAction(const AdditionalApplication &app) {
    if (isSoundtrack(app))
        return Action::soundtrack;
    const QString extension = extensionOf(app.applicationPath);
    return extension == u"bat" || extension == u"bsh" || extension == u"command" ? Action::script : Action::document;
}

AdditionalApp AdditionalApp::find(const AdditionalApplication &app, const Game &game, const QString &collection,
                                  const QString &system) {
    if (collection.isEmpty() || app.applicationPath.isEmpty())
        throw LaunchError(LaunchError::Case::noApplicationPath);
    Log::info(u"🎬 Additional app launch request:"_s);
    Log::info(u"   Name: %1"_s.arg(app.name));
    Log::info(u"   Game: %1"_s.arg(game.title));
    Log::info(u"   Original path: %1"_s.arg(app.applicationPath));
    const QString extension = extensionOf(app.applicationPath);
    Log::info(u"   Extension: %1"_s.arg(extension));
    if (isSoundtrack(app)) {
        Log::info(u"   🎵 Detected soundtrack - using native %1 playback"_s.arg(system));
        return {Action::soundtrack, {}};
    }
    if (app.name.toLower().contains(u"video"_s)) {
        Log::info(u"   🎬 Detected video - looking for run.bsh or run.command script"_s);
        if (const QString script = videoScript(app.applicationPath, game, collection); !script.isEmpty())
            return {Action::script, script};
    }
    // A path that leaves the collection names no file of it.
    const std::optional<QString> path = pathInside(collection, app.applicationPath);
    if (!path)
        throw LaunchError(LaunchError::Case::fileNotFound, app.applicationPath);
    if (extension == u"bat")
        return {Action::script, twinOfBatchFile(*path, system)};
    if (!QFileInfo::exists(*path))
        throw LaunchError(LaunchError::Case::fileNotFound, *path);
    if (extension == u"bsh" || extension == u"command")
        return {Action::script, *path};
    Log::info(u"   Opening with default application"_s);
    return {Action::document, *path};
}

} // namespace ludarium
