#include "Host/SettingsStore.h"
#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QDir>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

/// The rows as texts: "  Name 3" is a row of three games one level down, "+" stands before what is closed.
QStringList lines(const QList<SidebarRow> &rows) {
    QStringList result;
    for (const SidebarRow &row : rows)
        result += QString(2 * row.depth, u' ') + (row.expandable && !row.expanded ? QStringLiteral("+") : QString()) +
                  row.name + (row.games > 0 ? QStringLiteral(" %1").arg(row.games) : QString());
    return result;
}

/// From the section on.
QStringList linesOf(const SidebarSource &source, const QString &section, const QString &filter = {}) {
    const QStringList all = lines(visibleSidebarRows(sidebarRows(source), filter));
    return all.mid(std::max<qsizetype>(0, all.indexOf(section)));
}

Playlist playlist(const char *id, const QStringList &nested = {}) {
    Playlist list;
    list.id = list.name = QLatin1StringView(id);
    list.nestedPlaylistIds = nested;
    return list;
}

PlatformGroup group(const QString &name, const QStringList &platforms, bool expanded = true) {
    PlatformGroup made;
    made.name = name;
    made.platformNames = platforms;
    made.isExpanded = expanded;
    return made;
}

QStringList words(const char *text) {
    return QString::fromUtf8(text).split(u'|', Qt::SkipEmptyParts);
}

int rowNamed(const SidebarModel &sidebar, const QString &name, const char *kind) {
    for (int row = 0; row < sidebar.count(); ++row)
        if (sidebar.data(sidebar.index(row), SidebarModel::nameRole) == name &&
            sidebar.data(sidebar.index(row), SidebarModel::kindRole) == QLatin1StringView(kind))
            return row;
    return -1;
}

int games(const SidebarModel &sidebar, int row) {
    return sidebar.data(sidebar.index(row), SidebarModel::gamesRole).toInt();
}

QString key(const SidebarModel &sidebar, const char *name, const char *kind = "platform") {
    return sidebar.keyOf(rowNamed(sidebar, QLatin1StringView(name), kind));
}

/// What was queued, has happened.
void settle() {
    waitUntil([] { return false; }, 50);
}

} // namespace

TEST(SidebarRows, PutPlatformsBelowTheirGroupsInTheOrderThatIsAskedFor) {
    SidebarSource source;
    source.platforms = sortedByName(words("MS-DOS|amiga|Windows 10|Windows 9x|Sega|amiga"));
    source.counts.platforms = {{QStringLiteral("MS-DOS"), 30},
                               {QStringLiteral("amiga"), 5},
                               {QStringLiteral("Windows 10"), 5},
                               {QStringLiteral("Sega"), 8}};
    source.groups = {group(QStringLiteral("Old"), words("Sega|amiga|Not here")),
                     group(QStringLiteral("Shut"), words("Windows 9x|amiga"), false),
                     group(QStringLiteral("None"), words("Elsewhere"))};
    const QString section = QStringLiteral("Platforms");
    EXPECT_EQ(linesOf(source, section),
              words("Platforms|  Old 13|    amiga 5|    Sega 8|  +Shut|  None|  MS-DOS 30|  Windows 10 5"));
    source.sortByCount = true;
    EXPECT_EQ(linesOf(source, section),
              words("Platforms|  Old 13|    Sega 8|    amiga 5|  +Shut|  None|  MS-DOS 30|  Windows 10 5"));
}

TEST(SidebarRows, HoldEveryPlaylistOnceHoweverTheyAreNested) {
    struct Case {
        const char *what;
        QList<Playlist> lists;
        const char *wanted;
    };
    for (const auto &[what, lists, wanted] : {
             Case{"plain", {playlist("b"), playlist("a")}, "Playlists|  b|  a"},
             Case{"nested",
                  {playlist("a"), playlist("b", words("a|gone")), playlist("c", words("b"))},
                  "Playlists|  c|    b|      a"},
             Case{"two parents",
                  {playlist("a", words("x")), playlist("b", words("x")), playlist("x")},
                  "Playlists|  a|    x|  b"},
             Case{"in itself", {playlist("a", words("a"))}, "Playlists|  a"},
             Case{"in a circle", {playlist("a", words("b")), playlist("b", words("a"))}, "Playlists|  a|    b"},
         }) {
        SidebarSource source;
        source.playlists = lists;
        EXPECT_EQ(linesOf(source, QStringLiteral("Playlists")), words(wanted)) << what;
    }
    SidebarSource deep;
    for (int i = 0; i < 20'000; ++i)
        deep.playlists.append(playlist(qPrintable(QString::number(i)), {QString::number(i + 1)}));
    EXPECT_EQ(sidebarRows(deep).size(), 20'000 + 6) << "a chain, and the library's five rows";
}

TEST(SidebarRows, AFilterKeepsTheWayToWhatItFindsAndEverythingBelowIt) {
    SidebarSource source;
    source.platforms = sortedByName(words("MS-DOS|Amiga|Windows 9x|Sega"));
    source.groups = {group(QStringLiteral("Consoles"), words("Sega"), false),
                     group(QStringLiteral("Old"), words("Amiga"), false)};
    source.playlists = {playlist("Evenings", words("Segments")), playlist("Segments"), playlist("Line\n  break")};
    for (const auto &[filter, wanted] : std::initializer_list<std::pair<const char *, const char *>>{
             {"seg", "Playlists|  Evenings|    Segments|Platforms|  Consoles|    Sega"},
             {"CONS", "Platforms|  Consoles|    Sega"},
             {" even ", "Playlists|  Evenings|    Segments"},
             {"platforms", ""},
             {"line break", "Playlists|  Line break"},
         })
        EXPECT_EQ(lines(visibleSidebarRows(sidebarRows(source), QString::fromUtf8(filter))), words(wanted)) << filter;
}

TEST(Sidebar, CountsWhatEachRowShows) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    GameLibrary &library = fixture.state.gameLibrary();
    for (const char *id : {"fixture-1", "fixture-9"})
        library.toggleFavorite(QLatin1StringView(id));
    library.recordPlay(QStringLiteral("fixture-7"), 60);
    library.setRating(QStringLiteral("fixture-2"), 5);
    library.setNotes(QStringLiteral("fixture-3"), QStringLiteral("left at the bridge"));
    library.setProgress(QStringLiteral("fixture-4"), GameProgress::mastered);
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    sidebar.setAllExpanded(true);
    ASSERT_TRUE(waitUntil([&] {
        return games(sidebar, rowNamed(sidebar, QStringLiteral("Favorites"), "place")) == 2 &&
               games(sidebar, rowNamed(sidebar, QStringLiteral("Rainy Evenings"), "playlist")) == 2;
    }));
    int shown = 0;
    for (int row = 0; row < sidebar.count(); ++row) {
        if (sidebar.data(sidebar.index(row), SidebarModel::depthRole) == 0)
            continue;
        sidebar.select(row);
        const QString name = sidebar.data(sidebar.index(row), SidebarModel::nameRole).toString();
        EXPECT_EQ(sidebar.currentRow(), row) << qPrintable(name);
        EXPECT_EQ(fixture.desktop.browse()->title(), name);
        EXPECT_EQ(fixture.state.filteredGames().size(), games(sidebar, row)) << qPrintable(name);
        shown += games(sidebar, row) > 0;
    }
    EXPECT_GT(shown, 20) << "most rows have games to show";
    fixture.state.setSelectedGenre(QStringLiteral("Adventure"));
    sidebar.select(1);
    EXPECT_EQ(fixture.state.filteredGames().size(), 36) << "a place is shown whole";
}

TEST(Sidebar, AFavoriteTouchesItsRowAlone) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    ASSERT_TRUE(waitUntil([&] { return games(sidebar, 1) == 36; }));
    settle();
    QSignalSpy changes(&sidebar, &SidebarModel::dataChanged);
    QSignalSpy removals(&sidebar, &SidebarModel::rowsRemoved);
    QSignalSpy insertions(&sidebar, &SidebarModel::rowsInserted);
    fixture.state.gameLibrary().toggleFavorite(QStringLiteral("fixture-1"));
    fixture.state.gameLibrary().toggleFavorite(QStringLiteral("fixture-2"));
    settle();
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 2);
    EXPECT_EQ(games(sidebar, 2), 2);
    const int platforms = rowNamed(sidebar, QStringLiteral("Platforms"), "section");
    sidebar.setExpanded(platforms, false);
    ASSERT_EQ(removals.count(), 1);
    EXPECT_EQ(removals[0][1].toInt(), platforms + 1);
    sidebar.setExpanded(platforms, true);
    EXPECT_EQ(insertions.count(), 1);
    EXPECT_EQ(changes.count(), 3) << "beside the rows only the heading changed, twice";
}

TEST(Sidebar, DropsGoWhereTheyMayAndNowhereElse) {
    struct Case {
        const char *what;
        const char *source;
        const char *kind;
        const char *target;
        const char *targetKind;
        const char *wanted; ///< the groups with their platforms, in order
    };
    for (const Case &c : {
             Case{"on a group", "ScummVM", "platform", "Two", "group", "One:Apple IIGS|Two:Windows 3x,ScummVM"},
             Case{"on a platform in a group", "ScummVM", "platform", "Apple IIGS", "platform",
                  "One:Apple IIGS,ScummVM|Two:Windows 3x"},
             Case{"from group to group", "Apple IIGS", "platform", "Two", "group", "One:|Two:Windows 3x,Apple IIGS"},
             Case{"out of a group", "Apple IIGS", "platform", "ScummVM", "platform", "One:|Two:Windows 3x"},
             Case{"out by the heading", "Apple IIGS", "platform", "Platforms", "section", "One:|Two:Windows 3x"},
             Case{"where it is", "Apple IIGS", "platform", "One", "group", "One:Apple IIGS|Two:Windows 3x"},
             Case{"on another section", "Apple IIGS", "platform", "Library", "section",
                  "One:Apple IIGS|Two:Windows 3x"},
             Case{"a group on a group", "Two", "group", "One", "group", "Two:Windows 3x|One:Apple IIGS"},
             Case{"a group on a free platform", "One", "group", "ScummVM", "platform", "One:Apple IIGS|Two:Windows 3x"},
             Case{"a playlist", "Short Ones", "playlist", "One", "group", "One:Apple IIGS|Two:Windows 3x"},
         }) {
        DesktopFixture fixture;
        ASSERT_TRUE(fixture.load());
        PlatformCommands &commands = *fixture.desktop.platforms();
        commands.createGroup(QStringLiteral("One"), QStringLiteral("Apple IIGS"));
        commands.createGroup(QStringLiteral("Two"), QStringLiteral("Windows 3x"));
        SidebarModel &sidebar = *fixture.desktop.sidebar();
        ASSERT_TRUE(waitUntil([&] { return !key(sidebar, "Short Ones", "playlist").isEmpty(); }));
        const int target = rowNamed(sidebar, QLatin1StringView(c.target), c.targetKind);
        ASSERT_GE(target, 0) << c.what;
        sidebar.drop(key(sidebar, c.source, c.kind), target);
        QStringList groups;
        for (const PlatformGroup &made : fixture.state.platformGroups().groups())
            groups += made.name + u':' + made.platformNames.join(u',');
        EXPECT_EQ(groups.join(u'|'), QLatin1StringView(c.wanted)) << c.what;
        sidebar.drop(QStringLiteral("unknown"), target);
    }
}

TEST(Sidebar, RemembersHowItWasLeft) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    EXPECT_EQ(key(sidebar, "Sierra Games", "collection"), QString()) << "Studios is closed at first";
    sidebar.setExpanded(rowNamed(sidebar, QStringLiteral("Rainy Evenings"), "playlist"), false);
    sidebar.setExpanded(rowNamed(sidebar, QStringLiteral("Studios"), "section"), true);
    sidebar.setExpanded(rowNamed(sidebar, QStringLiteral("Playlists"), "section"), false);
    sidebar.setShown(false);
    sidebar.setWidth(300);
    sidebar.setSortByCount(true);
    SidebarModel again(fixture.state);
    EXPECT_NE(key(again, "Sierra Games", "collection"), QString());
    EXPECT_EQ(key(again, "Rainy Evenings", "playlist"), QString());
    again.setExpanded(rowNamed(again, QStringLiteral("Playlists"), "section"), true);
    EXPECT_NE(key(again, "Rainy Evenings", "playlist"), QString());
    EXPECT_EQ(key(again, "Short Ones", "playlist"), QString());
    EXPECT_EQ(key(again, "RPGs", "collection"), QString());
    EXPECT_FALSE(again.isShown());
    EXPECT_EQ(again.width(), 300);
    EXPECT_TRUE(again.isSortedByCount());
    EXPECT_EQ(fixture.machine.settings.rawValue(QStringLiteral("platformSortOrder")).toString(),
              QStringLiteral("byGameCount"));
    fixture.machine.settings.setRawValue(QStringLiteral("platformSortOrder"), QStringLiteral("alphabetical"));
    EXPECT_FALSE(sidebar.isSortedByCount()) << "the settings window can change it";
}

TEST(PlatformCommands, DeleteOnlyWhatTheUserConfirms) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    PlatformCommands &commands = *fixture.desktop.platforms();
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    sidebar.select(rowNamed(sidebar, QStringLiteral("ScummVM"), "platform"));
    const QString file = fixture.collection() + QStringLiteral("/Data/Platforms/ScummVM.xml");

    commands.deletePlatform(QStringLiteral("ScummVM"));
    EXPECT_EQ(fixture.dialogs.title(), QStringLiteral("Delete Platform"));
    EXPECT_TRUE(fixture.dialogs.text().contains(QStringLiteral("\"ScummVM\" and its 6 games")));
    commands.deletePlatform(QStringLiteral("MS-DOS"));
    fixture.dialogs.dismiss();
    settle();
    EXPECT_FALSE(fixture.dialogs.isActive()) << "one question at a time";
    EXPECT_TRUE(QFile::exists(file));
    commands.deletePlatform(QStringLiteral("ScummVM"));
    fixture.dialogs.answer(0);
    ASSERT_TRUE(waitUntil([&] { return fixture.state.gameLibrary().games().size() == 30; }));
    EXPECT_FALSE(QFile::exists(file));
    ASSERT_TRUE(waitUntil([&] { return rowNamed(sidebar, QStringLiteral("ScummVM"), "platform") < 0; }));
    EXPECT_EQ(fixture.desktop.browse()->title(), QStringLiteral("All Games"));

    commands.deletePlatform(QStringLiteral("../Platforms"));
    fixture.dialogs.answer(0);
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    EXPECT_EQ(fixture.dialogs.title(), QStringLiteral("The platform could not be deleted"));
    fixture.dialogs.dismiss();
    settle();

    commands.createGroup(QStringLiteral("  Old   ones "), QStringLiteral("MS-DOS"));
    commands.createGroup(QStringLiteral(" "), {});
    ASSERT_EQ(commands.groups().size(), 1);
    const QString id = commands.groups()[0].toMap()[QStringLiteral("id")].toString();
    EXPECT_TRUE(commands.isTaken(QStringLiteral("OLD ones"), {}));
    EXPECT_FALSE(commands.isTaken(QStringLiteral("OLD ones"), id));
    EXPECT_EQ(commands.groupOf(QStringLiteral("MS-DOS")), id);
    EXPECT_FALSE(commands.canMoveGroup(id, 1));
    commands.deleteGroup(id);
    fixture.dialogs.dismiss();
    settle();
    EXPECT_EQ(commands.groups().size(), 1);
    commands.deleteGroup(id);
    fixture.dialogs.answer(0);
    settle();
    EXPECT_TRUE(commands.groups().isEmpty());
}

} // namespace ludarium::test
