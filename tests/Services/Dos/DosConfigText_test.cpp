#include "Services/Dos/DosConfigText.h"

#include "Models/LaunchError.h"

#include <QFile>
#include <gtest/gtest.h>

namespace ludarium {

void PrintTo(const OriginalExecutable &o, std::ostream *out) {
    *out << o.executable.toStdString() << " in " << o.subpath.toStdString();
}

namespace {

TEST(Cycles, ComeFromTheCpuSectionAlone) {
    const std::pair<QByteArray, const char *> cases[] = {
        {"[cpu]\ncycles=3000\n", "3000"},
        {"[cpu]\r\n  Cycles = fixed 3000 \r\n", "fixed 3000"},
        {"[cpu]\ncycles=auto\ncycles=AUTO\ncycles=\ncycles=max 90%=x\n", "max 90%=x"},
        {"[dosbox]\ncycles=1\n[CPU] # the processor\ncycles=2\n[x]\ncycles=3", "2"},
        {"cycles=1\n[cpux]\ncycles=2\n[sdl]\n", nullptr},
        {"[cpu]\ncycleup=5\ncyclesmore", nullptr},
        {"[cpu]\n# caf\xe9\ncycles=3000\n", nullptr},
        {"", nullptr},
    };
    for (const auto &[text, expected] : cases) {
        const auto found = extractCyclesFromConfig(text);
        EXPECT_EQ(found.has_value(), expected != nullptr) << text.constData();
        EXPECT_EQ(found.value_or(QString()), QString::fromUtf8(expected));
    }
}

TEST(OriginalAutoexec, NamesTheGamesProgram) {
    struct Case {
        QByteArray autoexec;
        const char *executable; ///< null for none
        const char *subpath;
    };
    const Case cases[] = {
        {"cd ..\ncd ..\nmount c .\\eXoDOS\\GAME\nc:\ncls\n@Doom.EXE -skill 3\r\nexit\n", "Doom.EXE -skill 3", ""},
        {"@mount c .\\x\n@imgmount d .\\x.iso -t cdrom\nd:\n\\INSTALL\\QUEST\n", "\\INSTALL\\QUEST", ""},
        {"cd GAME\ncd \"Sub\\Deep\"\ncd .\ncd More\ngame.com", "game.com", "Sub/Deep/More"},
        {"cd\\Sub\nCALL Play.BAT\n", "CALL Play.BAT", "Sub"},
        {"call run\n@call menu.\nmenu\nrun game.exe\nrun now\nabc\n", "run game.exe", ""},
        {"call run\nrun now\nver\nlh\nchoice x\nc:\nkeyb us\nabc def\n", "abc def", ""},
        {"echo game.exe\nECHO.\npause\nrem x.exe\nset a=x.exe\nif x goto y\ngoto y\nfor %a in (x) do\nshift\n", nullptr,
         ""},
        {"# a note\n:label\n@\nboot .\\x.img\nexit\n", nullptr, ""},
        {"quest\n[cpu]\nother.exe", "quest", ""},
        {"sc\xe8ne.exe", "sc\u00e8ne.exe", ""},
        {"", nullptr, ""},
    };
    for (const Case &c : cases) {
        const auto found =
            extractExecutableFromOriginalConfig("[sdl]\nx.exe\n[AUTOEXEC]\n" + c.autoexec, QStringLiteral("GAME"));
        ASSERT_EQ(found.has_value(), c.executable != nullptr) << c.autoexec.constData();
        if (found) {
            EXPECT_EQ(*found, (OriginalExecutable{QString::fromUtf8(c.executable), QString::fromUtf8(c.subpath)}))
                << c.autoexec.constData();
        }
    }
    EXPECT_FALSE(extractExecutableFromOriginalConfig("game.exe", QStringLiteral("GAME")));
}

TEST(GeneratedNames, StayFileNamesWhateverTheGameIsCalled) {
    const QString suffix = QStringLiteral("_launch.conf");
    EXPECT_EQ(generatedConfigName(QStringLiteral("My Game/x"), suffix), QStringLiteral("My_Game_x_launch.conf"));
    const QString longName = QString(150, QChar(0x65e5)); // 450 bytes
    const QString name = generatedConfigName(longName, suffix);
    EXPECT_LE(QFile::encodeName(name).size(), 200);
    EXPECT_NE(name, generatedConfigName(longName + u'x', suffix));
}

TEST(ConfigurationText, RefusesWhatItCannotCarry) {
    for (const QByteArray &text : {QByteArray("a\nb"), QByteArray("a\rb"), QByteArray("a\0b", 3)})
        EXPECT_THROW(checkedText(text, QStringLiteral("It")), LaunchError);
    EXPECT_EQ(checkedText("a \"b\"", QStringLiteral("It")), "a \"b\"");
    EXPECT_THROW(hostPathText(QStringLiteral("/a\"b")), LaunchError);
    EXPECT_EQ(dosText(QString::fromUtf8("é")), "\xe9");
    EXPECT_EQ(dosText(QString::fromUtf8("é日")), "é日");
}

} // namespace
} // namespace ludarium
