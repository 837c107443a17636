#include "Services/Launch/AdditionalApp.h"

#include "Models/LaunchError.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;

namespace {

struct AppCase {
    const char *name;
    QString appName;
    QString path;
    QStringList files;
    /// "soundtrack", "script {path}", "document {path}" or the text of the error, paths below the collection.
    QString expected;
};

void PrintTo(const AppCase &app, std::ostream *out) {
    *out << app.name;
}

class AdditionalApps : public testing::TestWithParam<AppCase> {};

} // namespace

TEST_P(AdditionalApps, AreStartedByNameTypeAndWhatIsThere) {
    const AppCase &app = GetParam();
    TestHost host;
    const QString root = host.scratch() + u'/';
    for (const QString &name : app.files) {
        QDir().mkpath(QFileInfo(root + name).path());
        QFile file(root + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    Game game;
    game.title = u"Foo"_s;
    game.configurationPath = u"eXo\\eXoDOS\\!dos\\foo\\foo.conf"_s;
    AdditionalApplication application;
    application.name = app.appName;
    application.applicationPath = app.path;
    QString outcome;
    try {
        const AdditionalApp found = AdditionalApp::find(application, game, host.scratch(), u"Linux"_s);
        outcome = found.action == AdditionalApp::Action::soundtrack ? u"soundtrack"_s
                  : found.action == AdditionalApp::Action::script   ? u"script "_s + found.path
                                                                    : u"document "_s + found.path;
    } catch (const LaunchError &error) {
        outcome = error.text();
    }
    EXPECT_EQ(outcome.remove(root), app.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AdditionalApps,
    testing::Values(
        AppCase{
            "music by its name, whatever its path", u"Music Sampler"_s, u"a\\b.pdf"_s, {u"a/b.pdf"_s}, u"soundtrack"_s},
        AppCase{"a video's script before its own path",
                u"Video Guide"_s,
                u"eXo\\Videos\\Guide\\g.bat"_s,
                {u"eXo/Videos/Guide/run.command"_s, u"eXo/Videos/Guide/run.bsh"_s},
                u"script eXo/Videos/Guide/run.bsh"_s},
        AppCase{"a video's script in the game's folder",
                u"Video Guide"_s,
                u"eXo\\Videos\\Guide\\g.bat"_s,
                {u"eXo/eXoDOS/!dos/foo/run.command"_s},
                u"script eXo/eXoDOS/!dos/foo/run.command"_s},
        AppCase{"a video without a script", u"Video Guide"_s, u"v\\g.mp4"_s, {u"v/g.mp4"_s}, u"document v/g.mp4"_s},
        AppCase{"the twin of a batch file",
                u"Alternate"_s,
                u"a\\Run.BAT"_s,
                {u"a/Run.BAT"_s, u"a/Run.command"_s, u"a/Run.bsh"_s},
                u"script a/Run.bsh"_s},
        AppCase{"a batch file alone",
                u"Alternate"_s,
                u"a\\run.bat"_s,
                {u"a/run.bat"_s},
                u"Windows batch file (.bat) found, but no Linux equivalent (.bsh or .command) exists in the same "
                "directory."_s},
        AppCase{"a script", u"Alternate"_s, u"a\\run.bsh"_s, {u"a/run.bsh"_s}, u"script a/run.bsh"_s},
        AppCase{"a document", u"Manual"_s, u"a\\m.pdf"_s, {u"a/m.pdf"_s}, u"document a/m.pdf"_s},
        AppCase{"nothing there", u"Manual"_s, u"a\\m.pdf"_s, {}, u"File not found: a/m.pdf"_s},
        AppCase{"no path", u"Manual"_s, {}, {}, u"This game does not have a configured launch path."_s},
        AppCase{"a path that leaves the collection",
                u"Manual"_s,
                u"..\\..\\m.pdf"_s,
                {},
                u"File not found: ..\\..\\m.pdf"_s}));
