#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace ludarium {

class CommandContext;
class GameLibrary;
struct SmartCollection;

/// Something that the user can name by its id or its name.
struct NamedThing {
    QString id;
    QString name;
};

/// Whether the text is the beginning of an id, as narrow lists show it ("0af151e3…"); shorter ones are no names.
bool beginsId(const QString &text, const QString &id);

/// Where the things stand that a text names: the one with that id; else those whose name it is, ignoring case; else
/// those whose name contains it, ignoring case; else those whose id begins so.
QList<qsizetype> thingsNamed(const QList<NamedThing> &things, const QString &idOrName);

/// Where the one thing stands that a text names; `kind` is "playlist" or the like. When there are several they are
/// listed on standard error; then, and when there is none, throws CliError.
qsizetype chooseThing(CommandContext &context, const QList<NamedThing> &things, const QString &idOrName,
                      const QString &kind);

qsizetype choosePlaylist(CommandContext &context, const GameLibrary &library, const QString &idOrName);
const SmartCollection &chooseSmartCollection(CommandContext &context, const QString &idOrName);

/// The value as the list spells it: the same text, else the first that is the same but for case; null when there is
/// none.
QString spelledAs(const QStringList &values, const QString &text);

} // namespace ludarium
