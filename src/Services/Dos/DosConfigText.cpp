#include "Services/Dos/DosConfigText.h"

#include "Host/SafeFiles.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosNames.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringDecoder>
#include <algorithm>
#include <array>

namespace ludarium {

namespace {

constexpr std::string_view menuWords[] = {"run", "menu", "start", "select", "launch"};

template<typename List>
bool isOneOf(const QByteArray &word, const List &list) {
    const std::string_view view(word.constData(), size_t(word.size()));
    return std::find(std::begin(list), std::end(list), view) != std::end(list);
}

QByteArray firstWord(const QByteArray &text) {
    const qsizetype blank = text.indexOf(' ');
    return blank < 0 ? text : text.left(blank);
}

QByteArray withoutQuotes(QByteArray text) {
    while (text.startsWith('"'))
        text.remove(0, 1);
    while (text.endsWith('"'))
        text.chop(1);
    return text;
}

bool mentionsProgram(const QByteArray &lower) {
    return lower.contains(".exe") || lower.contains(".bat") || lower.contains(".com");
}

/// The line behind what loads a program into another part of the memory: "lh" is of no use to a guest.
QByteArray withoutLoadHigh(const QByteArray &line) {
    const QByteArray word = dosCommandWord(line);
    return word == "lh" || word == "loadhigh" ? line.mid(word.size()).trimmed() : line;
}

/// A program's name without its folder and ending, in lower case.
QByteArray stemOf(const QByteArray &word) {
    const QByteArray name = word.mid(word.lastIndexOf('\\') + 1).toLower();
    return name.left(name.indexOf('.') < 0 ? name.size() : name.indexOf('.'));
}

/// Whether a line prepares the machine, tells the user something or is none of the shell's business: the game's
/// program is on another one.
bool startsNoGame(const QByteArray &line) {
    const QByteArray word = dosCommandWord(line);
    return (isGuestCommand(word) && word != "call" && word != "loadfix") || isLoader(stemOf(firstWord(line)));
}

/// Target of a line that changes the folder, null for other lines. DOS needs no blank before a backslash.
QByteArray changedFolder(const QByteArray &lower) {
    if (lower.startsWith("cd "))
        return lower.mid(3).trimmed();
    if (lower.startsWith("cd\\") || lower.startsWith("cd/") || lower.startsWith("cd."))
        return lower.mid(2).trimmed();
    return {};
}

} // namespace

AutoexecSplit splitAutoexec(const QByteArray &configuration) {
    constexpr QByteArrayView header("[autoexec]");
    AutoexecSplit result;
    // Lower-casing ASCII letters keeps every byte's place.
    const QByteArray lower = configuration.toLower();
    qsizetype kept = 0;
    for (qsizetype start = lower.indexOf(header); start >= 0; start = lower.indexOf(header, start + 1)) {
        // Words of a comment are no header.
        const qsizetype line = lower.lastIndexOf('\n', start) + 1;
        if (start < kept || !lower.mid(line, start - line).trimmed().isEmpty())
            continue;
        const qsizetype body = start + header.size();
        const qsizetype next = configuration.indexOf("\n[", body);
        const qsizetype end = next < 0 ? configuration.size() : next;
        result.found = true;
        result.kept += configuration.mid(kept, start - kept);
        result.autoexec += configuration.mid(body, end - body);
        kept = end;
    }
    result.kept += configuration.mid(kept);
    return result;
}

QByteArrayList trimmedLines(const QByteArray &text) {
    QByteArrayList lines = text.split('\n');
    for (QByteArray &line : lines)
        line = line.trimmed();
    return lines;
}

std::optional<QString> extractCyclesFromConfig(const QByteArray &configuration) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(configuration);
    if (decoder.hasError())
        return std::nullopt;
    bool inCpu = false;
    for (const QString &raw : text.split(u'\n')) {
        const QString line = raw.trimmed();
        if (line.startsWith(u'[')) {
            inCpu = line.startsWith(QStringLiteral("[cpu]"), Qt::CaseInsensitive);
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!inCpu || equals < 0 || !line.startsWith(QStringLiteral("cycles"), Qt::CaseInsensitive))
            continue;
        const QString value = line.mid(equals + 1).trimmed();
        if (!value.isEmpty() && value.compare(QStringLiteral("auto"), Qt::CaseInsensitive) != 0)
            return value;
    }
    return std::nullopt;
}

std::optional<OriginalExecutable> extractExecutableFromOriginalConfig(const QByteArray &configuration,
                                                                      const QString &gameFolder) {
    const AutoexecSplit split = splitAutoexec(configuration);
    if (!split.found)
        return std::nullopt;
    // Compared as the bytes that the collection's files hold for the name.
    const QByteArray ownFolder = QFile::encodeName(gameFolder).toLower();
    QByteArrayList subpath;
    for (QByteArray line : trimmedLines(split.autoexec)) {
        if (line.startsWith('@'))
            line = line.mid(1).trimmed();
        if (line.isEmpty() || line.startsWith('#') || line.startsWith(':'))
            continue;
        line = withoutLoadHigh(line);
        if (line.isEmpty())
            continue;
        const QByteArray lower = line.toLower();
        if (const QByteArray changed = changedFolder(lower); !changed.isNull()) {
            // The original case is kept for the path.
            QByteArray target = withoutQuotes(line.right(changed.size()).replace('\\', '/'));
            if (target.startsWith("..") || target == "." ||
                (!ownFolder.isEmpty() && target.toLower().contains(ownFolder)))
                continue;
            for (const QByteArray &piece : target.split('/'))
                if (!piece.isEmpty())
                    subpath.append(piece);
            continue;
        }
        if (startsNoGame(line))
            continue;
        if (lower.startsWith("call ")) {
            QByteArray word = firstWord(lower.mid(5).trimmed());
            if (word.endsWith('.'))
                word.chop(1);
            if (isOneOf(word, menuWords) || isLoader(stemOf(word)))
                continue;
        } else if (!mentionsProgram(lower)) {
            const QByteArray word = firstWord(lower);
            if (word.size() < 3 || isOneOf(word, menuWords))
                continue;
        }
        OriginalExecutable result;
        result.executable = QString::fromLatin1(line);
        if (!subpath.isEmpty())
            result.subpath = hostNameFrom(subpath.join('/'));
        return result;
    }
    return std::nullopt;
}

QString hostNameFrom(const QByteArray &text) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString name = decoder(text);
    return decoder.hasError() ? QString::fromLatin1(text) : name;
}

QByteArray dosText(const QString &text) {
    const bool latin1 = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x100; });
    return latin1 ? text.toLatin1() : text.toUtf8();
}

QByteArray hostPathText(const QString &path) {
    const QByteArray bytes = QFile::encodeName(path);
    if (const QString problem = configurationValueProblem(bytes, true); !problem.isEmpty())
        throw LaunchError(LaunchError::Case::launchFailed,
                          QStringLiteral("DOSBox cannot be given the path %1: %2").arg(singleLine(path), problem));
    return bytes;
}

QByteArray quotedHostPath(const QString &path) {
    return '"' + hostPathText(path).replace("%", "%%") + '"';
}

QByteArray checkedText(const QByteArray &text, const QString &what) {
    if (const QString problem = configurationValueProblem(text); !problem.isEmpty())
        throw LaunchError(LaunchError::Case::launchFailed, QStringLiteral("%1 cannot be used: %2").arg(what, problem));
    return text;
}

QString generatedConfigName(const QString &gameFolderName, const QString &suffix) {
    // A writer puts its own ending behind the name while it writes.
    constexpr qsizetype longestName = 200;
    QString name = gameFolderName;
    name.replace(u' ', u'_').replace(u'/', u'_');
    if (QFile::encodeName(name + suffix).size() <= longestName)
        return name + suffix;
    const QByteArray digest = QCryptographicHash::hash(QFile::encodeName(name), QCryptographicHash::Sha256).toHex();
    return name.left(40) + u'_' + QString::fromLatin1(digest.left(16)) + suffix;
}

} // namespace ludarium
