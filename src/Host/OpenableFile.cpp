#include "Host/OpenableFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace ludarium {

namespace {

/// What some desktop runs, installs or imports when it is "opened".
const QSet<QString> &activeTypes() {
    static const QSet<QString> types = [] {
        QSet<QString> set;
        for (const char *type :
             {"desktop", "sh",    "bash",     "zsh",     "csh",      "ksh",     "fish",       "bsh",         "msh",
              "command", "tool",  "terminal", "app",     "workflow", "scpt",    "scptd",      "applescript", "action",
              "pkg",     "mpkg",  "webloc",   "inetloc", "fileloc",  "url",     "exe",        "com",         "bat",
              "cmd",     "msi",   "pif",      "scr",     "lnk",      "reg",     "ps1",        "vbs",         "vbe",
              "js",      "jse",   "wsf",      "wsh",     "hta",      "cpl",     "dll",        "jar",         "jnlp",
              "class",   "py",    "pyc",      "pyw",     "pl",       "rb",      "php",        "lua",         "tcl",
              "run",     "bin",   "appimage", "deb",     "rpm",      "flatpak", "flatpakref", "flatpakrepo", "snap",
              "so",      "dylib", "elf",      "out",     "service",  "apk"})
            set.insert(QString::fromLatin1(type));
        return set;
    }();
    return types;
}

/// Documents whose permission to be executed means nothing: on volumes without permissions every file has it.
const QSet<QString> &documentTypes() {
    static const QSet<QString> types = [] {
        QSet<QString> set;
        for (const char *type :
             {"pdf",  "epub", "mobi", "cbz",  "cbr",  "djvu", "ps",  "txt", "rtf", "doc",  "docx", "odt",
              "xls",  "xlsx", "htm",  "html", "md",   "nfo",  "diz", "me",  "1st", "png",  "jpg",  "jpeg",
              "gif",  "bmp",  "tif",  "tiff", "webp", "svg",  "pcx", "mp3", "ogg", "flac", "wav",  "m4a",
              "wma",  "mid",  "aac",  "opus", "mp4",  "m4v",  "mkv", "avi", "mov", "mpg",  "mpeg", "wmv",
              "webm", "flv",  "uhs",  "zip",  "7z",   "xml",  "cue", "iso"})
            set.insert(QString::fromLatin1(type));
        return set;
    }();
    return types;
}

/// What the beginning of a file tells, whatever its name: the desktop looks at it too.
bool looksActive(const QByteArray &head) {
    for (const QByteArrayView magic :
         {QByteArrayView("#!"),
          QByteArrayView("\x7f"
                         "ELF"),
          QByteArrayView("\xca\xfe\xba\xbe"), QByteArrayView("\xcf\xfa\xed\xfe"), QByteArrayView("\xce\xfa\xed\xfe")})
        if (head.startsWith(magic))
            return true;
    return head.startsWith("[Desktop Entry]") || head.contains("\n[Desktop Entry]");
}

} // namespace

QString whyNotOpenable(const QString &path) {
    const QString real = QFileInfo(path).canonicalFilePath();
    if (real.isEmpty())
        return QStringLiteral("it does not exist");
    const QFileInfo info(real);
    for (const QString &suffix : {QFileInfo(path).suffix(), info.suffix()})
        if (activeTypes().contains(suffix.toLower()))
            return QStringLiteral("files of the type \"%1\" are not opened").arg(suffix);
    if (info.isDir())
        return {};
    if (!info.isFile())
        return QStringLiteral("it is not a regular file");
    QFile file(real);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    const QByteArray head = file.read(1024);
    if (looksActive(head))
        return QStringLiteral("it is a program or a script");
    if (info.isExecutable() && !documentTypes().contains(info.suffix().toLower()))
        return QStringLiteral("it may be executed");
    return {};
}

} // namespace ludarium
