#include "Services/Dos/VersionDatabase.h"

#include "Host/SafeFiles.h"
#include "Services/Dos/GameVersionDetector.h"
#include "Services/Dos/VersionDatabaseResource.h"
#include "support/BuildFolders.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

struct AudioCase {
    const char *text;
    std::optional<AudioType> type;
};

TEST(VersionDatabase, KnowsTheWordsForSound) {
    for (const AudioCase &expected : std::initializer_list<AudioCase>{{"Tandy", AudioType::tandy},
                                                                      {"Game Blaster", AudioType::gameBlaster},
                                                                      {"ad-lib", AudioType::adlib},
                                                                      {"MT-32", AudioType::mt32},
                                                                      {"Sound-Blaster", AudioType::soundBlaster},
                                                                      {"GUS", AudioType::gus},
                                                                      {"gravis", AudioType::gus},
                                                                      {"Sound Canvas", AudioType::soundCanvas},
                                                                      {"SC-55", AudioType::soundCanvas},
                                                                      {"cd audio", AudioType::cdAudio},
                                                                      {"FLAC", AudioType::flac},
                                                                      {"PC Speaker", AudioType::pcSpeaker},
                                                                      {"speaker", AudioType::pcSpeaker},
                                                                      {"none", std::nullopt},
                                                                      {"theremin", std::nullopt},
                                                                      {"", std::nullopt}})
        EXPECT_EQ(parseAudioType(QString::fromUtf8(expected.text)), expected.type) << expected.text;
    EXPECT_FALSE(parseAudioType({}));
}

TEST(VersionDatabase, KnowsTheWordsForKinds) {
    for (const VersionType type : {VersionType::floppy, VersionType::cd, VersionType::ega, VersionType::vga,
                                   VersionType::cga, VersionType::hercules, VersionType::talkie, VersionType::other}) {
        EXPECT_EQ(parseVersionType(versionTypeText(type)), type);
        EXPECT_EQ(parseVersionType(versionTypeText(type).toUpper()), type);
    }
    EXPECT_EQ(parseVersionType(u"amiga"_s), VersionType::other);
}

TEST(VersionDatabase, ReadsEveryField) {
    const auto database = parseVersionDatabase(R"({"A": {"versions": [
        {"label": "One", "type": "EGA", "audio": "MT-32", "folder": "ega", "config": {"a": "b"},
         "executable": "a.exe", "setup": ["del x"], "mountAtGameLevel": true, "more": 7},
        {"label": "Two", "type": "", "audio": null, "folder": null, "config": null, "setup": null}]}, "B": {"versions": []}})");
    ASSERT_TRUE(database);
    EXPECT_TRUE(database->value(u"B"_s).versions.isEmpty());
    const QList<DatabaseVersion> versions = database->value(u"A"_s).versions;
    ASSERT_EQ(versions.size(), 2);
    const GameVersionOption one = versions[0].option(u"here"_s);
    EXPECT_EQ(one.label, u"One"_s);
    EXPECT_EQ(one.versionType, VersionType::ega);
    EXPECT_EQ(one.audioType, AudioType::mt32);
    EXPECT_EQ(one.workingDirectory, u"ega"_s);
    EXPECT_EQ(one.configChanges.value(u"a"_s), u"b"_s);
    EXPECT_EQ(one.executable, u"a.exe"_s);
    EXPECT_EQ(one.setupCommands.value_or(QStringList()), QStringList{u"del x"_s});
    EXPECT_TRUE(one.mountAtGameLevel);
    EXPECT_EQ(one.origin, u"here"_s);
    const GameVersionOption two = versions[1].option({});
    EXPECT_TRUE(!two.audioType && two.workingDirectory.isNull() && two.executable.isNull() && !two.setupCommands &&
                two.configChanges.isEmpty() && !two.mountAtGameLevel);
}

TEST(VersionDatabase, RefusesWhatIsNotWholeAndSaysWhere) {
    const auto problemOf = [](const QByteArray &json) {
        QString problem;
        EXPECT_FALSE(parseVersionDatabase(json, &problem)) << json.constData();
        return problem;
    };
    for (const char *bytes : {"", "[]", "7", "{\"A\": []}", "{\"A\": {}}", "{\"A\": {\"versions\": {}}}", "{", "\xFF",
                              "{\"A\": {\"versions\": [1]}}"})
        EXPECT_FALSE(problemOf(bytes).isEmpty()) << bytes;
    const auto version = [](const QByteArray &members) { return "{\"Loom\": {\"versions\": [{" + members + "}]}}"; };
    EXPECT_EQ(problemOf(version(R"("type": "ega")")), u"\"Loom\": \"label\" is missing"_s);
    EXPECT_EQ(problemOf(version(R"("label": "a")")), u"\"Loom\": \"type\" is missing"_s);
    const QByteArray whole = R"("label": "a", "type": "ega", )";
    ASSERT_TRUE(parseVersionDatabase(version(whole + R"("audio": "x")")));
    for (const char *member :
         {R"("audio": 1)", R"("folder": [])", R"("config": [])", R"("config": {"a": 1})", R"("executable": true)",
          R"("setup": "x")", R"("setup": [1])", R"("mountAtGameLevel": "true")"})
        problemOf(version(whole + member));
    problemOf(QByteArray("{\"A\": ") + QByteArray(5000, '[') + QByteArray(5000, ']') + '}');
}

TEST(EmbeddedVersionDatabase, IsTheFileOfTheSources) {
    QFile file(inSources("Tools/GameVersionDatabase.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(embeddedVersionDatabase(), file.readAll());
}

TEST(EmbeddedVersionDatabase, KeepsItsSchema) {
    QString problem;
    const auto database = parseVersionDatabase(embeddedVersionDatabase(), &problem);
    ASSERT_TRUE(database) << qPrintable(problem);
    EXPECT_GE(database->size(), 150);
    const QSet<QString> keys{u"label"_s, u"type"_s, u"audio"_s, u"config"_s};
    // The reader of JSON keeps the last of equal keys without a word, so the titles are counted in the text as well.
    static const QRegularExpression titleLine(u"^    \".*\": \\{$"_s, QRegularExpression::MultilineOption);
    const QString text = QString::fromUtf8(embeddedVersionDatabase());
    EXPECT_EQ(text.count(titleLine), database->size());

    const QJsonObject document = QJsonDocument::fromJson(embeddedVersionDatabase()).object();
    for (auto game = document.begin(); game != document.end(); ++game) {
        SCOPED_TRACE(qPrintable(game.key()));
        EXPECT_EQ(game->toObject().keys(), QStringList{u"versions"_s});
        QSet<QString> labels;
        QList<GameVersionOption> options;
        for (const QJsonValue &version : game->toObject().value(u"versions"_s).toArray())
            // Folders and programs differ from collection to collection, so none is named.
            for (const QString &key : version.toObject().keys())
                EXPECT_TRUE(keys.contains(key)) << qPrintable(key);
        for (const DatabaseVersion &version : database->value(game.key()).versions) {
            SCOPED_TRACE(qPrintable(version.label));
            EXPECT_FALSE(version.label.trimmed().isEmpty());
            labels.insert(version.label);
            EXPECT_TRUE(version.type == u"other"_s || parseVersionType(version.type) != VersionType::other);
            EXPECT_TRUE(version.audio.isNull() || parseAudioType(version.audio));
            for (auto it = version.config.cbegin(); it != version.config.cend(); ++it) {
                EXPECT_TRUE(isSafeConfigurationKey(it.key())) << qPrintable(it.key());
                EXPECT_TRUE(configurationValueProblem(it->toUtf8()).isEmpty());
            }
            EXPECT_EQ(version.isMt32(), version.config.value(u"mididevice"_s) == u"mt32"_s);
            options.append(version.option({}));
        }
        EXPECT_GE(options.size(), 2);
        EXPECT_EQ(labels.size(), options.size());
        EXPECT_EQ(filterDuplicateVersions(options).size(), options.size()) << "a version would never be shown";
    }
}

} // namespace
} // namespace ludarium
