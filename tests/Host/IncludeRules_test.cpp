#include "support/BuildFolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

/// The rooms from the bottom up. Includes point down; the two at the top do not know one another.
const QStringList rooms = {
    QStringLiteral("Host"),
    QStringLiteral("Models"),
    QStringLiteral("Services/Emulators"),
    QStringLiteral("Services/Collections"),
    QStringLiteral("Services/Artwork"),
    QStringLiteral("Services/Dos"),
    QStringLiteral("Services/Runners"),
    QStringLiteral("Services/Consoles"),
    QStringLiteral("Services/Health"),
    QStringLiteral("Services/Launch"),
    QStringLiteral("Services/Library"),
    QStringLiteral("Services/Roms"),
    QStringLiteral("Services/Online"),
    QStringLiteral("Services/Shell"),
    QStringLiteral("App"),
    QStringLiteral("Cli"),
    QStringLiteral("Views"),
};

qsizetype roomOf(const QString &path) {
    for (qsizetype i = 0; i < rooms.size(); ++i)
        if (path.startsWith(rooms[i] + u'/'))
            return i;
    return -1;
}

/// Whether a header in angle brackets belongs to a part of Qt that needs a window, a sound device or QML.
bool needsWindow(const QString &header) {
    static const QStringList modules = [] {
        QStringList found;
        for (const QString &module :
             QDir(QLibraryInfo::path(QLibraryInfo::HeadersPath)).entryList({QStringLiteral("Qt*")}, QDir::Dirs))
            for (const char *part : {"QtGui", "QtQuick", "QtQml", "QtWidgets", "QtMultimedia", "QtOpenGL", "QtSvg"})
                if (module.startsWith(QLatin1StringView(part)))
                    found << module;
        return found;
    }();
    const QString prefix = header.section(u'/', 0, 0);
    for (const QString &module : modules)
        if (prefix == module ||
            QFile::exists(QLibraryInfo::path(QLibraryInfo::HeadersPath) + u'/' + module + u'/' + header))
            return true;
    return false;
}

/// What is wrong with the include `line` in `file` (below src/); null when nothing, also when it is no include.
QString problemOf(const QString &file, const QString &line) {
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s*(?:\"([^\"]*)\"|<([^>]*)>)"));
    const QRegularExpressionMatch match = include.match(line);
    if (!match.hasMatch())
        return {};
    const bool desktopMain = file == u"App/main.cpp";
    const qsizetype from = roomOf(file);
    if (from < 0)
        return QStringLiteral("the file is in no room");
    if (const QString header = match.captured(2); !header.isEmpty())
        return needsWindow(header) && rooms[from] != u"Views" && !desktopMain
                   ? QStringLiteral("needs a window outside Views")
                   : QString();
    const QString header = match.captured(1);
    if (header.endsWith(QLatin1StringView(".moc")))
        return {};
    if (header.split(u'/').contains(QStringLiteral("..")))
        return QStringLiteral("does not name its room");
    const qsizetype to = roomOf(header);
    if (to < 0)
        return {}; // the file's own folder, generated, or a library's: nothing else can be named without a room
    if (desktopMain && rooms[to] == u"Views")
        return {};
    if (to > from || (rooms[from] == u"Views" && rooms[to] == u"Cli"))
        return QStringLiteral("points up the house");
    return {};
}

TEST(IncludeRules, AreKnownToTheChecker) {
    const struct {
        const char *file;
        const char *line;
        bool allowed;
    } cases[] = {
        {"Host/Clock.cpp", "#include \"Host/Clock.h\"", true},
        {"Host/Clock.cpp", "#include \"Models/Game.h\"", false},
        {"Models/Game.cpp", "  #  include \"Services/Dos/DosLauncher.h\" // why", false},
        {"Services/Library/GameLibrary.cpp", "#include \"Services/Dos/DosLauncher.h\"", true},
        {"Services/Dos/DosLauncher.cpp", "#include \"Services/Library/GameLibrary.h\"", false},
        {"Services/Shell/Music.cpp", "#include \"App/AppState.h\"", false},
        {"App/AppState.cpp", "#include \"Services/Shell/Music.h\"", true},
        {"App/AppState.cpp", "#include \"Views/Window.h\"", false},
        {"App/main.cpp", "#include \"Views/Window.h\"", true},
        {"App/main.cpp", "#include \"Cli/Commands.h\"", false},
        {"Cli/Commands.cpp", "#include \"Views/Window.h\"", false},
        {"Views/Window.cpp", "#include \"Cli/Commands.h\"", false},
        {"Views/Window.cpp", "#include <QQuickView>", true},
        {"App/main.cpp", "#include <QGuiApplication>", true},
        {"Services/Artwork/Images.cpp", "#include <QImage>", false},
        {"Services/Artwork/Images.cpp", "#include <QtGui/QImage>", false},
        {"Cli/Commands.cpp", "#include <QtGui/qcolor.h>", false},
        {"Host/Clock.cpp", "#include <QtCore/QString>", true},
        {"Host/Clock.cpp", "#include <QCoro/QCoroTask>", true},
        {"Host/Clock.cpp", "#include <memory>", true},
        {"Host/Clock.cpp", "#include \"Clock.h\"", true},
        {"Host/Clock.cpp", "#include \"../Models/Game.h\"", false},
        {"Host/Clock.cpp", "#include \"Clock.moc\"", true},
        {"Attic/Old.cpp", "#include <memory>", false},
        {"Host/Clock.cpp", "// #include \"Models/Game.h\"", true},
    };
    for (const auto &[file, line, allowed] : cases)
        EXPECT_EQ(problemOf(QString::fromLatin1(file), QString::fromLatin1(line)).isNull(), allowed)
            << file << ": " << line;
}

TEST(IncludeRules, HoldInEverySourceFile) {
    const QString source = inSources("src");
    QStringList problems;
    int includes = 0;
    QDirIterator files(source, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        const QString name = QDir(source).relativeFilePath(file.fileName());
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            includes += lines[i].startsWith(QLatin1StringView("#include"));
            if (const QString problem = problemOf(name, lines[i]); !problem.isNull())
                problems << QStringLiteral("%1:%2: %3: %4").arg(name).arg(i + 1).arg(problem, lines[i]);
        }
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.join(u'\n').toStdString();
    EXPECT_GT(includes, 100) << "the sources were not found";
}

} // namespace
} // namespace ludarium
