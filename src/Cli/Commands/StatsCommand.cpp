#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Models/PlayTime.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlayStatistics.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

QString daysText(int days) {
    return days == 1 ? QStringLiteral("1 day") : QStringLiteral("%1 days").arg(days);
}

QString hoursText(double hours) {
    return formatPlayTime(hours * 3600);
}

Json sharesJson(const QList<PlayStatistics::Share> &shares) {
    Json list = Json::array();
    for (const PlayStatistics::Share &share : shares)
        list.push_back(Json{{"Name", jsonText(share.name)}, {"playTime", share.seconds}});
    return list;
}

void printShares(Output &output, const QString &heading, const QList<PlayStatistics::Share> &shares) {
    if (shares.isEmpty())
        return;
    output.line();
    Table table({heading, QStringLiteral("TIME")});
    for (const PlayStatistics::Share &share : shares)
        table.add({share.name, formatPlayTime(share.seconds)});
    table.print(output);
}

void printStatistics(Output &output, const PlayStatistics &statistics) {
    FieldList fields;
    fields.add(QStringLiteral("Total play time"), formatPlayTime(statistics.totalPlayTime));
    fields.add(QStringLiteral("Games played"), QString::number(statistics.gamesPlayed));
    fields.add(QStringLiteral("Games installed"), QString::number(statistics.gamesInstalled));
    fields.add(QStringLiteral("Favorites"), QString::number(statistics.favorites));
    fields.add(QStringLiteral("Average session"), formatPlayTime(statistics.averageSessionLength));
    fields.add(QStringLiteral("Current streak"), daysText(statistics.currentStreak));
    fields.add(QStringLiteral("Longest streak"), daysText(statistics.longestStreak));
    fields.add(QStringLiteral("Played this month"), daysText(statistics.daysPlayedThisMonth));
    fields.print(output);
    printShares(output, QStringLiteral("PLATFORM"), statistics.platformPlayTime);
    printShares(output, QStringLiteral("GENRE"), statistics.genrePlayTime);
    if (!statistics.mostPlayedGames.isEmpty()) {
        output.line();
        Table table({QStringLiteral("RANK"), QStringLiteral("TITLE"), QStringLiteral("TIME"), QStringLiteral("PLAYS"),
                     QStringLiteral("ID")},
                    1);
        for (const PlayStatistics::Ranked &ranked : statistics.mostPlayedGames)
            table.add({QString::number(ranked.rank), ranked.game->title, formatPlayTime(ranked.game->playTime),
                       QString::number(ranked.game->playCount), ranked.game->id});
        table.print(output);
    }
    Table days({QStringLiteral("DAY"), QStringLiteral("TIME")});
    bool anyDay = false;
    for (const PlayStatistics::Day &day : statistics.playHistory)
        if (day.hours > 0) {
            days.add({day.date.toString(Qt::ISODate), hoursText(day.hours)});
            anyDay = true;
        }
    if (anyDay) {
        output.line();
        days.print(output);
    }
}

Json statisticsJson(const PlayStatistics &statistics) {
    Json document = jsonDocument();
    document["totalPlayTime"] = statistics.totalPlayTime;
    document["playedCount"] = statistics.gamesPlayed;
    document["installedCount"] = statistics.gamesInstalled;
    document["favoriteCount"] = statistics.favorites;
    document["averageSessionLength"] = statistics.averageSessionLength;
    document["currentStreak"] = statistics.currentStreak;
    document["longestStreak"] = statistics.longestStreak;
    document["daysPlayedThisMonth"] = statistics.daysPlayedThisMonth;
    document["platformPlayTime"] = sharesJson(statistics.platformPlayTime);
    document["genrePlayTime"] = sharesJson(statistics.genrePlayTime);
    Json ranking = Json::array();
    for (const PlayStatistics::Ranked &ranked : statistics.mostPlayedGames) {
        const Game &game = *ranked.game;
        Json entry{{"rank", ranked.rank}};
        addName(entry, game);
        addPlayData(entry, game.playCount, game.playTime, game.lastPlayed);
        ranking.push_back(std::move(entry));
    }
    document["mostPlayedGames"] = std::move(ranking);
    Json history = Json::array();
    for (const PlayStatistics::Day &day : statistics.playHistory)
        history.push_back(Json{{"date", jsonText(day.date.toString(Qt::ISODate))}, {"playTime", day.hours * 3600}});
    document["playHistory"] = std::move(history);
    return document;
}

class StatsCommand : public Command {
  public:
    const char *name() const override { return "stats"; }
    const char *description() const override { return "Print the play statistics"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        const PlayStatistics statistics = PlayStatistics::compute(library->games(), library->now());
        if (context.json())
            printJson(context.output(), statisticsJson(statistics));
        else
            printStatistics(context.output(), statistics);
        co_return exitDone;
    }
};

} // namespace

std::unique_ptr<Command> makeStatsCommand() {
    return std::make_unique<StatsCommand>();
}

} // namespace ludarium
