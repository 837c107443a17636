#include "Services/Library/SmartCollection.h"

namespace ludarium {

namespace {

using Kind = SmartCollection::Kind;

SmartCollection row(const char *id, const char *name, const char *icon, Kind kind, const char *text = "",
                    int decade = 0) {
    return {QString::fromUtf8(id),
            QString::fromUtf8(name),
            QString::fromUtf8(icon),
            {kind, QString::fromUtf8(text), decade}};
}

} // namespace

const QList<SmartCollectionSection> &smartCollectionSections() {
    static const QList<SmartCollectionSection> sections{
        {QStringLiteral("Smart Collections"),
         {
             row("unplayed", "Unplayed", "sparkles", Kind::unplayed),
             row("most-played", "Most Played", "flame", Kind::mostPlayed),
             row("highly-rated", "Highly Rated", "star.fill", Kind::highlyRated),
             row("has-notes", "With Notes", "note.text", Kind::hasNotes),
             row("installed", "Installed", "checkmark.circle", Kind::installed),
             row("80s-classics", "80s Classics", "8.square", Kind::byDecade, "", 1980),
             row("90s-classics", "90s Classics", "9.square", Kind::byDecade, "", 1990),
             row("2000s-games", "2000s Games", "0.square", Kind::byDecade, "", 2000),
         }},
        {QStringLiteral("Studios"),
         {
             row("sierra-games", "Sierra Games", "mountain.2", Kind::byDeveloper, "Sierra"),
             row("lucasarts-games", "LucasArts Games", "film", Kind::byDeveloper, "LucasArts"),
             row("origin-games", "Origin Systems", "globe", Kind::byDeveloper, "Origin"),
             row("microprose-games", "MicroProse Games", "airplane", Kind::byDeveloper, "MicroProse"),
             row("westwood-games", "Westwood Games", "building.2", Kind::byDeveloper, "Westwood"),
             row("id-software-games", "id Software Games", "bolt.fill", Kind::byDeveloper, "id Software"),
             row("apogee-games", "Apogee Games", "star.circle", Kind::byDeveloper, "Apogee"),
             row("epic-games", "Epic MegaGames", "gamecontroller", Kind::byDeveloper, "Epic"),
         }},
        {QStringLiteral("Audio & Tech"),
         {
             row("mt32-games", "MT-32 Games", "pianokeys", Kind::mt32Games),
             row("scummvm-games", "ScummVM Games", "theatermasks", Kind::scummvmGames),
         }},
        {QStringLiteral("Progress"),
         {
             row("progress-playing", "Currently Playing", "play.circle.fill", Kind::progressPlaying),
             row("progress-beaten", "Beaten", "flag.checkered", Kind::progressBeaten),
             row("progress-completed", "Completed", "checkmark.circle.fill", Kind::progressCompleted),
         }},
        {QStringLiteral("Genres"),
         {
             row("genre-rpg", "RPGs", "shield", Kind::byGenre, "Role-Playing"),
             row("genre-adventure", "Adventure", "map", Kind::byGenre, "Adventure"),
             row("genre-action", "Action", "bolt", Kind::byGenre, "Action"),
             row("genre-puzzle", "Puzzle", "puzzlepiece", Kind::byGenre, "Puzzle"),
             row("genre-strategy", "Strategy", "chess.king", Kind::byGenre, "Strategy"),
             row("genre-simulation", "Simulation", "airplane", Kind::byGenre, "Simulation"),
             row("genre-sports", "Sports", "sportscourt", Kind::byGenre, "Sports"),
             row("genre-shooter", "Shooter", "scope", Kind::byGenre, "Shooter"),
         }},
    };
    return sections;
}

const SmartCollection *smartCollection(const QString &id) {
    for (const SmartCollectionSection &section : smartCollectionSections())
        for (const SmartCollection &collection : section.collections)
            if (collection.id == id)
                return &collection;
    return nullptr;
}

} // namespace ludarium
