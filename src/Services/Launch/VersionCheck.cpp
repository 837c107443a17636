#include "Services/Launch/VersionCheck.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Services/Launch/GameFolders.h"

#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

bool isMedia(const QString &platform) {
    const QString lower = platform.toLower();
    static const QStringList words{u"magazine"_s,   u"book"_s, u"catalog"_s, u"video"_s,
                                   u"newsletter"_s, u"demo"_s, u"document"_s};
    return std::any_of(words.begin(), words.end(), [&](const QString &word) { return lower.contains(word); });
}

bool hasVersions(const QString &platform) {
    return platform == u"MS-DOS"_s || platform.startsWith(u"MS-DOS "_s) || platform == u"ScummVM"_s ||
           platform == u"ScummVM SVN"_s;
}

} // namespace

VersionCheck::VersionCheck(Collaborators collaborators) : m_collaborators(std::move(collaborators)) {}

QCoro::Task<VersionCheck::Result> VersionCheck::checkVersionsAndLaunch(QString gameId, QString collection) const {
    Result result;
    if (m_collaborators.currentGame)
        result.game = m_collaborators.currentGame(gameId);
    if (!result.game)
        co_return result;
    result.action = Result::Action::launch;

    const Game &game = *result.game;
    if (isMedia(game.platform)) {
        Log::info(u"📄 Skipping version check for document/media: %1"_s.arg(game.title));
        co_return result;
    }
    if (!hasVersions(game.platform)) {
        Log::info(u"🎮 Skipping version check for: %1"_s.arg(game.platform));
        co_return result;
    }

    std::optional<GameVersionMenu> menu;
    const QString folder = GameFolders::dataFolder(game, collection);
    // Named, as g++ 12 destroys the captures of a lambda made inside a co_await expression twice.
    const auto detect = [detectors = m_collaborators, title = game.title, folder] {
        std::optional<GameVersionMenu> found;
        if (detectors.detectVersions)
            found = detectors.detectVersions(title, folder);
        if (!found && detectors.detectVersionsFromFolders)
            found = detectors.detectVersionsFromFolders(folder);
        return found;
    };
    if (!folder.isEmpty())
        menu = co_await runOnPool(detect);
    if (!menu || menu->options.isEmpty()) {
        Log::info(u"   No multiple versions detected, launching directly"_s);
    } else if (menu->options.size() == 1) {
        result.version = menu->options.first();
        result.version->isOnlyOne = true;
        Log::info(u"   Single version detected, launching with: %1"_s.arg(result.version->label));
    } else {
        result.action = Result::Action::ask;
        result.menu = std::move(menu);
    }
    co_return result;
}

} // namespace ludarium
