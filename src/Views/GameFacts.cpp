#include "Views/GameFacts.h"

#include "Services/Dos/GameExceptionsManager.h"
#include "Views/GameTexts.h"

#include <QCoreApplication>
#include <QLocale>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

QString tr(const char *text) {
    return QCoreApplication::translate("GameFacts", text);
}

QVariantMap fact(const char *name, const QString &value, const QString &kind = {}) {
    return {{u"name"_s, tr(name)}, {u"value"_s, value}, {u"kind"_s, kind}};
}

QString playersText(const Game &game) {
    QStringList parts;
    if (game.maxPlayers && *game.maxPlayers > 0)
        parts.append(QLocale().toString(*game.maxPlayers));
    if (game.cooperative.value_or(false))
        parts.append(tr("cooperative"));
    return parts.join(u", "_s);
}

QString communityText(const Game &game) {
    if (!game.communityRating || *game.communityRating <= 0)
        return {};
    const QString stars = QLocale().toString(*game.communityRating, 'f', 1);
    return game.communityRatingCount && *game.communityRatingCount > 0
               ? tr("%1 of 5 (%2 votes)").arg(stars, QLocale().toString(*game.communityRatingCount))
               : tr("%1 of 5").arg(stars);
}

/// Dates of the collection are the clock of wherever the game came out.
QString releaseText(const std::optional<QDateTime> &date) {
    return date ? QLocale().toString(date->date(), QLocale::LongFormat) : QString();
}

QString statusOf(const Game &game) {
    if (game.isInstalled)
        return tr("Installed");
    if (game.isCompressed)
        return tr("Not installed, archive in the collection");
    return game.isDownloadable ? tr("Not installed, can be downloaded") : tr("Not installed");
}

} // namespace

QVariantList chipsOf(const Game &game) {
    QVariantList chips;
    const auto add = [&](const QString &kind, const QString &text) {
        if (!text.isEmpty())
            chips.append(QVariantMap{{u"kind"_s, kind}, {u"text"_s, text}});
    };
    add(u"platform"_s, game.platform);
    add(u"year"_s, game.releaseYear ? QString::number(*game.releaseYear) : QString());
    add(u"developer"_s, game.developer);
    return chips;
}

QVariantList factsOf(const Game &game) {
    QVariantList facts{
        fact(QT_TRANSLATE_NOOP("GameFacts", "Status"), statusOf(game)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Played"), game.playCount == 1 ? tr("Once")
                                                       : game.playCount > 1
                                                           ? tr("%1 times").arg(QLocale().toString(game.playCount))
                                                           : QString()),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Play time"), playTimeText(game.playTime)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Last played"), dateText(game.lastPlayed)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Genre"), game.genre, u"genre"_s),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Publisher"), game.publisher, u"publisher"_s),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Series"), game.series),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Released"), releaseText(game.releaseDate)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Play mode"), game.playMode),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Players"), playersText(game)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Age rating"), game.rating),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Community"), communityText(game)),
        fact(QT_TRANSLATE_NOOP("GameFacts", "Source"), game.source),
    };
    facts.removeIf([](const QVariant &entry) { return entry.toMap().value(u"value"_s).toString().isEmpty(); });
    return facts;
}

QVariantList issuesOf(const GameExceptionsManager &exceptions, const QString &title) {
    QVariantList issues;
    for (const GameException &exception : exceptions.getExceptions(title))
        issues.append(QVariantMap{
            {u"severity"_s, exceptionSeverityText(exception.severity)},
            {u"notes"_s, exception.notes},
            {u"emulator"_s, exception.emulator ? emulatorOverrideText(*exception.emulator) : QString()},
        });
    return issues;
}

} // namespace ludarium
