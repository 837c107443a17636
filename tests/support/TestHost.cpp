#include "support/TestHost.h"

#include "Host/CurlHttpClient.h"
#include "Host/LocalProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>
#include <stdexcept>

namespace ludarium::test {

QVariant MemorySettings::rawValue(const QString &key) const {
    return m_values.value(key);
}

void MemorySettings::setRawValue(const QString &key, const QVariant &value) {
    if (!value.isValid())
        return remove(key);
    m_values.insert(key, value);
    notify(key);
}

void MemorySettings::remove(const QString &key) {
    if (m_values.remove(key) > 0)
        notify(key);
}

QStringList MemorySettings::keys() const {
    return m_values.keys();
}

QVariant MemorySettings::rawEntry(const QString &key, const QString &entry) const {
    return m_values.value(key).toMap().value(entry);
}

void MemorySettings::setRawEntry(const QString &key, const QString &entry, const QVariant &value) {
    QVariantMap map = m_values.value(key).toMap();
    if (value.isValid())
        map.insert(entry, value);
    else
        map.remove(entry);
    m_values.insert(key, map);
    notify(key);
}

void MemorySettings::transaction(const std::function<void()> &changes) {
    if (m_inTransaction)
        return changes();
    const QVariantMap before = m_values;
    m_inTransaction = true;
    try {
        changes();
    } catch (...) {
        m_values = before;
        m_inTransaction = false;
        m_changed.clear();
        throw;
    }
    m_inTransaction = false;
    for (const QString &key : std::exchange(m_changed, {}))
        Q_EMIT changed(key);
}

void MemorySettings::notify(const QString &key) {
    if (!m_inTransaction)
        Q_EMIT changed(key);
    else if (!m_changed.contains(key))
        m_changed << key;
}

QCoro::Task<int> ScriptedDialogs::ask(Alert alert) {
    asked << alert;
    int button = static_cast<int>(alert.buttons.size()) - 1;
    if (!answers.isEmpty()) {
        const QString answer = answers.takeFirst();
        button = static_cast<int>(alert.buttons.indexOf(answer));
        if (button < 0)
            throw std::logic_error("no button \"" + answer.toStdString() + "\" in the alert \"" +
                                   alert.title.toStdString() + "\"");
    }
    co_return button;
}

QCoro::Task<std::optional<QString>> ScriptedDialogs::chooseFolder(QString) {
    co_return folder;
}

bool RecordingWorkspace::openUrl(const QUrl &url) {
    actions << QStringLiteral("url ") + url.toString(QUrl::FullyEncoded);
    return answer;
}

bool RecordingWorkspace::openFile(const QString &path) {
    actions << QStringLiteral("file ") + path;
    return answer;
}

bool RecordingWorkspace::openWith(const QString &application, const QStringList &paths) {
    actions << QStringLiteral("with ") + (QStringList{application} + paths).join(u' ');
    return answer;
}

bool RecordingWorkspace::reveal(const QString &path) {
    actions << QStringLiteral("reveal ") + path;
    return answer;
}

void RecordingWorkspace::copyToClipboard(const QString &text) {
    actions << QStringLiteral("copy ") + text;
}

void RecordingTerminal::run(const QString &script) {
    scripts << script;
}

void ManualClock::advance(std::chrono::milliseconds by) {
    current = current.addMSecs(by.count());
    elapsed += by;
}

QCoro::Task<> ManualClock::sleep(std::chrono::milliseconds duration) {
    advance(duration);
    co_return;
}

namespace {

/// The environment of the test, without what would lead a path or a window out of the fake machine.
QProcessEnvironment fakeEnvironment(const QString &home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : environment.keys())
        if (variable.startsWith(QLatin1StringView("XDG_")))
            environment.remove(variable);
    for (const char *variable : {"TMPDIR", "TERMINAL", "DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(variable));
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    return environment;
}

} // namespace

TestHost::TestHost(HostLayout layout) {
    const QString home =
        root() + (layout == HostLayout::MacOS ? QStringLiteral("/Users/tester") : QStringLiteral("/home/tester"));
    for (const QString &folder : {home, scratch(), root() + QStringLiteral("/tmp")})
        QDir().mkpath(folder);
    m_paths = std::make_unique<HostPaths>(layout, home, root(), fakeEnvironment(home));
    m_logger = std::make_unique<AppLogger>(m_paths->logs());
    m_formerLogger = AppLogger::shared();
    AppLogger::setShared(m_logger.get());
    m_processes = std::make_unique<LocalProcessRunner>(*m_paths);
    m_http = std::make_unique<CurlHttpClient>();
    m_host.reset(
        new Host{*m_paths, settings, *m_processes, *m_http, workspace, dialogs, terminal, clock, notifications});
}

TestHost::~TestHost() {
    // Work on the pool may still write into this machine's folders.
    if (QThreadPool *pool = QThreadPool::globalInstance())
        pool->waitForDone();
    AppLogger::setShared(m_formerLogger);
}

QString TestHost::root() const {
    // Temporary folders are links on some systems, and paths are compared as texts.
    return QFileInfo(m_directory.path()).canonicalFilePath();
}

QString TestHost::home() const {
    return m_paths->home();
}

QString TestHost::scratch() const {
    return root() + QStringLiteral("/scratch");
}

QString TestHost::put(const QString &path, const QByteArray &content, bool executable) {
    const QString real = m_paths->resolve(path.startsWith(u'/') || path.startsWith(u'~') ? path : u'/' + path);
    QDir().mkpath(QFileInfo(real).path());
    QFile file(real);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error(real.toStdString() + ": " + file.errorString().toStdString());
    file.close();
    if (executable)
        file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    return real;
}

QString TestHost::putProgram(const QString &path, const QByteArray &script) {
    return put(path, "#!/bin/sh\n" + script + '\n', true);
}

QString TestHost::log() {
    return m_logger->text();
}

} // namespace ludarium::test
