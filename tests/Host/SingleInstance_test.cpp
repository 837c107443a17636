#include "Host/SingleInstance.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QtConcurrent/QtConcurrentRun>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace ludarium;

namespace {

void processEventsUntil(const std::function<bool()> &done) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 8000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

class SingleInstanceTest : public testing::TestWithParam<int> {
  protected:
    QTemporaryDir root;
    /// The parameter is how many characters longer the folder's name is made.
    const QString folder = root.filePath(QStringLiteral("state") + QString(GetParam(), QLatin1Char('x')));
};

} // namespace

INSTANTIATE_TEST_SUITE_P(ShortAndLongFolders, SingleInstanceTest, testing::Values(0, 120));

TEST_P(SingleInstanceTest, LetsTheFirstInstanceHearTheSecond) {
    SingleInstance first(folder);
    SingleInstance second(folder);
    QList<QByteArray> heard;
    QObject::connect(&first, &SingleInstance::messageReceived, &first,
                     [&](const QByteArray &message) { heard << message; });
    ASSERT_TRUE(first.tryBecomePrimary());
    EXPECT_FALSE(second.tryBecomePrimary());
    const QByteArray largest(SingleInstance::maxMessageSize, 'm');
    for (const QByteArray &message : {QByteArray("raise\0window", 12), QByteArray(), largest}) {
        heard.clear();
        const QFuture<bool> sent = QtConcurrent::run([&] { return second.sendToPrimary(message); });
        processEventsUntil([&] { return sent.isFinished(); });
        EXPECT_TRUE(sent.result());
        EXPECT_EQ(heard, QList<QByteArray>{message});
    }
    EXPECT_FALSE(second.sendToPrimary(largest + 'm'));
}

TEST_P(SingleInstanceTest, HandsOverWhenTheFirstInstanceLeaves) {
    auto first = std::make_unique<SingleInstance>(folder);
    SingleInstance second(folder);
    ASSERT_TRUE(first->tryBecomePrimary());
    first.reset();
    EXPECT_FALSE(second.sendToPrimary("x", 100)) << "nobody is there to hear";
    EXPECT_TRUE(second.tryBecomePrimary());
}

TEST_P(SingleInstanceTest, IsNotBlockedByWhatACrashedInstanceLeft) {
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        SingleInstance crashing(folder);
        const char result = crashing.tryBecomePrimary() ? '1' : '0';
        if (::write(ready[1], &result, 1) != 1)
            ::_exit(1);
        while (true)
            ::pause();
    }
    char result = '0';
    ASSERT_EQ(::read(ready[0], &result, 1), 1);
    ASSERT_EQ(result, '1');
    SingleInstance next(folder);
    EXPECT_FALSE(next.tryBecomePrimary());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(next.tryBecomePrimary());
    SingleInstance third(folder);
    const QFuture<bool> sent = QtConcurrent::run([&] { return third.sendToPrimary("hello"); });
    processEventsUntil([&] { return sent.isFinished(); });
    EXPECT_TRUE(sent.result());
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(SingleInstance, RefusesMessagesThatClaimToBeHuge) {
    const QTemporaryDir root;
    SingleInstance first(root.filePath(QStringLiteral("state")));
    bool heard = false;
    QObject::connect(&first, &SingleInstance::messageReceived, &first, [&] { heard = true; });
    ASSERT_TRUE(first.tryBecomePrimary());
    QLocalSocket socket;
    socket.connectToServer(root.filePath(QStringLiteral("state/instance.socket")));
    socket.write(QByteArray("\xff\xff\xff\xff", 4) + QByteArray(1000, 'x'));
    processEventsUntil([&] { return socket.state() == QLocalSocket::UnconnectedState; });
    EXPECT_EQ(socket.state(), QLocalSocket::UnconnectedState);
    EXPECT_FALSE(heard);
}

TEST(SingleInstance, KeepsItsFolderFromOtherUsersAndStartsWithoutOne) {
    const QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("state"));
    SingleInstance first(folder);
    ASSERT_TRUE(first.tryBecomePrimary());
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(folder).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);

    QFile file(root.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    SingleInstance stuck(file.fileName());
    EXPECT_TRUE(stuck.tryBecomePrimary()) << "the program must start";
}
