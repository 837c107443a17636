#include "Services/Collections/GameArchive.h"

#include "support/Archives.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;

class GameArchives : public testing::Test {
  protected:
    GameArchives() { put(u"eXo/eXoDOS/Quest/GAME.EXE"_s, "MZ"); }

    QString collection() const { return host.root() + u"/collection"_s; }
    QString path(const QString &relative) const { return collection() + u'/' + relative; }
    QString put(const QString &relative, const QByteArray &content) {
        return host.put(u"/collection/"_s + relative, content);
    }
    static Game game(const QString &title, std::optional<int> year = 1992, const QString &platform = u"MS-DOS"_s,
                     const QString &folder = u"Quest"_s) {
        Game game;
        game.id = u"id"_s;
        game.title = title;
        game.platform = platform;
        game.releaseYear = year;
        game.configurationPath = u"eXo\\eXoDOS\\!dos\\"_s + folder + u"\\dosbox.conf"_s;
        return game;
    }
    GameArchive::Proof proof(const Game &game) const {
        return GameArchive::proofOfCopy(game, path(u"eXo/eXoDOS/Quest"_s), collection());
    }

    TestHost host;
};

TEST_F(GameArchives, AreFoundUnderTheNamesThatCollectionsGiveThem) {
    const struct {
        Game game;
        QStringList names; ///< the best first
    } rows[] = {
        {game(u"The Quest: Part 1, or \"Why?\""_s),
         {u"eXoDOS/Quest - Part 1 or 'Why', The (1992).zip"_s, u"eXoDOS/The Quest - Part 1 or 'Why' (1992).zip"_s,
          u"eXoDOS/The Quest - Part 1 or 'Why' (1992).7z"_s, u"eXoDOS/The Quest - Part 1 or 'Why'.zip"_s,
          u"eXoDOS/Quest.zip"_s, u"eXoDOS/Quest - Part 1 or 'Why', The.7z"_s}},
        {game(u"Sea Quest IV: Home & Away"_s),
         {u"eXoDOS/Sea Quest IV - Home and Away (1992).zip"_s, u"eXoDOS/Sea Quest 4 - Home and Away (1992).zip"_s,
          u"eXoDOS/Sea Quest 4 - Home and Away.7z"_s, u"eXoDOS/Sea Quest IV - Home and Away (Floppy).zip"_s,
          u"eXoDOS/Sea Quest IV (1993) Home and Away.zip"_s, u"eXoDOS/Home and Away (1991).zip"_s,
          u"eXoDOS/Sea Quest IV (1990).7z"_s}},
        {game(u"Space Quest: The Sarien Encounter"_s), {u"eXoDOS/Space Quest - The Sarien Encounter (1986).zip"_s}},
        {game(u"Ultima The First Age"_s), {u"eXoDOS/Ultima 1 The First Age (1981).zip"_s}},
        {game(u"Two Worlds (CD Edition)"_s), {u"eXoDOS/Two Worlds (1990).zip"_s}},
        {game(u"Quest"_s, std::nullopt), {u"eXoDOS/Quest (1999).zip"_s}},
        {game(u"Quest"_s), {u"../DOWNLOAD/Quest (1992).zip"_s}},
        {game(u"Quest"_s), {u"../eXoDOS/Quest (1992).7z"_s}},
        {game(u"Quest"_s, 1995, u"Windows 9x"_s), {u"eXoWin9x/1995/Quest.7z"_s, u"eXoWin9x/Quest.zip"_s}},
        {game(u"Quest"_s, 1995, u"ScummVM"_s, u"eXoScummVM-Extra\\!s\\Quest"_s),
         {u"eXoScummVM-Extra/Quest (1995).zip"_s, u"eXoScummVM/Quest.zip"_s}},
        {game(u"Quest"_s, 1995, u"Windows 3x"_s), {u"eXoWin3x/Quest (1995).zip"_s}},
        {game(u"Quest"_s, 1995, u"Apple IIGS"_s), {u"eXoAppleIIGS/Quest (1995).zip"_s}},
    };
    for (const auto &row : rows) {
        // From the worst to the best, so that each is chosen before those that were there.
        for (qsizetype i = row.names.size() - 1; i >= 0; --i) {
            const QString archive = put(u"eXo/"_s + row.names[i],
                                        gameArchive(u"QUEST"_s, row.names[i].right(2) == "7z"_L1 ? u"7z"_s : u"zip"_s));
            const GameArchive::Proof found = proof(row.game);
            EXPECT_EQ(QDir::cleanPath(found.archive), QDir::cleanPath(archive))
                << row.names[i].toStdString() << ": " << found.problem.toStdString();
        }
        for (const QString &name : row.names)
            QFile::remove(path(u"eXo/"_s + name));
    }
    EXPECT_EQ(proof(game(u"Quest"_s)).problem, u"it has no archive"_s);
}

TEST_F(GameArchives, AreNoCopyUnlessTheGameCanComeBackFromThem) {
    const QByteArray good = gameArchive(u"Quest"_s);
    const QByteArray sevenZip = gameArchive(u"Quest"_s, u"7z"_s);
    const QString name = u"eXo/eXoDOS/Quest (1992).zip"_s;
    const auto write = [&](const QByteArray &bytes) { return [&, bytes] { put(name, bytes); }; };
    const auto holding = [&](const ArchiveEntry &entry) {
        return write(archiveOf(u"zip"_s, {{u"Quest/GAME.EXE"_s}, entry}));
    };
    QByteArray damaged = archiveOf(u"zip"_s, {{u"Quest/GAME.EXE"_s, QByteArray(900'000, 'x')}});
    const struct {
        const char *what;
        std::function<void()> prepare;
        QString problem; ///< empty when it is a copy
    } rows[] = {
        {"whole", write(good), {}},
        {"whole, in 7-Zip's format", [&] { put(u"eXo/eXoDOS/Quest (1992).7z"_s, sevenZip); }, {}},
        {"a link to another disk", [&] { QFile::link(host.put(u"/other/q.zip"_s, good), path(name)); }, {}},
        {"empty", write({}), u"is empty"_s},
        {"cut off", write(good.chopped(10)), u"cannot be read"_s},
        {"cut off before its list", write(good.first(good.size() / 2)), u"cannot be read"_s},
        {"7-Zip cut off", [&] { put(u"eXo/eXoDOS/Quest (1992).7z"_s, sevenZip.chopped(5)); }, u"cannot be read"_s},
        {"no archive", write(QByteArray(20'000, '\0')), u"cannot be read"_s},
        {"begins as one", write(good.first(60) + QByteArray(20'000, '\0')), u"cannot be read"_s},
        {"of another game", write(gameArchive(u"Quest2"_s)), u"holds no folder \"Quest\""_s},
        {"without files", write(archiveOf(u"zip"_s, {})), u"cannot be read"_s},
        {"with a way out", holding({u"../evil"_s}), u"must not be unpacked"_s},
        {"with an absolute name", holding({u"/tmp/evil"_s}), u"must not be unpacked"_s},
        {"with a link", holding({u"Quest/save"_s, {}, u"/tmp"_s}), u"holds a link"_s},
        {"a folder of that name", [&] { QDir().mkpath(path(name)); }, u"is no file"_s},
        {"a pipe", [&] { ::mkfifo(QFile::encodeName(path(name)).constData(), 0600); }, u"is no file"_s},
        {"a link that leads nowhere", [&] { QFile::link(path(u"gone.zip"_s), path(name)); }, u"leads nowhere"_s},
        {"only in the game's own folder", [&] { QFile::link(put(u"eXo/eXoDOS/Quest/backup.zip"_s, good), path(name)); },
         u"in the folder itself"_s},
        {"still being downloaded",
         [&] {
             put(name, good);
             put(name + u".aria2"_s, "control");
         },
         u"still being downloaded"_s},
        {"with a hole where data should be",
         [&] {
             // As a download leaves it that had the end, but not the middle.
             QFile file(put(name, damaged.first(200)));
             ASSERT_TRUE(file.open(QIODevice::ReadWrite));
             file.seek(damaged.size() - 200);
             file.write(damaged.last(200));
         },
         u"cannot be read"_s},
        {"the place of one, in a lite collection",
         [&] {
             put(name, good);
             put(u"Content/XODOSMetadata.zip"_s, "zip");
         },
         u"only holds the place of one"_s},
        {"big enough, in a lite collection",
         [&] {
             put(name, damaged);
             put(u"eXo/util/aria/index.txt"_s, "index");
         },
         {}},
        {"another one that is whole",
         [&] {
             put(name, {});
             put(u"DOWNLOAD/Quest (1992).zip"_s, good);
         },
         {}},
    };
    for (const auto &row : rows) {
        ASSERT_NO_FATAL_FAILURE(row.prepare()) << row.what;
        const GameArchive::Proof found = proof(game(u"Quest"_s));
        EXPECT_EQ(found.problem.isEmpty(), row.problem.isEmpty()) << row.what << ": " << found.problem.toStdString();
        EXPECT_TRUE(found.problem.contains(row.problem)) << row.what << ": " << found.problem.toStdString();
        EXPECT_EQ(found.archive.isEmpty(), !row.problem.isEmpty()) << row.what;
        QDir(collection()).removeRecursively();
        put(u"eXo/eXoDOS/Quest/GAME.EXE"_s, "MZ");
    }
}

} // namespace

} // namespace ludarium::test
