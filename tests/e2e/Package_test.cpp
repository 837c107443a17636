#include "demo/DemoCollection.h"
#include "e2e/CliRun.h"
#include "support/BuildFolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtEndian>
#include <gtest/gtest.h>

// The Debian package as its user gets it: made by CPack, unpacked into a folder, and started from there.

namespace ludarium::test {

namespace {

QByteArray contentOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class PackageTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const char *tool : {"cpack", "dpkg-deb", "dpkg-shlibdeps", "desktop-file-validate", "appstreamcli"})
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
                GTEST_SKIP() << tool << " is not installed";
        if (!QFile::exists(inBuild("bin/ludarium")))
            GTEST_SKIP() << "the desktop program is not built";
        const CliResult made =
            cli.runProgram(QStringLiteral("cpack"),
                           {QStringLiteral("--config"), inBuild("CPackConfig.cmake"), QStringLiteral("-B"),
                            folder.path(), QStringLiteral("-D"), QStringLiteral("CPACK_DEBIAN_COMPRESSION_TYPE=gzip")});
        ASSERT_EQ(made.status, 0) << (made.output + made.errors).toStdString();
        const QStringList packages = QDir(folder.path()).entryList({QStringLiteral("ludarium_*.deb")});
        ASSERT_EQ(packages.size(), 1);
        package = folder.filePath(packages.first());
        ASSERT_EQ(tool("dpkg-deb", {QStringLiteral("-x"), package, root()}).status, 0);
    }

    QString root() const { return folder.filePath(QStringLiteral("root")); }
    QString installed(const char *path) const { return root() + QStringLiteral("/usr/") + QString::fromUtf8(path); }
    CliResult tool(const char *program, const QStringList &arguments) const {
        CliResult result = cli.runProgram(QString::fromLatin1(program), arguments);
        EXPECT_EQ(result.status, 0) << program << ": " << (result.output + result.errors).toStdString();
        return result;
    }
    CliResult run(const char *program, const QStringList &arguments) const {
        return cli.runProgram(installed(program), cli.arguments(arguments));
    }

    CliRun cli;
    QTemporaryDir folder;
    QString package;
};

/// The packages of the QML modules that the window's files import.
QSet<QString> qmlPackages() {
    static const QRegularExpression import(QStringLiteral("^import (Qt[\\w.]+)"), QRegularExpression::MultilineOption);
    QSet<QString> packages;
    QDirIterator files(inSources("src/Views/qml"), {QStringLiteral("*.qml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = QString::fromUtf8(contentOf(files.next()));
        for (auto it = import.globalMatch(text); it.hasNext();) {
            QString module = it.next().captured(1).toLower().replace(u'.', u'-');
            module.remove(QStringLiteral("-basic")); // a style, in the package of the controls
            packages.insert(QStringLiteral("qml6-module-") + module);
        }
    }
    return packages;
}

TEST_F(PackageTest, IsWholeAndStartsFromWhereItWasUnpacked) {
    // What is where.
    for (const char *path :
         {"share/applications/com.ludarium.app.desktop", "share/metainfo/com.ludarium.app.metainfo.xml",
          "share/icons/hicolor/scalable/apps/com.ludarium.app.svg",
          "share/icons/hicolor/symbolic/apps/com.ludarium.app-symbolic.svg",
          "share/icons/hicolor/48x48/apps/com.ludarium.app.png", "share/man/man1/ludarium.1.gz",
          "share/man/man1/ludarium-cli.1.gz", "share/bash-completion/completions/ludarium-cli"})
        EXPECT_TRUE(QFile::exists(installed(path))) << path;
    tool("desktop-file-validate", {installed("share/applications/com.ludarium.app.desktop")});
    tool("appstreamcli", {QStringLiteral("validate"), QStringLiteral("--no-net"),
                          installed("share/metainfo/com.ludarium.app.metainfo.xml")});

    // What it needs of other packages.
    const QString depends = QString::fromUtf8(
        tool("dpkg-deb", {QStringLiteral("-f"), package, QStringLiteral("Depends")}).output.simplified());
    for (const char *library : {"libc6", "libqt6quick6", "libxml2", "libsdl2-2.0-0", "libqt6svg6"})
        EXPECT_TRUE(depends.contains(QString::fromLatin1(library))) << library;
    const QStringList named =
        QString(depends).remove(QRegularExpression(QStringLiteral(" \\([^)]*\\)"))).split(QStringLiteral(", "));
    for (const QString &wanted : qmlPackages())
        EXPECT_TRUE(named.contains(wanted))
            << wanted.toStdString() << " is imported and not in " << depends.toStdString();

    // That it works: nothing is looked for where it was built.
    EXPECT_TRUE(run("bin/ludarium", {QStringLiteral("--version")}).output.startsWith("ludarium "));
    const QString demo = folder.filePath(QStringLiteral("demo"));
    EXPECT_EQ(run("bin/ludarium-cli", {QStringLiteral("demo"), demo}).status, 0);
    const CliResult plan = run("bin/ludarium-cli", {QStringLiteral("--collection"), demo, QStringLiteral("play"),
                                                    QStringLiteral("Orchard Breaker"), QStringLiteral("--dry-run")});
    if (hasDosbox()) {
        EXPECT_EQ(plan.status, 0) << plan.errors.toStdString();
    }
    const QString picture = folder.filePath(QStringLiteral("window.png"));
    const CliResult drawn = run("bin/ludarium", {demo, QStringLiteral("--screenshot"), picture,
                                                 QStringLiteral("--size"), QStringLiteral("1000x700")});
    EXPECT_EQ(drawn.status, 0) << drawn.errors.toStdString();
    const QByteArray png = contentOf(picture);
    ASSERT_GT(png.size(), 60'000) << "covers take room; an empty window is a tenth of this";
    EXPECT_EQ(qFromBigEndian<quint32>(png.constData() + 16), 1000u);
    EXPECT_EQ(qFromBigEndian<quint32>(png.constData() + 20), 700u);
}

} // namespace

} // namespace ludarium::test
