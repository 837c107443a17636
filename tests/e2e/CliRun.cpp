#include "e2e/CliRun.h"

#include "Host/HostPaths.h"
#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "support/BuildFolders.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

/// Creates RAN.TXT in the current folder and ends.
const QByteArray writerProgram = QByteArray::fromHex("b43c31c9ba0e01cd21b8004ccd21") + QByteArray("RAN.TXT\0", 8);
/// Runs until it is ended from outside: gives its time slice back and begins again.
const QByteArray endlessProgram = QByteArray::fromHex("b80100f4ebfa");

QByteArray gameElement(const QByteArray &id, const QByteArray &title, const QByteArray &folder,
                       const QByteArray &more = {}) {
    return "<Game><ID>" + id + "</ID><Title>" + title +
           "</Title><Platform>MS-DOS</Platform><ApplicationPath>eXo\\eXoDOS\\!dos\\" + folder + "\\" + title +
           ".bat</ApplicationPath><ConfigurationPath>eXo\\eXoDOS\\!dos\\" + folder +
           "\\dosbox.conf</ConfigurationPath>" + more + "</Game>\n";
}

QByteArray dosboxConfiguration(const QByteArray &folder, const QByteArray &program) {
    return "[cpu]\ncycles=fixed 3000\n[autoexec]\ncd ..\ncd ..\nmount c .\\eXoDOS\nc:\ncd " + folder + "\n" + program +
           "\nexit\n";
}

} // namespace

QJsonObject json(const CliResult &result) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(result.output, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << result.output.toStdString() << result.errors.toStdString();
    EXPECT_EQ(document.object().value(QStringLiteral("schema")).toInt(), 2);
    return document.object();
}

QStringList members(const QJsonArray &objects, const char *key) {
    QStringList result;
    for (const QJsonValue &value : objects)
        result << value.toObject().value(QString::fromUtf8(key)).toString();
    return result;
}

bool hasDosbox() {
    return !QStandardPaths::findExecutable(QStringLiteral("dosbox")).isEmpty();
}

std::optional<qint64> startedDosbox(qint64 parent) {
    const QString children = QStringLiteral("/proc/%1/task/%1/children").arg(parent);
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 30'000; QThread::msleep(20)) {
        QFile file(children);
        if (!file.open(QIODevice::ReadOnly))
            break;
        for (const QByteArray &child : file.readAll().simplified().split(' ')) {
            QFile name(QStringLiteral("/proc/%1/comm").arg(QString::fromUtf8(child)));
            if (name.open(QIODevice::ReadOnly) && name.readAll().startsWith("dosbox"))
                return child.toLongLong();
        }
    }
    return std::nullopt;
}

CliRun::CliRun() : environment(QProcessEnvironment::systemEnvironment()) {
    for (const auto &[name, value] : {std::pair{"SDL_VIDEODRIVER", "dummy"}, {"SDL_AUDIODRIVER", "dummy"}})
        environment.insert(QString::fromUtf8(name), QString::fromUtf8(value));
    environment.remove(QStringLiteral("NO_COLOR"));
}

void CliRun::trustInstalled() const {
    SqliteSettingsStore settings(HostPaths::native(home()).settingsFolder());
    settings.setValue(Settings::skipInstallCheck, true);
}

QString CliRun::program() {
    return inBuild("bin/ludarium-cli");
}

QStringList CliRun::arguments(const QStringList &rest) const {
    return QStringList{QStringLiteral("--home"), home()} + rest;
}

CliResult CliRun::run(const QStringList &rest) const {
    return runProgram(program(), arguments(rest));
}

CliResult CliRun::runProgram(const QString &program, const QStringList &arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel(); // a question finds nobody to answer it
    CliResult result;
    // Packing a build with sanitizers, whose programs have 200 MB, takes a minute.
    if (process.waitForFinished(240'000) && process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

TinyCollection::TinyCollection() {
    put(QStringLiteral("Data/Platforms.xml"),
        "<LaunchBox><Platform><Name>MS-DOS</Name><Category>Computers</Category></Platform></LaunchBox>");
    put(QStringLiteral("Data/Platforms/MS-DOS.xml"),
        "<?xml version=\"1.0\"?>\n<LaunchBox>\n" +
            gameElement("writer-id", "Writer", "writer",
                        "<ReleaseDate>1991-05-01T00:00:00-05:00</ReleaseDate><MaxPlayers>2</MaxPlayers>"
                        "<Developer>Größe &amp; Söhne</Developer><CommunityStarRating>4.5</CommunityStarRating>") +
            gameElement("endless-id", "Endless", "endless") +
            gameElement("saga-1", "Saga One", "saga1", "<ReleaseDate>1990-01-01T00:00:00</ReleaseDate>") +
            gameElement("saga-2", "Saga Two", "saga2") + "</LaunchBox>\n");
    put(QStringLiteral("Data/Playlists/Best.xml"),
        "<LaunchBox><Playlist><PlaylistId>best-id</PlaylistId><Name>Best</Name></Playlist>"
        "<PlaylistGame><GameId>writer-id</GameId></PlaylistGame></LaunchBox>");
    const struct {
        const char *folder;
        const char *program;
        QByteArray content;
    } games[] = {{"writer", "WRITER.COM", writerProgram}, {"endless", "ENDLESS.COM", endlessProgram}};
    for (const auto &game : games) {
        const QString folder = QString::fromUtf8(game.folder);
        put(QStringLiteral("eXo/eXoDOS/!dos/%1/dosbox.conf").arg(folder),
            dosboxConfiguration(game.folder, game.program));
        put(QStringLiteral("eXo/eXoDOS/%1/%2").arg(folder, QString::fromUtf8(game.program)), game.content);
    }
    for (const char *folder : {"saga1", "saga2"})
        QDir().mkpath(file(QStringLiteral("eXo/eXoDOS/!dos/%1").arg(QString::fromUtf8(folder))));
}

void TinyCollection::put(const QString &relative, const QByteArray &content) const {
    const QString path = file(relative);
    QDir().mkpath(QFileInfo(path).path());
    QFile target(path);
    ASSERT_TRUE(target.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(target.write(content), content.size());
}

std::map<QString, QString> snapshot(const QString &folder) {
    std::map<QString, QString> result;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QFileInfo info = it.fileInfo();
        QString state = info.lastModified().toString(Qt::ISODateWithMs);
        QFile file(path);
        if (info.isFile() && file.open(QIODevice::ReadOnly))
            state += QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex());
        result[path] = state;
    }
    return result;
}

} // namespace ludarium::test
