#include "Host/Settings.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

using namespace Qt::StringLiterals;

QStringList labels(const QList<QObject *> &items) {
    QStringList result;
    for (const QObject *item : items)
        result.append(item->property("label").toString());
    return result;
}

/// The row of the emulator of this name.
QModelIndex rowOf(const EmulatorListModel &model, const QString &name) {
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.data(model.index(row), EmulatorListModel::nameRole) == name)
            return model.index(row);
    return {};
}

} // namespace

TEST(SettingsCatalog, HasARowForEveryKeyThatIsKeptAndStartsAtItsDefault) {
    struct Case {
        const char *key;
        QVariant atFirst;
        QVariant wanted;
    };
    DesktopFixture fixture;
    fixture.desktop.appearance()->showReducedMotion(false);
    for (const auto &[key, atFirst, wanted] :
         {Case{"appTheme", u"System"_s, u"Ocean Blue"_s}, Case{"reducedMotion", false, true},
          Case{"viewMode", u"Grid"_s, u"List"_s}, Case{"gridSize", u"Medium"_s, u"Extra Large"_s},
          Case{"sortOrder", u"Title"_s, u"Most Played"_s}, Case{"groupDuplicateGames", true, false},
          Case{"launchFullscreen", true, false}, Case{"disableCRTEffects", false, true},
          Case{"mt32NotificationsDisabled", false, true}, Case{"enableThumbnailDiskCache", false, true},
          Case{"skipInstallCheck", false, true}, Case{"logUploadConsent", false, true},
          Case{"logUploadURL", QString(), u"https://logs.example/"_s}}) {
        SettingItem *item = fixture.desktop.settings()->item(QString::fromUtf8(key));
        ASSERT_NE(item, nullptr) << key;
        EXPECT_EQ(item->value(), atFirst) << key;
        EXPECT_FALSE(item->label().isEmpty() || item->help().isEmpty()) << key;
        EXPECT_TRUE(fixture.desktop.settings()->itemsOf(item->tab()).contains(item)) << key;
        QSignalSpy changed(item, &SettingItem::valueChanged);
        item->setValue(wanted);
        EXPECT_EQ(item->value(), wanted) << key;
        EXPECT_GE(changed.count(), 1) << key;
        EXPECT_EQ(fixture.machine.settings.rawValue(QString::fromUtf8(key)), wanted) << key;
    }
    SettingItem *platforms = fixture.desktop.settings()->item(u"platformSortOrder"_s);
    EXPECT_EQ(platforms->value(), platforms->choices().first());
    platforms->setValue(platforms->choices().last());
    EXPECT_TRUE(fixture.desktop.sidebar()->isSortedByCount());
    SettingItem *scale = fixture.desktop.settings()->item(u"textScale"_s);
    scale->setValue(scale->choices().last());
    EXPECT_EQ(fixture.desktop.appearance()->textScale(), 2);
    EXPECT_EQ(Appearance(fixture.host).textScale(), 2) << "kept for the next start";
}

TEST(SettingsCatalog, ChangesWhatTheProgramDoes) {
    DesktopFixture fixture;
    const auto set = [&](const char *key, const QVariant &value) {
        fixture.desktop.settings()->item(QString::fromUtf8(key))->setValue(value);
    };
    EXPECT_TRUE(DosSettings::current(fixture.host).fullscreen);
    set("launchFullscreen", false);
    EXPECT_FALSE(DosSettings::current(fixture.host).fullscreen);
    set("skipInstallCheck", true);
    EXPECT_TRUE(fixture.state.gameLibrary().skipInstallCheck());
    set("viewMode", u"List"_s);
    EXPECT_EQ(fixture.desktop.browse()->viewMode(), u"List"_s);
    set("viewMode", u"Mosaic"_s);
    EXPECT_EQ(fixture.desktop.browse()->viewMode(), u"List"_s);
    set("logUploadURL", u"  "_s);
    EXPECT_FALSE(fixture.machine.settings.contains(Settings::logUploadURL));
}

TEST(SettingsCatalog, SearchPutsNamesBeforeExplanations) {
    DesktopFixture fixture;
    const SettingsCatalog &catalog = *fixture.desktop.settings();
    EXPECT_EQ(labels(catalog.search(u"crt"_s)), QStringList{u"Switch CRT effects off"_s});
    EXPECT_EQ(labels(catalog.search(u"scummvm"_s)), QStringList{u"ScummVM"_s});
    EXPECT_EQ(labels(catalog.search(u"music"_s)).first(), u"No notes about MT-32 music"_s);
    EXPECT_TRUE(labels(catalog.search(u"music"_s)).contains(u"Music"_s)) << "a tab without settings is found too";
    EXPECT_EQ(labels(catalog.search(u"midnight"_s)), QStringList{u"Theme"_s}) << "by one of its choices";
    EXPECT_TRUE(catalog.search(u"no such thing"_s).isEmpty());
    EXPECT_TRUE(catalog.search(u"  "_s).isEmpty());
}

TEST(SettingsCatalog, ForgetsWarningsAndAfterAQuestionEverything) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    MemorySettings &settings = fixture.machine.settings;
    const QString id = fixture.state.gameLibrary().games().first()->id;
    fixture.state.gameLibrary().toggleFavorite(id);
    settings.setValue(Settings::hasCompletedFirstRun, true);
    settings.setValue(Settings::launchFullscreen, false);
    QByteArray key;
    settings.setValue(Settings::mt32NotificationShown(key, u"a"_s), true);
    const auto press = [&](const char *name) { fixture.desktop.settings()->item(QString::fromUtf8(name))->activate(); };
    press("resetWarnings");
    EXPECT_FALSE(settings.contains(Settings::mt32NotificationShown(key, u"a"_s)));

    press("resetForTesting");
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    EXPECT_EQ(fixture.dialogs.buttons().value(fixture.dialogs.preferred()), u"Cancel"_s) << "what Return presses";
    fixture.dialogs.answer(fixture.dialogs.preferred());
    EXPECT_TRUE(settings.value(Settings::hasCompletedFirstRun)) << "cancelled";
    press("resetForTesting");
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    fixture.dialogs.answer(0);
    ASSERT_TRUE(waitUntil([&] { return !settings.contains(Settings::hasCompletedFirstRun); }));
    EXPECT_FALSE(settings.contains(Settings::collectionPath));
    EXPECT_FALSE(settings.contains(Settings::favoriteGames));
    EXPECT_FALSE(fixture.state.gameLibrary().game(id)->isFavorite);
    EXPECT_FALSE(settings.value(Settings::launchFullscreen)) << "how games start is no data of the user's";
}

TEST(SettingsCatalog, ClearsTheCacheAndReadsTheCollectionAgain) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    fixture.desktop.refreshLibrary();
    ASSERT_TRUE(waitUntil([&] { return !fixture.state.gameLibrary().isLoading(); }));
    ASSERT_TRUE(fixture.state.gameLibrary().loadedFromCache());
    fixture.desktop.settings()->item(u"clearCache"_s)->activate();
    ASSERT_TRUE(waitUntil([&] { return fixture.state.gameLibrary().isLoading(); }));
    ASSERT_TRUE(waitUntil([&] { return !fixture.state.gameLibrary().isLoading(); }));
    EXPECT_FALSE(fixture.state.gameLibrary().loadedFromCache());
}

TEST(EmulatorList, TakesAPathOfTheUsersAndGoesBackToTheUsualPlaces) {
    DesktopFixture fixture;
    EmulatorListModel &model = *fixture.desktop.emulators();
    const QString usual = fixture.machine.putProgram(u"/usr/bin/dosbox"_s, "echo 'DOSBox version 0.74-3, copyright'");
    const QString own = fixture.machine.putProgram(u"/opt/mine/dosbox"_s, "echo 'dosbox-staging, version 0.82.0'");
    const QModelIndex row = rowOf(model, u"DOSBox"_s);
    const auto is = [&](const QString &path, const QString &version) {
        return model.data(row, EmulatorListModel::pathRole) == path &&
               model.data(row, EmulatorListModel::versionRole) == version && !model.isChecking();
    };
    EXPECT_EQ(model.data(row, EmulatorListModel::stateRole), u"unknown"_s);
    model.check();
    ASSERT_TRUE(waitUntil([&] { return is(usual, u"0.74-3"_s); }));
    EXPECT_EQ(model.data(rowOf(model, u"Cemu"_s), EmulatorListModel::stateRole), u"notInstalled"_s);
    EXPECT_EQ(model.foundCount(), 1);
    model.setPath(row.row(), QUrl::fromLocalFile(own));
    EXPECT_EQ(fixture.machine.settings.value(Settings::dosboxPath), own);
    ASSERT_TRUE(waitUntil([&] { return is(own, u"0.82.0"_s); }));
    model.searchUsualPlaces(row.row());
    EXPECT_FALSE(fixture.machine.settings.contains(Settings::dosboxPath));
    ASSERT_TRUE(waitUntil([&] { return is(usual, u"0.74-3"_s); }));
    EXPECT_FALSE(model.data(rowOf(model, u"ScummVM"_s), EmulatorListModel::settableRole).toBool());
}

TEST(DependencyList, NamesWhatIsMissingInOneCommand) {
    DesktopFixture fixture;
    fixture.machine.putProgram(u"/usr/bin/apt-get"_s, "exit 0");
    fixture.machine.putProgram(u"/usr/bin/sed"_s, "exit 0");
    fixture.machine.putProgram(u"/bin/bash"_s, "echo 'GNU bash, version 5.2.15(1)-release'");
    DependencyListModel &model = *fixture.desktop.dependencies();
    EXPECT_EQ(model.command(), QString()) << "nothing is known yet";
    model.check();
    ASSERT_TRUE(waitUntil([&] { return model.isChecked(); }));
    EXPECT_EQ(model.command(), u"sudo apt install aria2 wget"_s);
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_TRUE(model.data(model.index(0), DependencyListModel::requiredRole).toBool());
    EXPECT_EQ(model.data(model.index(4), DependencyListModel::detailRole), u"5.2"_s);
    EXPECT_FALSE(model.isComplete());
    model.openMt32Folder();
    ASSERT_TRUE(waitUntil([&] { return !fixture.machine.workspace.actions.isEmpty(); }));
    EXPECT_TRUE(fixture.machine.workspace.actions.last().endsWith(u"/dosbox-staging/mt32-roms"_s));
}

TEST(Statistics, ShowsTheNumbersOfTheLibraryAndFollowsIt) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    GameLibrary &library = fixture.state.gameLibrary();
    Statistics &statistics = *fixture.desktop.statistics();
    const auto values = [](const QVariantList &figures) {
        QStringList result;
        for (const QVariant &figure : figures)
            result.append(figure.toMap().value(u"value"_s).toString());
        return result;
    };
    const auto text = [](const QVariant &entry, const char *key) {
        return entry.toMap().value(QString::fromUtf8(key)).toString();
    };
    EXPECT_FALSE(statistics.isReady()) << "nobody looks";
    statistics.setWatching(true);
    ASSERT_TRUE(waitUntil([&] { return statistics.isReady(); }));
    EXPECT_TRUE(statistics.isEmpty());
    EXPECT_EQ(values(statistics.streaks()), (QStringList{u"0"_s, u"0"_s, u"0"_s}));

    // On Saturday the 14th of March 2026, the clock of the fixture: yesterday and today, and last year.
    const QDateTime today = fixture.machine.clock.current;
    const GameList games = library.games();
    const GamePtr first = games[0], second = games[1], third = games[2];
    fixture.machine.clock.current = today.addYears(-1);
    library.recordPlay(third->id, 20 * 3600);
    fixture.machine.clock.current = today.addDays(-1);
    library.recordPlay(first->id, 3600);
    fixture.machine.clock.current = today;
    library.recordPlay(second->id, 5400);
    library.toggleFavorite(second->id);
    ASSERT_TRUE(waitUntil([&] { return statistics.mostPlayed().size() == 3; }));
    EXPECT_FALSE(statistics.isEmpty());
    const QString installed = values(statistics.cards()).at(2);
    EXPECT_EQ(values(statistics.cards()), (QStringList{u"22h 30m"_s, u"3"_s, installed, u"1"_s}));
    EXPECT_EQ(statistics.averageSession(), u"7h 30m"_s);
    EXPECT_EQ(values(statistics.streaks()), (QStringList{u"2"_s, u"2"_s, u"2"_s}));
    EXPECT_EQ(text(statistics.mostPlayed().first(), "title"), third->title);
    EXPECT_EQ(text(statistics.mostPlayed().first(), "text"), u"20h 0m"_s);
    ASSERT_EQ(statistics.history().size(), 30);
    EXPECT_EQ(text(statistics.history().last(), "text"), u"1h 30m"_s);
    EXPECT_EQ(statistics.history().last().toMap().value(u"share"_s).toDouble(), 1);
    EXPECT_DOUBLE_EQ(statistics.longestDay(), 1.5);

    statistics.setRange(u"This Year"_s);
    ASSERT_TRUE(waitUntil([&] { return statistics.mostPlayed().size() == 2; }));
    EXPECT_EQ(text(statistics.mostPlayed().first(), "title"), second->title);
    EXPECT_EQ(values(statistics.cards()).first(), u"22h 30m"_s) << "the cards are those of the whole library";
    statistics.setRange(u"This Century"_s);
    EXPECT_EQ(statistics.range(), u"This Year"_s);
}

TEST(Desktop, OpensADroppedFolderAndNothingElse) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.window().isVisible());
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
    const QUrl file = QUrl::fromLocalFile(fixture.machine.put(fixture.machine.scratch() + u"/file.txt"_s, "x"));
    const QUrl folder = QUrl::fromLocalFile(fixture.collection());
    QSignalSpy refused(&fixture.desktop, &Desktop::warned);
    int refusals = 0;
    for (const QList<QUrl> &urls : {QList<QUrl>{}, {file}, {folder, folder}, {QUrl(u"https://example.org/eXo"_s)}}) {
        fixture.desktop.openDropped(urls);
        ++refusals;
        ASSERT_TRUE(waitUntil([&] { return refused.count() == refusals; }));
        EXPECT_TRUE(fixture.state.collectionPath().isEmpty());
    }
    // As the desktop does it: a drag over the middle of the window, then the drop.
    QQuickWindow &window = fixture.window();
    QMimeData data;
    data.setUrls({folder});
    const QPoint middle(window.width() / 2, window.height() / 2);
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_TRUE(drop.isAccepted());
    ASSERT_TRUE(waitUntil([&] { return fixture.state.collectionPath() == fixture.collection(); }));
}

} // namespace ludarium::test
