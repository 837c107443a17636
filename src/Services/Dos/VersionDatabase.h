#pragma once

#include "Models/GameVersionOption.h"

#include <QByteArray>
#include <QMap>
#include <optional>

namespace ludarium {

/// One version as a database writes it.
struct DatabaseVersion {
    QString label;
    QString type;                     ///< "ega", "cd", …; anything unknown counts as other
    QString audio;                    ///< "mt32", "adlib", …; null when absent
    QString folder;                   ///< null when absent
    QMap<QString, QString> config;    ///< DOSBox keys to values
    QString executable;               ///< null when absent
    std::optional<QStringList> setup; ///< DOS commands
    bool mountAtGameLevel = false;

    GameVersionOption option(const QString &origin) const;
    bool isMt32() const;
};

/// A game of a version database.
struct DatabaseEntry {
    QList<DatabaseVersion> versions; ///< in menu order
    bool isUsersOwn = false;
};

/// Game title to its versions.
using VersionDatabase = QMap<QString, DatabaseEntry>;

/// Reads a database: a JSON object from title to {"versions": [{"label", "type", "audio"?, "folder"?, "config"?,
/// "executable"?, "setup"?, "mountAtGameLevel"?}, …]}. Keys that it does not know are passed over. None, and why, when
/// any entry is not as it has to be.
std::optional<VersionDatabase> parseVersionDatabase(const QByteArray &json, QString *problem = nullptr);

VersionType parseVersionType(const QString &text);
/// None for a null or unknown text.
std::optional<AudioType> parseAudioType(const QString &text);

} // namespace ludarium
