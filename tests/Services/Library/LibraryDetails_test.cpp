#include "Services/Library/LibraryDetails.h"

#include "GameFactory.h"
#include "Models/RecordEncoder.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

namespace {

/// All that a collection can say of a game, in one text.
std::string everything(const Game &game) {
    QByteArray text;
    appendJson(text, game);
    const auto add = [&](const auto &value) {
        if constexpr (requires { *value; })
            text += value ? QByteArray::number(*value) : QByteArray("none");
        else
            text += QByteArray::number(value);
        text += '|';
    };
    const auto moment = [](const std::optional<QDateTime> &time) {
        return time ? std::optional(time->toMSecsSinceEpoch()) : std::nullopt;
    };
    const auto texts = [&](const QString &value) { text += value.isNull() ? "null|" : value.toUtf8() + '|'; };
    add(moment(game.releaseDate));
    add(moment(game.dateAdded));
    add(game.maxPlayers);
    add(game.communityRating);
    add(game.communityRatingCount);
    for (const auto &flag : {game.cooperative, game.completed, game.hide, game.broken, game.portable})
        add(flag);
    add(game.requiredEmulatorType ? std::optional(int(*game.requiredEmulatorType)) : std::nullopt);
    texts(game.requiredEmulatorVersion);
    for (const AdditionalApplication &application : game.additionalApplications) {
        for (const QString &value : {application.id, application.gameId, application.name, application.applicationPath,
                                     application.commandLine})
            texts(value);
        for (const bool flag : {application.autoRunBefore, application.autoRunAfter, application.waitForExit})
            add(int(flag));
        add(application.playCount);
        add(application.priority);
        add(application.sideA);
        add(application.sideB);
    }
    return text.toStdString();
}

/// What a cache keeps of a game by itself.
GamePtr asWritten(const Game &game) {
    return makeGame(game.id, game.title, game.platform);
}

CachedCollectionData randomCollection(int games, quint32 seed) {
    QRandomGenerator random(seed);
    const auto maybe = [&] { return random.bounded(2) != 0; };
    const auto flag = [&] { return maybe() ? std::optional(maybe()) : std::nullopt; };
    const auto text = [&] { return QStringList{QString(), u""_s, u"Größe"_s, QString(300, u'x')}[random.bounded(4)]; };
    CachedCollectionData data;
    data.collectionPath = u"/games/eXo"_s;
    data.cacheDate = 812345678.123;
    Platform platform = Platform::named(u"MS-DOS"_s, u"Computer"_s);
    platform.releaseDate = QDate(1981, 8, 12);
    platform.emulatorPath = u""_s;
    data.platforms = {platform, Platform::named(u"Other"_s, {})};
    for (int i = 0; i < games; ++i)
        data.games.append(makeGame(QString::number(i), u"Game %1"_s.arg(i), u"MS-DOS"_s, [&](Game &game) {
            if (maybe())
                game.releaseDate = QDateTime(QDate(1, 1, 1).addDays(random.bounded(800'000)), QTime(3, 4), Qt::UTC);
            if (maybe())
                game.dateAdded = QDateTime(QDate(2021, 4, 21), QTime(8, 2, 32, 248), Qt::UTC);
            if (maybe())
                game.maxPlayers = int(random.bounded(9)) - 4;
            if (maybe())
                game.communityRating = random.generateDouble() * 5;
            if (maybe())
                game.communityRatingCount = int(random.bounded(1000));
            for (auto *each : {&game.cooperative, &game.completed, &game.hide, &game.broken, &game.portable})
                *each = flag();
            if (maybe()) {
                game.requiredEmulatorType = EmulatorType(random.bounded(5));
                game.requiredEmulatorVersion = text();
            }
            for (int n = int(random.bounded(3)); n > 0; --n)
                game.additionalApplications.append({text(), game.id, text(), text(), text(), maybe(), maybe(), maybe(),
                                                    int(random.bounded(9)), maybe() ? std::optional(-3) : std::nullopt,
                                                    flag(), flag()});
        }));
    return data;
}

CachedCollectionData fromCache(const CachedCollectionData &data) {
    CachedCollectionData cached = data;
    for (GamePtr &game : cached.games)
        game = asWritten(*game);
    for (Platform &platform : cached.platforms)
        platform = Platform::named(platform.name, platform.category);
    return cached;
}

} // namespace

TEST(LibraryDetails, BringBackAllThatTheCacheLeavesOut) {
    // The second is read in runs by several threads.
    for (const int games : {1, 5'000}) {
        const CachedCollectionData data = randomCollection(games, 11);
        CachedCollectionData cached = fromCache(data);
        ASSERT_TRUE(LibraryDetails::apply(LibraryDetails::encode(data), cached));
        for (int i = 0; i < games; ++i)
            ASSERT_EQ(everything(*cached.games[i]), everything(*data.games[i])) << i;
        EXPECT_EQ(cached.platforms, data.platforms);
    }
}

TEST(LibraryDetails, AreIgnoredWhereTheyDoNotFit) {
    const CachedCollectionData data = randomCollection(3, 5);
    const QByteArray bytes = LibraryDetails::encode(data);
    const auto isIgnored = [&](const QByteArray &tried, const std::function<void(CachedCollectionData &)> &change) {
        CachedCollectionData cached = fromCache(data);
        change(cached);
        std::vector<std::string> before;
        for (const GamePtr &game : cached.games)
            before.push_back(everything(*game));
        if (LibraryDetails::apply(tried, cached))
            return false;
        for (size_t i = 0; i < before.size(); ++i)
            EXPECT_EQ(everything(*cached.games[qsizetype(i)]), before[i]);
        return true;
    };
    EXPECT_FALSE(isIgnored(bytes, [](auto &) {}));
    EXPECT_TRUE(isIgnored(bytes, [](auto &cached) { cached.collectionPath += u'/'; }));
    EXPECT_TRUE(isIgnored(bytes, [](auto &cached) { cached.cacheDate += 0.001; }));
    EXPECT_TRUE(isIgnored(bytes, [](auto &cached) { cached.games.removeLast(); }));
    EXPECT_TRUE(isIgnored(bytes, [](auto &cached) { cached.games.swapItemsAt(0, 1); }));
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = char(damaged[i] ^ 0x10);
        ASSERT_TRUE(isIgnored(damaged, [](auto &) {})) << i;
        ASSERT_TRUE(isIgnored(bytes.first(i), [](auto &) {})) << i;
    }
}

} // namespace ludarium::test
