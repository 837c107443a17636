#include "Services/Dos/BatchBypass.h"

#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"
#include "Services/Dos/ProgramPlace.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// Whether a line only ends the batch file, tidies up or talks, so that what is started stands on another one.
bool startsNothing(const QByteArray &line) {
    const QByteArray word = dosCommandWord(line);
    return line.isEmpty() || line.startsWith(':') || (line.size() < 3 && line.endsWith(':')) ||
           (isShellCommand(word) && word != "call" && word != "lh" && word != "loadhigh");
}

/// The program's name in a line that starts one.
QString programOf(const QByteArray &line) {
    const QByteArray word = dosCommandWord(line);
    const bool isPrefix = word == "call" || word == "lh" || word == "loadhigh";
    return parsedCommand(hostNameFrom(isPrefix ? line.mid(word.size()) : line)).program;
}

bool holdsProgram(FolderView &view, const QString &folder, const QString &name) {
    for (const QLatin1StringView ending : {""_L1, ".exe"_L1, ".bat"_L1, ".com"_L1})
        if (view.isFile(view.resolve(folder, name + ending)))
            return true;
    return false;
}

} // namespace

std::optional<BatchBypass> bypassOf(const QByteArray &batch, const QString &root, FolderView &view) {
    BatchBypass result;
    for (QByteArray line : trimmedLines(batch)) {
        if (line.startsWith('@'))
            line = line.mid(1);
        const QByteArray lower = line.toLower();
        if (lower.startsWith("cd \\") || lower.startsWith("cd\\")) {
            // A bare "cd \" goes back to the root and names no folder.
            const QByteArray named = line.mid(lower.indexOf('\\') + 1).replace('\\', '/');
            if (!named.isEmpty())
                result.folder = named;
        } else if (!startsNothing(line)) {
            result.command = line;
        }
    }
    if (result.folder.isEmpty() || result.command.isEmpty())
        return std::nullopt;
    const QString folder = view.resolve(root, hostNameFrom(result.folder));
    if (folder.isNull() || !holdsProgram(view, folder, programOf(result.command)))
        return std::nullopt;
    return result;
}

} // namespace ludarium
