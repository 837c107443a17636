#include "Views/DesktopColorScheme.h"

#include "support/FixtureCollection.h"
#include "support/TestHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QPalette>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

/// Answers the one question and tells of changes, as a desktop's portal does.
class FakePortal : public QDBusVirtualObject {
  public:
    uint scheme = 0;
    int questions = 0;

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override {
        ++questions;
        const QDBusVariant inner{QVariant(scheme)};
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }
    void change(const QDBusConnection &bus, uint wanted) {
        QDBusMessage signal =
            QDBusMessage::createSignal(portalPath, settingsInterface, QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
               << QVariant::fromValue(QDBusVariant(QVariant(wanted)));
        bus.send(signal);
    }
};

} // namespace

TEST(DesktopColorScheme, FollowsThePortalWhileTheProgramRuns) {
    if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty())
        GTEST_SKIP() << "dbus-daemon is not installed";
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"),
                 {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    ASSERT_TRUE(daemon.waitForReadyRead());
    const QString address = QString::fromUtf8(daemon.readLine().trimmed());

    QDBusConnection desktop = QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
    FakePortal portal;
    ASSERT_TRUE(desktop.registerVirtualObject(portalPath, &portal));
    ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    portal.scheme = 2;
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    QGuiApplication::setPalette(palette);

    std::optional<bool> dark;
    {
        DesktopColorScheme scheme(QDBusConnection::connectToBus(address, QStringLiteral("program")));
        QObject::connect(&scheme, &DesktopColorScheme::darkChanged, &scheme, [&](bool now) { dark = now; });
        const auto becomes = [&](bool wanted) { return waitUntil([&] { return dark == wanted; }); };
        EXPECT_TRUE(becomes(false)) << "asked at the start";
        portal.change(desktop, 1);
        EXPECT_TRUE(becomes(true));
        portal.change(desktop, 0);
        EXPECT_TRUE(becomes(false)) << "no wish: the palette is light";
        palette.setColor(QPalette::Window, Qt::black);
        QGuiApplication::setPalette(palette);
        QEvent told(QEvent::ApplicationPaletteChange); // what a running event loop brings
        QCoreApplication::sendEvent(qApp, &told);
        EXPECT_TRUE(becomes(true)) << "the palette became dark";
        portal.change(desktop, 2);
        EXPECT_TRUE(becomes(false)) << "a wish goes before the palette";
        EXPECT_EQ(portal.questions, 1);
    }
    QGuiApplication::setPalette(QPalette());
    for (const char *name : {"program", "desktop"})
        QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    daemon.terminate();
    daemon.waitForFinished();
}

} // namespace ludarium::test
