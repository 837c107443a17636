#include "Services/Launch/LaunchRoute.h"

#include "Host/SafeFiles.h"
#include "Models/Platform.h"

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// The first of `words` that `text` holds; empty when none.
QString firstContained(const QString &text, const QStringList &words) {
    for (const QString &word : words)
        if (text.contains(word))
            return word;
    return {};
}

/// Routes that the platform's name alone decides, except documents.
std::optional<LaunchRoute> platformRoute(const Game &game) {
    const QString &platform = game.platform;
    if (platform == u"ScummVM"_s || platform == u"ScummVM SVN"_s)
        return LaunchRoute::scummVM;
    if (game.isDREAMMGame())
        return LaunchRoute::dreamm;
    if (platform == u"Windows 3x"_s || platform == u"Windows 3.x"_s)
        return LaunchRoute::windows3x;
    if (platform == u"Windows 9x"_s || platform == u"Windows 9.x"_s)
        return LaunchRoute::windows9x;
    if (platform == u"Apple IIGS"_s)
        return LaunchRoute::appleIIGS;
    return std::nullopt;
}

/// Whether a record of the platform names a configuration among those of the DOS games: then its title may say what
/// it likes.
bool hasDosConfiguration(const Game &game) {
    if (game.platform != u"MS-DOS"_s && !game.platform.startsWith(u"MS-DOS "_s))
        return false;
    const QStringList pieces = pathComponents(game.configurationPath);
    for (qsizetype i = 0; i + 2 < pieces.size(); ++i)
        if (pieces[i].compare(u"eXoDOS"_s, Qt::CaseInsensitive) == 0 && pieces[i + 1].startsWith(u'!'))
            return true;
    return false;
}

} // namespace

std::pair<LaunchRoute, QString> launchRoute(const Game &game) {
    const QString byPlatform = u"platform \"%1\""_s.arg(game.platform);
    static const QStringList documents{u"magazines"_s, u"newsletters"_s, u"books"_s, u"catalogs"_s};
    if (const QString word = firstContained(game.platform.toLower(), documents); !word.isEmpty())
        return {LaunchRoute::document, u"%1 holds \"%2\""_s.arg(byPlatform, word)};
    if (const std::optional<LaunchRoute> route = platformRoute(game))
        return {*route, byPlatform};

    const Platform platform = Platform::named(game.platform, {});
    if (platform.isROMPlatform())
        return {platform.isArcade() ? LaunchRoute::arcade : LaunchRoute::retroArch,
                byPlatform + u" is played from ROM files"_s};

    // What a DOS game is called, and what its folder is called, says nothing about it.
    const bool isDosGame = hasDosConfiguration(game);
    const QString title = isDosGame ? QString() : game.title.toLower();
    const QString path = game.applicationPath.toLower();
    static const QStringList music{u"soundtrack"_s, u"music cd"_s, u"audio cd"_s};
    static const QStringList players{u"foobar2000"_s, u"audio"_s};
    if (const QString word = firstContained(title, music); !word.isEmpty())
        return {LaunchRoute::soundtrack, u"title holds \"%1\""_s.arg(word)};
    if (const QString word = firstContained(path, isDosGame ? players.first(1) : players); !word.isEmpty())
        return {LaunchRoute::soundtrack, u"application path holds \"%1\""_s.arg(word)};

    if (title.contains(u"video"_s))
        return {LaunchRoute::video, u"title holds \"video\""_s};
    static const QStringList folders{u"/videos/"_s, u"\\videos\\"_s};
    if (const QString word = firstContained(path, folders); !word.isEmpty())
        return {LaunchRoute::video, u"application path holds \"%1\""_s.arg(word)};

    return {LaunchRoute::dos, byPlatform + u" has no other runner"_s};
}

LaunchRoute setupRoute(const Game &game) {
    return platformRoute(game).value_or(LaunchRoute::dos);
}

QString launchRouteName(LaunchRoute route) {
    switch (route) {
    case LaunchRoute::document:
        return u"document"_s;
    case LaunchRoute::scummVM:
        return u"scummvm"_s;
    case LaunchRoute::dreamm:
        return u"dreamm"_s;
    case LaunchRoute::windows3x:
        return u"windows3x"_s;
    case LaunchRoute::windows9x:
        return u"windows9x"_s;
    case LaunchRoute::appleIIGS:
        return u"appleiigs"_s;
    case LaunchRoute::arcade:
        return u"arcade"_s;
    case LaunchRoute::retroArch:
        return u"retroarch"_s;
    case LaunchRoute::soundtrack:
        return u"soundtrack"_s;
    case LaunchRoute::video:
        return u"video"_s;
    case LaunchRoute::dos:
        return u"dos"_s;
    }
    Q_UNREACHABLE();
}

QString launchRouteGames(LaunchRoute route) {
    switch (route) {
    case LaunchRoute::document:
        return u"Documents"_s;
    case LaunchRoute::scummVM:
        return u"ScummVM games"_s;
    case LaunchRoute::dreamm:
        return u"DREAMM games"_s;
    case LaunchRoute::windows3x:
        return u"Windows 3.x games"_s;
    case LaunchRoute::windows9x:
        return u"Windows 9x games"_s;
    case LaunchRoute::appleIIGS:
        return u"Apple IIGS games"_s;
    case LaunchRoute::arcade:
        return u"Arcade games"_s;
    case LaunchRoute::retroArch:
        return u"ROM games"_s;
    case LaunchRoute::soundtrack:
        return u"Soundtracks"_s;
    case LaunchRoute::video:
        return u"Videos"_s;
    case LaunchRoute::dos:
        return u"DOS games"_s;
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
