#include "App/LaunchDatabases.h"
#include "Host/Async.h"
#include "Host/Settings.h"
#include "Services/Library/GameLibrary.h"
#include "Views/DesktopOptions.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QFile>
#include <QQmlComponent>
#include <QSignalSpy>
#include <cmath>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;

/// On a full disk.
class FullSettings : public MemorySettings {
  public:
    void setRawValue(const QString &, const QVariant &) override { throw SettingsError("No space left on device"); }
};

/// The contrast of two colours as the accessibility guidelines measure it: 1 to 21.
double contrast(const QColor &a, const QColor &b) {
    const auto luminance = [](const QColor &color) {
        const auto part = [](float value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const double one = luminance(a), other = luminance(b);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

/// What is seen of `color` at this opacity over `ground`.
QColor over(const QColor &color, const QColor &ground, double opacity) {
    const auto part = [&](float above, float below) { return float(above * opacity + below * (1 - opacity)); };
    return QColor::fromRgbF(part(color.redF(), ground.redF()), part(color.greenF(), ground.greenF()),
                            part(color.blueF(), ground.blueF()));
}

DesktopOptions::Outcome parse(std::initializer_list<const char *> arguments) {
    std::vector<const char *> all{"ludarium"};
    all.insert(all.end(), arguments);
    return DesktopOptions::parse(int(all.size()), all.data());
}

} // namespace

TEST(Theme, KeepsEveryTextReadableOnEveryGround) {
    DesktopFixture fixture;
    fixture.desktop.installInto(fixture.engine());
    QQmlComponent component(&fixture.engine());
    component.setData("import QtQuick\nimport Ludarium\nQtObject { property var theme: Theme }", {});
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_NE(holder, nullptr) << qPrintable(component.errorString());
    auto *theme = holder->property("theme").value<QObject *>();
    const auto color = [&](const char *name) { return theme->property(name).value<QColor>(); };
    QSet<QRgb> windows;
    for (const char *name :
         {"System Dark", "System Light", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"}) {
        ASSERT_TRUE(fixture.desktop.appearance()->showTheme(QString::fromUtf8(name)));
        windows.insert(color("window").rgb());
        for (const char *ground : {"window", "sidebar", "surface", "raised", "hover", "selection"})
            for (const char *text : {"text", "textSecondary", "danger", "warning", "success", "accent"})
                // In a selected row the accent draws marks only, which need less.
                EXPECT_GE(contrast(color(text), color(ground)),
                          strcmp(text, "accent") == 0 && strcmp(ground, "selection") == 0 ? 3 : 4.5)
                    << name << ": " << text << " on " << ground;
        EXPECT_GE(contrast(color("text"), color("border")), 4.5) << name << ": a pressed button";
        for (const char *ground : {"accent", "accentHovered", "accentPressed"})
            EXPECT_GE(contrast(color("accentText"), color(ground)), 4.5) << name << ": " << ground;
        const double disabled = theme->property("disabledOpacity").toDouble();
        for (const char *behind : {"window", "sidebar", "surface", "raised"}) {
            const QColor ground = color(behind);
            const QColor text = over(color("text"), ground, disabled);
            EXPECT_GE(contrast(text, ground), 4.5) << name << ": disabled on " << behind;
            EXPECT_GE(contrast(text, over(color("raised"), ground, disabled)), 4.5) << name << ": disabled button";
            for (const char *notice : {"noticeOrangeGround", "noticeBlueGround"}) {
                const QColor tinted = over(color(notice), ground, color(notice).alphaF());
                for (const char *said : {"text", "textSecondary"})
                    EXPECT_GE(contrast(color(said), tinted), 4.5) << name << ": " << said << " on a notice";
                for (const char *mark : {"noticeRed", "noticeOrange", "noticeYellow", "noticeBlue"})
                    EXPECT_GE(contrast(color(mark), tinted), 3) << name << ": " << mark << " on a notice";
            }
        }
        // Badges stand on covers of any colour, white the worst.
        for (const char *ink : {"coverText", "badgeGood", "badgeStar"})
            EXPECT_GE(contrast(color(ink), over(color("badge"), Qt::white, color("badge").alphaF())), 4.5) << ink;
    }
    EXPECT_EQ(windows.size(), 6) << "each theme has a ground of its own";
    for (int hue = 0; hue < 360; hue += 10) {
        QColor cover;
        ASSERT_TRUE(
            QMetaObject::invokeMethod(theme, "coverColor", Q_RETURN_ARG(QColor, cover), Q_ARG(double, hue / 360.0)));
        EXPECT_GE(contrast(color("coverText"), cover), 4.5) << hue;
    }
}

TEST(Appearance, KeepsAThemeOfTheFiveAndNothingElse) {
    DesktopFixture fixture;
    Appearance &appearance = *fixture.desktop.appearance();
    appearance.setTheme(QStringLiteral("Vaporwave"));
    EXPECT_EQ(appearance.theme(), QStringLiteral("System"));
    appearance.setTheme(QStringLiteral("Ocean Blue"));
    EXPECT_EQ(fixture.machine.settings.value(Settings::appTheme), QStringLiteral("Ocean Blue"));
    EXPECT_TRUE(appearance.showTheme(QStringLiteral("System Light")));
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(fixture.machine.settings.value(Settings::appTheme), QStringLiteral("Ocean Blue"))
        << "a theme for one run is not kept";
    fixture.machine.settings.setValue(Settings::appTheme, QStringLiteral("Vaporwave"));
    EXPECT_EQ(Appearance(fixture.host).theme(), QStringLiteral("System"));
}

TEST(QmlDialogs, AnswersWhatIsStillAskedWithTheLastButtonAtTheEnd) {
    int answer = -1;
    std::optional<QString> folder = QStringLiteral("unanswered");
    {
        QmlDialogs dialogs;
        spawn(
            [](QmlDialogs &asked, int &result) -> QCoro::Task<> {
                Alert alert;
                alert.buttons = QStringList{QStringLiteral("Yes"), QStringLiteral("No")};
                result = co_await asked.ask(alert);
            }(dialogs, answer),
            "a test's question");
        spawn(
            [](QmlDialogs &asked, std::optional<QString> &result) -> QCoro::Task<> {
                const QString prompt = QStringLiteral("Select");
                result = co_await asked.chooseFolder(prompt);
            }(dialogs, folder),
            "a test's question");
        EXPECT_TRUE(dialogs.isActive());
        EXPECT_TRUE(dialogs.isChoosingFolder());
        dialogs.answer(7);
        EXPECT_TRUE(dialogs.isActive()) << "there is no such button";
    }
    ASSERT_TRUE(waitUntil([&] { return answer >= 0 && !folder; }));
    EXPECT_EQ(answer, 1);
}

TEST(Desktop, TellsWhyACollectionDidNotLoad) {
    DesktopFixture fixture;
    fixture.state.setCollectionPath(fixture.machine.scratch());
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    EXPECT_EQ(fixture.dialogs.text(), QStringLiteral("Invalid collection. Expected folders: Data/, eXo/, Images/"));
    EXPECT_EQ(fixture.dialogs.buttons(), QStringList{QStringLiteral("OK")});
    fixture.dialogs.dismiss();
    EXPECT_EQ(fixture.desktop.library()->state(), QStringLiteral("error"));
}

TEST(Desktop, KeepsTheGamesOfACollectionThatGoesAwayAndNamesItAtTheNextStart) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    const QString folder = fixture.collection();
    const QString away = folder + QStringLiteral(" unplugged");
    LibraryStatus &library = *fixture.desktop.library();
    const int count = library.gameCount();
    const auto refresh = [&] {
        fixture.desktop.refreshLibrary();
        return waitUntil([&] { return !library.isLoading(); });
    };
    ASSERT_TRUE(QDir().rename(folder, away));
    ASSERT_TRUE(refresh());
    EXPECT_TRUE(library.unavailable().contains(folder)) << library.unavailable().toStdString();
    EXPECT_EQ(library.gameCount(), count);
    EXPECT_EQ(library.state(), QStringLiteral("ready"));
    EXPECT_FALSE(fixture.dialogs.isActive()) << "told in the window, not over it";

    QSignalSpy warned(&fixture.desktop, &Desktop::warned);
    fixture.desktop.settings()->item(u"clearCache"_s)->activate();
    ASSERT_EQ(warned.count(), 1);
    EXPECT_TRUE(warned.first().first().toString().contains(folder));

    AppState next(fixture.host, fixture.emulators, LaunchDatabases(fixture.host));
    const LibraryStatus nextLibrary(next);
    EXPECT_TRUE(next.restoreCollection());
    ASSERT_TRUE(waitUntil([&] { return !nextLibrary.isLoading(); }));
    EXPECT_TRUE(nextLibrary.unavailable().contains(folder)) << nextLibrary.unavailable().toStdString();
    EXPECT_EQ(nextLibrary.state(), QStringLiteral("ready"));
    EXPECT_EQ(nextLibrary.gameCount(), count);

    ASSERT_TRUE(QDir().rename(away, folder));
    ASSERT_TRUE(refresh());
    EXPECT_TRUE(waitUntil([&] { return library.unavailable().isEmpty(); }));
    EXPECT_EQ(library.gameCount(), count);
}

TEST(Desktop, AsksForAFolderWhenTheLastOneIsNotThereAndNothingIsKnownOfIt) {
    DesktopFixture fixture(true);
    const QString folder = fixture.collection();
    ASSERT_TRUE(QDir().rename(folder, folder + u" unplugged"_s));
    fixture.machine.settings.setValue(Settings::hasCompletedFirstRun, true);
    fixture.machine.settings.setValue(Settings::collectionPath, folder);
    LibraryStatus &library = *fixture.desktop.library();
    QSignalSpy asked(fixture.desktop.start(), &StartScreen::folderNeeded);
    QSignalSpy opened(&fixture.desktop, &Desktop::collectionOpened);
    QSignalSpy warned(&fixture.desktop, &Desktop::warned);
    EXPECT_TRUE(fixture.state.restoreCollection());
    fixture.desktop.start()->setAsking(true);
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return asked.count() == 1; }));
    EXPECT_EQ(library.state(), u"away"_s);
    EXPECT_FALSE(fixture.dialogs.isActive()) << "the same is told twice";

    fixture.desktop.reopenCollection();
    ASSERT_TRUE(waitUntil([&] { return warned.count() == 1; }));
    EXPECT_TRUE(warned.first().first().toString().contains(folder));
    EXPECT_EQ(opened.count(), 0);
    ASSERT_TRUE(QDir().rename(folder + u" unplugged"_s, folder));
    fixture.desktop.reopenCollection();
    ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
    EXPECT_EQ(library.state(), u"ready"_s);
    EXPECT_TRUE(library.unavailable().isEmpty());
}

TEST(Desktop, TellsWhyAChoiceIsNotKept) {
    DesktopFixture fixture;
    const QString folder = fixture.collection();
    FullSettings settings;
    const Host &disk = fixture.host;
    Host full{disk.paths,   settings,      disk.processes, disk.http,         disk.workspace,
              disk.dialogs, disk.terminal, disk.clock,     disk.notifications};
    AppState state(full, fixture.emulators, LaunchDatabases(full));
    Desktop desktop(state, fixture.dialogs, *AppLogger::shared());
    QSignalSpy warned(&desktop, &Desktop::warned);
    const std::pair<const char *, std::function<void()>> choices[] = {
        {"first run", [&] { desktop.start()->completeFirstRun(); }},
        {"collection", [&] { desktop.openCollection(folder); }},
        {"columns", [&] { desktop.browse()->table()->resetWidth(0); }},
        {"theme", [&] { desktop.appearance()->setTheme(u"Ocean Blue"_s); }},
        {"sidebar", [&] { desktop.sidebar()->setShown(false); }},
    };
    for (const auto &[name, choose] : choices) {
        warned.clear();
        choose();
        ASSERT_EQ(warned.count(), 1) << name;
        EXPECT_TRUE(warned.first().first().toString().contains(u"No space left on device"_s)) << name;
    }
    EXPECT_TRUE(waitUntil([&] { return desktop.library()->gameCount() > 0 && !desktop.library()->isLoading(); }))
        << "the folder is used all the same";
}

TEST(Desktop, OpensTheChosenFolderAndShowsAllOfIt) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    fixture.desktop.sidebar()->select(1);
    fixture.desktop.browse()->setCurrentRow(0);
    const QString other = fixture.machine.scratch() + QStringLiteral("/other");
    FixtureCollection::write(other);
    fixture.desktop.chooseCollection();
    fixture.desktop.chooseCollection();
    EXPECT_EQ(fixture.dialogs.folderPrompt(), QStringLiteral("Select"));
    fixture.dialogs.folderChosen(QUrl::fromLocalFile(other));
    EXPECT_FALSE(fixture.dialogs.isChoosingFolder()) << "a second request while one is open asks nothing more";
    ASSERT_TRUE(waitUntil([&] { return fixture.state.collectionPath() == other; }));
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.browse()->games()->count() == 36; }));
    EXPECT_FALSE(fixture.desktop.detail()->hasGame());
    EXPECT_EQ(fixture.desktop.browse()->title(), QStringLiteral("All Games"));
}

TEST(StartScreen, StaysUntilTheLibraryIsLoadedAndThenAsksForWhatIsMissing) {
    struct Case {
        bool firstRunDone;
        int firstRunAsked;
        int folderAsked;
        QString notice;
    };
    for (const auto &[done, firstRun, folder, notice] :
         {Case{false, 1, 0, {}}, Case{true, 0, 1, {}}, Case{false, 1, 0, QStringLiteral("Nothing is saved")}}) {
        DesktopFixture fixture;
        fixture.machine.settings.setValue(Settings::hasCompletedFirstRun, done);
        QSignalSpy firstRunAsked(fixture.desktop.start(), &StartScreen::firstRunNeeded);
        QSignalSpy folderAsked(fixture.desktop.start(), &StartScreen::folderNeeded);
        fixture.desktop.start()->setAsking(true);
        fixture.desktop.start()->setNotice(notice);
        fixture.desktop.start()->begin();
        if (!notice.isEmpty()) {
            ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.text() == notice; }));
            EXPECT_EQ(firstRunAsked.count(), 0) << "first what has to be known";
            fixture.dialogs.dismiss();
        }
        ASSERT_TRUE(waitUntil([&] { return firstRunAsked.count() + folderAsked.count() > 0; }));
        EXPECT_FALSE(fixture.desktop.start()->isVisible());
        EXPECT_EQ(firstRunAsked.count(), firstRun);
        EXPECT_EQ(folderAsked.count(), folder);
        EXPECT_GE(fixture.machine.clock.elapsed, std::chrono::milliseconds(1100));
    }
}

TEST(LogModel, FollowsTheFileFiltersItAndStartsAnewWhenItIsCleared) {
    DesktopFixture fixture;
    LogModel &log = *fixture.desktop.log();
    Log::info(QStringLiteral("a first line"));
    Log::error(QStringLiteral("a WARN and DEBUG named, grave line"));
    log.setWatching(true);
    const auto last = [&] { return log.data(log.index(log.count() - 1), LogModel::lineRole).toString(); };
    const auto lastIs = [&](const char *text) { return last().endsWith(QString::fromUtf8(text)); };
    ASSERT_TRUE(waitUntil([&] { return log.count() > 0 && lastIs("grave line"); }));
    EXPECT_EQ(log.data(log.index(log.count() - 1), LogModel::levelRole).toString(), QStringLiteral("error"));
    log.setFilter(QStringLiteral("FIRST"));
    EXPECT_EQ(log.count(), 1);
    Log::info(QStringLiteral("another first"));
    Log::info(QStringLiteral("hidden"));
    ASSERT_TRUE(waitUntil([&] { return log.count() == 2; }));
    EXPECT_TRUE(lastIs("another first"));
    log.setFilter({});
    ASSERT_TRUE(waitUntil([&] { return lastIs("hidden"); }));
    log.copyAll();
    ASSERT_TRUE(waitUntil([&] { return !fixture.machine.workspace.actions.isEmpty(); }));
    EXPECT_TRUE(fixture.machine.workspace.actions.first().contains(QStringLiteral("grave line")));
    log.setFilter(QStringLiteral("grave line"));
    EXPECT_EQ(log.count(), 1);
    log.clear();
    ASSERT_TRUE(waitUntil([&] { return log.count() == 0; }));
    log.setFilter({});
    Log::info(QStringLiteral("a new beginning"));
    ASSERT_TRUE(waitUntil([&] { return log.count() > 0 && lastIs("a new beginning"); }));
}

TEST(DesktopOptions, UnderstandsItsCommandLine) {
    const DesktopOptions::Outcome outcome =
        parse({"/games", "--home", "/tmp/h", "--screenshot", "/tmp/p.png", "--size", "900x600", "--view", "list",
               "--theme", "Ocean Blue", "--select", "Copper Harbor"});
    ASSERT_TRUE(outcome.options) << qPrintable(outcome.output);
    EXPECT_EQ(outcome.options->folder, QStringLiteral("/games"));
    EXPECT_EQ(outcome.options->home, QStringLiteral("/tmp/h"));
    EXPECT_EQ(outcome.options->screenshot, QStringLiteral("/tmp/p.png"));
    EXPECT_EQ(outcome.options->size, QSize(900, 600));
    EXPECT_EQ(outcome.options->view, QStringLiteral("List"));
    EXPECT_EQ(outcome.options->theme, QStringLiteral("Ocean Blue"));
    EXPECT_EQ(outcome.options->select, QStringLiteral("Copper Harbor"));
    ASSERT_TRUE(parse({}).options);
    EXPECT_TRUE(parse({}).options->folder.isEmpty());
}

TEST(DesktopOptions, EndsWithTwoOnWrongUsageAndWithNoneOnItsVersion) {
    for (const auto &arguments : std::initializer_list<std::initializer_list<const char *>>{{"--size", "900"},
                                                                                            {"--size", "0x600"},
                                                                                            {"--size", "99999x600"},
                                                                                            {"--view", "mosaic"},
                                                                                            {"--theme", "Vaporwave"},
                                                                                            {"one", "two"},
                                                                                            {"--unknown"}}) {
        const DesktopOptions::Outcome outcome = parse(arguments);
        EXPECT_FALSE(outcome.options);
        EXPECT_EQ(outcome.exitStatus, 2);
        EXPECT_FALSE(outcome.output.isEmpty());
    }
    const DesktopOptions::Outcome version = parse({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.output.trimmed(), QStringLiteral("ludarium " LUDARIUM_VERSION));
}

} // namespace ludarium::test
