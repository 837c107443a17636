#include "Services/Library/SessionJournal.h"

#include "Host/AppLogger.h"
#include "Host/ProcessTable.h"
#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView gameIdKey("gameId");
constexpr QLatin1StringView titleKey("title");
constexpr QLatin1StringView startedAtKey("startedAt");
constexpr QLatin1StringView startedSinceBootKey("startedSinceBoot");
constexpr QLatin1StringView secondsKey("seconds");
constexpr QLatin1StringView pidKey("pid");
constexpr QLatin1StringView processStartKey("processStart");
constexpr QLatin1StringView ownerKey("owner");
constexpr QLatin1StringView ownerStartKey("ownerStart");
constexpr QLatin1StringView keptKey("kept");
constexpr QLatin1StringView closedKey("closed");

constexpr qint64 longest = 64 << 10;
/// Journals are filled up with blanks, so that one can be written over where the disk has no room for another.
constexpr qsizetype usualSize = 1024;
constexpr qsizetype longestTitle = 200;
constexpr double longestSession = 366.0 * 24 * 3600;

/// Writes over the bytes of a file that is there; for a disk that is full.
bool overwrite(const QString &path, const QByteArray &bytes) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return false;
    struct stat info {};
    const bool fits = ::fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) && info.st_size == bytes.size();
    const bool written = fits && ::pwrite(descriptor, bytes.constData(), size_t(bytes.size()), 0) == bytes.size() &&
                         ::fsync(descriptor) == 0;
    ::close(descriptor);
    return written;
}

} // namespace

double SessionJournal::secondsSinceBoot() {
    return secondsSinceProcessStart(0);
}

double SessionJournal::Entry::secondsUntilNow() const {
    if (!process)
        return seconds;
    double lasted = std::max(0.0, secondsSinceProcessStart(process->startTime));
    // A process that was found and not started may be older than the session.
    if (startedSinceBoot)
        lasted = std::clamp(SessionJournal::secondsSinceBoot() - *startedSinceBoot, 0.0, lasted);
    return std::max(seconds, lasted);
}

QString SessionJournal::lockFile(const QString &folder) {
    return folder + u"/sessions.lock"_s;
}

QList<SessionJournal> SessionJournal::inFolder(const QString &folder) {
    QList<SessionJournal> journals;
    for (const QString &name :
         QDir(folder).entryList({u"session.json"_s, u"session-*.json"_s}, QDir::Files, QDir::Name))
        journals.append(SessionJournal(folder + u'/' + name));
    return journals;
}

SessionJournal SessionJournal::create(const ProcessId &owner, const QString &folder) {
    for (int number = 1;; ++number) {
        const QString file = u"%1/session-%2-%3-%4.json"_s.arg(folder).arg(owner.pid).arg(owner.startTime).arg(number);
        struct stat info {};
        if (::lstat(QFile::encodeName(file).constData(), &info) != 0)
            return SessionJournal(file);
    }
}

std::optional<SessionJournal::Entry> SessionJournal::read() const {
    const std::optional<QByteArray> bytes = readSmallFile(m_file, longest);
    if (!bytes)
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(*bytes).object();
    Entry entry;
    entry.gameId = object[gameIdKey].toString();
    entry.title = object[titleKey].toString();
    entry.startedAt = QDateTime::fromString(object[startedAtKey].toString(), Qt::ISODateWithMs);
    entry.seconds = object[secondsKey].toDouble();
    if (object.contains(pidKey))
        entry.process = ProcessId{object[pidKey].toInteger(), object[processStartKey].toInteger()};
    if (object.contains(startedSinceBootKey))
        entry.startedSinceBoot = object[startedSinceBootKey].toDouble();
    entry.owner = {object[ownerKey].toInteger(), object[ownerStartKey].toInteger()};
    entry.isKept = object[keptKey].toBool();
    entry.isClosed = object[closedKey].toBool();
    if (entry.gameId.isEmpty() || !entry.startedAt.isValid() || !(entry.seconds >= 0) ||
        entry.seconds > longestSession) {
        Log::error(u"⚠️ The journal of the last play session cannot be read: %1"_s.arg(m_file));
        setAsideCorrupt(m_file);
        return std::nullopt;
    }
    return entry;
}

bool SessionJournal::write(const Entry &entry) const {
    QJsonObject object{
        {gameIdKey, entry.gameId},
        {titleKey, entry.title.left(longestTitle)},
        {startedAtKey, entry.startedAt.toUTC().toString(Qt::ISODateWithMs)},
        {secondsKey, entry.seconds},
        {ownerKey, entry.owner.pid},
        {ownerStartKey, entry.owner.startTime},
        {keptKey, entry.isKept},
        {closedKey, entry.isClosed},
    };
    if (entry.process) {
        object[pidKey] = entry.process->pid;
        object[processStartKey] = entry.process->startTime;
    }
    if (entry.startedSinceBoot)
        object[startedSinceBootKey] = *entry.startedSinceBoot;
    const QByteArray bytes = QJsonDocument(object).toJson(QJsonDocument::Compact).leftJustified(usualSize, ' ');
    QDir().mkpath(QFileInfo(m_file).path());
    const QString problem = writeAtomically(m_file, bytes, true);
    if (problem.isEmpty() || overwrite(m_file, bytes))
        return true;
    Log::warning(u"⚠️ Failed to journal the play session: %1"_s.arg(problem));
    return false;
}

void SessionJournal::clear() const {
    QFile::remove(m_file);
}

} // namespace ludarium
