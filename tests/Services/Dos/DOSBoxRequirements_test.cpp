#include "Services/Dos/DOSBoxRequirementsManager.h"

#include "support/TestHost.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

struct BuildCase {
    const char *build;
    EmulatorType type;
};

class DOSBoxBuild : public testing::TestWithParam<BuildCase> {};

TEST_P(DOSBoxBuild, IsClassifiedByItsName) {
    EXPECT_EQ(DOSBoxRequirementsManager::classifyVersion(QString::fromUtf8(GetParam().build)), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    Names, DOSBoxBuild,
    testing::Values(BuildCase{"staging0.81", EmulatorType::staging}, BuildCase{"STAGING", EmulatorType::staging},
                    BuildCase{"x", EmulatorType::dosboxX}, BuildCase{"X2", EmulatorType::dosboxX},
                    BuildCase{"X98dosbox", EmulatorType::dosboxX}, BuildCase{"x3", EmulatorType::vanilla},
                    BuildCase{"ECE4481", EmulatorType::ece}, BuildCase{"daum", EmulatorType::custom},
                    BuildCase{"Gunstick_DOSBox-0.74", EmulatorType::custom},
                    BuildCase{"gunstick", EmulatorType::custom}, BuildCase{"tc_dosbox", EmulatorType::custom},
                    BuildCase{"MPUbuild2", EmulatorType::custom}, BuildCase{"my dwddosbox", EmulatorType::custom},
                    BuildCase{"0.74-3", EmulatorType::vanilla}, BuildCase{"", EmulatorType::vanilla}));

struct LineCase {
    const char *line;
    const char *title; ///< null: the line holds nothing
    const char *build;
    EmulatorType type;
    const char *path;
};

class RequirementLine : public testing::TestWithParam<LineCase> {};

TEST_P(RequirementLine, NamesTheBuildOfOneGame) {
    const LineCase &expected = GetParam();
    const RequirementTable table = RequirementTable::parse(QString::fromUtf8(expected.line));
    ASSERT_EQ(table.entries().size(), expected.title ? 1 : 0);
    EXPECT_EQ(table.stats().total, table.entries().size());
    if (!expected.title)
        return;
    const EmulatorRequirement &entry = table.entries().first();
    EXPECT_EQ(entry.listedTitle, QString::fromUtf8(expected.title));
    EXPECT_EQ(entry.version, QString::fromUtf8(expected.build));
    EXPECT_EQ(entry.emulatorType, expected.type);
    EXPECT_EQ(entry.wineExecutablePath, QString::fromUtf8(expected.path));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, RequirementLine,
    testing::Values(LineCase{"Foo: The Bar:ECE4481\\dosbox.exe", "Foo: The Bar", "ECE4481", EmulatorType::ece,
                             "ECE4481/dosbox.exe"},
                    LineCase{"Foo:x2/sub/dosbox.exe\r", "Foo", "x2", EmulatorType::dosboxX, "x2/sub/dosbox.exe"},
                    LineCase{"Foo:a/b\\c\\d.exe", "Foo", "a/b", EmulatorType::vanilla, "a/b/c/d.exe"},
                    LineCase{"Foo:staging", "Foo", "vanilla", EmulatorType::vanilla, "staging"},
                    LineCase{"   Foo:\\dosbox.exe  ", "Foo", "", EmulatorType::vanilla, "/dosbox.exe"},
                    LineCase{"   \t ", nullptr, "", EmulatorType::vanilla, ""},
                    LineCase{"No colon", nullptr, "", EmulatorType::vanilla, ""},
                    LineCase{":ece\\dosbox.exe", nullptr, "", EmulatorType::vanilla, ""},
                    LineCase{"Foo:", nullptr, "", EmulatorType::vanilla, ""},
                    LineCase{" : ", nullptr, "", EmulatorType::vanilla, ""}));

struct TitleCase {
    const char *title;
    int line; ///< of the entry that is found; 0 for none
};

class RequirementOfTitle : public testing::TestWithParam<TitleCase> {};

TEST_P(RequirementOfTitle, IsFoundInItsOrder) {
    static const RequirementTable table = RequirementTable::parse(u"Secret of Monkey Island, The:ece\\a\n" // 1
                                                                  u"Doom:ece\\a\n"
                                                                  u"DOOM:x\\a\n"
                                                                  u"Zork II: The Wizard:x\\a\n"
                                                                  u"Zork I: The Empire:x\\a\n" // 5
                                                                  u"The Dig:x\\a\n"
                                                                  u"dig, THE:x\\a\n"
                                                                  u"Alone (CD):x\\a\n"
                                                                  u"Alone:x\\a\n"
                                                                  u"DOOM:ece\\a\n"_s); // 10
    const EmulatorRequirement *found = table.find(QString::fromUtf8(GetParam().title));
    EXPECT_EQ(found ? found->line : 0, GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, RequirementOfTitle,
    testing::Values(TitleCase{"Doom", 2}, TitleCase{"DOOM", 10}, // as written, and the last line of a title stands
                    TitleCase{"dOOm", 2},                        // of two that differ in case, the first
                    TitleCase{"Doom (CD)", 2}, TitleCase{"Doom (DOS) (Floppy)", 2}, TitleCase{"Alone (CD)", 8},
                    TitleCase{"Alone (Floppy)", 9}, TitleCase{"The Secret of Monkey Island", 1},
                    TitleCase{"The secret of Monkey ISLAND", 1}, TitleCase{"The Dig", 6}, TitleCase{"THE DIG", 6},
                    TitleCase{"Dig, The", 7},     // exactly none, so in another case
                    TitleCase{"Zork", 4},         // the first of the file, not of the alphabet
                    TitleCase{"zork i: (CD)", 5}, // in the end any that begins so
                    TitleCase{"Secret of Monkey Island", 1}, TitleCase{"Zork III", 0}, TitleCase{"The Doom", 0},
                    TitleCase{"", 0}, TitleCase{" (CD)", 0}));

TEST(RequirementTable, CountsTitlesAndLines) {
    const RequirementTable table =
        RequirementTable::parse(u"A:ece1\\d\nB:x\\d\nA:staging\\d\nC:word\nD:daum\\d\n\nbroken"_s);
    EXPECT_EQ(table.stats(), (RequirementStats{4, 1, 1, 1, 1, 1}));
    EXPECT_EQ(table.find(u"A"_s)->emulatorType, EmulatorType::staging);
    EXPECT_EQ(table.find(u"A"_s)->line, 3);
}

TEST(RequirementTable, AgreesWithAWalkOverTheWholeTable) {
    // Titles of few letters, so that they often differ by case only or begin with one another.
    QString text;
    quint32 state = 20260314;
    const auto random = [&](quint32 below) {
        state = state * 1664525 + 1013904223;
        return (state >> 8) % below;
    };
    const auto title = [&] {
        QString made = random(4) == 0 ? u"The "_s : QString();
        for (quint32 i = 0, length = 1 + random(4); i < length; ++i)
            made += u"aAbB"_s[random(4)];
        return made + QStringList{{}, u" (CD)"_s, u", The"_s}[random(3)];
    };
    for (int i = 0; i < 60; ++i)
        text += title() + u":x\\d\n"_s;
    const RequirementTable table = RequirementTable::parse(text);
    const auto walk = [&](const QString &wanted) {
        const auto first = [&](auto fits) {
            for (const EmulatorRequirement &entry : table.entries())
                if (fits(entry.listedTitle))
                    return entry.line;
            return 0;
        };
        QString clean = wanted;
        clean.remove(u" (CD)"_s).remove(u", The"_s);
        const QString behind = wanted.mid(4) + u", The"_s;
        int line = first([&](const QString &key) { return key == wanted; });
        line = line ? line : first([&](const QString &key) { return !key.compare(wanted, Qt::CaseInsensitive); });
        line = line ? line : first([&](const QString &key) { return key == clean; });
        if (wanted.startsWith(u"The "_s)) {
            line = line ? line : first([&](const QString &key) { return key == behind; });
            line = line ? line : first([&](const QString &key) { return !key.compare(behind, Qt::CaseInsensitive); });
        }
        return line ? line : first([&](const QString &key) { return key.startsWith(clean, Qt::CaseInsensitive); });
    };
    for (int i = 0; i < 500; ++i) {
        const QString wanted = title();
        const EmulatorRequirement *found = table.find(wanted);
        ASSERT_EQ(found ? found->line : 0, walk(wanted)) << qPrintable(wanted);
    }
}

class RequirementsFile : public testing::Test {
  protected:
    void write(const QByteArray &content) { m_host.put(u"/coll/eXo/util/dosbox.txt"_s, content); }
    QString collection() { return m_host.root() + u"/coll"_s; }

    test::TestHost m_host;
    DOSBoxRequirementsManager m_manager;
};

TEST_F(RequirementsFile, IsReplacedByTheNextLoad) {
    write("\xEF\xBB\xBFPok\xC3\xA9:ece\\dosbox.exe\r\nDoom:x\\dosbox.exe");
    m_manager.loadDatabase(collection());
    EXPECT_EQ(m_manager.databasePath(), collection() + u"/eXo/util/dosbox.txt"_s);
    EXPECT_EQ(m_manager.getRequirement(u"Poké"_s).value_or(EmulatorRequirement{}).emulatorType, EmulatorType::ece);
    EXPECT_EQ(m_manager.getRequirement(u"Doom"_s).value_or(EmulatorRequirement{}).emulatorType, EmulatorType::dosboxX);
    write("Quake:ece\\dosbox.exe\n");
    m_manager.loadDatabase(collection());
    EXPECT_FALSE(m_manager.getRequirement(u"Doom"_s));
    EXPECT_TRUE(m_manager.getRequirement(u"Quake"_s));
}

TEST_F(RequirementsFile, ChangesNothingWhenItIsMissing) {
    write("Doom:x\\dosbox.exe\n");
    m_manager.loadDatabase(collection());
    const QString other = m_host.root() + u"/other"_s;
    m_manager.loadDatabase(other);
    EXPECT_TRUE(m_manager.getRequirement(u"Doom"_s));
    EXPECT_EQ(m_manager.databasePath(), collection() + u"/eXo/util/dosbox.txt"_s);
    EXPECT_TRUE(m_host.log().contains(
        u"⚠️ DOSBox requirements database not found at: %1/eXo/util/dosbox.txt"_s.arg(other)));
}

TEST_F(RequirementsFile, KeepsWhatIsKnownWhenItCannotBeRead) {
    write("Doom:x\\dosbox.exe\n");
    m_manager.loadDatabase(collection());
    const QString path = collection() + u"/eXo/util/dosbox.txt"_s;
    write("Quake\xFF:ece\\dosbox.exe\n");
    m_manager.loadDatabase(collection());
    EXPECT_TRUE(m_manager.getRequirement(u"Doom"_s));
    EXPECT_TRUE(m_host.log().contains(u"it is not UTF-8 text"_s));
    // Opening a pipe would wait for a writer.
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    m_manager.loadDatabase(collection());
    EXPECT_TRUE(m_manager.getRequirement(u"Doom"_s));
    EXPECT_TRUE(m_host.log().contains(u"it is no file"_s));
}

} // namespace
} // namespace ludarium
