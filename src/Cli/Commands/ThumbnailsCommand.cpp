#include "App/AppState.h"
#include "Cli/CliError.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Host/InterruptWatch.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"

#include <QElapsedTimer>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// Tells on standard error how far the run is, at most twice a second.
class PreCacheWatch : public QObject {
  public:
    PreCacheWatch(const ImageLoader &images, Output &errors) : m_images(images), m_errors(errors) {
        m_sinceLine.start();
        connect(&images, &ImageLoader::preCacheChanged, this, &PreCacheWatch::take);
    }

  private:
    void take() {
        constexpr qint64 interval = 500;
        if (!m_images.isPreCaching() || m_sinceLine.elapsed() < interval)
            return;
        m_sinceLine.start();
        m_errors.line(QStringLiteral("%1 %  %2")
                          .arg(m_images.preCacheProgress() * 100, 3, 'f', 0)
                          .arg(m_images.preCacheStatus()));
        m_errors.flush();
    }

    const ImageLoader &m_images;
    Output &m_errors;
    QElapsedTimer m_sinceLine;
};

class ThumbnailsCommand : public Command {
  public:
    const char *name() const override { return "thumbnails"; }
    const char *description() const override { return "Copy the covers of the games, made small, to the local disk"; }

    void declare(CommandOptions &options) override { m_filter.declarePlatform(options); }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        ImageLoader &images = context.appState().imageLoader();
        const GameList games = m_filter.select(context, *library);
        const PreCacheWatch watch(images, context.errors());
        const InterruptWatch interrupt;
        QObject::connect(&interrupt, &InterruptWatch::interrupted, &images, &ImageLoader::cancelPreCache);
        QElapsedTimer timer;
        timer.start();
        const PreCacheCount count = co_await images.preCacheAllThumbnails(games, library->collectionURL());
        if (count.stopped)
            throw CliError(QStringLiteral("Stopped after %1 of %2 games; the thumbnails made so far are kept.")
                               .arg(count.cached + count.skipped)
                               .arg(count.total));
        print(context, count, double(timer.elapsed()) / 1000);
        if (count.failed > 0 && count.cached == 0)
            throw CliError(QStringLiteral("No thumbnail was saved: %1").arg(count.failure));
        co_return exitDone;
    }

  private:
    static void print(CommandContext &context, const PreCacheCount &count, double seconds) {
        const ImageLoader &images = context.appState().imageLoader();
        const QString folder = images.diskCache().directory();
        if (context.json()) {
            Json document = jsonDocument();
            document["gameCount"] = count.total;
            document["cachedCount"] = count.cached;
            document["skippedCount"] = count.skipped;
            document["milliseconds"] = qRound64(seconds * 1000);
            addText(document, "folder", folder);
            document["bytes"] = images.diskCache().diskCacheSize();
            document["inUse"] = images.isDiskCacheOn();
            printJson(context.output(), document);
            return;
        }
        FieldList fields;
        fields.add(QStringLiteral("Games"), QString::number(count.total));
        fields.add(QStringLiteral("Cached"), QString::number(count.cached));
        fields.add(QStringLiteral("Skipped"), QString::number(count.skipped));
        fields.add(QStringLiteral("Time"), QStringLiteral("%1 s").arg(seconds, 0, 'f', 1));
        fields.add(QStringLiteral("Folder"), folder);
        fields.add(QStringLiteral("Size"),
                   QStringLiteral("%1 MB").arg(double(images.diskCache().diskCacheSize()) / 1e6, 0, 'f', 1));
        fields.add(QStringLiteral("In use"), images.isDiskCacheOn()
                                                 ? QStringLiteral("yes")
                                                 : QStringLiteral("no, not before the desktop program's thumbnail "
                                                                  "cache is turned on"));
        fields.print(context.output());
    }

    GameFilter m_filter;
};

} // namespace

std::unique_ptr<Command> makeThumbnailsCommand() {
    return std::make_unique<ThumbnailsCommand>();
}

} // namespace ludarium
