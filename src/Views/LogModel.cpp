#include "Views/LogModel.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Workspace.h"

#include <QFile>
#include <QPointer>

namespace ludarium {

namespace {

/// Bytes that tell one log file from another: the first line's time is among them.
constexpr qint64 headSize = 64;

} // namespace

LogModel::LogModel(Host &host, AppLogger &logger, QObject *parent)
    : QAbstractListModel(parent), m_host(host), m_logger(logger) {
    m_timer.setInterval(500);
    connect(&m_timer, &QTimer::timeout, this, [this] { spawn(readMore(), "reading the log"); });
}

int LogModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant LogModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= m_shown.size())
        return {};
    const QString &line = m_shown[index.row()];
    if (role == lineRole || role == Qt::DisplayRole)
        return line;
    if (role == levelRole) {
        // The second of a line's brackets.
        const qsizetype start = line.indexOf(QLatin1StringView("] ["));
        const QStringView rest = start < 0 ? QStringView() : QStringView(line).sliced(start + 3);
        for (const char *level : {"ERROR", "WARN", "DEBUG"})
            if (rest.startsWith(QLatin1StringView(level)))
                return QString(QLatin1StringView(level).toString()).toLower();
        return QStringLiteral("info");
    }
    return {};
}

QHash<int, QByteArray> LogModel::roleNames() const {
    return {{lineRole, "line"}, {levelRole, "level"}};
}

void LogModel::setWatching(bool watching) {
    if (watching == isWatching())
        return;
    if (watching) {
        m_timer.start();
        spawn(readMore(), "reading the log");
    } else {
        m_timer.stop();
    }
    Q_EMIT watchingChanged();
}

void LogModel::setFilter(const QString &filter) {
    if (m_filter == filter)
        return;
    m_filter = filter;
    show(m_lines, true);
    Q_EMIT filterChanged();
}

bool LogModel::isShown(const QString &line) const {
    return m_filter.isEmpty() || line.contains(m_filter, Qt::CaseInsensitive);
}

LogModel::Chunk LogModel::readFrom(const QString &file, Place place) {
    Chunk chunk;
    QFile log(file);
    if (!log.open(QIODevice::ReadOnly)) {
        chunk.restart = place.position > 0;
        return chunk;
    }
    // Clearing and rotation put another file in the place of this one; its first line has another time.
    const QByteArray head = log.peek(headSize);
    chunk.restart = log.size() < place.position || !head.startsWith(place.head);
    if (chunk.restart)
        place = {};
    log.seek(place.position);
    const QByteArray text = log.readAll();
    QByteArray pending = place.rest + text;
    if (const qsizetype lastBreak = pending.lastIndexOf('\n'); lastBreak >= 0) {
        chunk.lines = QString::fromUtf8(pending.left(lastBreak)).split(QLatin1Char('\n'));
        pending.remove(0, lastBreak + 1);
    }
    chunk.place = {place.position + text.size(), head, pending};
    return chunk;
}

QCoro::Task<> LogModel::readMore() {
    if (std::exchange(m_reading, true))
        co_return;
    const QPointer<LogModel> self(this);
    auto read = [file = m_logger.logFile(), place = m_place] { return readFrom(file, place); };
    const Chunk chunk = co_await runOnPool(read);
    if (!self)
        co_return;
    m_reading = false;
    m_place = chunk.place;
    if (chunk.restart)
        m_lines = chunk.lines;
    else
        m_lines.append(chunk.lines);
    if (chunk.restart || !chunk.lines.isEmpty())
        show(chunk.lines, chunk.restart);
}

void LogModel::show(const QStringList &added, bool restart) {
    QStringList wanted;
    for (const QString &line : added)
        if (isShown(line))
            wanted.append(line);
    if (restart) {
        beginResetModel();
        m_shown = std::move(wanted);
        endResetModel();
    } else if (!wanted.isEmpty()) {
        beginInsertRows({}, count(), count() + int(wanted.size()) - 1);
        m_shown.append(wanted);
        endInsertRows();
    }
    Q_EMIT countChanged();
}

void LogModel::copyAll() {
    spawn(copy(), "copying the log");
}

QCoro::Task<> LogModel::copy() {
    const QPointer<LogModel> self(this);
    const QString text = co_await m_logger.readAll();
    if (!self)
        co_return;
    m_host.workspace.copyToClipboard(text);
    Q_EMIT copied();
}

void LogModel::clear() {
    m_logger.clearLogs();
    spawn(readMore(), "reading the log");
}

void LogModel::reveal() {
    m_host.workspace.reveal(m_logger.logFile());
}

} // namespace ludarium
