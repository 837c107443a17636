// What the user did with games outlives a program that is killed at any moment: what was acknowledged is there, a
// change that touches several maps is there as a whole or not at all, and nothing else has changed.

#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "Services/Library/UserData.h"

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ludarium {
namespace {

constexpr int rounds = 200;
constexpr int games = 60;
constexpr int bystanders = 500;

QString gameId(int game) {
    return QStringLiteral("6d1c3b52-0f7e-4f0a-9c55-%1").arg(game, 12, 10, QLatin1Char('0'));
}

/// One change, told by its number alone, so that the killed program and its judge agree on what it was.
struct Change {
    explicit Change(qint64 number) : random(unsigned(number) * 2654435761u), id(gameId(int(random() % games))) {
        kind = random() % 6;
        amount = int(random() % 7);
        seconds = 1 + int(random() % 900);
        // Of changing length, so that pages split and free up; empty removes the note.
        if (amount > 0)
            note = QStringLiteral("Note %1 ").arg(number).repeated(1 << amount);
        time = QDateTime::fromSecsSinceEpoch(1'700'000'000 + number, Qt::UTC);
    }

    std::mt19937 random;
    QString id;
    unsigned kind = 0;
    int amount = 0;
    double seconds = 0;
    QString note;
    QDateTime time;
};

void make(const Change &change, UserData &data) {
    switch (change.kind) {
    case 0:
        return data.setFavorite(change.id, !data.favoriteIds().contains(change.id));
    case 1:
        return data.setNotes(change.id, change.note);
    case 2:
        return data.setRating(change.id, change.amount);
    case 3:
        return data.setProgress(change.id, static_cast<GameProgress>(change.amount % 5));
    case 4:
        return data.addPlayTime(change.id, change.seconds);
    default:
        return data.recordPlay(change.id, change.seconds, change.time);
    }
}

template<typename Map, typename Value>
void insertOrRemove(Map &map, const QString &id, const Value &value, bool insert) {
    if (insert)
        map.insert(id, value);
    else
        map.remove(id);
}

/// The same change by what it means, without the code under test.
void make(const Change &change, UserData::Values &values) {
    switch (change.kind) {
    case 0:
        if (!values.favorites.remove(change.id))
            values.favorites.insert(change.id);
        return;
    case 1:
        return insertOrRemove(values.notes, change.id, change.note, !change.note.isEmpty());
    case 2:
        return insertOrRemove(values.ratings, change.id, change.amount, change.amount >= 1 && change.amount <= 5);
    case 3:
        return insertOrRemove(values.progress, change.id, change.amount % 5, change.amount % 5 != 0);
    case 4:
        values.playTimes[change.id] += change.seconds;
        return;
    default:
        if (++values.playCounts[change.id] == 1 && !values.progress.contains(change.id))
            values.progress.insert(change.id, static_cast<qint64>(GameProgress::playing));
        values.playTimes[change.id] += change.seconds;
        values.lastPlayed[change.id] = change.time;
        values.recent.removeAll(change.id);
        values.recent.prepend(change.id);
        values.recent = values.recent.first(std::min<qsizetype>(values.recent.size(), UserData::recentLimit));
    }
}

/// What differs; empty when nothing does.
std::string difference(const UserData::Values &is, const UserData::Values &wanted) {
    return is.favorites != wanted.favorites     ? "favourites"
           : is.playCounts != wanted.playCounts ? "play counts"
           : is.playTimes != wanted.playTimes   ? "play times"
           : is.lastPlayed != wanted.lastPlayed ? "dates"
           : is.recent != wanted.recent         ? "the recent list"
           : is.notes != wanted.notes           ? "notes"
           : is.ratings != wanted.ratings       ? "ratings"
           : is.progress != wanted.progress     ? "progress"
                                                : "";
}

[[noreturn]] void changeUntilKilled(const QString &folder, qint64 next, int acknowledgements) {
    try {
        SqliteSettingsStore store(folder);
        UserData data(store);
        for (;; ++next) {
            make(Change(next), data);
            const QByteArray line = QByteArray::number(next) + '\n';
            if (::write(acknowledgements, line.constData(), size_t(line.size())) != line.size())
                ::_exit(2);
        }
    } catch (...) {
        ::_exit(3);
    }
}

/// Lets a process change user data and kills it; the number of the last change that it acknowledged.
qint64 runAndKill(const QString &folder, qint64 done, unsigned microseconds) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        changeUntilKilled(folder, done + 1, ends[1]);
    }
    ::close(ends[1]);
    ::usleep(microseconds);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the program ended by itself with " << WEXITSTATUS(status);
    QByteArray lines;
    char buffer[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;)
        lines.append(buffer, got);
    ::close(ends[0]);
    return lines.isEmpty() ? done : lines.trimmed().split('\n').last().toLongLong();
}

} // namespace

TEST(UserDataKillLoop, KeepsEveryAcknowledgedChangeThroughTwoHundredKills) {
    const QTemporaryDir folder;
    UserData::Values expected;
    // What no change touches: a large list among the favourites, a large map among the notes, another key.
    const QString path = QStringLiteral("/games/My Collection");
    {
        SqliteSettingsStore store(folder.path());
        QStringList favourites;
        for (int i = games; i < games + bystanders; ++i) {
            favourites.append(gameId(i));
            expected.favorites.insert(gameId(i));
            expected.notes.insert(gameId(i), QStringLiteral("Kept ").repeated(i % 40 + 1));
        }
        store.transaction([&] {
            store.setValue(Settings::collectionPath, path);
            store.setValue(Settings::favoriteGames, favourites);
            for (auto it = expected.notes.cbegin(); it != expected.notes.cend(); ++it)
                store.setEntry(Settings::gameNotes, it.key(), it.value());
        });
    }

    std::mt19937 random(20'240'607);
    qint64 done = 0;
    int killedBetween = 0;
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round << " after change " << done);
        // Every fourth program is killed while it opens the store.
        const unsigned moment = std::uniform_int_distribution<unsigned>(0, round % 4 == 0 ? 15'000 : 120'000)(random);
        const qint64 acknowledged = runAndKill(folder.path(), done, moment);
        for (; done < acknowledged; ++done)
            make(Change(done + 1), expected);

        SqliteSettingsStore store(folder.path());
        const UserData data(store);
        ASSERT_EQ(store.problem(), QString());
        std::string problem = difference(data.values(), expected);
        if (!problem.empty()) {
            // The change that was under way may have been kept, and then all of it.
            make(Change(++done), expected);
            problem = difference(data.values(), expected);
            ++killedBetween;
        }
        EXPECT_EQ(problem, "") << "neither as acknowledged nor one change further";
        EXPECT_EQ(store.value(Settings::collectionPath), path);
        EXPECT_TRUE(QDir(folder.path()).entryList({QStringLiteral("*.corrupt-*")}).isEmpty());
    }
    EXPECT_GT(done, rounds) << "the killed programs changed something";
    RecordProperty("changes", int(done));
    RecordProperty("keptWithoutAcknowledgement", killedBetween);
}

} // namespace ludarium
