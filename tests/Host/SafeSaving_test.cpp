#include "Host/SafeFiles.h"

#include "support/Mount.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

namespace {
/// What the library's fsync() does in this program: 0 the real thing, otherwise fail with this.
int flushError = 0;
/// Called with each flushed descriptor.
std::function<void(int)> onFlush;
} // namespace

#ifdef Q_OS_LINUX
// Takes the C library's place in this program.
extern "C" int fsync(int fd) {
    if (onFlush)
        onFlush(fd);
    if (flushError != 0) {
        errno = flushError;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, fd));
}
#endif

namespace ludarium {
namespace {

using test::Mount;
using testing::ElementsAre;

class Saving : public testing::Test {
  protected:
    QString at(const QString &name) const { return m_directory.filePath(name); }
    static QByteArray read(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    static mode_t mode(const QString &path) {
        struct stat info {};
        ::lstat(QFile::encodeName(path).constData(), &info);
        return info.st_mode & 07777;
    }
    static QStringList names(const QString &folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_directory;
};

TEST_F(Saving, ReplacesTheFileAndLeavesNothingBesideIt) {
    const QString path = at(QStringLiteral("data.json"));
    const QByteArray large(3'000'000, 'x');
    for (const QByteArray &data : {QByteArray("old"), large, QByteArray()}) {
        EXPECT_EQ(writeAtomically(path, data), QString());
        EXPECT_EQ(read(path), data);
    }
    EXPECT_THAT(names(m_directory.path()), ElementsAre(QStringLiteral("data.json")));
}

TEST_F(Saving, TakesNamesAsLongAsNamesCanBe) {
    const QString path = at(QString(255, u'n'));
    EXPECT_EQ(writeAtomically(path, "1"), QString());
    EXPECT_EQ(read(path), "1");
}

TEST_F(Saving, KeepsTheModeOfAScriptAndHidesPrivateFiles) {
    const mode_t umask = ::umask(022);
    const QString script = at(QStringLiteral("run.sh"));
    EXPECT_EQ(writeAtomically(script, "1"), QString());
    EXPECT_EQ(mode(script), 0644u);
    ::chmod(QFile::encodeName(script).constData(), 0755);
    EXPECT_EQ(writeAtomically(script, "2"), QString());
    EXPECT_EQ(mode(script), 0755u);

    EXPECT_EQ(writeAtomically(script, "secret", true), QString());
    EXPECT_EQ(mode(script), 0600u) << "also when the old file was open to all";
    ::umask(umask);
}

TEST_F(Saving, ReplacesALinkInsteadOfWritingThroughIt) {
    const QString target = at(QStringLiteral("target"));
    const QString link = at(QStringLiteral("link"));
    ASSERT_EQ(writeAtomically(target, "precious"), QString());
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_EQ(writeAtomically(link, "new"), QString());
    EXPECT_EQ(read(target), "precious");
    EXPECT_EQ(read(link), "new");
    EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST_F(Saving, TellsTheReasonAndThePathWhenItCannot) {
    EXPECT_EQ(writeAtomically(at(QStringLiteral("no/file")), "x"), QStringLiteral("No such file or directory"));
    ASSERT_TRUE(QDir(m_directory.path()).mkpath(QStringLiteral("folder/child")));
    EXPECT_EQ(writeAtomically(at(QStringLiteral("folder")), "x"), QStringLiteral("Is a directory"));
    EXPECT_THAT(names(m_directory.path()), ElementsAre(QStringLiteral("folder"))) << "no temporary file is left";
    const QString path = at(QStringLiteral("no/file"));
    try {
        writeAtomicallyOrThrow(path, "x");
        ADD_FAILURE();
    } catch (const std::system_error &error) {
        EXPECT_EQ(error.code().value(), ENOENT);
        EXPECT_THAT(error.what(), testing::HasSubstr(path.toStdString()));
    }
}

TEST_F(Saving, AFullDiskLeavesTheOldFileAndNoRest) {
    const QString volume = at(QStringLiteral("volume"));
    const Mount mount = Mount::memory(volume, QStringLiteral("1m"));
    if (!mount.ok())
        GTEST_SKIP() << mount.reason().toStdString();
    const QString path = volume + QStringLiteral("/user data");
    const QByteArray old(300'000, 'o');
    ASSERT_EQ(writeAtomically(path, old), QString());
    // The first write is accepted in part: only a check of its size tells.
    EXPECT_EQ(writeAtomically(path, QByteArray(900'000, 'n')), QStringLiteral("No space left on device"));
    EXPECT_TRUE(read(path) == old);
    EXPECT_THAT(names(volume), ElementsAre(QStringLiteral("user data")));
    EXPECT_EQ(writeAtomically(path, QByteArray(400'000, 's')), QString()) << "the space is free again";
}

#ifdef Q_OS_LINUX
TEST_F(Saving, FlushesTheFileBeforeItTakesTheNameAndTheFolderAfterwards) {
    const QString path = at(QStringLiteral("data"));
    ASSERT_EQ(writeAtomically(path, "old"), QString());
    QStringList steps;
    onFlush = [&](int fd) {
        struct stat info {};
        ::fstat(fd, &info);
        steps << QStringLiteral("%1 while the name means %2")
                     .arg(S_ISDIR(info.st_mode) ? QStringLiteral("folder")
                                                : QStringLiteral("%1 bytes").arg(info.st_size),
                          QString::fromUtf8(read(path)));
    };
    EXPECT_EQ(writeAtomically(path, "newer"), QString());
    onFlush = {};
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("5 bytes while the name means old"),
                                   QStringLiteral("folder while the name means newer")));
}

TEST_F(Saving, ADiskThatCannotFlushKeepsTheOldFile) {
    const QString path = at(QStringLiteral("data"));
    ASSERT_EQ(writeAtomically(path, "old"), QString());
    flushError = EIO;
    EXPECT_EQ(writeAtomically(path, "new"), QStringLiteral("Input/output error"));
    flushError = EINVAL; // a file system that knows no flushing at all
    EXPECT_EQ(writeAtomically(at(QStringLiteral("other")), "new"), QString());
    flushError = 0;
    EXPECT_EQ(read(path), "old");
    EXPECT_THAT(names(m_directory.path()), ElementsAre(QStringLiteral("data"), QStringLiteral("other")));
}
#endif

TEST_F(Saving, SetsBrokenFilesAsideEachUnderANameOfItsOwn) {
    const QString path = at(QStringLiteral("userdata.json"));
    QStringList aside;
    for (const char *content : {"first", "second", "third"}) {
        ASSERT_EQ(writeAtomically(path, content), QString());
        aside << setAsideCorrupt(path);
        EXPECT_FALSE(QFile::exists(path));
        EXPECT_THAT(aside.last().toStdString(), testing::StartsWith(path.toStdString() + ".corrupt-2"));
    }
    EXPECT_EQ(read(aside[0]), "first");
    EXPECT_EQ(read(aside[1]), "second");
    EXPECT_EQ(read(aside[2]), "third");
    EXPECT_EQ(setAsideCorrupt(path), QString()) << "there is no such file";
}

} // namespace
} // namespace ludarium
