#include "Host/HostPaths.h"

#include "Host/PrivateTemporaryFolder.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {
namespace {

using testing::ElementsAre;

QProcessEnvironment environment(std::initializer_list<std::pair<const char *, const char *>> values) {
    QProcessEnvironment result;
    for (const auto &[name, value] : values)
        result.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    return result;
}

HostPaths paths(HostLayout layout, const QProcessEnvironment &values = {}, const QString &root = {}) {
    return HostPaths(layout, root + QStringLiteral("/home/ann"), root, values);
}

TEST(HostPaths, KnowsWhereEachLayoutKeepsThings) {
    const HostPaths linuxPaths = paths(HostLayout::Linux);
    const HostPaths mac(HostLayout::MacOS, QStringLiteral("/Users/ann"), {},
                        environment({{"XDG_CONFIG_HOME", "/c"}, {"XDG_DATA_HOME", "/d"}}));
    const HostPaths xdg = paths(
        HostLayout::Linux,
        environment(
            {{"XDG_CONFIG_HOME", "/c"}, {"XDG_DATA_HOME", "/d/"}, {"XDG_CACHE_HOME", "/k"}, {"XDG_STATE_HOME", "/s"}}));
    const HostPaths relative = paths(
        HostLayout::Linux,
        environment(
            {{"XDG_CONFIG_HOME", "c"}, {"XDG_DATA_HOME", "../d"}, {"XDG_CACHE_HOME", ""}, {"XDG_STATE_HOME", "./s"}}));
    const struct {
        QString (HostPaths::*folder)() const;
        const char *linuxFolder;
        const char *xdgFolder;
        const char *macFolder;
    } rows[] = {
        {&HostPaths::settingsFolder, "/home/ann/.config/ludarium", "/c/ludarium",
         "/Users/ann/Library/Application Support/Ludarium"},
        {&HostPaths::applicationSupport, "/home/ann/.local/share/ludarium", "/d/ludarium",
         "/Users/ann/Library/Application Support/Ludarium"},
        {&HostPaths::caches, "/home/ann/.cache/ludarium", "/k/ludarium", "/Users/ann/Library/Caches/com.ludarium.app"},
        {&HostPaths::logs, "/home/ann/.local/state/ludarium/logs", "/s/ludarium/logs",
         "/Users/ann/Library/Logs/Ludarium"},
        {&HostPaths::state, "/home/ann/.local/state/ludarium", "/s/ludarium",
         "/Users/ann/Library/Application Support/Ludarium"},
        {&HostPaths::documents, "/home/ann/Documents", "/home/ann/Documents", "/Users/ann/Documents"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ((linuxPaths.*row.folder)(), QString::fromLatin1(row.linuxFolder));
        EXPECT_EQ((relative.*row.folder)(), QString::fromLatin1(row.linuxFolder)) << "relative values are ignored";
        EXPECT_EQ((xdg.*row.folder)(), QString::fromLatin1(row.xdgFolder));
        EXPECT_EQ((mac.*row.folder)(), QString::fromLatin1(row.macFolder));
    }
}

TEST(HostPaths, PutsTableEntriesUnderTheRootAndTheHome) {
    const HostPaths real = paths(HostLayout::MacOS);
    const HostPaths fake = paths(HostLayout::MacOS, {}, QStringLiteral("/t/root"));
    const struct {
        const char *entry, *onReal, *onFake;
    } rows[] = {
        {"/Applications/X.app", "/Applications/X.app", "/t/root/Applications/X.app"},
        {"~/Games", "/home/ann/Games", "/t/root/home/ann/Games"},
        {"~", "/home/ann", "/t/root/home/ann"},
        {"~ann/Games", "~ann/Games", "~ann/Games"},
        {"eXo/emulators", "eXo/emulators", "eXo/emulators"},
        {"/t/root/usr/bin", "/t/root/usr/bin", "/t/root/usr/bin"},
        {"/t/rooted", "/t/rooted", "/t/root/t/rooted"},
        {"", "", ""},
    };
    for (const auto &[entry, onReal, onFake] : rows) {
        EXPECT_EQ(real.resolve(QString::fromLatin1(entry)), QString::fromLatin1(onReal));
        EXPECT_EQ(fake.resolve(QString::fromLatin1(entry)), QString::fromLatin1(onFake));
    }
}

TEST(HostPaths, WidensThePathOfChildrenAndKeepsTheRestOfTheEnvironment) {
    const struct {
        HostLayout layout;
        const char *old;
        const char *expected;
    } rows[] = {
        {HostLayout::MacOS, "/usr/bin:/bin",
         "/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:/usr/bin:/bin"},
        {HostLayout::MacOS, "", "/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:"},
        {HostLayout::Linux, "/home/ann/bin:/usr/bin:/bin",
         "/home/ann/bin:/usr/bin:/bin:/usr/local/bin:/usr/games:/usr/local/games:/home/ann/.local/bin:"
         "/var/lib/flatpak/exports/bin:/home/ann/.local/share/flatpak/exports/bin"},
        {HostLayout::Linux, "",
         "/usr/local/bin:/usr/bin:/bin:/usr/games:/usr/local/games:/home/ann/.local/bin:"
         "/var/lib/flatpak/exports/bin:/home/ann/.local/share/flatpak/exports/bin"},
    };
    for (const auto &[layout, old, expected] : rows) {
        const QProcessEnvironment child =
            paths(layout, environment({{"PATH", old}, {"LANG", "de_DE.UTF-8"}})).childEnvironment();
        EXPECT_EQ(child.value(QStringLiteral("PATH")).toStdString(), expected);
        EXPECT_EQ(child.value(QStringLiteral("LANG")), QStringLiteral("de_DE.UTF-8"));
    }
    EXPECT_EQ(paths(HostLayout::MacOS).childEnvironment().value(QStringLiteral("PATH")).toStdString(),
              "/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:");
}

TEST(HostPaths, FindsProgramsInTheOrderOfTheFoldersUnderTheRoot) {
    for (const HostLayout layout : {HostLayout::Linux, HostLayout::MacOS}) {
        test::TestHost host(layout);
        const HostPaths &paths = host.host().paths;
        QStringList folders = paths.programFolders();
        EXPECT_EQ(folders.removeDuplicates(), 0);
        for (const QString &folder : folders)
            EXPECT_TRUE(folder.startsWith(host.root() + u'/')) << folder.toStdString();
        EXPECT_EQ(folders.contains(host.root() + QStringLiteral("/opt/homebrew/bin")), layout == HostLayout::MacOS);
        EXPECT_EQ(folders.contains(host.home() + QStringLiteral("/.local/bin")), layout == HostLayout::Linux);

        EXPECT_EQ(paths.which(QStringLiteral("sh")), QString()) << "the real machine is not looked at";
        host.put(QStringLiteral("/usr/local/bin/tool"), "#!/bin/sh\n"); // not executable
        QDir().mkpath(host.root() + QStringLiteral("/usr/bin/tool"));   // a folder
        const QString tool = host.putProgram(QStringLiteral("/bin/tool"), "exit 0");
        EXPECT_EQ(paths.which(QStringLiteral("tool")), tool);
        EXPECT_EQ(paths.which(QStringLiteral("bin/tool")), QString());
        EXPECT_EQ(paths.which(QString()), QString());
    }
}

TEST(HostPaths, TakesTheDocumentsFolderThatTheDesktopNames) {
    test::TestHost host;
    const QString file = QStringLiteral("~/.config/user-dirs.dirs");
    host.put(file, "# comment\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    EXPECT_EQ(host.host().paths.documents(), host.home() + QStringLiteral("/Dokumente"));
    host.put(file, "XDG_DOCUMENTS_DIR=\"/srv/texts\"\n");
    EXPECT_EQ(host.host().paths.documents(), QStringLiteral("/srv/texts"));
    host.put(file, "XDG_DOCUMENTS_DIR=\"$HOME/\"\n"); // the convention for "there is none"
    EXPECT_EQ(host.host().paths.documents(), host.home() + QStringLiteral("/Documents"));
}

TEST(HostPaths, KeepsEverythingBelowAHomeThatIsGiven) {
    const QTemporaryDir directory;
    const QString home = QFileInfo(directory.path()).canonicalFilePath();
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/elsewhere");
    const HostPaths paths = HostPaths::native(home);
    if (before.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", before);
    EXPECT_EQ(paths.home(), home);
    for (const QString &folder : {paths.settingsFolder(), paths.applicationSupport(), paths.caches(), paths.logs(),
                                  paths.state(), paths.documents(), paths.temporaryDirectory()})
        EXPECT_TRUE(folder.startsWith(home + u'/')) << folder.toStdString();
    EXPECT_EQ(paths.childEnvironment().value(QStringLiteral("HOME")), home);
    EXPECT_FALSE(paths.childEnvironment().contains(QStringLiteral("XDG_CONFIG_HOME")));
}

class TemporaryFolder : public testing::Test {
  protected:
    static mode_t mode(const QString &path) {
        struct stat info {};
        ::lstat(QFile::encodeName(path).constData(), &info);
        return info.st_mode & 07777;
    }
    void age(const QString &path, int minutes) {
        const timespec time{::time(nullptr) - minutes * 60, 0};
        const timespec times[] = {time, time};
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW), 0);
    }
    PrivateTemporaryFolder folder() { return PrivateTemporaryFolder({m_shared, m_fallback}); }

    QTemporaryDir m_directory;
    const QString m_shared = QFileInfo(m_directory.path()).canonicalFilePath() + QStringLiteral("/tmp");
    const QString m_fallback = QFileInfo(m_directory.path()).canonicalFilePath() + QStringLiteral("/cache/tmp");
    const QString m_base = m_shared + QStringLiteral("/ludarium-%1").arg(::geteuid());
};

TEST_F(TemporaryFolder, IsPrivateAndOneOfEachRun) {
    PrivateTemporaryFolder first({m_shared}), second({m_shared});
    EXPECT_TRUE(first.path().startsWith(m_base + QStringLiteral("/run-"))) << first.path().toStdString();
    EXPECT_EQ(mode(m_base), 0700u);
    EXPECT_EQ(mode(first.path()), 0700u);
    EXPECT_EQ(first.path(), first.path());
    EXPECT_NE(first.path(), second.path());

    const QString taken = first.path();
    ASSERT_TRUE(QDir(taken).removeRecursively()); // by a cleaner of the system
    EXPECT_TRUE(QFileInfo(first.path()).isDir());
}

TEST_F(TemporaryFolder, ClosesAFolderOfOursThatWasOpen) {
    QDir().mkpath(m_base);
    ASSERT_EQ(::chmod(QFile::encodeName(m_base).constData(), 0777), 0);
    EXPECT_TRUE(folder().path().startsWith(m_base));
    EXPECT_EQ(mode(m_base), 0700u);
}

TEST_F(TemporaryFolder, IsNotMadeInAFolderThatAnotherUserPrepared) {
    const QString trap = m_directory.filePath(QStringLiteral("trap"));
    QDir().mkpath(trap);
    QDir().mkpath(m_shared);
    ASSERT_TRUE(QFile::link(trap, m_base));
    EXPECT_TRUE(folder().path().startsWith(m_fallback)) << "a link";
    EXPECT_TRUE(QDir(trap).isEmpty());
    EXPECT_THROW(PrivateTemporaryFolder({m_shared}).path(), std::system_error);

    ASSERT_TRUE(QFile::remove(m_base));
    if (::geteuid() != 0)
        GTEST_SKIP() << "no right to give a folder to another user";
    QDir().mkpath(m_base);
    ASSERT_EQ(::chown(QFile::encodeName(m_base).constData(), 65534, 65534), 0);
    EXPECT_TRUE(folder().path().startsWith(m_fallback)) << "another user's folder";
}

TEST_F(TemporaryFolder, SweepsWhatDeadRunsLeftAnHourAgo) {
    PrivateTemporaryFolder living({m_shared});
    const QString run = living.path();
    const QString kept = m_directory.filePath(QStringLiteral("kept"));
    QDir().mkpath(kept);
    // Old and dead; dead with a file that is still young; young; not a run's at all; a link named like one.
    for (const char *name : {"run-old/Ludarium", "run-used/Ludarium", "run-young", "other"})
        QDir().mkpath(m_base + u'/' + QString::fromLatin1(name));
    for (const char *name : {"run-old", "run-old/Ludarium", "run-used", "run-used/Ludarium"})
        age(m_base + u'/' + QString::fromLatin1(name), 61);
    QFile file(m_base + QStringLiteral("/run-used/Ludarium/game.conf"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    age(m_base + QStringLiteral("/run-used/Ludarium"), 61);
    age(file.fileName(), 30);
    ASSERT_TRUE(QFile::link(kept, m_base + QStringLiteral("/run-link")));
    age(m_base + QStringLiteral("/other"), 61);
    age(run, 61);

    PrivateTemporaryFolder next({m_shared});
    const QString own = QFileInfo(next.path()).fileName();
    EXPECT_THAT(QDir(m_base).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                testing::UnorderedElementsAre(QFileInfo(run).fileName(), own, QStringLiteral("run-used"),
                                              QStringLiteral("run-young"), QStringLiteral("run-link"),
                                              QStringLiteral("other")));
}

} // namespace
} // namespace ludarium
