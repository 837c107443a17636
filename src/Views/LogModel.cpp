#include "Views/LogModel.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Workspace.h"

#include <QFile>
#include <QPointer>

namespace ludarium {

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
        // The level stands in brackets near the start of a line.
        const QStringView head = QStringView(line).left(64);
        for (const char *level : {"ERROR", "WARN", "DEBUG"})
            if (head.contains(QLatin1StringView(level)))
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

LogModel::Chunk LogModel::readFrom(const QString &file, qint64 start, QByteArray rest) {
    Chunk chunk;
    QFile log(file);
    if (!log.open(QIODevice::ReadOnly)) {
        chunk.restart = start > 0;
        return chunk;
    }
    chunk.restart = log.size() < start;
    if (chunk.restart) {
        start = 0;
        rest.clear();
    }
    log.seek(start);
    const QByteArray text = log.readAll();
    chunk.end = start + text.size();
    chunk.rest = rest + text;
    const qsizetype lastBreak = chunk.rest.lastIndexOf('\n');
    if (lastBreak >= 0) {
        chunk.lines = QString::fromUtf8(chunk.rest.left(lastBreak)).split(QLatin1Char('\n'));
        chunk.rest = chunk.rest.mid(lastBreak + 1);
    }
    return chunk;
}

QCoro::Task<> LogModel::readMore() {
    if (std::exchange(m_reading, true))
        co_return;
    const QPointer<LogModel> self(this);
    const QString file = m_logger.logFile();
    auto read = [file, start = m_position, rest = m_rest] { return readFrom(file, start, rest); };
    const Chunk chunk = co_await runOnPool(read);
    if (!self)
        co_return;
    m_reading = false;
    m_position = chunk.end;
    m_rest = chunk.rest;
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
