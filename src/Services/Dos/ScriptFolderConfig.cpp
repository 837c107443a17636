#include "Services/Dos/ScriptFolderConfig.h"

#include "Host/AppLogger.h"
#include "Services/Dos/DiscImages.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/ExecutableDetection.h"

#include <QFile>
#include <algorithm>

namespace ludarium {

namespace {

constexpr QByteArrayView collectionPath(".\\eXoDOS\\");

/// The line with each collection path in it absolute and quoted. What has been written is passed over.
QByteArray withAbsolutePaths(FolderView &view, QByteArray rest, const QString &collection) {
    QByteArray result;
    for (qsizetype start = rest.indexOf(collectionPath); start >= 0; start = rest.indexOf(collectionPath)) {
        const bool quoted = start > 0 && rest[start - 1] == '"';
        qsizetype end = rest.size();
        if (quoted) {
            const qsizetype quote = rest.indexOf('"', start);
            end = quote < 0 ? end : quote;
        } else {
            for (qsizetype blank = rest.indexOf(' ', start); blank >= 0; blank = rest.indexOf(' ', blank + 1)) {
                const QByteArray behind = rest.mid(blank + 1);
                if (behind.startsWith('-') || behind.startsWith(".\\")) {
                    end = blank;
                    break;
                }
            }
        }
        const QByteArray path = rest.mid(start + 2, end - start - 2).replace('\\', '/');
        result += rest.left(quoted ? start - 1 : start);
        result += quotedHostPath(
            collectionPathOf(view, childPath(collection, QStringLiteral("eXo")), hostNameFrom(path), collection));
        rest = rest.mid(quoted && end < rest.size() ? end + 1 : end);
    }
    return result + rest;
}

/// Whether a line may call a menu script.
bool isCallCandidate(const QByteArray &lower) {
    for (const char *name : {"call run.bat", "call menu.bat", "call start.bat", "call select.bat", "call launch.bat"})
        if (lower.contains(name))
            return true;
    const qsizetype run = lower.lastIndexOf("call run");
    if (run < 0 || lower.contains(".exe"))
        return false;
    const QByteArray behind = lower.mid(run + 8);
    return behind.isEmpty() || behind.startsWith(' ') || behind.startsWith('"');
}

bool isMenu(const QByteArray &batch) {
    const QByteArray lower = batch.toLower();
    for (const char *marker : {"choice", "if errorlevel", "goto ", ":label", "echo 1)", "echo 2)", "echo a)", "echo b)",
                               "echo select", "echo choose"})
        if (lower.contains(marker))
            return true;
    return false;
}

/// Whether the line calls a batch file that is a menu. Its questions belong to the collection's own scripts.
bool callsMenu(FolderView &view, const QByteArray &line, const QString &gameDataFolder) {
    QByteArray text = line;
    text.replace("@", "");
    const qsizetype call = text.toLower().indexOf("call ");
    const QString name = hostNameFrom(text.mid(call + 5).trimmed());
    for (const QString &file : {name, name + QStringLiteral(".bat"), name.toUpper() + QStringLiteral(".BAT")})
        if (const auto batch = view.read(view.resolve(gameDataFolder, file))) {
            if (isMenu(*batch)) {
                Log::info(QStringLiteral("   Skipping menu script call: %1").arg(QString::fromLatin1(line)));
                return true;
            }
            Log::info(QStringLiteral("   Batch file '%1' is a simple launcher, NOT a menu — keeping it").arg(name));
            return false;
        }
    // A batch file that cannot be read may be anything, on a drive that is yet to be mounted too. The line stays: at
    // worst DOSBox reports a bad command, while without it a launcher that it finds would never run.
    return false;
}

} // namespace

QByteArray adaptScriptFolderConfig(const QByteArray &configuration, const DosSettings &settings,
                                   const QString &gameDataFolder, const QString &collection, FolderView &view) {
    QByteArrayList result;
    bool inAutoexec = false;
    bool skippedMenu = false;
    for (const QByteArray &raw : configuration.split('\n')) {
        const QByteArray ending = raw.endsWith('\r') ? "\r" : "";
        const QByteArray line = ending.isEmpty() ? raw : raw.chopped(1);
        const QByteArray trimmed = line.trimmed();
        const QByteArray lower = trimmed.toLower();
        if (lower == "[autoexec]")
            inAutoexec = true;
        else if (trimmed.startsWith('['))
            inAutoexec = false;
        if (!inAutoexec) {
            if (lower.startsWith("fullscreen")) {
                result.append((settings.fullscreen ? "fullscreen=true" : "fullscreen=false") + ending);
                continue;
            }
            result.append(raw);
            if (lower.startsWith("[render]") && settings.crtEffects)
                result.append("glshader=crt-lottes" + ending);
            continue;
        }
        refuseImagesOutside(line, collection);
        if (line.contains(collectionPath)) {
            const QByteArray adapted = withAbsolutePaths(view, line, collection);
            Log::info(QStringLiteral("   Path adapted: %1").arg(QString::fromUtf8(adapted)));
            result.append(adapted + ending);
        } else if (lower.startsWith("cd ..") || lower == "@cd ..") {
            continue;
        } else if (isCallCandidate(lower) && callsMenu(view, trimmed, gameDataFolder)) {
            skippedMenu = true;
        } else {
            result.append(raw);
        }
    }
    if (skippedMenu) {
        Log::info(QStringLiteral("   Menu script was skipped, trying to auto-detect executable..."));
        if (const auto detected = autoDetectExecutable(view, gameDataFolder)) {
            // The walk may end behind another section's header, or on the empty line that a file ends with.
            while (!result.isEmpty() && result.constLast().trimmed().isEmpty())
                result.removeLast();
            if (!inAutoexec)
                result.append("[autoexec]");
            if (!detected->subfolder.isNull()) {
                result.append("cd " + QFile::encodeName(detected->subfolder));
                Log::info(QStringLiteral("   Auto-detected: cd %1").arg(detected->subfolder));
            }
            result.append("call " + QFile::encodeName(detected->executable));
            Log::info(QStringLiteral("   Auto-detected: %1").arg(detected->executable));
            result.append("exit");
        } else {
            Log::warning(QStringLiteral("   ⚠️ Could not auto-detect executable - DOSBox will show prompt"));
        }
    }
    return result.join('\n');
}

} // namespace ludarium
