#include "App/AppState.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameChoice.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// What the desktop program would show of a game.
struct Media {
    std::optional<FoundImage> cover;
    std::optional<FoundImage> coverflow;
    QList<FoundImage> images;
    QString video;
    QString manual;
    QStringList music;
};

QCoro::Task<Media> lookUp(ImageLoader &images, GamePtr game, QString collection) {
    auto work = [&images, game, collection] {
        Media media;
        media.cover = images.bestAvailableImageURL(*game, collection);
        media.coverflow = images.coverflowImageURL(*game, collection);
        media.images = images.allImages(*game, collection);
        media.video = images.videoURL(*game, collection).value_or(QString());
        media.manual = images.manualURL(*game, collection).value_or(QString());
        media.music = images.musicFiles(*game, collection);
        return media;
    };
    co_return co_await images.run(work);
}

Json toJson(const FoundImage &image) {
    Json object = Json::object();
    object["type"] = jsonText(rawValue(image.type));
    object["Name"] = jsonText(displayName(image.type));
    object["path"] = jsonText(image.url);
    return object;
}

class ImagesCommand : public Command {
  public:
    const char *name() const override { return "images"; }
    const char *description() const override { return "List the pictures, video, manual and music of a game"; }

    void declare(CommandOptions &options) override {
        options.argument("ID-OR-TITLE", m_game, "Id, title or a part of the title");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        const GamePtr game = chooseGame(context, *library, m_game);
        const Media media = co_await lookUp(context.appState().imageLoader(), game, library->collectionURL());
        if (context.json())
            printDocument(context.output(), *game, media);
        else
            printTable(context.output(), media);
        co_return exitDone;
    }

  private:
    static void printDocument(Output &output, const Game &game, const Media &media) {
        Json document = jsonDocument();
        addName(document, game);
        if (media.cover)
            document["cover"] = toJson(*media.cover);
        if (media.coverflow)
            document["coverflow"] = toJson(*media.coverflow);
        Json images = Json::array();
        for (const FoundImage &image : media.images)
            images.push_back(toJson(image));
        document["images"] = std::move(images);
        addText(document, "video", media.video);
        addText(document, "manual", media.manual);
        document["music"] = jsonTexts(media.music);
        printJson(output, document);
    }

    static void printTable(Output &output, const Media &media) {
        Table table({QStringLiteral("WHAT"), QStringLiteral("KIND"), QStringLiteral("FILE")}, 2);
        const auto addImage = [&](const char *what, const FoundImage &image) {
            table.add({QString::fromLatin1(what), displayName(image.type), image.url});
        };
        const auto addFile = [&](const char *what, const QString &path) {
            if (!path.isEmpty())
                table.add({QString::fromLatin1(what), QString(), path});
        };
        if (media.cover)
            addImage("cover", *media.cover);
        if (media.coverflow)
            addImage("cover flow", *media.coverflow);
        for (const FoundImage &image : media.images)
            addImage("gallery", image);
        addFile("video", media.video);
        addFile("manual", media.manual);
        for (const QString &track : media.music)
            addFile("music", track);
        table.print(output);
    }

    QString m_game;
};

} // namespace

std::unique_ptr<Command> makeImagesCommand() {
    return std::make_unique<ImagesCommand>();
}

} // namespace ludarium
