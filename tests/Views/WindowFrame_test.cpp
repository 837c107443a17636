#include "App/WindowFrame.h"
#include "Views/WindowFramePersistence.h"
#include "support/FixtureCollection.h"
#include "support/TestHost.h"

#include <QFile>
#include <QWindow>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

const QRectF mainScreen(0, 25, 1440, 875);
const QRectF secondScreen(1440, 0, 1920, 1080);

} // namespace

TEST(WindowFrame, ReadsWhatItWrites) {
    for (const QRectF &frame : {QRectF(0, 0, 1280, 800), QRectF(-1919.5, 12.25, 900, 600), QRectF(1e6, -1e6, 1, 1)})
        EXPECT_EQ(WindowFrame::fromText(WindowFrame::toText(frame)), frame);
    EXPECT_EQ(WindowFrame::toText(QRectF(12, 34, 1280, 800)), "{{12, 34}, {1280, 800}}");
}

TEST(WindowFrame, RefusesTextsOfAnyOtherForm) {
    for (const char *text :
         {"", "{}", "{{1, 2}, {3, 4}", "{{1, 2}, {3, 4}} and more", "{{1, 2}, {3}}", "{{a, 2}, {3, 4}}", "1 2 3 4",
          "{{1, 2}, {0, 4}}", "{{1, 2}, {3, -4}}", "{{nan, 2}, {3, 4}}", "{{1, inf}, {3, 4}}"})
        EXPECT_FALSE(WindowFrame::fromText(text)) << text;
}

TEST(WindowFrame, StaysWhereAnyScreenShowsSomeOfIt) {
    for (const QRectF &frame : {QRectF(100, 100, 1280, 800), QRectF(-1200, 100, 1280, 800),
                                QRectF(3300, 1000, 1280, 800), QRectF(0, 0, 5000, 2000)})
        EXPECT_EQ(WindowFrame::onScreen(frame, {mainScreen, secondScreen}), frame);
}

TEST(WindowFrame, ComesBackWhollyOntoTheMainScreen) {
    struct Case {
        QRectF saved;
        QRectF wanted;
    };
    for (const auto &[saved, wanted] : {
             Case{{5000, 100, 1280, 800}, {160, 100, 1280, 800}},
             Case{{-4000, -3000, 1000, 700}, {0, 25, 1000, 700}},
             Case{{200, 4000, 1000, 700}, {200, 200, 1000, 700}},
             Case{{5000, 5000, 3000, 3000}, mainScreen},
             Case{{0, 0, 100000, 700}, {0, 25, 1440, 700}},
             Case{{-100, -100, 1e300, 1e300}, mainScreen},
         })
        EXPECT_EQ(WindowFrame::onScreen(saved, {mainScreen, QRectF(1440, 0, 100, 100)}), wanted);
    EXPECT_EQ(WindowFrame::onScreen({5000, 5000, 10, 10}, {}), QRectF(5000, 5000, 10, 10));
}

TEST(WindowFramePersistence, WritesTheFrameOnceTheWindowRestsAndBringsItBack) {
    TestHost machine;
    QWindow window;
    {
        WindowFramePersistence frame(machine.host().paths);
        EXPECT_FALSE(frame.restore({mainScreen}));
        window.setGeometry(40, 50, 1000, 700);
        window.show();
        frame.startObserving(window);
        window.setGeometry(60, 70, 1100, 750);
        window.setGeometry(80, 90, 1200, 760);
        EXPECT_FALSE(QFile::exists(frame.file())) << "a window that is being dragged must not be written each time";
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(frame.file()); }));
        EXPECT_EQ(frame.restore({mainScreen}), QRectF(80, 90, 1200, 760));
        window.setGeometry(100, 110, 1210, 770);
        waitUntil([] { return false; }, 50);
    }
    EXPECT_EQ(WindowFramePersistence(machine.host().paths).restore({mainScreen}), QRectF(100, 110, 1210, 770))
        << "what is not written yet is written at the end";
}

TEST(WindowFramePersistence, TakesADamagedFileForNone) {
    TestHost machine;
    const WindowFramePersistence frame(machine.host().paths);
    QDir().mkpath(QFileInfo(frame.file()).path());
    QFile file(frame.file());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{{12, 34}, {1280");
    file.close();
    EXPECT_FALSE(frame.restore({mainScreen}));
}

} // namespace ludarium::test
