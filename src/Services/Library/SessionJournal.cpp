#include "Services/Library/SessionJournal.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace ludarium {

namespace {

const QLatin1StringView gameIdKey("gameId");
const QLatin1StringView titleKey("title");
const QLatin1StringView startedAtKey("startedAt");
const QLatin1StringView secondsKey("seconds");
const QLatin1StringView pidKey("pid");
const QLatin1StringView processStartKey("processStart");
const QLatin1StringView ownerKey("owner");
const QLatin1StringView ownerStartKey("ownerStart");

} // namespace

SessionJournal::SessionJournal(QString file) : m_file(std::move(file)) {}

QList<SessionJournal> SessionJournal::inFolder(const QString &folder) {
    QList<SessionJournal> journals;
    const QStringList patterns{QStringLiteral("session.json"), QStringLiteral("session-*.json")};
    for (const QString &name : QDir(folder).entryList(patterns, QDir::Files, QDir::Name))
        journals.append(SessionJournal(folder + u'/' + name));
    return journals;
}

SessionJournal SessionJournal::of(const ProcessId &owner, const QString &folder) {
    const SessionJournal usual(folder + QStringLiteral("/session.json"));
    const std::optional<Entry> other = usual.read();
    if (!other || other->owner == owner)
        return usual;
    return SessionJournal(folder + QStringLiteral("/session-%1.json").arg(owner.pid));
}

std::optional<SessionJournal::Entry> SessionJournal::read() const {
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(file.read(64 << 10)).object();
    file.close();
    Entry entry;
    entry.gameId = object[gameIdKey].toString();
    entry.title = object[titleKey].toString();
    entry.startedAt = QDateTime::fromString(object[startedAtKey].toString(), Qt::ISODateWithMs);
    entry.seconds = object[secondsKey].toDouble();
    if (object.contains(pidKey))
        entry.process = ProcessId{object[pidKey].toInteger(), object[processStartKey].toInteger()};
    entry.owner = {object[ownerKey].toInteger(), object[ownerStartKey].toInteger()};
    if (entry.gameId.isEmpty() || !entry.startedAt.isValid() || !(entry.seconds >= 0)) {
        Log::error(QStringLiteral("⚠️ The journal of the last play session cannot be read: %1").arg(m_file));
        setAsideCorrupt(m_file);
        return std::nullopt;
    }
    return entry;
}

void SessionJournal::write(const Entry &entry) const {
    QJsonObject object{
        {gameIdKey, entry.gameId},
        {titleKey, entry.title},
        {startedAtKey, entry.startedAt.toUTC().toString(Qt::ISODateWithMs)},
        {secondsKey, entry.seconds},
        {ownerKey, entry.owner.pid},
        {ownerStartKey, entry.owner.startTime},
    };
    if (entry.process) {
        object[pidKey] = entry.process->pid;
        object[processStartKey] = entry.process->startTime;
    }
    QDir().mkpath(QFileInfo(m_file).path());
    const QString problem = writeAtomically(m_file, QJsonDocument(object).toJson(QJsonDocument::Compact));
    if (!problem.isEmpty())
        Log::warning(QStringLiteral("⚠️ Failed to journal the play session: %1").arg(problem));
}

void SessionJournal::clear() const {
    QFile::remove(m_file);
}

} // namespace ludarium
