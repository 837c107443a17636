#include "demo/DemoCollection.h"

#include "Models/Playlist.h"
#include "Services/Library/LaunchBoxParser.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <system_error>

namespace ludarium {

namespace {

// Written once for all tests that only read it.
const QString &collection() {
    static const QTemporaryDir folder;
    static const QString path = [] {
        QString made = folder.filePath(QStringLiteral("new/Demo"));
        writeDemoCollection(made);
        return made;
    }();
    return path;
}

QString onDisk(QString windowsPath) {
    return collection() + u'/' + windowsPath.replace(u'\\', u'/');
}

QStringList filesBelow(const QString &folder) {
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    return files;
}

QByteArray head(const QString &path, qint64 size) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
}

const LaunchBoxParser::Games &parsed() {
    static const LaunchBoxParser::Games games = LaunchBoxParser().parseGamesWithAdditionalApps(collection());
    return games;
}

const GameList &games() {
    return parsed().games;
}

GamePtr game(const QString &platform, const QString &title) {
    for (const GamePtr &candidate : games())
        if (candidate->platform == platform && candidate->title == title)
            return candidate;
    return nullptr;
}

std::optional<std::system_error> failureOfWriting(const QString &folder) {
    try {
        writeDemoCollection(folder);
        return std::nullopt;
    } catch (const std::system_error &error) {
        return error;
    }
}

bool makeFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly);
}

} // namespace

TEST(DemoCollection, IsReadByTheParserWithAllItsPlatformsGamesAndPlaylists) {
    QMap<QString, int> counts;
    for (const GamePtr &game : games())
        ++counts[game->platform];
    EXPECT_EQ(counts, (QMap<QString, int>{{QStringLiteral("MS-DOS"), 20}, // one more is hidden
                                          {QStringLiteral("ScummVM"), 6},
                                          {QStringLiteral("Nintendo Game Boy"), 7},
                                          {QStringLiteral("Nintendo Entertainment System"), 7}}));
    EXPECT_EQ(LaunchBoxParser().parsePlatforms(collection()).size(), 4);

    const QList<Playlist> playlists = LaunchBoxParser().parsePlaylists(collection());
    EXPECT_EQ(playlists.size(), 6);
    int dynamic = 0;
    for (const Playlist &playlist : playlists) {
        SCOPED_TRACE(playlist.name.toStdString());
        dynamic += playlist.autoPopulate;
        EXPECT_EQ(playlist.autoPopulate, !playlist.filters.isEmpty());
        EXPECT_EQ(playlist.autoPopulate, playlist.gameIds.isEmpty());
        for (const QString &id : playlist.gameIds)
            EXPECT_TRUE(
                std::any_of(games().begin(), games().end(), [&id](const GamePtr &game) { return game->id == id; }));
    }
    EXPECT_EQ(dynamic, 3);
}

TEST(DemoCollection, FillsTheFieldsOfAGame) {
    const GamePtr courier = game(QStringLiteral("MS-DOS"), QStringLiteral("Comet Courier"));
    ASSERT_TRUE(courier);
    EXPECT_EQ(courier->releaseYear, 1990);
    EXPECT_EQ(courier->releaseDate->date(), QDate(1990, 3, 2));
    EXPECT_TRUE(courier->dateAdded.has_value());
    EXPECT_EQ(courier->gameFolderName(), QStringLiteral("courier"));
    EXPECT_EQ(courier->starRating(), 5);
    EXPECT_EQ(courier->communityRatingCount, 341);
    EXPECT_EQ(courier->maxPlayers, 1);
    EXPECT_EQ(courier->series, QStringLiteral("Comet Courier"));
    EXPECT_FALSE(courier->overview.isEmpty());
    EXPECT_TRUE(courier->notesText().contains(QStringLiteral("\n\n")));

    EXPECT_TRUE(game(QStringLiteral("MS-DOS"), QStringLiteral("雪の灯台 (Yuki no Tōdai)")));
    EXPECT_EQ(game(QStringLiteral("MS-DOS"), QStringLiteral("Glass Harbour"))->broken, true);
    EXPECT_FALSE(game(QStringLiteral("MS-DOS"), QStringLiteral("Willowbyte Test Disk 7"))); // hidden
}

TEST(DemoCollection, HasEveryFileThatItsGamesName) {
    int checked = 0;
    QSet<QString> ids;
    const auto expectFile = [&checked](const QString &path) {
        if (path.isEmpty())
            return;
        ++checked;
        EXPECT_TRUE(QFileInfo(onDisk(path)).isFile()) << path.toStdString();
    };
    for (const GamePtr &game : games()) {
        ids.insert(game->id);
        expectFile(game->applicationPath);
        expectFile(game->configurationPath);
        expectFile(game->manualPath);
        expectFile(game->musicPath);
    }
    EXPECT_EQ(ids.size(), games().size());
    EXPECT_GT(checked, 70);
    checked = 0;
    for (const AdditionalApplication &application : parsed().additionalApplications) {
        expectFile(application.applicationPath);
        EXPECT_TRUE(ids.contains(application.gameId)) << application.name.toStdString();
    }
    EXPECT_GE(checked, 10);
}

TEST(DemoCollection, HoldsInstalledArchivedAndAbsentDosGames) {
    int installed = 0;
    int archived = 0;
    int absent = 0;
    const QString set = collection() + QStringLiteral("/eXo/eXoDOS/");
    for (const GamePtr &game : games()) {
        if (game->platform != QStringLiteral("MS-DOS"))
            continue;
        const QString archive = QStringLiteral("%1 (%2).zip")
                                    .arg(QString(game->title).replace(QStringLiteral(":"), QStringLiteral(" -")))
                                    .arg(*game->releaseYear);
        if (QFileInfo(set + game->gameFolderName()).isDir())
            ++installed;
        else if (QFileInfo(set + archive).isFile())
            ++archived;
        else
            ++absent;
    }
    EXPECT_EQ(installed, 8);
    EXPECT_EQ(archived, 10);
    EXPECT_EQ(absent, 2);
}

TEST(DemoCollection, PacksEachArchiveSoundlyIntoTheFolderOfItsGame) {
    int archives = 0;
    QSet<QString> folders;
    for (const GamePtr &game : games())
        folders.insert(game->gameFolderName());
    for (const QString &path : filesBelow(collection() + QStringLiteral("/eXo"))) {
        if (!path.endsWith(QStringLiteral(".zip")))
            continue;
        ++archives;
        QProcess unzip;
        unzip.start(QStringLiteral("unzip"), {QStringLiteral("-t"), path});
        ASSERT_TRUE(unzip.waitForFinished());
        EXPECT_EQ(unzip.exitCode(), 0) << path.toStdString();
        QProcess list;
        list.start(QStringLiteral("unzip"), {QStringLiteral("-Z1"), path});
        ASSERT_TRUE(list.waitForFinished());
        const QString first = QString::fromUtf8(list.readAllStandardOutput()).section(u'/', 0, 0);
        EXPECT_TRUE(folders.contains(first)) << first.toStdString();
    }
    EXPECT_EQ(archives, 15);
}

TEST(DemoCollection, KeepsWhatItsFileNamesPromise) {
    const QMap<QString, QByteArray> beginnings{
        {QStringLiteral("jpg"), "\xff\xd8\xff"},  {QStringLiteral("png"), "\x89PNG"},
        {QStringLiteral("pdf"), "%PDF-1."},       {QStringLiteral("wav"), "RIFF"},
        {QStringLiteral("nes"), "NES\x1a"},       {QStringLiteral("zip"), "PK\3\4"},
        {QStringLiteral("bsh"), "#!/usr/bin/env"}};
    QMap<QString, int> seen;
    for (const QString &path : filesBelow(collection())) {
        const QString extension = QFileInfo(path).suffix();
        const QByteArray beginning = beginnings.value(extension);
        ++seen[extension];
        EXPECT_EQ(head(path, beginning.size()), beginning) << path.toStdString();
        if (extension == QStringLiteral("bsh")) {
            EXPECT_TRUE(QFileInfo(path).isExecutable()) << path.toStdString();
        }
    }
    EXPECT_GT(seen[QStringLiteral("jpg")], 50);
    EXPECT_GT(seen[QStringLiteral("png")], 80);
    EXPECT_EQ(seen[QStringLiteral("gb")] + seen[QStringLiteral("nes")], 14);
}

TEST(DemoCollection, GivesHandheldCartridgesTheirHeaderSumAndNobodysLogo) {
    for (const QString &path : filesBelow(collection() + QStringLiteral("/Games/Nintendo Game Boy"))) {
        const QByteArray rom = head(path, 0x8000);
        ASSERT_EQ(rom.size(), 0x8000);
        EXPECT_EQ(rom.mid(0x104, 48), QByteArray(48, '\0'));
        int sum = 0;
        for (int at = 0x134; at <= 0x14C; ++at)
            sum = sum - static_cast<unsigned char>(rom[at]) - 1;
        EXPECT_EQ(static_cast<unsigned char>(rom[0x14D]), sum & 0xff) << path.toStdString();
    }
}

TEST(DemoCollection, RefusesAFolderThatHoldsAnything) {
    const QTemporaryDir folder;
    ASSERT_TRUE(makeFile(folder.filePath(QStringLiteral(".precious"))));
    const auto error = failureOfWriting(folder.path());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), std::errc::directory_not_empty);
    EXPECT_THAT(error->what(), testing::HasSubstr("needs an empty folder, and " + folder.path().toStdString()));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

TEST(DemoCollection, RefusesAFile) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("file"));
    ASSERT_TRUE(makeFile(file));
    for (const QString &target : {file, file + QStringLiteral("/below")}) {
        const auto error = failureOfWriting(target);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->code(), std::errc::not_a_directory);
        EXPECT_THAT(error->what(), testing::HasSubstr(file.toStdString()));
    }
}

TEST(DemoCollection, TakesBackWhatItWroteWhenTheDiskRefusesMore) {
    const QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("a/b"));
    // A limit on the size of files stands for a full disk: the first writes succeed, a larger file fails half-way.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{20000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto error = failureOfWriting(target);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, ignored);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), std::errc::file_too_large);
    EXPECT_THAT(error->what(), testing::HasSubstr(target.toStdString()));
    EXPECT_FALSE(QFileInfo::exists(folder.filePath(QStringLiteral("a"))));
}

} // namespace ludarium
