#include "Services/Dos/DosNames.h"

#include <QFile>
#include <algorithm>
#include <string_view>

namespace ludarium {

namespace {

constexpr qsizetype longestStem = 8;
constexpr qsizetype longestEnding = 3;

bool isDosCharacter(char c) {
    const auto code = uchar(c);
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           (code != 0 && std::string_view("!#$%&'()-@^_`{}~+").find(c) != std::string_view::npos);
}

bool isPlain(const QByteArray &text) {
    return std::all_of(text.cbegin(), text.cend(), isDosCharacter);
}

template<size_t N>
bool isOneOf(const QByteArray &word, const std::string_view (&list)[N]) {
    return std::find(std::begin(list), std::end(list), std::string_view(word.constData(), size_t(word.size()))) !=
           std::end(list);
}

QByteArray withoutBlanks(QByteArray text) {
    return text.replace(' ', "");
}

} // namespace

bool isDosName(const QString &name) {
    const QByteArray bytes = QFile::encodeName(name);
    const qsizetype dot = bytes.indexOf('.');
    if (dot < 0)
        return !bytes.isEmpty() && bytes.size() <= longestStem && isPlain(bytes);
    const QByteArray ending = bytes.mid(dot + 1);
    return bytes.size() > 1 && dot <= longestStem && ending.size() <= longestEnding && isPlain(bytes.left(dot)) &&
           isPlain(ending);
}

std::optional<QByteArray> dosPiece(const QByteArray &text) {
    const QByteArray upper = withoutBlanks(text).toUpper();
    const qsizetype dot = upper.indexOf('.');
    const QByteArray stem = dot < 0 ? upper : upper.left(dot);
    const QByteArray ending = dot < 0 ? QByteArray() : upper.mid(dot + 1);
    if (!isPlain(stem) || !isPlain(ending))
        return std::nullopt;
    const QByteArray cut = ending.left(longestEnding);
    return cut.isEmpty() ? stem.left(longestStem) : stem.left(longestStem) + '.' + cut;
}

QHash<QByteArray, QString> guestNames(const QStringList &listing) {
    QHash<QByteArray, QString> result;
    for (const QString &name : listing) {
        const QByteArray bytes = QFile::encodeName(name);
        QByteArray upper = withoutBlanks(bytes).toUpper();
        qsizetype dot = upper.indexOf('.');
        bool isShortened = upper.size() != bytes.size();
        if (dot >= 0 && upper.size() - dot > longestEnding + 1) {
            while (upper.startsWith('.'))
                upper.remove(0, 1);
            isShortened = isShortened || dot == 0;
            dot = upper.indexOf('.');
        }
        const QByteArray stem = dot < 0 ? upper : upper.left(dot);
        isShortened = isShortened || stem.size() > longestStem || result.contains(upper);
        QByteArray guest = upper;
        for (int number = 1; isShortened; ++number) {
            const QByteArray tail = '~' + QByteArray::number(number);
            guest = stem.left(longestStem - tail.size()) + tail;
            if (dot >= 0)
                guest += upper.mid(upper.lastIndexOf('.')).left(longestEnding + 1);
            isShortened = result.contains(guest);
        }
        if (guest.endsWith('.'))
            guest.chop(1);
        if (!result.contains(guest))
            result.insert(guest, name);
    }
    return result;
}

QByteArray dosCommandWord(const QByteArray &line) {
    QByteArray text = line.trimmed();
    while (text.startsWith('@'))
        text = text.mid(1).trimmed();
    qsizetype end = 0;
    while (end < text.size() && std::string_view(" \t/=,;").find(text[end]) == std::string_view::npos)
        ++end;
    const QByteArray word = text.left(end).toLower();
    // An ending makes a word a program's name; a dot or backslash behind a command of the shell begins its argument.
    for (qsizetype i = 0; i < word.size(); ++i)
        if (word[i] == '.' || word[i] == '\\' || word[i] == ':')
            return isShellCommand(word.left(i)) ? word.left(i) : word;
    return word;
}

bool isLoader(const QByteArray &stem) {
    static constexpr std::string_view names[] = {
        "mouse",    "ctmouse",  "cutemous", "gmouse",   "cmouse",  "amouse",   "mscdex",   "shsucdx",
        "univbe",   "uvconfig", "nolfb",    "vesa",     "doskey",  "cwsdpmi",  "ultrinit", "ultramid",
        "ipxodi",   "sbconfig", "setblast", "soundset", "share",   "fastopen", "ansi",     "himem",
        "emm386",   "smartdrv", "keybuk",   "joyemu",   "univesa", "mode",     "dosidle",  "4dos",
        "slowdown", "moslo",    "throttle", "nocash",   "sbeinit", "aweutil",  "diagnose"};
    return isOneOf(stem, names);
}

bool isShellCommand(const QByteArray &word) {
    static constexpr std::string_view names[] = {
        "attrib", "break",  "call",    "cd",   "chdir",    "choice", "cls",    "copy",  "date",
        "del",    "delete", "deltree", "dir",  "echo",     "erase",  "exit",   "for",   "goto",
        "help",   "if",     "label",   "lh",   "loadhigh", "md",     "mkdir",  "more",  "move",
        "path",   "pause",  "prompt",  "rd",   "rem",      "ren",    "rename", "rmdir", "set",
        "shift",  "subst",  "time",    "tree", "type",     "ver",    "verify", "vol",   "xcopy"};
    return isOneOf(word, names);
}

bool isGuestCommand(const QByteArray &word) {
    static constexpr std::string_view names[] = {
        "autotype", "boot", "config", "imgmount", "intro", "ipxnet", "keyb", "loadfix", "loadrom", "mem", "mixer",
        "mount", "rescan", "serial",
        // a setting of DOSBox is changed by its name
        "aspect", "core", "cputype", "cycles", "frameskip", "gus", "irq", "joysticktype", "machine", "memsize",
        "mididevice", "mpu401", "oplmode", "output", "pcspeaker", "sbtype", "scaler", "tandy", "ems", "xms", "umb"};
    return isShellCommand(word) || isOneOf(word, names);
}

} // namespace ludarium
