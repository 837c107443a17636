#include <QCoreApplication>
#include <gtest/gtest.h>

// Every test program runs inside an application object, so that coroutines have an event loop to come back to.
int main(int argc, char **argv) {
    // No test shows a window or plays a sound, and no emulator that a test starts does.
    for (auto [name, value] : {std::pair{"QT_QPA_PLATFORM", "offscreen"},
                               {"QT_QUICK_BACKEND", "software"},
                               {"SDL_VIDEODRIVER", "dummy"},
                               {"SDL_AUDIODRIVER", "dummy"}})
        qputenv(name, value);
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
