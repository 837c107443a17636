#include "Services/Runners/ExtrasManager.h"

#include "Services/Runners/CollectionDocument.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;

namespace {

struct ExtrasCase {
    const char *name;
    QStringList files; ///< below the collection
    QString applicationPath = u"eXo\\eXoDOS\\!dos\\foo\\foo.bat"_s;
    QString manualPath = {};
    QStringList expected = {}; ///< "type name", in order
};

void PrintTo(const ExtrasCase &extras, std::ostream *out) {
    *out << extras.name;
}

class Extras : public testing::TestWithParam<ExtrasCase> {};

constexpr auto folder = "eXo/eXoDOS/!dos/foo/Extras/";

QStringList inExtras(const QStringList &names) {
    QStringList paths;
    for (const QString &name : names)
        paths.append(QLatin1StringView(folder) + name);
    return paths;
}

QString write(TestHost &host, const QString &name, const QByteArray &content = "x") {
    const QString path = host.scratch() + u'/' + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << qPrintable(path);
    return path;
}

GamePtr foo(const QString &applicationPath = u"eXo\\eXoDOS\\!dos\\foo\\foo.bat"_s) {
    auto game = std::make_shared<Game>();
    game->title = u"Foo"_s;
    game->platform = u"MS-DOS"_s;
    game->releaseYear = 1993;
    game->applicationPath = applicationPath;
    return game;
}

QStringList describe(const ExtrasManager::Extras &extras) {
    QStringList list;
    for (auto it = extras.cbegin(); it != extras.cend(); ++it)
        for (const ExtraItem &item : it.value()) {
            EXPECT_EQ(item.type, it.key());
            list.append(extraTypeText(it.key()) + u' ' + item.name);
        }
    return list;
}

} // namespace

TEST_P(Extras, AreListedByTypeAndName) {
    const ExtrasCase &extras = GetParam();
    TestHost host;
    for (const QString &file : extras.files)
        write(host, file);
    auto game = std::make_shared<Game>(*foo(extras.applicationPath));
    game->manualPath = extras.manualPath;
    ExtrasManager manager(host);
    const auto found = await(manager.getExtras(game, host.scratch()));
    EXPECT_EQ(describe(found), extras.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Extras,
    testing::Values(
        ExtrasCase{"every type but Windows programs",
                   inExtras({u"b.PDF"_s, u"a.txt"_s, u"map.tiff"_s, u"intro.mkv"_s, u"theme.Mid"_s, u"h.uhs"_s,
                             u"run.bat"_s, u"x.exe"_s, u"old.7z"_s, u"notes"_s}),
                   u"eXo\\eXoDOS\\!dos\\foo\\foo.bat"_s,
                   {},
                   {u"document a.txt"_s, u"document b.PDF"_s, u"image map.tiff"_s, u"video intro.mkv"_s,
                    u"audio theme.Mid"_s, u"hint h.uhs"_s, u"archive old.7z"_s, u"other notes"_s}},
        ExtrasCase{"folders below, and nothing hidden",
                   inExtras({u"deep/er/a.txt"_s, u".hidden.txt"_s, u".git/b.txt"_s}),
                   u"eXo\\eXoDOS\\!dos\\foo\\foo.bat"_s,
                   {},
                   {u"document a.txt"_s}},
        ExtrasCase{"an archive whose name says that it is music",
                   inExtras({u"Foo SoundTrack.rar"_s, u"z.mp3"_s}),
                   u"eXo\\eXoDOS\\!dos\\foo\\foo.bat"_s,
                   {},
                   {u"audio z.mp3"_s, u"audio Foo SoundTrack.rar"_s}},
        ExtrasCase{
            "a path that is a folder", inExtras({u"a.txt"_s}), u"eXo\\eXoDOS\\!dos\\foo"_s, {}, {u"document a.txt"_s}},
        ExtrasCase{"no path", inExtras({u"a.txt"_s}), QString(), {}, {}},
        ExtrasCase{
            "a path that leaves the collection", {u"inner/a.txt"_s, u"Extras/b.txt"_s}, u"..\\..\\foo.bat"_s, {}, {}},
        ExtrasCase{"the manual that the record names",
                   {u"Manuals/MS-DOS/Foo.pdf"_s, u"Docs/own.doc"_s},
                   {},
                   u"Docs\\own.doc"_s,
                   {u"manual own.doc"_s}},
        ExtrasCase{"the manual of the title when the named one is missing",
                   {u"Manuals/MS-DOS/Foo.txt"_s, u"Manuals/MS-DOS/Foo (1993).pdf"_s},
                   {},
                   u"Docs\\own.doc"_s,
                   {u"manual Foo.txt"_s}},
        ExtrasCase{"the manual of title and year",
                   {u"Manuals/MS-DOS/Foo (1993).HTML"_s},
                   {},
                   {},
                   {u"manual Foo (1993).HTML"_s}},
        ExtrasCase{"no manual outside", {u"x"_s}, {}, u"../../../../etc/passwd"_s, {}}));

TEST(ExtrasManager, TellsMusicArchivesByWhatTheyHoldWhateverTheirNames) {
    if (QStandardPaths::findExecutable(u"zip"_s).isEmpty() || QStandardPaths::findExecutable(u"zipinfo"_s).isEmpty())
        GTEST_SKIP() << "zip and zipinfo are not installed";
    TestHost host;
    const QString real = QStandardPaths::findExecutable(u"zipinfo"_s);
    host.putProgram(u"/usr/bin/zipinfo"_s, "exec " + real.toUtf8() + " \"$@\"\n");
    const QString extras = host.scratch() + u'/' + QLatin1StringView(folder);
    const auto zip = [&](const QString &name, const QString &entry) {
        write(host, QLatin1StringView(folder) + entry);
        QProcess process;
        process.setWorkingDirectory(extras);
        process.start(u"zip"_s, {u"-q"_s, u"-m"_s, name, entry});
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0);
    };
    // As a pattern the first name would be that of the second.
    zip(u"Disc [1].zip"_s, u"01.FLAC"_s);
    zip(u"Disc 1.zip"_s, u"readme.txt"_s);
    write(host, QLatin1StringView(folder) + u"broken.zip"_s);
    ExtrasManager manager(host);
    EXPECT_EQ(describe(await(manager.getExtras(foo(), host.scratch()))),
              (QStringList{u"audio Disc [1].zip"_s, u"archive Disc 1.zip"_s, u"archive broken.zip"_s}));
}

TEST(ExtrasManager, LeavesOutLinksThatLeadOutOfTheCollection) {
    TestHost host;
    write(host, u"collection/Docs/inside.txt"_s);
    write(host, u"outside.txt"_s);
    const QString collection = host.scratch() + u"/collection"_s;
    const QString extras = collection + u'/' + QLatin1StringView(folder);
    ASSERT_TRUE(QDir().mkpath(extras));
    ASSERT_TRUE(QFile::link(collection + u"/Docs/inside.txt"_s, extras + u"in.txt"_s));
    ASSERT_TRUE(QFile::link(host.scratch() + u"/outside.txt"_s, extras + u"out.txt"_s));
    ExtrasManager manager(host);
    EXPECT_EQ(describe(await(manager.getExtras(foo(), collection))), QStringList{u"document in.txt"_s});
}

TEST(CollectionDocument, OpensDocumentsOfTheCollectionAndNothingElse) {
    TestHost host;
    const QString collection = host.scratch() + u"/collection"_s;
    const auto reason = [&](const QString &path) {
        return await(CollectionDocument::open(&host.host(), path, collection));
    };
    const QString manual = write(host, u"collection/manual.pdf"_s);
    EXPECT_EQ(reason(manual), QString());
    EXPECT_EQ(host.workspace.actions, QStringList{u"file "_s + manual});
    host.workspace.actions.clear();

    const QString outside = write(host, u"collection-of-others/manual.pdf"_s);
    ASSERT_TRUE(QFile::link(outside, collection + u"/link.pdf"_s));
    for (const QString &path :
         {outside, collection + u"/link.pdf"_s, collection + u"/../collection-of-others/manual.pdf"_s})
        EXPECT_EQ(reason(path), u"it lies outside the collection"_s) << qPrintable(path);
    EXPECT_EQ(reason(collection + u"/gone.pdf"_s), u"it does not exist"_s);
    EXPECT_NE(reason(write(host, u"collection/help.desktop"_s, "[Desktop Entry]\n")), QString());
    EXPECT_NE(reason(write(host, u"collection/manual.txt"_s, "#!/bin/sh\n")), QString());
    EXPECT_EQ(host.workspace.actions, QStringList());

    host.workspace.answer = false;
    EXPECT_EQ(reason(manual), u"no program for files of its type was found"_s);
}
