#include "Services/Emulators/ProgramLocator.h"

#include "Host/Settings.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace ludarium::test;
using namespace Qt::StringLiterals;
using Kind = ProgramCandidate::Kind;

namespace {

void write(const QString &path, bool executable = false) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    file.write("#!/bin/sh\n");
    if (executable)
        file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

/// A fake machine with a collection, on which candidates of a table are put.
struct Machine {
    explicit Machine(HostLayout layout) : host(layout), collection(host.scratch() + u"/collection"_s) {
        host.settings.setValue(Settings::collectionPath, collection);
    }
    /// Puts what a candidate looks for and returns the path that it has to give. Plain files are not executable, so
    /// that a search of PATH does not find them in the candidate's stead.
    QString put(const ProgramCandidate &candidate) {
        const HostPaths &paths = host.host().paths;
        QString path;
        switch (candidate.kind) {
        case Kind::file:
            path = paths.resolve(candidate.text);
            write(path);
            if (!candidate.wrapped.isEmpty()) {
                path = paths.resolve(candidate.wrapped);
                write(path);
            }
            break;
        case Kind::inCollection:
            path = collection + u'/' + candidate.text;
            write(path);
            break;
        case Kind::onPath:
            path = paths.resolve(u"/usr/bin/"_s + candidate.text);
            write(path, true);
            break;
        case Kind::appImage:
            path = paths.resolve(u"~/Applications/"_s + QString(candidate.text).replace(u'*', u"-1.2"_s));
            write(path, true);
            break;
        case Kind::bundle:
            path = paths.resolve(candidate.text);
            EXPECT_TRUE(QDir().mkpath(path));
            break;
        case Kind::spotlight:
            break;
        }
        return path;
    }
    std::optional<QString> find(LocatedProgram program) {
        return ProgramLocator(host.host().paths, host.settings).find(program);
    }
    TestHost host;
    QString collection;
};

QList<ProgramCandidate> onDisk(LocatedProgram program, HostLayout layout) {
    QList<ProgramCandidate> candidates = programRow(program, layout).candidates;
    candidates.removeIf([](const ProgramCandidate &candidate) { return candidate.kind == Kind::spotlight; });
    return candidates;
}

class EveryTable : public testing::TestWithParam<std::tuple<HostLayout, LocatedProgram>> {};

} // namespace

TEST_P(EveryTable, FindsEachCandidateWhenItIsAlone) {
    const auto [layout, program] = GetParam();
    Machine machine(layout);
    for (const ProgramCandidate &candidate : onDisk(program, layout)) {
        ASSERT_EQ(machine.find(program), std::nullopt);
        const QString path = machine.put(candidate);
        EXPECT_EQ(machine.find(program), path) << qPrintable(candidate.text);
        ASSERT_TRUE(QFile::remove(path) || QDir().rmdir(path));
        // The folders of an application would count as one.
        for (const QString &folder : {u"/Applications"_s, u"~/Applications"_s})
            ASSERT_TRUE(QDir(machine.host.host().paths.resolve(folder)).removeRecursively());
    }
}

TEST_P(EveryTable, PrefersAnEarlierCandidateToAllLaterOnes) {
    const auto [layout, program] = GetParam();
    const QList<ProgramCandidate> candidates = onDisk(program, layout);
    // Built from the last to the first: each new candidate has to win over all that are already there.
    Machine machine(layout);
    for (qsizetype i = candidates.size() - 1; i >= 0; --i) {
        const QString path = machine.put(candidates.at(i));
        EXPECT_EQ(machine.find(program), path) << qPrintable(candidates.at(i).text);
    }
}

INSTANTIATE_TEST_SUITE_P(BothLayouts, EveryTable,
                         testing::Combine(testing::Values(HostLayout::MacOS, HostLayout::Linux),
                                          testing::ValuesIn(locatedPrograms().begin(), locatedPrograms().end())));

TEST(ProgramLocator, PutsTheUsersOwnPathFirstUnlessItIsGone) {
    for (LocatedProgram program : locatedPrograms()) {
        const ProgramRow &row = programRow(program, HostLayout::Linux);
        if (!row.setting)
            continue;
        Machine machine(HostLayout::Linux);
        const QString inTable = machine.put(row.candidates.first());
        const QString own = machine.host.scratch() + u"/own/program"_s;
        machine.host.settings.setValue(*row.setting, own);
        EXPECT_EQ(machine.find(program), inTable);
        write(own);
        EXPECT_EQ(machine.find(program), own);
        machine.host.settings.setValue(*row.setting, QString(u""_s));
        EXPECT_EQ(machine.find(program), inTable);
    }
}

TEST(ProgramLocator, KnowsTheSettingsOfTheProgramsThatHaveOne) {
    const QMap<LocatedProgram, QByteArray> expected{
        {LocatedProgram::dosbox, "dosboxPath"}, {LocatedProgram::dosboxX, "dosboxXPath"},
        {LocatedProgram::wine, "winePath"},     {LocatedProgram::retroArch, "retroArchPath"},
        {LocatedProgram::mame, "mamePath"},     {LocatedProgram::ryujinx, "ryujinxPath"},
        {LocatedProgram::cemu, "cemuPath"},     {LocatedProgram::rpcs3, "rpcs3Path"},
        {LocatedProgram::vita3k, "vita3kPath"}, {LocatedProgram::pcsx2, "pcsx2Path"},
        {LocatedProgram::lime3ds, "citraPath"},
    };
    for (HostLayout layout : {HostLayout::MacOS, HostLayout::Linux})
        for (LocatedProgram program : locatedPrograms()) {
            const Setting<QString> *setting = programRow(program, layout).setting;
            EXPECT_EQ(setting ? QByteArray(setting->key) : QByteArray(), expected.value(program));
        }
}

TEST(ProgramLocator, TakesADosboxXBinaryForDosboxButNotForStaging) {
    Machine machine(HostLayout::MacOS);
    const QString path = machine.put({Kind::file, u"/opt/homebrew/bin/dosbox-x"_s, {}, {}, false});
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), path);
    EXPECT_EQ(machine.find(LocatedProgram::dosboxStaging), std::nullopt);
}

TEST(ProgramLocator, PrefersStagingFromFlatpakToAPlainDosboxAndThatToDosboxX) {
    Machine machine(HostLayout::Linux);
    const QString x = machine.put({Kind::onPath, u"dosbox-x"_s, {}, {}, false});
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), x);
    const QString plain = machine.put({Kind::onPath, u"dosbox"_s, {}, {}, false});
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), plain);
    const QString staging =
        machine.put({Kind::file, u"~/.local/share/flatpak/exports/bin/io.github.dosbox-staging"_s, {}, {}, false});
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), staging);
}

TEST(ProgramLocator, LosesAProgramOfTheCollectionWhenTheCollectionIsCleared) {
    Machine machine(HostLayout::Linux);
    const QString path = machine.put({Kind::inCollection, u"eXo/util/dosbox/dosbox"_s, {}, {}, false});
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), path);
    machine.host.settings.remove(Settings::collectionPath);
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), std::nullopt);
}

TEST(ProgramLocator, DoesNotTakeAFolderForAProgram) {
    Machine machine(HostLayout::Linux);
    ASSERT_TRUE(QDir().mkpath(machine.collection + u"/dosbox/dosbox"_s));
    machine.host.settings.setValue(Settings::dosboxPath, machine.collection);
    EXPECT_EQ(machine.find(LocatedProgram::dosbox), std::nullopt);
}

TEST(ProgramLocator, AcceptsAnApplicationFolderAsTheUsersChoiceOnMacOSOnly) {
    for (const auto &[layout, isFound] : {std::pair{HostLayout::MacOS, true}, {HostLayout::Linux, false}}) {
        Machine machine(layout);
        const QString bundle = machine.host.scratch() + u"/RetroArch.app"_s;
        ASSERT_TRUE(QDir().mkpath(bundle));
        machine.host.settings.setValue(Settings::retroArchPath, bundle);
        EXPECT_EQ(machine.find(LocatedProgram::retroArch).has_value(), isFound);
    }
}

TEST(ProgramLocator, DoesNotCountAGSplusWrapperWithoutItsApplication) {
    Machine machine(HostLayout::MacOS);
    write(machine.host.host().paths.resolve(u"/opt/homebrew/bin/gsplus"_s), true);
    EXPECT_EQ(machine.find(LocatedProgram::gsplus), std::nullopt);
}

TEST(ProgramLocator, TakesTheAppImageThatCameLastAndOnlyOneThatMayBeRun) {
    Machine machine(HostLayout::Linux);
    const QString folder = machine.host.host().paths.resolve(u"~/Applications"_s);
    for (const auto &[name, day] : {std::pair{u"pcsx2-v2.0.AppImage"_s, 20}, {u"pcsx2-v1.9.AppImage"_s, 10}}) {
        write(folder + u'/' + name, true);
        QFile file(folder + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2024, 1, day), QTime(0, 0)), QFileDevice::FileModificationTime));
    }
    write(folder + u"/pcsx2-v3.0.AppImage"_s, false);
    EXPECT_EQ(machine.find(LocatedProgram::pcsx2), folder + u"/pcsx2-v2.0.AppImage"_s);
}

namespace {

struct Answer {
    LocatedProgram program;
    int query;
    QByteArray output; ///< %1 is the fake machine's root
    QStringList files;
    QString expected; ///< empty: none
};

class Spotlight : public testing::TestWithParam<Answer> {};

} // namespace

TEST_P(Spotlight, LeadsToTheProgramInTheFoundBundle) {
    const Answer &answer = GetParam();
    TestHost host(HostLayout::MacOS);
    for (const QString &file : answer.files)
        write(host.scratch() + file);
    const ProgramLocator locator(host.host().paths, host.settings);
    const QByteArray output = QByteArray(answer.output).replace("%1", host.scratch().toUtf8());
    const std::optional<QString> path =
        ProgramLocator::fromSpotlight(locator.spotlightQueries(answer.program).at(answer.query), output);
    EXPECT_EQ(path.value_or(QString()), answer.expected.isEmpty() ? QString() : host.scratch() + answer.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, Spotlight,
    testing::Values(
        Answer{LocatedProgram::rpcs3,
               0,
               "%1/A/RPCS3.app\n%1/B/RPCS3.app\n",
               {u"/A/RPCS3.app/Contents/MacOS/rpcs3"_s},
               u"/A/RPCS3.app/Contents/MacOS/rpcs3"_s},
        Answer{
            LocatedProgram::rpcs3, 0, "%1/A/RPCS3.app\n%1/B/RPCS3.app\n", {u"/B/RPCS3.app/Contents/MacOS/rpcs3"_s}, {}},
        Answer{LocatedProgram::rpcs3, 0, " \n", {}, {}},
        Answer{LocatedProgram::vita3k,
               0,
               "%1/Vita3K.txt\n%1/Vita3K.app\n",
               {u"/Vita3K.app/Contents/MacOS/Vita3K"_s, u"/Vita3K.txt/Contents/MacOS/Vita3K"_s},
               u"/Vita3K.app/Contents/MacOS/Vita3K"_s},
        Answer{LocatedProgram::vita3k, 0, "%1/Vita3K.txt\n", {u"/Vita3K.txt/Contents/MacOS/Vita3K"_s}, {}},
        Answer{LocatedProgram::pcsx2,
               1,
               "%1/PS2.app",
               {u"/PS2.app/Contents/MacOS/AetherSX2"_s, u"/PS2.app/Contents/MacOS/pcsx2-qt"_s},
               u"/PS2.app/Contents/MacOS/pcsx2-qt"_s}));
