#include "Cli/NamedChoice.h"

#include "Cli/CliError.h"
#include "Cli/CommandContext.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/SmartCollection.h"

#include <nlohmann/json.hpp>

namespace ludarium {

bool beginsId(const QString &text, const QString &id) {
    constexpr qsizetype fewest = 8;
    QStringView beginning = text;
    if (beginning.endsWith(u'…'))
        beginning.chop(1);
    return beginning.size() >= fewest && id.startsWith(beginning, Qt::CaseInsensitive);
}

QList<qsizetype> thingsNamed(const QList<NamedThing> &things, const QString &idOrName) {
    QList<qsizetype> sameName;
    QList<qsizetype> containing;
    QList<qsizetype> beginning;
    for (qsizetype i = 0; i < things.size(); ++i) {
        if (things[i].id == idOrName)
            return {i};
        if (things[i].name.compare(idOrName, Qt::CaseInsensitive) == 0)
            sameName << i;
        else if (things[i].name.contains(idOrName, Qt::CaseInsensitive))
            containing << i;
        else if (beginsId(idOrName, things[i].id))
            beginning << i;
    }
    if (!sameName.isEmpty())
        return sameName;
    return containing.isEmpty() ? beginning : containing;
}

qsizetype chooseThing(CommandContext &context, const QList<NamedThing> &things, const QString &idOrName,
                      const QString &kind) {
    const QList<qsizetype> found = idOrName.isEmpty() ? QList<qsizetype>() : thingsNamed(things, idOrName);
    if (found.size() == 1)
        return found.first();
    if (found.isEmpty())
        throw CliError(QStringLiteral("No %1 has the id or name \"%2\". See: ludarium-cli %1s").arg(kind, idOrName));
    if (context.json()) {
        Json &candidates = context.errorDetails()[kind.toStdString() + 's'] = Json::array();
        for (const qsizetype place : found)
            candidates.push_back(Json{{"ID", jsonText(things[place].id)}, {"Name", jsonText(things[place].name)}});
    } else {
        Table table({QStringLiteral("ID"), QStringLiteral("NAME")}, 1);
        for (const qsizetype place : found)
            table.add({things[place].id, things[place].name});
        table.print(context.errors());
    }
    throw CliError(QStringLiteral("\"%1\" names %2 %3s. Use the id of one.").arg(idOrName).arg(found.size()).arg(kind));
}

qsizetype choosePlaylist(CommandContext &context, const GameLibrary &library, const QString &idOrName) {
    QList<NamedThing> things;
    for (const Playlist &playlist : library.playlists())
        things.append({playlist.id, playlist.name});
    return chooseThing(context, things, idOrName, QStringLiteral("playlist"));
}

const SmartCollection &chooseSmartCollection(CommandContext &context, const QString &idOrName) {
    QList<NamedThing> things;
    for (const SmartCollectionSection &section : smartCollectionSections())
        for (const SmartCollection &collection : section.collections)
            things.append({collection.id, collection.name});
    return *smartCollection(things[chooseThing(context, things, idOrName, QStringLiteral("collection"))].id);
}

QString spelledAs(const QStringList &values, const QString &text) {
    QString otherCase;
    for (const QString &value : values) {
        if (value == text)
            return value;
        if (otherCase.isNull() && value.compare(text, Qt::CaseInsensitive) == 0)
            otherCase = value;
    }
    return otherCase;
}

} // namespace ludarium
