#include "Host/Async.h"
#include "Host/ProcessRunner.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"
#include "support/DesktopFixture.h"
#include "support/DetailCollection.h"
#include "support/FixtureCollection.h"
#include "support/Picture.h"

#include <QQuickItem>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

void take(DesktopFixture &fixture, const QString &name, QSize size = {1280, 800}) {
    takePicture(fixture, fixture.window(size), name);
}

/// The first item below `item` of a QML type.
QQuickItem *find(QQuickItem *item, const char *type) {
    if (QString::fromLatin1(item->metaObject()->className()).startsWith(QLatin1StringView(type)))
        return item;
    for (QQuickItem *child : item->childItems())
        if (QQuickItem *found = find(child, type))
            return found;
    return nullptr;
}

struct Shot {
    const char *name;
    QString title;
    QSize size{1280, 800};
    double scale = 1;
    double scrolled = 0; ///< of the way to the end
    GameStatus status{true, false, false, {}};
    const char *primary = "play";
};

void PrintTo(const Shot &shot, std::ostream *out) {
    *out << shot.name;
}

void begin(DesktopFixture &fixture, QSize size) {
    fixture.window(size);
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
}

class DetailShots : public testing::TestWithParam<Shot> {};

} // namespace

TEST_P(DetailShots, ShowTheGame) {
    const Shot &shot = GetParam();
    const bool running = qstrcmp(shot.primary, "running") == 0;
    DesktopFixture fixture(running);
    begin(fixture, shot.size);
    ASSERT_TRUE(fixture.loadDetails(shot.title));
    GameDetail &detail = *fixture.desktop.detail();
    fixture.state.gameLibrary().setGameStatus(detail.gameId(), shot.status);
    fixture.desktop.appearance()->setTextScale(shot.scale);
    if (shot.title == DetailCollection::everything) {
        fixture.desktop.game()->setRating(4);
        fixture.desktop.game()->setProgress(2);
        detail.editNotes(QStringLiteral("The second lamp needs oil from the cellar."));
        detail.saveNotes();
        fixture.state.gameLibrary().recordPlay(detail.gameId(), 7260);
    }
    ProcessId process;
    if (running) {
        ProcessSpec spec;
        spec.program = QStringLiteral("/bin/sleep");
        spec.arguments.append(QStringLiteral("60"));
        process = await(fixture.host.processes.startEmulator(spec));
        fixture.state.sessionTracker().startSession(detail.game(), process);
    }
    EXPECT_EQ(detail.actions()->primary(), QLatin1StringView(shot.primary));
    EXPECT_EQ(detail.actions()->primaryReason().isEmpty(), qstrcmp(shot.primary, "play") == 0);
    fixture.picture(fixture.window(shot.size));
    QQuickItem *pane = find(fixture.window(shot.size).contentItem(), "DetailPane");
    ASSERT_NE(pane, nullptr);
    QQuickItem *scroller = find(pane, "QQuickFlickable");
    ASSERT_NE(scroller, nullptr);
    const double room = scroller->property("contentHeight").toDouble() - scroller->height();
    scroller->setProperty("contentY", std::max(0.0, room * shot.scrolled));
    take(fixture, QString::fromLatin1(shot.name), shot.size);
    if (running) {
        fixture.host.processes.askToEnd(process);
        EXPECT_TRUE(waitUntil([&] { return detail.actions()->primary() == QStringLiteral("play"); }));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, DetailShots,
    testing::Values(
        Shot{"detail-everything", DetailCollection::everything},
        Shot{"detail-everything-middle", DetailCollection::everything, {1280, 800}, 1, 0.5},
        Shot{"detail-everything-end", DetailCollection::everything, {1280, 800}, 1, 1},
        Shot{"detail-plain", DetailCollection::plain},
        Shot{"detail-archived", DetailCollection::plain, {1280, 800}, 1, 0, {false, true, false, {}}, "install"},
        Shot{"detail-archived-double-text",
             DetailCollection::plain,
             {900, 600},
             2,
             0.4,
             {false, true, false, {}},
             "install"},
        Shot{"detail-running", DetailCollection::plain, {1280, 800}, 1, 0, {true, false, false, {}}, "running"},
        Shot{"detail-critical", DetailCollection::critical}, Shot{"detail-group", DetailCollection::grouped},
        Shot{"detail-long-title", DetailCollection::longTitle},
        Shot{"detail-right-to-left", DetailCollection::rightToLeft},
        Shot{"detail-smallest", DetailCollection::everything, {900, 600}},
        Shot{"detail-smallest-end", DetailCollection::everything, {900, 600}, 1, 1},
        Shot{"detail-double-text", DetailCollection::everything, {1280, 800}, 2},
        Shot{"detail-double-text-middle", DetailCollection::everything, {900, 600}, 2, 0.4},
        Shot{"detail-double-text-end", DetailCollection::everything, {900, 600}, 2, 1},
        Shot{"detail-double-text-long-title", DetailCollection::longTitle, {900, 600}, 2}),
    [](const auto &info) { return QString::fromLatin1(info.param.name).remove(QLatin1Char('-')).toStdString(); });

TEST(DetailPictures, OfTheVersionPickerAndTheViewer) {
    DesktopFixture fixture;
    begin(fixture, {1280, 800});
    QQuickWindow &window = fixture.window();
    ASSERT_TRUE(fixture.loadDetails(DetailCollection::grouped));
    fixture.desktop.launch()->chooseVersion();
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.launch()->versions()->isActive(); }));
    take(fixture, QStringLiteral("version-picker"));
    fixture.desktop.appearance()->setTextScale(2);
    take(fixture, QStringLiteral("version-picker-double-text"), {900, 600});
    fixture.desktop.appearance()->setTextScale(1);
    fixture.desktop.launch()->versions()->cancel();

    ASSERT_TRUE(fixture.loadDetails(DetailCollection::everything));
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.detail()->media()->count() > 4; }));
    QQuickItem *strip = find(window.contentItem(), "GalleryStrip");
    ASSERT_NE(strip, nullptr);
    ASSERT_TRUE(QMetaObject::invokeMethod(strip, "opened", Q_ARG(int, 4)));
    take(fixture, QStringLiteral("gallery-viewer"));
}

} // namespace ludarium::test
