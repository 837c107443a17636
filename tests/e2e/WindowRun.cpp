#include "e2e/WindowRun.h"

#include "Host/HostPaths.h"
#include "support/BuildFolders.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <gtest/gtest.h>

namespace ludarium::test {

bool eventually(const std::function<bool()> &condition, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QThread::msleep(50);
    }
    return true;
}

WindowRun::WindowRun(const QString &platform, const QList<std::pair<QString, QString>> &variables)
    : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    m_environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    for (const auto &[name, value] : variables)
        m_environment.insert(name, value);
    m_process.setProcessEnvironment(m_environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

WindowRun::~WindowRun() {
    end();
}

bool WindowRun::isBuilt() {
    return QFileInfo::exists(program());
}

QString WindowRun::program() {
    return inBuild("bin/ludarium");
}

void WindowRun::start(const QStringList &arguments) {
    m_process.start(program(), QStringList{QStringLiteral("--home"), home()} + arguments);
    ASSERT_TRUE(m_process.waitForStarted());
    ASSERT_TRUE(eventually([&] { return !log().isEmpty(); })) << "the program logs nothing";
}

int WindowRun::startAgain(const QStringList &arguments) {
    QProcess second;
    second.setProcessEnvironment(m_environment);
    second.start(program(), QStringList{QStringLiteral("--home"), home()} + arguments);
    if (second.waitForFinished(30'000) && second.exitStatus() == QProcess::NormalExit)
        return second.exitCode();
    second.kill();
    second.waitForFinished();
    return -1;
}

bool WindowRun::end() {
    if (m_process.state() == QProcess::NotRunning)
        return false;
    m_process.terminate();
    if (m_process.waitForFinished(10'000))
        return true;
    m_process.kill();
    m_process.waitForFinished();
    return false;
}

QString WindowRun::log() const {
    QString text;
    const QDir folder(HostPaths::native(home()).logs());
    for (const QString &name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            text += QString::fromUtf8(file.readAll());
    }
    return text;
}

} // namespace ludarium::test
