#include "Services/Collections/ExoPackSetupManager.h"

#include "support/Mount.h"
#include "support/TestHost.h"

#include <QFile>
#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>

namespace ludarium {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::Not;

namespace {

class ExoPackSetup : public testing::Test {
  protected:
    void put(const QString &path, const QByteArray &content = {}) { host.put(u"/collection/"_s + path, content); }
    void putMany(const QString &folder, int count) {
        for (int i = 0; i < count; ++i)
            put(folder + u"/%1.png"_s.arg(i));
    }
    bool exists(const QString &path) const { return QFileInfo::exists(collection() + u'/' + path); }
    QString collection() const { return host.root() + u"/collection"_s; }
    SetupStatus status() const { return manager.getSetupStatus(collection()); }
    std::string log() { return host.log().toStdString(); }

    test::TestHost host;
    ExoPackSetupManager manager;
};

} // namespace

TEST(ExoCollection, KnowsEverySetByItsTable) {
    const auto sets = ExoCollection::all();
    ASSERT_EQ(sets.size(), 8u);
    for (size_t i = 0; i < sets.size(); ++i) {
        EXPECT_EQ(sets[i].type, ExoCollectionType(i));
        EXPECT_EQ(ExoCollection::typeFromRawValue(sets[i].rawValue), sets[i].type);
    }
    const ExoCollection &demos = ExoCollection::of(ExoCollectionType::demoScene);
    EXPECT_EQ(demos.scriptFolder, u"eXo/eXoDemoScn/!dos"_s);
    EXPECT_EQ(demos.displayName, u"eXoDemoScene"_s);
    EXPECT_EQ(demos.xoMarkerName(), u".demoscene_xometadata_extracted"_s);
    EXPECT_EQ(ExoCollection::typeFromRawValue(u"dos"_s), std::nullopt);
}

TEST_F(ExoPackSetup, GivesAnEmptyStatusWithoutContent) {
    put(u"eXo/util/util.zip"_s);
    put(u"eXo/eXoDOS/!dos/WC/run.bat"_s);
    EXPECT_EQ(status(), SetupStatus());
    EXPECT_FALSE(status().needsSetup());
}

TEST_F(ExoPackSetup, TakesACollectionWithAnXOArchiveOnlyForALiteOne) {
    put(u"Content/XODOSMetadata.zip"_s);
    const SetupStatus found = status();
    ASSERT_EQ(found.collections.size(), 1);
    EXPECT_EQ(found.collections[0].collectionType, ExoCollectionType::dos);
    EXPECT_FALSE(found.collections[0].hasMetadataArchive);
    EXPECT_TRUE(found.collections[0].metadataArchiveName.isNull());
    EXPECT_TRUE(found.collections[0].hasXOMetadata);
    EXPECT_EQ(found.collections[0].xoMetadataArchiveName, u"XODOSMetadata.zip"_s);
    EXPECT_FALSE(found.collections[0].xoMetadataExtracted);
    EXPECT_TRUE(found.needsSetup());
    EXPECT_TRUE(manager.isLiteCollection(collection()));
    EXPECT_THAT(log(), HasSubstr("   No XO metadata archive found for eXoWin3x (pattern: xowin3xmetadata*.zip)"));
}

TEST_F(ExoPackSetup, FindsTheMetadataArchiveOfEverySetInAnyCase) {
    for (const ExoCollection &set : ExoCollection::all())
        put(u"Content/"_s + set.metadataArchivePrefix.toUpper() + u"Metadata_v2.ZIP"_s);
    const SetupStatus found = status();
    ASSERT_EQ(found.collections.size(), 8);
    for (const CollectionSetupStatus &set : found.collections) {
        EXPECT_TRUE(set.hasMetadataArchive && !set.hasXOMetadata && !set.metadataExtracted);
        EXPECT_FALSE(set.metadataExtractionIncomplete);
        EXPECT_EQ(set.metadataArchiveName,
                  ExoCollection::of(set.collectionType).metadataArchivePrefix.toUpper() + u"Metadata_v2.ZIP"_s);
    }
    EXPECT_FALSE(manager.isLiteCollection(collection()));
}

TEST_F(ExoPackSetup, PrefersTheXOArchiveThatIsNotForLinux) {
    put(u"Content/XODOSMetadata_Linux.zip"_s);
    put(u"Content/XODOSMetadata_win.zip"_s);
    EXPECT_EQ(status().collections[0].xoMetadataArchiveName, u"XODOSMetadata_win.zip"_s);
    EXPECT_THAT(log(), HasSubstr("   (Selected from 2 candidates: XODOSMetadata_Linux.zip, XODOSMetadata_win.zip)"));
    put(u"Content/XOIFmetadata-linux1.zip"_s);
    put(u"Content/XOIFmetadata-linux2.zip"_s);
    EXPECT_EQ(status().collections[1].xoMetadataArchiveName, u"XOIFmetadata-linux1.zip"_s);
}

struct Images {
    int count;
    bool scripts;
    bool extracted;
};

class ExoPackImages : public ExoPackSetup, public testing::WithParamInterface<Images> {};

TEST_P(ExoPackImages, DecideOnASetWithoutMarker) {
    put(u"Content/XODOSMetadata.zip"_s);
    if (GetParam().scripts)
        put(u"eXo/eXoDOS/!dos/WC/run.bat"_s);
    putMany(u"Images/MS-DOS/Box - Front"_s, GetParam().count);
    EXPECT_EQ(status().collections[0].xoMetadataExtracted, GetParam().extracted);
    EXPECT_EQ(exists(u".dos_xometadata_extracted"_s), GetParam().extracted);
    const QString text =
        u"   XO metadata check for eXoDOS: Box - Front has %1 images (threshold: %2)"_s.arg(GetParam().count)
            .arg(GetParam().scripts ? u"50, metadata already extracted"_s : u"1000"_s);
    EXPECT_THAT(log(), HasSubstr(text.toStdString()));
    if (!GetParam().extracted)
        return;
    EXPECT_THAT(log(), HasSubstr("   Created retroactive marker file for eXoDOS"));
    EXPECT_THAT(log(), Not(HasSubstr("marker file found")));
    EXPECT_TRUE(status().collections[0].xoMetadataExtracted);
    EXPECT_THAT(log(), HasSubstr("   XO metadata marker file found for eXoDOS"));
}

INSTANTIATE_TEST_SUITE_P(Thresholds, ExoPackImages,
                         testing::Values(Images{50, true, false}, Images{51, true, true}, Images{1000, false, false},
                                         Images{1001, false, true}));

TEST_F(ExoPackSetup, ConsultsNoMarkerWithoutAnXOArchive) {
    put(u"Content/!DOSmetadata.zip"_s);
    put(u".dos_xometadata_extracted"_s);
    EXPECT_FALSE(status().collections[0].xoMetadataExtracted);
}

TEST_F(ExoPackSetup, TakesASetWithoutImageFolderForPacked) {
    put(u"Content/XODOSMetadata.zip"_s);
    put(u"eXo/eXoDOS/!dos/WC/run.bat"_s);
    EXPECT_FALSE(status().collections[0].xoMetadataExtracted);
}

TEST_F(ExoPackSetup, GoesOnWithoutMarkerOnAReadOnlyVolume) {
    put(u"Content/XODOSMetadata.zip"_s);
    put(u"eXo/eXoDOS/!dos/WC/run.bat"_s);
    putMany(u"Images/MS-DOS/Box - Front"_s, 51);
    const test::Mount mount = test::Mount::bind(collection(), collection());
    const QByteArray folder = QFile::encodeName(collection());
    if (!mount.ok() || ::mount(nullptr, folder.constData(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0)
        GTEST_SKIP() << "needs the right to mount: " << mount.reason().toStdString();
    EXPECT_TRUE(status().collections[0].xoMetadataExtracted);
    EXPECT_FALSE(exists(u".dos_xometadata_extracted"_s));
    EXPECT_THAT(log(), HasSubstr("No retroactive marker file for eXoDOS: the folder is not writable"));
}

struct Extraction {
    const char *what;
    ExoCollectionType type;
    QStringList files;
    bool complete;
};

class ExoPackExtraction : public ExoPackSetup, public testing::WithParamInterface<Extraction> {};

TEST_P(ExoPackExtraction, IsJudgedByScriptsAndArchive) {
    for (const QString &file : GetParam().files)
        put(file);
    EXPECT_EQ(manager.checkMetadataExtractionComplete(collection(), GetParam().type), GetParam().complete)
        << GetParam().what;
}

const QString dosArchive = u"Content/!DOSmetadata.zip"_s;

INSTANTIATE_TEST_SUITE_P(
    Cases, ExoPackExtraction,
    testing::Values(
        Extraction{"DREAMM without scripts, though without archive", ExoCollectionType::dreamm, {}, false},
        Extraction{"DREAMM with scripts", ExoCollectionType::dreamm, {u"eXo/eXoDREAMM/!DREAMM/x"_s}, true},
        Extraction{"no scripts, no archive", ExoCollectionType::dos, {}, true},
        Extraction{"no scripts, archive", ExoCollectionType::dos, {dosArchive}, false},
        Extraction{"another set with an empty script folder",
                   ExoCollectionType::win3x,
                   {u"eXo/eXoWin3x/!win3x/x"_s, u"Content/!Win3xMetadata.zip"_s},
                   true},
        Extraction{
            "only the last sample", ExoCollectionType::dos, {dosArchive, u"eXo/eXoDOS/!dos/X-Wing/a.bsh"_s}, true},
        Extraction{"a sample without launch file",
                   ExoCollectionType::dos,
                   {dosArchive, u"eXo/eXoDOS/!dos/WC/readme.txt"_s},
                   false},
        Extraction{
            "another game only", ExoCollectionType::dos, {dosArchive, u"eXo/eXoDOS/!dos/abuse/run.bat"_s}, false},
        Extraction{"no sample, archive gone", ExoCollectionType::dos, {u"eXo/eXoDOS/!dos/abuse/run.bat"_s}, true}));

TEST_F(ExoPackSetup, ReportsAnExtractionThatWasCutShort) {
    put(dosArchive);
    put(u"eXo/eXoDOS/!dos/WC/readme.txt"_s);
    EXPECT_TRUE(status().collections[0].metadataExtractionIncomplete);
    EXPECT_FALSE(status().needsSetup());
    put(u"eXo/eXoDOS/!dos/UltimaU/dosbox.conf"_s);
    EXPECT_FALSE(status().collections[0].metadataExtractionIncomplete);
}

TEST_F(ExoPackSetup, LooksForToolsExtrasAndMedia) {
    put(u"Content/x"_s);
    EXPECT_EQ(status(), SetupStatus());
    put(u"Content/GameData/eXoDOS/readme.txt"_s);
    put(u"eXo/util/utility.txt"_s);
    put(u"eXo/util/Util.zip"_s);
    EXPECT_EQ(status(), SetupStatus());
    put(u"Content/GameData/eXoDOS/Abuse.zip"_s);
    put(u"eXo/util/EXTDOS.zip"_s);
    put(u"Content/eXoDOS Magazines.zip"_s);
    put(u"Content/Books.zip"_s);
    put(u"Content/Catalogs.zip.part"_s);
    put(u"Content/All Videos.zip"_s);
    SetupStatus expected;
    expected.hasGameData = expected.hasUtilArchive = expected.hasMagazines = expected.hasBooks = expected.hasVideos =
        true;
    EXPECT_EQ(status(), expected);
    EXPECT_TRUE(status().needsSetup());
    put(u"Content/Catalogs.zip"_s);
    put(u"Content/Soundtracks.zip"_s);
    put(u"eXo/util/dosbox.txt"_s);
    expected.hasCatalogs = expected.hasSoundtracks = expected.utilExtracted = true;
    EXPECT_EQ(status(), expected);
    EXPECT_FALSE(status().needsSetup());
}

TEST_F(ExoPackSetup, MatchesMediaPatterns) {
    const std::tuple<const char *, const char *, bool> rows[]{
        {"a Books.zip", "*Books.zip", true}, {"Books.zip.bak", "*Books.zip", false}, {"Mag1.zip", "Mag*", true},
        {"xMag1.zip", "Mag*", false},        {"Mag!1.zip", "Mag!*.zip", false},      {"xMag!*.zip", "Mag!*.zip", true}};
    for (const auto &[name, pattern, matches] : rows)
        EXPECT_EQ(ExoPackSetupManager::matchesMediaPattern(QString::fromUtf8(name), QString::fromUtf8(pattern)),
                  matches)
            << name;
}

TEST_F(ExoPackSetup, DetectsTheFirstSetThatIsNotBlocked) {
    EXPECT_FALSE(manager.detectCollection(collection()).has_value());
    put(u"eXo/eXoWin3x/!win3x/x"_s);
    put(u"Content/XOScummVMmetadata.zip"_s);
    putMany(u"Images/ScummVM/Box - Front"_s, 1001);
    const auto found = manager.detectCollection(collection());
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->type, ExoCollectionType::scummvm);
    EXPECT_EQ(found->displayName, u"eXoScummVM"_s);
    EXPECT_EQ(found->sourceURL, collection());
    EXPECT_FALSE(found->needsSetup);
    // Looking at a folder that may never be added leaves nothing in it.
    EXPECT_FALSE(exists(u".scummvm_xometadata_extracted"_s));
    put(u"Content/!ScummVMmetadata.zip"_s);
    EXPECT_TRUE(manager.detectCollection(collection())->needsSetup);
    const ExoPackSetupManager blocking({ExoCollectionType::scummvm});
    EXPECT_EQ(blocking.detectCollection(collection())->type, ExoCollectionType::win3x);
}

} // namespace ludarium
