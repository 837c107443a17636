#include "Services/Dos/VersionDatabase.h"

#include "Host/SafeJson.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <stdexcept>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// What is wrong with a database, in words.
struct BadDatabase : std::runtime_error {
    explicit BadDatabase(const QString &text) : std::runtime_error(text.toStdString()) {}
};

/// The value under a key, undefined when it is absent or null. Throws when it is of another kind.
QJsonValue valueOf(const QJsonObject &object, QLatin1StringView key, QJsonValue::Type type, const char *kind) {
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return QJsonValue(QJsonValue::Undefined);
    if (value.type() != type)
        throw BadDatabase(u"\"%1\" is no %2"_s.arg(key, QString::fromLatin1(kind)));
    return value;
}

QString optionalText(const QJsonObject &object, QLatin1StringView key) {
    const QJsonValue value = valueOf(object, key, QJsonValue::String, "text");
    return value.isUndefined() ? QString() : value.toString(u""_s);
}

QString text(const QJsonObject &object, QLatin1StringView key) {
    const QJsonValue value = valueOf(object, key, QJsonValue::String, "text");
    if (value.isUndefined())
        throw BadDatabase(u"\"%1\" is missing"_s.arg(key));
    return value.toString();
}

DatabaseVersion parseVersion(const QJsonValue &value) {
    if (!value.isObject())
        throw BadDatabase(u"a version is no object"_s);
    const QJsonObject object = value.toObject();
    DatabaseVersion version;
    version.label = text(object, "label"_L1);
    version.type = text(object, "type"_L1);
    version.audio = optionalText(object, "audio"_L1);
    version.folder = optionalText(object, "folder"_L1);
    version.executable = optionalText(object, "executable"_L1);
    const QJsonObject config = valueOf(object, "config"_L1, QJsonValue::Object, "object").toObject();
    for (auto it = config.begin(); it != config.end(); ++it) {
        if (!it->isString())
            throw BadDatabase(u"\"config\" holds no text under \"%1\""_s.arg(it.key()));
        version.config.insert(it.key(), it->toString());
    }
    if (const QJsonValue setup = valueOf(object, "setup"_L1, QJsonValue::Array, "list"); !setup.isUndefined()) {
        version.setup.emplace();
        for (const QJsonValue &command : setup.toArray()) {
            if (!command.isString())
                throw BadDatabase(u"\"setup\" holds something else than texts"_s);
            version.setup->append(command.toString());
        }
    }
    version.mountAtGameLevel = valueOf(object, "mountAtGameLevel"_L1, QJsonValue::Bool, "flag").toBool(false);
    return version;
}

DatabaseEntry parseEntry(const QJsonValue &value) {
    if (!value.isObject())
        throw BadDatabase(u"it is no object"_s);
    const QJsonValue versions = value.toObject().value("versions"_L1);
    if (!versions.isArray())
        throw BadDatabase(u"\"versions\" is no list"_s);
    DatabaseEntry entry;
    for (const QJsonValue &version : versions.toArray())
        entry.versions.append(parseVersion(version));
    return entry;
}

} // namespace

GameVersionOption DatabaseVersion::option(const QString &origin) const {
    GameVersionOption option;
    option.label = label;
    option.versionType = parseVersionType(type);
    option.audioType = parseAudioType(audio);
    option.configChanges = config;
    option.workingDirectory = folder;
    option.executable = executable;
    option.setupCommands = setup;
    option.mountAtGameLevel = mountAtGameLevel;
    option.origin = origin;
    return option;
}

bool DatabaseVersion::isMt32() const {
    for (const QString &words : {label, audio})
        if (words.contains("mt32"_L1, Qt::CaseInsensitive) || words.contains("mt-32"_L1, Qt::CaseInsensitive))
            return true;
    return config.value(u"mididevice"_s).contains("mt32"_L1, Qt::CaseInsensitive);
}

std::optional<VersionDatabase> parseVersionDatabase(const QByteArray &json, QString *problem) {
    const std::optional<QJsonDocument> document = parseJson(json, problem);
    if (!document)
        return std::nullopt;
    QString title;
    try {
        if (!document->isObject())
            throw BadDatabase(u"it is no object"_s);
        VersionDatabase database;
        const QJsonObject object = document->object();
        for (auto it = object.begin(); it != object.end(); ++it) {
            title = it.key();
            database.insert(title, parseEntry(*it));
        }
        return database;
    } catch (const BadDatabase &error) {
        if (problem)
            *problem = (title.isEmpty() ? QString() : u"\"%1\": "_s.arg(title)) + QString::fromUtf8(error.what());
        return std::nullopt;
    }
}

VersionType parseVersionType(const QString &text) {
    static const QHash<QString, VersionType> types{
        {u"floppy"_s, VersionType::floppy}, {u"cd"_s, VersionType::cd},   {u"ega"_s, VersionType::ega},
        {u"vga"_s, VersionType::vga},       {u"cga"_s, VersionType::cga}, {u"hercules"_s, VersionType::hercules},
        {u"talkie"_s, VersionType::talkie},
    };
    return types.value(text.toLower(), VersionType::other);
}

std::optional<AudioType> parseAudioType(const QString &text) {
    static const QHash<QString, AudioType> types{
        {u"tandy"_s, AudioType::tandy},
        {u"gameblaster"_s, AudioType::gameBlaster},
        {u"adlib"_s, AudioType::adlib},
        {u"mt32"_s, AudioType::mt32},
        {u"soundblaster"_s, AudioType::soundBlaster},
        {u"gus"_s, AudioType::gus},
        {u"gravis"_s, AudioType::gus},
        {u"soundcanvas"_s, AudioType::soundCanvas},
        {u"sc55"_s, AudioType::soundCanvas},
        {u"cdaudio"_s, AudioType::cdAudio},
        {u"flac"_s, AudioType::flac},
        {u"pcspeaker"_s, AudioType::pcSpeaker},
        {u"speaker"_s, AudioType::pcSpeaker},
    };
    const auto found = types.constFind(text.toLower().remove(u' ').remove(u'-'));
    return found == types.cend() ? std::nullopt : std::optional(*found);
}

} // namespace ludarium
