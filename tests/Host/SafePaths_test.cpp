#include "Host/SafeFiles.h"

#include "support/Mount.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ludarium {
namespace {

using test::Mount;

TEST(SafeNames, AreOneComponentOfAtMost255BytesWithoutControlCharacters) {
    const QString umlaut = QStringLiteral("ä"); // two bytes on disk
    const struct {
        QString name;
        bool safe;
        bool deletable;
    } cases[] = {
        {QStringLiteral("DOOM2"), true, true},
        {QStringLiteral("Kings Quest (1984).zip"), true, true},
        {QStringLiteral("$(touch X)"), true, true},
        {QStringLiteral("..."), true, true},
        {QStringLiteral(".hidden"), true, true},
        {QStringLiteral("日本語"), true, true},
        {QStringLiteral("!dos"), true, false},
        {QStringLiteral("a!"), true, true},
        {QString(), false, false},
        {QStringLiteral(""), false, false},
        {QStringLiteral("."), false, false},
        {QStringLiteral(".."), false, false},
        {QStringLiteral("a/b"), false, false},
        {QStringLiteral("a\\b"), false, false},
        {QStringLiteral("/"), false, false},
        {QStringLiteral("a\nb"), false, false},
        {QStringLiteral("a\tb"), false, false},
        {QStringLiteral("a\x7f"), false, false},
        {QString(QChar(u'\x85')), false, false},
        {QStringLiteral("a") + QChar(u'\0') + u'b', false, false},
        {QString(255, u'x'), true, true},
        {QString(256, u'x'), false, false},
        {umlaut.repeated(127) + u'x', true, true},
        {umlaut.repeated(128), false, false},
    };
    for (const auto &[name, safe, deletable] : cases) {
        EXPECT_EQ(isSafeName(name), safe) << name.left(40).toStdString();
        EXPECT_EQ(isDeletableName(name), deletable) << name.left(40).toStdString();
    }
}

/// A collection reached through a link, beside a folder that nothing may reach.
class SafePaths : public testing::Test {
  protected:
    SafePaths() {
        QDir(m_root).mkpath(QStringLiteral("real/games/DOOM"));
        QDir(m_root).mkpath(QStringLiteral("outside/precious"));
        QDir(m_root).mkpath(QStringLiteral("real-neighbour"));
        write(QStringLiteral("outside/precious/save"));
        write(QStringLiteral("real/games/DOOM/doom.exe"));
        link(QStringLiteral("real"), QStringLiteral("base"));
    }
    QString at(const QString &path) const { return m_root + u'/' + path; }
    void write(const QString &path) {
        QFile file(at(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    }
    void link(const QString &target, const QString &name) {
        ASSERT_TRUE(QFile::link(target.startsWith(u'/') ? target : at(target), at(name)));
    }
    /// By itself, without following a link.
    bool there(const QString &path) const {
        struct stat info {};
        return ::lstat(QFile::encodeName(at(path)).constData(), &info) == 0;
    }

    QTemporaryDir m_directory;
    const QString m_root = QFileInfo(m_directory.path()).canonicalFilePath();
};

TEST_F(SafePaths, TextStaysBelowItsBase) {
    const QString base = at(QStringLiteral("base"));
    const struct {
        QString text;
        QString expected; ///< below the base; null when refused
    } cases[] = {
        {QStringLiteral("games/DOOM"), QStringLiteral("games/DOOM")},
        {QStringLiteral("games\\DOOM\\doom.exe"), QStringLiteral("games/DOOM/doom.exe")},
        {QStringLiteral(".\\games\\DOOM"), QStringLiteral("games/DOOM")},
        {QStringLiteral("games//DOOM/"), QStringLiteral("games/DOOM")},
        {QStringLiteral("not/there/yet"), QStringLiteral("not/there/yet")},
        {QStringLiteral("..."), QStringLiteral("...")},
        {QString(), {}},
        {QStringLiteral("."), {}},
        {QStringLiteral("./."), {}},
        {QStringLiteral(".."), {}},
        {QStringLiteral("games/../../outside"), {}},
        {QStringLiteral("games\\..\\games"), {}},
        {QStringLiteral("/etc/passwd"), {}},
        {QStringLiteral("\\etc\\passwd"), {}},
        {QStringLiteral("//server/share"), {}},
        {QStringLiteral("C:\\DOOM"), {}},
        {QStringLiteral("c:DOOM"), {}},
        {QStringLiteral("games/a") + QChar(u'\0'), {}},
        {QStringLiteral("games/") + QString(256, u'x'), {}},
    };
    for (const auto &[text, expected] : cases) {
        const std::optional<QString> path = pathInside(base, text);
        EXPECT_EQ(path.value_or(QStringLiteral("none")).toStdString(),
                  (expected.isNull() ? QStringLiteral("none") : base + u'/' + expected).toStdString())
            << text.left(40).toStdString();
    }
    EXPECT_EQ(pathInside(base, QStringList()), std::nullopt);
    EXPECT_EQ(pathInside(base, {QStringLiteral("games"), QStringLiteral("")}), std::nullopt);
    EXPECT_EQ(pathInside(base, {QStringLiteral("games/DOOM")}), std::nullopt);
    EXPECT_EQ(pathInside(QString(), QStringLiteral("games")), std::nullopt);
    EXPECT_EQ(pathInside(base + QStringLiteral("/"), QStringLiteral("games")), base + QStringLiteral("/games"));
    EXPECT_EQ(pathInside(at(QStringLiteral("new")), QStringLiteral("a/b")), at(QStringLiteral("new/a/b")));
}

TEST_F(SafePaths, LinksOnTheWayMayNotLeadOut) {
    link(QStringLiteral("outside"), QStringLiteral("real/out"));
    link(QStringLiteral("real-neighbour"), QStringLiteral("real/neighbour"));
    link(QStringLiteral("real/games"), QStringLiteral("real/within"));
    link(QStringLiteral("nowhere"), QStringLiteral("real/dangling"));
    link(QStringLiteral("real/loop"), QStringLiteral("real/loop"));
    link(QStringLiteral("real/out"), QStringLiteral("real/games/twice"));
    const struct {
        QString text;
        bool allowed;
    } cases[] = {
        {QStringLiteral("within/DOOM"), true},
        {QStringLiteral("out"), true}, // the link itself: inside, and not followed
        {QStringLiteral("dangling"), true},
        {QStringLiteral("out/precious"), false},
        {QStringLiteral("out/new"), false},
        {QStringLiteral("neighbour/x"), false}, // its name begins as the base's does
        {QStringLiteral("dangling/x"), false},
        {QStringLiteral("loop/x"), false},
        {QStringLiteral("within/twice/precious"), false},
    };
    for (const auto &[text, allowed] : cases)
        EXPECT_EQ(pathInside(at(QStringLiteral("base")), text).has_value(), allowed) << text.toStdString();
}

TEST_F(SafePaths, RemovalTakesWholeFoldersAndLinksButNeverWhatALinkNames) {
    link(QStringLiteral("outside/precious"), QStringLiteral("real/games/DOOM/link"));
    link(QStringLiteral("outside/precious"), QStringLiteral("real/games/direct"));
    QDir(m_root).mkpath(QStringLiteral("real/games/DOOM/sub/empty"));
    write(QStringLiteral("real/games/DOOM/sub/!readme"));
    ASSERT_TRUE(QFile::setPermissions(at(QStringLiteral("real/games/DOOM/sub")), QFile::ReadOwner | QFile::ExeOwner));
    const QString base = at(QStringLiteral("base"));

    EXPECT_EQ(removeInside(base, at(QStringLiteral("base/games/direct"))), QString());
    EXPECT_EQ(removeInside(base, at(QStringLiteral("real/games/DOOM"))), QString());
    EXPECT_FALSE(there(QStringLiteral("real/games/direct")));
    EXPECT_FALSE(there(QStringLiteral("real/games/DOOM")));
    EXPECT_TRUE(there(QStringLiteral("outside/precious/save")));
}

TEST_F(SafePaths, RemovalRefusesWhatIsNotAnEntryBelowTheBase) {
    link(QStringLiteral("outside"), QStringLiteral("real/out"));
    QDir(m_root).mkpath(QStringLiteral("real/!dos/DOOM"));
    const struct {
        QString path;
        const char *what;
    } cases[] = {
        {QStringLiteral("base"), "the base"},
        {QStringLiteral("real"), "the base by its other name"},
        {QStringLiteral("base/"), "the base with an empty name appended"},
        {QStringLiteral("base/."), "the base as its own entry"},
        {QStringLiteral("base/games/.."), "the base from below"},
        {QStringLiteral("base/games/../../outside"), "a way out"},
        {QStringLiteral("outside/precious"), "another place"},
        {QStringLiteral("base/out/precious"), "another place through a link"},
        {QStringLiteral("real-neighbour"), "a neighbour whose name begins as the base's does"},
        {QStringLiteral("base/!dos"), "a script folder"},
        {QStringLiteral("base/nothing"), "what is not there"},
        {QStringLiteral("base/games") + QChar(u'\0') + u'x', "a name cut by a NUL"},
    };
    for (const auto &[path, what] : cases)
        EXPECT_NE(removeInside(at(QStringLiteral("base")), at(path)), QString()) << what;
    EXPECT_NE(removeInside(at(QStringLiteral("base")), QStringLiteral("games")), QString()) << "a relative path";
    EXPECT_NE(removeInside(at(QStringLiteral("gone")), at(QStringLiteral("base/games"))), QString()) << "no base";
    for (const char *kept : {"real/games/DOOM/doom.exe", "outside/precious/save", "real/!dos/DOOM", "real-neighbour"})
        EXPECT_TRUE(there(QString::fromLatin1(kept))) << kept;
}

TEST_F(SafePaths, RemovalKeepsProtectedFoldersAndWhatHoldsThem) {
    const QString base = at(QStringLiteral("base"));
    const QString set = at(QStringLiteral("base/games"));
    EXPECT_NE(removeInside(base, set, {set}), QString());
    EXPECT_NE(removeInside(base, at(QStringLiteral("real/games")), {set}), QString()) << "by its other name";
    EXPECT_NE(removeInside(m_root, at(QStringLiteral("real")), {set}), QString()) << "the folder around it";
    EXPECT_TRUE(there(QStringLiteral("real/games/DOOM/doom.exe")));

    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(at(QStringLiteral("base/games/DOOM"))));
    EXPECT_NE(removeInside(base, set), QString()) << "the home of this user lies in it";
    EXPECT_NE(removeInside(base, at(QStringLiteral("base/games/DOOM"))), QString()) << "the home itself";
    qputenv("HOME", home);
    EXPECT_TRUE(there(QStringLiteral("real/games/DOOM/doom.exe")));

    EXPECT_EQ(removeInside(base, at(QStringLiteral("base/games/DOOM")), {set}), QString()) << "a game of the set";
    EXPECT_FALSE(there(QStringLiteral("real/games/DOOM")));
}

TEST_F(SafePaths, RemovalStopsAtMountPointsAlsoOfTheSameDevice) {
    const QString base = at(QStringLiteral("base"));
    const QString volume = at(QStringLiteral("real/games/DOOM/a volume"));
    for (const bool bound : {true, false}) {
        const Mount mount = bound ? Mount::bind(at(QStringLiteral("outside/precious")), volume)
                                  : Mount::memory(volume, QStringLiteral("1m"));
        if (!mount.ok())
            GTEST_SKIP() << mount.reason().toStdString();
        if (!bound)
            write(QStringLiteral("real/games/DOOM/a volume/save"));
        EXPECT_NE(removeInside(base, at(QStringLiteral("base/games"))), QString());
        EXPECT_NE(removeInside(base, volume), QString());
        EXPECT_TRUE(there(QStringLiteral("real/games/DOOM/a volume/save")));
        EXPECT_TRUE(there(QStringLiteral("real/games/DOOM/doom.exe"))) << "refused before anything is removed";
    }
}

TEST_F(SafePaths, ListingNamesEverythingButTheFolderItself) {
    write(QStringLiteral("real/games/.hidden"));
    link(QStringLiteral("nowhere"), QStringLiteral("real/games/dangling"));
    EXPECT_THAT(
        listFolder(at(QStringLiteral("base/games"))).value(),
        testing::UnorderedElementsAre(QStringLiteral("DOOM"), QStringLiteral(".hidden"), QStringLiteral("dangling")));
    EXPECT_EQ(listFolder(at(QStringLiteral("base/nothing"))), std::nullopt);
    EXPECT_EQ(listFolder(at(QStringLiteral("real/games/.hidden"))), std::nullopt);
}

} // namespace
} // namespace ludarium
