#include "Host/OpenableFile.h"
#include "Host/PlainWorkspace.h"
#include "Host/ProcessRunner.h"
#include "Host/SystemTerminal.h"
#include "support/TestHost.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

using test::TestHost;
using testing::ElementsAre;

/// A machine whose programs write down how they were called.
class Desktop : public testing::Test {
  protected:
    void install(TestHost &host, const QString &path, int status = 0) {
        // Renamed into place, so that a line is never read half written.
        host.putProgram(path, "for a in \"$0\" \"$@\"; do printf '%s\\n' \"${a#" + QFile::encodeName(host.root()) +
                                  "}\"; done > \"" + calls(host) + ".$$\"; mv \"" + calls(host) + ".$$\" \"" +
                                  calls(host) + "\"; exit " + QByteArray::number(status));
    }
    static QByteArray calls(TestHost &host) { return QFile::encodeName(host.root() + QStringLiteral("/call")); }
    /// The last call, once there is one: the program and its arguments, below the fake root.
    static QStringList called(TestHost &host, const QString &byProgram) {
        QElapsedTimer timer;
        QStringList words;
        for (timer.start(); timer.elapsed() < 10'000; QThread::msleep(5)) {
            QFile file(QFile::decodeName(calls(host)));
            if (file.open(QIODevice::ReadOnly))
                words = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
            if (!words.isEmpty() && words.first() == byProgram)
                break;
        }
        QFile::remove(QFile::decodeName(calls(host)));
        return words;
    }
};

TEST_F(Desktop, OpensWithTheProgramsOfTheLayout) {
    TestHost linuxHost(HostLayout::Linux), mac(HostLayout::MacOS);
    const QString xdg = QStringLiteral("/usr/bin/xdg-open"), open = QStringLiteral("/usr/bin/open");
    install(linuxHost, xdg);
    install(linuxHost, QStringLiteral("/usr/bin/vlc"));
    install(mac, open);
    const QUrl url(QStringLiteral("https://example.org/ä?q=a b"));
    const QString address = QStringLiteral("https://example.org/%C3%A4?q=a%20b");

    PlainWorkspace onLinux(linuxHost.host().paths);
    EXPECT_TRUE(onLinux.openUrl(url));
    EXPECT_THAT(called(linuxHost, xdg), ElementsAre(xdg, address));
    const QString manual = linuxHost.put(QStringLiteral("/games/The Manual.pdf"), "%PDF");
    EXPECT_TRUE(onLinux.openFile(manual));
    EXPECT_THAT(called(linuxHost, xdg), ElementsAre(xdg, QStringLiteral("/games/The Manual.pdf")));
    EXPECT_TRUE(onLinux.openWith(QStringLiteral("vlc"), {manual, linuxHost.put(QStringLiteral("/games/-x.mp4"))}));
    EXPECT_THAT(called(linuxHost, QStringLiteral("/usr/bin/vlc")),
                ElementsAre(QStringLiteral("/usr/bin/vlc"), QStringLiteral("/games/The Manual.pdf"),
                            QStringLiteral("/games/-x.mp4")));
    EXPECT_FALSE(onLinux.openWith(QStringLiteral("no-such-player"), {manual}));

    PlainWorkspace onMac(mac.host().paths);
    const QString film = mac.put(QStringLiteral("/games/film.mp4"));
    EXPECT_TRUE(onMac.openUrl(url));
    EXPECT_THAT(called(mac, open), ElementsAre(open, address));
    EXPECT_TRUE(onMac.openFile(film));
    EXPECT_THAT(called(mac, open), ElementsAre(open, QStringLiteral("/games/film.mp4")));
    EXPECT_TRUE(onMac.openWith(QStringLiteral("/Applications/VLC.app"), {film}));
    EXPECT_THAT(called(mac, open), ElementsAre(open, QStringLiteral("-a"), QStringLiteral("/Applications/VLC.app"),
                                               QStringLiteral("/games/film.mp4")));
    EXPECT_TRUE(onMac.reveal(film));
    EXPECT_THAT(called(mac, open), ElementsAre(open, QStringLiteral("-R"), QStringLiteral("/games/film.mp4")));
}

TEST_F(Desktop, RevealAsksTheFileManagerAndFallsBackToTheFolder) {
    TestHost host;
    const QString gdbus = QStringLiteral("/usr/bin/gdbus"), xdg = QStringLiteral("/usr/bin/xdg-open");
    ASSERT_TRUE(QDir().mkpath(host.root() + QStringLiteral("/bin")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/sh"), host.root() + QStringLiteral("/bin/sh")));
    install(host, xdg);
    install(host, gdbus);
    const QString file = host.put(QStringLiteral("/games/it's $(touch X)/a.zip"));
    PlainWorkspace workspace(host.host().paths);

    EXPECT_TRUE(workspace.reveal(file));
    const QStringList call = called(host, gdbus);
    ASSERT_GE(call.size(), 2);
    EXPECT_EQ(call[1], QStringLiteral("call"));
    EXPECT_THAT(call,
                testing::Contains(QStringLiteral("['file://%1/games/it%27s%20$(touch%20X)/a.zip']").arg(host.root())));

    install(host, gdbus, 1); // no file manager answers
    EXPECT_TRUE(workspace.reveal(file));
    EXPECT_THAT(called(host, xdg), ElementsAre(xdg, QStringLiteral("/games/it's $(touch X)")));
    EXPECT_FALSE(QFile::exists(host.home() + QStringLiteral("/X")));
    EXPECT_FALSE(workspace.reveal(host.root() + QStringLiteral("/nothing")));
}

TEST_F(Desktop, SaysWhenItHasNoProgramForIt) {
    TestHost host;
    PlainWorkspace workspace(host.host().paths);
    EXPECT_FALSE(workspace.openUrl(QUrl(QStringLiteral("https://example.org"))));
    EXPECT_FALSE(workspace.openFile(host.put(QStringLiteral("/a.pdf"))));
    workspace.copyToClipboard(QStringLiteral("the text"));
    EXPECT_TRUE(host.log().contains(QStringLiteral("the text")));
}

TEST_F(Desktop, NeverOpensWhatWouldRun) {
    TestHost host;
    const QString xdg = QStringLiteral("/usr/bin/xdg-open");
    install(host, xdg);
    PlainWorkspace workspace(host.host().paths);
    const struct {
        const char *name;
        QByteArray content;
        bool executable;
        bool opened;
    } cases[] = {
        {"manual.pdf", "%PDF-1.4", false, true},
        {"manual.PDF", "%PDF-1.4", true, true}, // as on a volume without permissions
        {"readme", "text", false, true},
        {"readme.txt", "", false, true},
        {"readme.txt", "#!/bin/sh\n", false, false},
        {"readme", "text", true, false},
        {"manual.pdf",
         QByteArray("\x7f"
                    "ELF\2"),
         false, false},
        {"game.desktop", "[Desktop Entry]\n", false, false},
        {"Manual.PDF.Desktop", "", false, false},
        {"manual", "# x\n[Desktop Entry]\nExec=x\n", false, false},
        {"install.sh", "", false, false},
        {"Setup.EXE", "MZ", false, false},
        {"run.bat", "", false, false},
        {"start.command", "", false, false},
        {"x.jar", "PK", false, false},
        {"site.url", "[InternetShortcut]\nURL=file:///x\n", false, false},
    };
    for (const auto &[name, content, executable, opened] : cases) {
        const QString path = QStringLiteral("/games/") + QString::fromLatin1(name);
        const QString real = host.put(path, content, executable);
        EXPECT_EQ(workspace.openFile(real), opened) << name << ' ' << content.constData();
        if (opened) {
            EXPECT_THAT(called(host, xdg), ElementsAre(xdg, path));
        }
        EXPECT_EQ(workspace.openUrl(QUrl::fromLocalFile(real)), opened) << name << ", as an address";
        if (opened) {
            EXPECT_THAT(called(host, xdg), ElementsAre(xdg, path));
        }
        QFile::remove(real);
    }
    const QString script = host.put(QStringLiteral("/games/install.sh"));
    const QString link = host.root() + QStringLiteral("/games/harmless.txt");
    ASSERT_TRUE(QFile::link(script, link));
    EXPECT_FALSE(workspace.openFile(link)) << "a link to a script";
    EXPECT_FALSE(workspace.openFile(host.root() + QStringLiteral("/nothing.pdf")));
    for (const char *url : {"javascript:alert(1)", "smb://host/x", "ms-settings:x", "vbscript:x", "/etc/passwd", ""})
        EXPECT_FALSE(workspace.openUrl(QUrl(QString::fromLatin1(url)))) << url;
}

TEST_F(Desktop, RunsAScriptInTheTerminalThatIsThere) {
    const QString script = QStringLiteral("/tmp/a script.sh");
    const struct {
        HostLayout layout;
        QStringList installed;
        QString chosen; ///< $TERMINAL
        QStringList expected;
    } cases[] = {
        {HostLayout::MacOS,
         {QStringLiteral("/usr/bin/open")},
         {},
         {QStringLiteral("/usr/bin/open"), QStringLiteral("-a"), QStringLiteral("Terminal.app"), script}},
        {HostLayout::Linux,
         {QStringLiteral("/usr/bin/xterm"), QStringLiteral("/usr/bin/konsole")},
         {},
         {QStringLiteral("/usr/bin/konsole"), QStringLiteral("-e"), script}},
        {HostLayout::Linux,
         {QStringLiteral("/usr/bin/xterm"), QStringLiteral("/usr/bin/gnome-terminal")},
         {},
         {QStringLiteral("/usr/bin/gnome-terminal"), QStringLiteral("--"), script}},
        {HostLayout::Linux,
         {QStringLiteral("/usr/bin/xfce4-terminal")},
         {},
         {QStringLiteral("/usr/bin/xfce4-terminal"), QStringLiteral("-x"), script}},
        {HostLayout::Linux,
         {QStringLiteral("/usr/bin/xterm"), QStringLiteral("/usr/bin/x-terminal-emulator")},
         QStringLiteral("not-installed"),
         {QStringLiteral("/usr/bin/x-terminal-emulator"), QStringLiteral("-e"), script}},
        {HostLayout::Linux,
         {QStringLiteral("/usr/bin/xterm"), QStringLiteral("/usr/bin/x-terminal-emulator"),
          QStringLiteral("/usr/bin/wezterm")},
         QStringLiteral("wezterm"),
         {QStringLiteral("/usr/bin/wezterm"), QStringLiteral("start"), QStringLiteral("--"), script}},
    };
    for (const auto &[layout, installed, chosen, expected] : cases) {
        TestHost host(layout);
        for (const QString &path : installed)
            install(host, path);
        QProcessEnvironment environment = host.host().paths.environment();
        environment.insert(QStringLiteral("TERMINAL"), chosen);
        const HostPaths paths(layout, host.home(), host.root(), environment);
        SystemTerminal(paths).run(script);
        EXPECT_EQ(called(host, expected.first()), expected);
    }
    TestHost bare;
    EXPECT_THROW(SystemTerminal(bare.host().paths).run(script), ProcessError);
}

} // namespace
} // namespace ludarium
