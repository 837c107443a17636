#include "Host/HostPaths.h"

#include "Host/PrivateTemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace ludarium {

namespace {

/// In front of the old value, with the colon that follows it also when there is no old value.
constexpr QLatin1StringView homebrewPath{"/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:"};

/// What a program started from a file manager may lack, in the order in which missing ones are added.
constexpr const char *linuxProgramFolders[] = {
    "/usr/local/bin",
    "/usr/bin",
    "/bin",
    "/usr/games",
    "/usr/local/games",
    "~/.local/bin",
    "/var/lib/flatpak/exports/bin",
    "~/.local/share/flatpak/exports/bin",
};

constexpr HostLayout nativeLayout =
#ifdef Q_OS_MACOS
    HostLayout::MacOS;
#else
    HostLayout::Linux;
#endif

QString pathVariable() {
    return QStringLiteral("PATH");
}

/// The folder of documents that the desktop's settings name, for example "Dokumente" in a German home.
QString documentsFromUserDirs(const QString &configFolder, const QString &home) {
    QFile file(configFolder + QStringLiteral("/user-dirs.dirs"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression entry(QStringLiteral("^\\s*XDG_DOCUMENTS_DIR=\"(\\$HOME)?(/[^\"]*)\""),
                                          QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = entry.match(QString::fromUtf8(file.read(64 * 1024)));
    if (!match.hasMatch())
        return {};
    const QString folder = QDir::cleanPath((match.captured(1).isEmpty() ? QString() : home) + match.captured(2));
    return folder == home ? QString() : folder;
}

} // namespace

HostPaths HostPaths::native(const QString &homeOverride) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (homeOverride.isEmpty())
        return HostPaths(nativeLayout, QDir::homePath(), {}, environment);
    const QString home = QDir::cleanPath(QFileInfo(homeOverride).absoluteFilePath());
    // Children look for their own settings where this program looks for them.
    environment.insert(QStringLiteral("HOME"), home);
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
        environment.remove(QString::fromLatin1(variable));
    HostPaths paths(nativeLayout, home, {}, environment);
    paths.m_homeOverridden = true;
    paths.m_temporary = std::make_shared<PrivateTemporaryFolder>(QStringList{paths.caches() + QStringLiteral("/tmp")});
    return paths;
}

HostPaths::HostPaths(HostLayout layout, QString home, QString root, QProcessEnvironment environment)
    : m_layout(layout), m_home(std::move(home)), m_root(std::move(root)), m_environment(std::move(environment)) {
    while (m_root.endsWith(u'/'))
        m_root.chop(1);
    const QString variable = m_environment.value(QStringLiteral("TMPDIR"));
    const QString shared = QDir::isAbsolutePath(variable) ? QDir::cleanPath(variable) : resolve(QStringLiteral("/tmp"));
    m_temporary = std::make_shared<PrivateTemporaryFolder>(QStringList{shared, caches() + QStringLiteral("/tmp")});
}

QString HostPaths::resolve(const QString &path) const {
    if (path == u'~')
        return m_home;
    if (path.startsWith(QLatin1StringView("~/")))
        return m_home + path.mid(1);
    if (!path.startsWith(u'/') || m_root.isEmpty() || path == m_root || path.startsWith(m_root + u'/'))
        return path;
    return m_root + path;
}

QString HostPaths::xdgFolder(const char *variable, const QString &fallback) const {
    const QString value = m_environment.value(QString::fromLatin1(variable));
    if (!m_homeOverridden && QDir::isAbsolutePath(value))
        return QDir::cleanPath(value);
    return m_home + fallback;
}

QString HostPaths::settingsFolder() const {
    if (m_layout == HostLayout::MacOS)
        return applicationSupport();
    return xdgFolder("XDG_CONFIG_HOME", QStringLiteral("/.config")) + QStringLiteral("/ludarium");
}

QString HostPaths::applicationSupport() const {
    if (m_layout == HostLayout::MacOS)
        return m_home + QStringLiteral("/Library/Application Support/Ludarium");
    return xdgFolder("XDG_DATA_HOME", QStringLiteral("/.local/share")) + QStringLiteral("/ludarium");
}

QString HostPaths::caches() const {
    if (m_layout == HostLayout::MacOS)
        return m_home + QStringLiteral("/Library/Caches/com.ludarium.app");
    return xdgFolder("XDG_CACHE_HOME", QStringLiteral("/.cache")) + QStringLiteral("/ludarium");
}

QString HostPaths::logs() const {
    if (m_layout == HostLayout::MacOS)
        return m_home + QStringLiteral("/Library/Logs/Ludarium");
    return state() + QStringLiteral("/logs");
}

QString HostPaths::state() const {
    if (m_layout == HostLayout::MacOS)
        return applicationSupport();
    return xdgFolder("XDG_STATE_HOME", QStringLiteral("/.local/state")) + QStringLiteral("/ludarium");
}

QString HostPaths::documents() const {
    if (m_layout == HostLayout::Linux) {
        const QString named = documentsFromUserDirs(xdgFolder("XDG_CONFIG_HOME", QStringLiteral("/.config")), m_home);
        if (!named.isEmpty())
            return named;
    }
    return m_home + QStringLiteral("/Documents");
}

QString HostPaths::temporaryDirectory() const {
    return m_temporary->path();
}

QString HostPaths::systemName() const {
    return m_layout == HostLayout::MacOS ? QStringLiteral("macOS") : QStringLiteral("Linux");
}

QString HostPaths::coreExtension() const {
    return m_layout == HostLayout::MacOS ? QStringLiteral("dylib") : QStringLiteral("so");
}

QString HostPaths::discSwapKeys() const {
    return m_layout == HostLayout::MacOS ? QStringLiteral("Fn+Cmd+F4") : QStringLiteral("Ctrl+F4");
}

QStringList HostPaths::addedProgramFolders() const {
    QStringList added;
    for (const char *folder : linuxProgramFolders) {
        const QString text = QString::fromLatin1(folder);
        added << (text.startsWith(u'~') ? resolve(text) : text);
    }
    return added;
}

QProcessEnvironment HostPaths::childEnvironment() const {
    QProcessEnvironment child = m_environment;
    const QString old = m_environment.value(pathVariable());
    if (m_layout == HostLayout::MacOS) {
        child.insert(pathVariable(), homebrewPath + old);
        return child;
    }
    // An empty element means the working directory to a shell: none is made.
    QStringList folders = old.isEmpty() ? QStringList() : old.split(u':');
    for (const QString &folder : addedProgramFolders())
        if (!folders.contains(folder))
            folders << folder;
    child.insert(pathVariable(), folders.join(u':'));
    return child;
}

QString HostPaths::systemSettingsAddress() const {
    return m_layout == HostLayout::MacOS ? QStringLiteral("x-apple.systempreferences:") : QString();
}

QStringList HostPaths::programFolders() const {
    QStringList folders;
    for (const QString &folder : childEnvironment().value(pathVariable()).split(u':'))
        if (QDir::isAbsolutePath(folder))
            folders << resolve(QDir::cleanPath(folder));
    folders.removeDuplicates();
    return folders;
}

QString HostPaths::which(const QString &name) const {
    if (name.isEmpty() || name.contains(u'/'))
        return {};
    for (const QString &folder : programFolders()) {
        const QString path = folder + u'/' + name;
        const QFileInfo info(path);
        if (info.isFile() && info.isExecutable())
            return path;
    }
    return {};
}

} // namespace ludarium
