#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/GameFilter.h"
#include "Cli/JsonRecords.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

class PlaylistsCommand : public Command {
  public:
    const char *name() const override { return "playlists"; }
    const char *description() const override {
        return "List the playlists with the number of their games, or the games of one";
    }

    void declare(CommandOptions &options) override {
        options.optionalArgument("ID-OR-NAME", m_filter.playlist, "Lists the games of this one");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibrary();
        if (!m_filter.playlist.isNull()) {
            printGames(context, m_filter.select(context, *library));
            co_return exitDone;
        }
        if (context.json()) {
            JsonList list(context.output(), "playlists");
            for (const Playlist &playlist : library->playlists()) {
                Json element = toJson(playlist);
                element["gameCount"] = gamesThere(*library, playlist);
                list.add(element);
            }
            list.finish();
            co_return exitDone;
        }
        Table table(
            {QStringLiteral("PLAYLIST"), QStringLiteral("KIND"), QStringLiteral("GAMES"), QStringLiteral("ID")});
        for (const Playlist &playlist : library->playlists()) {
            const QString kind = playlist.autoPopulate ? QStringLiteral("dynamic") : QStringLiteral("static");
            table.add({playlist.name, kind, QString::number(gamesThere(*library, playlist)), playlist.id});
        }
        table.print(context.output());
        co_return exitDone;
    }

  private:
    /// A playlist may name games that the library lacks, and one twice.
    static qsizetype gamesThere(const GameLibrary &library, const Playlist &playlist) {
        QSet<QString> ids;
        for (const QString &id : playlist.gameIds)
            if (library.position(id))
                ids.insert(id);
        return ids.size();
    }

    GameFilter m_filter;
};

} // namespace

std::unique_ptr<Command> makePlaylistsCommand() {
    return std::make_unique<PlaylistsCommand>();
}

} // namespace ludarium
