#include "demo/DemoCollection.h"
#include "e2e/CliRun.h"
#include "e2e/WindowRun.h"

#include <QDir>
#include <gtest/gtest.h>

// The desktop program as its user has it: a process of its own, seen from outside.

namespace ludarium::test {

namespace {

class WindowTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!WindowRun::isBuilt())
            GTEST_SKIP() << "the desktop program is not built";
    }
};

TEST_F(WindowTest, OpensTheFolderOfASecondStartAndSendsThatAway) {
    TinyCollection first, second;
    WindowRun window;
    ASSERT_NO_FATAL_FAILURE(window.start({first.path()}));
    const auto loads = [&](const QString &folder) {
        return window.log().contains(QStringLiteral("LOADING COLLECTION: ") + folder);
    };
    EXPECT_TRUE(eventually([&] { return loads(first.path()); }));
    // The second start stands in another folder and names its own by a relative path.
    const QString before = QDir::currentPath();
    QDir::setCurrent(second.path());
    EXPECT_EQ(window.startAgain({QStringLiteral(".")}), 0);
    QDir::setCurrent(before);
    EXPECT_TRUE(eventually([&] { return loads(second.path()); }));
    EXPECT_EQ(window.startAgain({}), 0) << "without a folder the window only comes to the front";
    EXPECT_TRUE(window.isRunning());
    EXPECT_TRUE(window.end());
    EXPECT_EQ(window.log().count(QStringLiteral("LOADING COLLECTION: ")), 2);
}

} // namespace

} // namespace ludarium::test
