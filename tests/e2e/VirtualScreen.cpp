#include "e2e/VirtualScreen.h"

#include "e2e/WindowRun.h"
#include "support/BuildFolders.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <QtEndian>
#include <gtest/gtest.h>

namespace ludarium::test {

VirtualScreen::~VirtualScreen() {
    m_server.terminate();
    if (!m_server.waitForFinished(5000)) {
        m_server.kill();
        m_server.waitForFinished();
    }
}

bool VirtualScreen::isInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty();
}

bool VirtualScreen::start() {
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // It takes a free number and says which, once it can be connected to.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                    QStringLiteral("-fbdir"), m_folder.path()});
    QByteArray number;
    while (!number.contains('\n') && m_server.waitForReadyRead(20'000))
        number += m_server.readAllStandardOutput();
    m_display = u':' + QString::fromLatin1(number.trimmed());
    return number.contains('\n');
}

QByteArray VirtualScreen::xdotool(const QStringList &arguments) {
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("xdotool"), arguments);
    EXPECT_TRUE(tool.waitForFinished(20'000)) << "xdotool does not run";
    return tool.readAllStandardOutput();
}

bool VirtualScreen::waitForWindow(const QString &title) {
    QByteArray id;
    const bool found = eventually([&] {
        id = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                      u'^' + title + u'$'})
                 .trimmed();
        return !id.isEmpty();
    });
    if (found)
        xdotool({QStringLiteral("windowfocus"), QString::fromLatin1(id.split('\n').last())});
    return found;
}

namespace {

/// More than the blinking of a text cursor.
bool differs(const QImage &one, const QImage &other) {
    constexpr int cursorPixels = 200;
    if (one.size() != other.size())
        return true;
    int pixels = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            pixels += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
    return pixels > cursorPixels;
}

} // namespace

bool VirtualScreen::waitForRest() {
    constexpr int restWanted = 1000;
    QImage last = picture();
    QElapsedTimer rest;
    rest.start();
    return eventually([&] {
        const QImage now = picture();
        if (differs(now, last))
            rest.restart();
        last = now;
        return rest.elapsed() > restWanted;
    });
}

void VirtualScreen::key(const char *name) {
    xdotool({QStringLiteral("key"), QString::fromLatin1(name)});
}

void VirtualScreen::type(const char *text) {
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), QString::fromLatin1(text)});
}

void VirtualScreen::click(QPoint where, int button) {
    xdotool({QStringLiteral("mousemove"), QString::number(where.x()), QString::number(where.y()),
             QStringLiteral("click"), QString::number(button)});
}

void VirtualScreen::doubleClick(QPoint where) {
    xdotool({QStringLiteral("mousemove"), QString::number(where.x()), QString::number(where.y()),
             QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"), QStringLiteral("--delay"),
             QStringLiteral("200"), QStringLiteral("1")});
}

QImage VirtualScreen::picture() const {
    // The screen's memory is a file in the format of xwd: a header of big-endian words, the table of colours, pixels.
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = file.readAll();
    const auto word = [&](int index) { return qsizetype(qFromBigEndian<quint32>(content.constData() + 4 * index)); };
    constexpr int colourSize = 12;
    if (content.size() < 100)
        return {};
    const qsizetype pixels = word(0) + word(19) * colourSize;
    const qsizetype width = word(4), height = word(5), lineBytes = word(12);
    if (width * 4 > lineBytes || content.size() < pixels + height * lineBytes)
        return {};
    return QImage(reinterpret_cast<const uchar *>(content.constData() + pixels), int(width), int(height), lineBytes,
                  QImage::Format_RGB32)
        .copy();
}

void VirtualScreen::save(const char *name) const {
    const QDir folder(inBuild("screenshots"));
    folder.mkpath(QStringLiteral("."));
    EXPECT_TRUE(picture().save(folder.filePath(QString::fromLatin1(name) + QStringLiteral(".png"))));
}

} // namespace ludarium::test
