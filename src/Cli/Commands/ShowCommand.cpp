#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Models/PlayTime.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

QString flagText(const std::optional<bool> &flag) {
    return flag ? (*flag ? QStringLiteral("yes") : QStringLiteral("no")) : QString();
}

QString numberText(const std::optional<int> &number) {
    return number ? QString::number(*number) : QString();
}

QString ratingText(const Game &game) {
    if (!game.communityRating)
        return {};
    QString text = QString::number(*game.communityRating, 'f', 2);
    if (game.communityRatingCount)
        text += QStringLiteral(" (%1 votes)").arg(*game.communityRatingCount);
    return text;
}

QString playCountText(int count) {
    return count == 1 ? QStringLiteral("1 time") : QStringLiteral("%1 times").arg(count);
}

QString emulatorText(const Game &game) {
    if (!game.requiredEmulatorType)
        return {};
    QString text = emulatorTypeText(*game.requiredEmulatorType);
    if (!game.requiredEmulatorVersion.isEmpty())
        text += u' ' + game.requiredEmulatorVersion;
    return text;
}

FieldList fields(const Game &game, const UserData &user) {
    FieldList list;
    list.add(QStringLiteral("Title"), game.title);
    list.add(QStringLiteral("Platform"), game.platform);
    list.add(QStringLiteral("Released"),
             game.releaseDate ? game.releaseDate->date().toString(Qt::ISODate) : numberText(game.releaseYear));
    list.add(QStringLiteral("Developer"), game.developer);
    list.add(QStringLiteral("Publisher"), game.publisher);
    list.add(QStringLiteral("Genre"), game.genre);
    list.add(QStringLiteral("Series"), game.series);
    list.add(QStringLiteral("Play mode"), game.playMode);
    list.add(QStringLiteral("Players"), numberText(game.maxPlayers));
    list.add(QStringLiteral("Cooperative"), flagText(game.cooperative));
    list.add(QStringLiteral("Age rating"), game.rating);
    list.add(QStringLiteral("Rating"), ratingText(game));
    QString state = gameStateText(game);
    if (!game.downloadSize.isEmpty())
        state += QStringLiteral(" (%1)").arg(game.downloadSize);
    list.add(QStringLiteral("State"), state);
    list.add(QStringLiteral("Favorite"), game.isFavorite ? QStringLiteral("yes") : QString());
    list.add(QStringLiteral("Own rating"),
             user.rating(game.id) > 0 ? QStringLiteral("%1 of 5").arg(user.rating(game.id)) : QString());
    list.add(QStringLiteral("Progress"), gameProgressText(game.gameProgress));
    list.add(QStringLiteral("Played"), game.playCount > 0 ? playCountText(game.playCount) : QString());
    list.add(QStringLiteral("Play time"), game.playTime > 0 ? formatPlayTime(game.playTime) : QString());
    list.add(QStringLiteral("Last played"),
             game.lastPlayed ? game.lastPlayed->toLocalTime().toString(u"yyyy-MM-dd HH:mm") : QString());
    list.add(QStringLiteral("Emulator"), emulatorText(game));
    list.add(QStringLiteral("Application"), game.applicationPath);
    list.add(QStringLiteral("Configuration"), game.configurationPath);
    list.add(QStringLiteral("Command line"), game.commandLine);
    list.add(QStringLiteral("Manual"), game.manualPath);
    list.add(QStringLiteral("Music"), game.musicPath);
    list.add(QStringLiteral("Video"), game.videoPath);
    list.add(QStringLiteral("Wikipedia"), game.wikipediaURL);
    QStringList applications;
    for (const AdditionalApplication &application : game.additionalApplications)
        applications << QStringLiteral("%1 (%2)").arg(application.name, application.applicationPath);
    list.add(QStringLiteral("Also"), applications.join(u'\n'));
    list.add(QStringLiteral("ID"), game.id);
    list.add(QStringLiteral("Own note"), user.notes(game.id));
    list.add(QStringLiteral("Notes"), game.notesText());
    list.add(QStringLiteral("Overview"), game.overviewText());
    return list;
}

class ShowCommand : public Command {
  public:
    const char *name() const override { return "show"; }
    const char *description() const override { return "Show one game"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        const GamePtr game = chooseGame(context, *library, m_game);
        if (context.json()) {
            Json document = jsonDocument();
            document.update(toJson(*game, library->userData()));
            printJson(context.output(), document);
        } else {
            fields(*game, library->userData()).print(context.output());
        }
        co_return exitDone;
    }

  private:
    QString m_game;
};

} // namespace

std::unique_ptr<Command> makeShowCommand() {
    return std::make_unique<ShowCommand>();
}

} // namespace ludarium
