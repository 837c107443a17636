#include "Services/Launch/VideoFolder.h"

#include "Models/LaunchError.h"
#include "support/TestHost.h"

#include <QDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;

namespace {

struct VideoCase {
    QString title;
    QString applicationPath;
    QString configurationPath;
    QStringList folders; ///< below {collection}/eXo/Videos
    QString expected;    ///< null when none
};

void PrintTo(const VideoCase &video, std::ostream *out) {
    *out << qPrintable(video.title) << " " << qPrintable(video.applicationPath);
}

class VideoFolders : public testing::TestWithParam<VideoCase> {};

} // namespace

TEST_P(VideoFolders, AreFoundByTitlePathAndListing) {
    const VideoCase &video = GetParam();
    TestHost host;
    const QString root = host.scratch() + u"/eXo/Videos"_s;
    ASSERT_TRUE(QDir().mkpath(root));
    for (const QString &folder : video.folders)
        ASSERT_TRUE(QDir().mkpath(root + u'/' + folder));
    Game game;
    game.title = video.title;
    game.applicationPath = video.applicationPath;
    game.configurationPath = video.configurationPath;
    if (!video.expected.isNull()) {
        EXPECT_EQ(VideoFolder::find(game, host.scratch()).path, root + u'/' + video.expected);
        return;
    }
    try {
        VideoFolder::find(game, host.scratch());
        ADD_FAILURE() << "found a folder";
    } catch (const LaunchError &error) {
        EXPECT_EQ(error.text(), u"File not found: Video folder not found for: "_s + video.title);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, VideoFolders,
    testing::Values(
        VideoCase{u"Foo Video"_s, u"eXo\\Videos\\Bar\\p.bat"_s, {}, {u"Foo Video"_s, u"Bar"_s}, u"Foo Video"_s},
        VideoCase{u"Foo"_s, u"eXo\\Videos\\Bar\\p.bat"_s, u"eXo\\Videos\\Baz\\p.bat"_s, {u"Bar"_s, u"Baz"_s}, u"Bar"_s},
        VideoCase{u"Foo"_s, u"eXo\\Videos\\Gone\\p.bat"_s, u"eXo\\Videos\\Baz\\p.bat"_s, {u"Baz"_s}, u"Baz"_s},
        VideoCase{u"Foo [Redux]"_s, {}, {}, {u"Foo"_s, u"Foo 2"_s}, u"Foo"_s},
        VideoCase{u"Foo (Redux)"_s, {}, {}, {u"The Foo"_s, u"Foo (1994)"_s}, u"Foo (1994)"_s},
        VideoCase{u"foo"_s, {}, {}, {u"The FOO Story"_s}, u"The FOO Story"_s},
        VideoCase{u"Foo"_s, {}, {}, {u"Bar"_s}, {}}, VideoCase{u"Foo"_s, u"eXo\\Videos"_s, {}, {u"Bar"_s}, {}},
        // What is no folder name finds nothing, neither outside nor everything.
        VideoCase{u".."_s, u"eXo\\Videos\\..\\p.bat"_s, {}, {u"Bar"_s}, {}},
        VideoCase{u"../../outside"_s, {}, {}, {u"Bar"_s}, {}}, VideoCase{u" (Redux)"_s, {}, {}, {u"Bar"_s}, {}}));

TEST(VideoFolder, PrefersAShellScriptOverACommandAndNeedsNeither) {
    TestHost host;
    const QString folder = host.scratch() + u"/eXo/Videos/Foo"_s;
    Game game;
    game.title = u"Foo"_s;
    const auto touch = [&](const QString &name) {
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile file(folder + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    };
    touch(u"foo.mp4"_s);
    EXPECT_EQ(VideoFolder::find(game, host.scratch()).script(), QString());
    touch(u"a.command"_s);
    EXPECT_EQ(VideoFolder::find(game, host.scratch()).script(), folder + u"/a.command"_s);
    touch(u"z.bsh"_s);
    EXPECT_EQ(VideoFolder::find(game, host.scratch()).script(), folder + u"/z.bsh"_s);
}

TEST(VideoFolder, SaysWhichFolderItCannotRead) {
    TestHost host;
    Game game;
    game.title = u"Foo"_s;
    try {
        VideoFolder::find(game, host.scratch());
        ADD_FAILURE() << "found a folder";
    } catch (const LaunchError &error) {
        EXPECT_EQ(error.text(), u"File not found: Cannot access video folder: "_s + host.scratch() + u"/eXo/Videos"_s);
    }
}

TEST(VideoFolder, LogsTheFirstTenNamesWhenNoneFits) {
    TestHost host;
    for (int i = 0; i < 12; ++i)
        ASSERT_TRUE(QDir().mkpath(host.scratch() + u"/eXo/Videos/Other %1"_s.arg(i)));
    Game game;
    game.title = u"Foo"_s;
    EXPECT_THROW(VideoFolder::find(game, host.scratch()), LaunchError);
    EXPECT_EQ(host.log().count(u"- Other"_s), 10);
}
