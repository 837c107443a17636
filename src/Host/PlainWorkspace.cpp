#include "Host/PlainWorkspace.h"

#include "Host/AppLogger.h"
#include "Host/HostPaths.h"
#include "Host/LocalProcessRunner.h"
#include "Host/OpenableFile.h"

#include <QFileInfo>

namespace ludarium {

namespace {

constexpr QLatin1StringView macOpen{"/usr/bin/open"};

/// Asks the file manager ($1: gdbus, $2: the addresses as a GVariant) and, when none answers, opens the folder
/// ($3: xdg-open, $4: the folder). One detached program of two steps, because this program may have ended by then.
/// The text is constant; what varies arrives as arguments.
constexpr QLatin1StringView revealScript{
    "\"$1\" call --session --timeout 5 --dest org.freedesktop.FileManager1 "
    "--object-path /org/freedesktop/FileManager1 --method org.freedesktop.FileManager1.ShowItems \"$2\" \"\" "
    "|| exec \"$3\" \"$4\""};

} // namespace

PlainWorkspace::PlainWorkspace(const HostPaths &paths) : m_paths(paths) {}

bool PlainWorkspace::start(const QString &program, const QStringList &arguments) const {
    try {
        LocalProcessRunner::startDetached({program, arguments, m_paths.home(), m_paths.childEnvironment(), {}});
        return true;
    } catch (const ProcessError &error) {
        Log::warning(QStringLiteral("%1: %2").arg(program, QString::fromUtf8(error.what())));
        return false;
    }
}

bool PlainWorkspace::open(const QString &target) const {
    if (m_paths.layout() == HostLayout::MacOS)
        return start(m_paths.resolve(macOpen), {target});
    if (const QString program = m_paths.which(QStringLiteral("xdg-open")); !program.isEmpty())
        return start(program, {target});
    if (const QString program = m_paths.which(QStringLiteral("gio")); !program.isEmpty())
        return start(program, {QStringLiteral("open"), target});
    Log::warning(QStringLiteral("Neither xdg-open nor gio found to open %1").arg(target));
    return false;
}

bool PlainWorkspace::openUrl(const QUrl &url) {
    if (url.isLocalFile())
        return openFile(url.toLocalFile());
    const QString scheme = url.scheme();
    if (!url.isValid() || (scheme != u"https" && scheme != u"http" && scheme != u"mailto")) {
        Log::warning(QStringLiteral("Not opened, neither web nor mail: %1").arg(url.toDisplayString()));
        return false;
    }
    return open(url.toString(QUrl::FullyEncoded));
}

bool PlainWorkspace::openFile(const QString &path) {
    if (const QString reason = whyNotOpenable(path); !reason.isNull()) {
        Log::warning(QStringLiteral("Not opened, %1: %2").arg(reason, path));
        return false;
    }
    return open(QFileInfo(path).absoluteFilePath());
}

bool PlainWorkspace::openWith(const QString &application, const QStringList &paths) {
    // Absolute, so that no file name is taken for an option.
    QStringList arguments;
    for (const QString &path : paths)
        arguments << QFileInfo(path).absoluteFilePath();
    if (m_paths.layout() == HostLayout::MacOS)
        return start(m_paths.resolve(macOpen), QStringList{QStringLiteral("-a"), application} + arguments);
    const QString program = application.contains(u'/') ? application : m_paths.which(application);
    if (program.isEmpty()) {
        Log::warning(QStringLiteral("Application not found: %1").arg(application));
        return false;
    }
    return start(program, arguments);
}

bool PlainWorkspace::reveal(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        Log::warning(QStringLiteral("Not shown, it does not exist: %1").arg(path));
        return false;
    }
    if (m_paths.layout() == HostLayout::MacOS)
        return start(m_paths.resolve(macOpen), {QStringLiteral("-R"), info.absoluteFilePath()});
    const QString folder = info.isDir() ? info.absoluteFilePath() : info.absolutePath();
    const QString shell = m_paths.which(QStringLiteral("sh"));
    const QString gdbus = m_paths.which(QStringLiteral("gdbus"));
    const QString opener = m_paths.which(QStringLiteral("xdg-open"));
    if (shell.isEmpty() || gdbus.isEmpty() || opener.isEmpty())
        return open(folder);
    // A quote is the one character of an encoded address that means something in the array's text form.
    const QString address = QString::fromLatin1(QUrl::fromLocalFile(info.absoluteFilePath()).toEncoded())
                                .replace(u'\'', QStringLiteral("%27"));
    return start(shell, {QStringLiteral("-c"), revealScript, QStringLiteral("sh"), gdbus,
                         QStringLiteral("['%1']").arg(address), opener, folder});
}

void PlainWorkspace::copyToClipboard(const QString &text) {
    Log::info(QStringLiteral("There is no clipboard; the text is: %1").arg(text));
}

} // namespace ludarium
