#include "Services/Dos/GameExceptionsManager.h"

#include "Host/Settings.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

QString ids(const GameExceptionsManager &manager, const QString &title) {
    QStringList list;
    for (const GameException &exception : manager.getExceptions(title))
        list.append(exception.id);
    return list.join(u' ');
}

QString text(const QMap<QString, QString> &map) {
    QStringList list;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        list.append(it.key() + u'=' + it.value());
    return list.join(u", "_s);
}

struct Case {
    const char *title;
    const char *ids;
    const char *overrides;
};

class ExceptionsOfTitle : public testing::TestWithParam<Case> {};

TEST_P(ExceptionsOfTitle, AreFoundByPatternOrPlainText) {
    test::TestHost host;
    const GameExceptionsManager manager(host);
    const QString title = QString::fromUtf8(GetParam().title);
    EXPECT_EQ(ids(manager, title), QString::fromUtf8(GetParam().ids));
    EXPECT_EQ(text(manager.getConfigOverrides(title)), QString::fromUtf8(GetParam().overrides));
}

INSTANTIATE_TEST_SUITE_P(
    Titles, ExceptionsOfTitle,
    testing::Values(Case{"Dune II: Battle for Arrakis", "dune2", "cycles=max"}, Case{"Dune", "", ""},
                    Case{"King's Quest V", "sierra-sci", ""}, Case{"King's Quest III", "sierra-sci", ""},
                    Case{"King's Quest 4", "", ""}, Case{"Police Quest 3", "sierra-sci", ""},
                    Case{"Warcraft II", "warcraft svga-games", "cycles=fixed 20000, machine=svga_s3, memsize=16"},
                    Case{"MYST", "cdrom-games", "label=CDROM"}, Case{"Mystery House", "cdrom-games", "label=CDROM"},
                    Case{"The Print Shop", "dosbox-x-printer", ""},
                    Case{"Space Quest III", "sierra-sci mt32-issues", "mididevice=fluidsynth"},
                    Case{"Eye of the Beholder II", "eob1", ""},
                    Case{"Command & Conquer: Red Alert", "svga-games", "machine=svga_s3, memsize=16"},
                    Case{"Tetris", "", ""}, Case{"", "", ""}));

TEST(GameExceptionsManager, KnowsTheEmulatorOfTheFirstExceptionThatNamesOne) {
    test::TestHost host;
    const GameExceptionsManager manager(host);
    EXPECT_EQ(manager.getEmulatorOverride(u"Eye of the Beholder"_s), EmulatorOverride::ece);
    EXPECT_EQ(manager.getEmulatorOverride(u"PrintMaster Gold"_s), EmulatorOverride::dosboxX);
    EXPECT_EQ(manager.getEmulatorOverride(u"loom"_s), EmulatorOverride::scummvm);
    EXPECT_FALSE(manager.getEmulatorOverride(u"Wing Commander"_s));
}

TEST(GameExceptionsManager, NamesTheKeysOfTheMachine) {
    for (const HostLayout layout : {HostLayout::MacOS, HostLayout::Linux}) {
        test::TestHost host(layout);
        const QString keys = layout == HostLayout::MacOS ? u"Fn+Cmd+F4"_s : u"Ctrl+F4"_s;
        EXPECT_EQ(GameExceptionsManager(host).getExceptions(u"Myst"_s).value(0).notes,
                  u"Multi-disc game. Press %1 to swap discs when prompted."_s.arg(keys));
    }
}

TEST(GameExceptionsManager, HasItsOwnTableInOrder) {
    test::TestHost host;
    const GameExceptionsManager manager(host);
    QStringList found;
    for (const GameException &exception : manager.exceptions()) {
        found.append(exception.id + u' ' + exceptionSeverityText(exception.severity));
        EXPECT_EQ(exception.addedDate, host.clock.now());
        EXPECT_EQ(exception.testedVersion, u"eXoDOS v6"_s);
        EXPECT_TRUE(exception.preLaunchCommand.isNull() && exception.postLaunchCommand.isNull());
        EXPECT_FALSE(exception.notes.isEmpty());
    }
    EXPECT_EQ(found.join(u", "_s),
              u"eob1 recommended, dune2 optional, warcraft recommended, wingcommander recommended, "
              "sierra-sci recommended, lucasarts-scumm recommended, dosbox-x-printer critical, "
              "mt32-issues info, cdrom-games info, svga-games optional"_s);
    EXPECT_TRUE(manager.customExceptions().isEmpty());
}

/// A whole exception with one field as given; an empty `value` leaves the field out.
QByteArray custom(const QByteArray &field = {}, const QByteArray &value = {}) {
    QMap<QByteArray, QByteArray> fields{{"id", R"("mine")"},           {"patterns", R"(["Doom ?\\(", "Eye of", "("])"},
                                        {"emulator", R"("dosbox-x")"}, {"configOverrides", R"({"cycles": "5000"})"},
                                        {"notes", R"("Slow")"},        {"severity", R"("critical")"},
                                        {"addedDate", "86400.5"},      {"testedVersion", R"("v5")"}};
    if (value.isEmpty())
        fields.remove(field);
    else
        fields[field] = value;
    QByteArrayList members;
    for (auto it = fields.cbegin(); it != fields.cend(); ++it)
        members.append('"' + it.key() + "\": " + it.value());
    return "[{" + members.join(", ") + "}]";
}

class CustomExceptions : public testing::Test {
  protected:
    GameExceptionsManager manager(const QByteArray &stored) {
        m_host.settings.setValue(Settings::customGameExceptions, stored);
        return GameExceptionsManager(m_host);
    }
    test::TestHost m_host;
};

TEST_F(CustomExceptions, StandBehindTheBuiltInOnes) {
    const auto manager = this->manager(custom("patterns", R"(["Eye of", "Dune II"])"));
    EXPECT_EQ(ids(manager, u"Eye of the Beholder"_s), u"eob1 mine"_s);
    EXPECT_EQ(manager.getEmulatorOverride(u"Eye of the Beholder"_s), EmulatorOverride::ece);
    EXPECT_EQ(text(manager.getConfigOverrides(u"Dune II"_s)), u"cycles=5000"_s);
    EXPECT_EQ(text(manager.configOverrideOrigins(u"Dune II"_s)), u"cycles=mine"_s);
    EXPECT_EQ(manager.getEmulatorOverride(u"Dune II"_s), EmulatorOverride::dosboxX);
}

TEST_F(CustomExceptions, AreReadWithAllTheirFields) {
    const auto manager = this->manager(custom("preLaunchCommand", R"("rm -rf /")"));
    ASSERT_EQ(manager.customExceptions().size(), 1);
    const GameException &exception = manager.customExceptions().first();
    EXPECT_EQ(exception.id, u"mine"_s);
    EXPECT_EQ(exception.emulator, EmulatorOverride::dosboxX);
    EXPECT_EQ(exception.preLaunchCommand, u"rm -rf /"_s);
    EXPECT_TRUE(exception.postLaunchCommand.isNull());
    EXPECT_EQ(exception.severity, GameException::Severity::critical);
    EXPECT_EQ(exception.addedDate, QDateTime(QDate(2001, 1, 2), QTime(0, 0, 0, 500), Qt::UTC));
    EXPECT_EQ(exception.testedVersion, u"v5"_s);
}

TEST_F(CustomExceptions, TakeAPatternThatIsNoExpressionAsPlainText) {
    EXPECT_EQ(ids(manager(custom()), u"DOOM (1993)"_s), u"mine"_s);
    EXPECT_EQ(ids(manager(custom()), u"Any (1993)"_s), u"mine"_s);
    EXPECT_EQ(ids(manager(custom()), u"Doom"_s), QString());
}

TEST_F(CustomExceptions, DoNotHangOnAPatternThatNeverEnds) {
    const auto manager = this->manager(custom("patterns", R"(["(a|a)*b"])"));
    EXPECT_EQ(ids(manager, QString(64, u'a') + u'c'), QString());
}

TEST_F(CustomExceptions, AreLeftOutWhenAnyIsNotWhole) {
    for (const char *field : {"id", "patterns", "configOverrides", "notes", "severity", "addedDate", "testedVersion"}) {
        EXPECT_FALSE(GameException::listFromJson(custom(field))) << field;
        EXPECT_FALSE(GameException::listFromJson(custom(field, "true"))) << field;
    }
    for (const auto &[field, value] : {std::pair("emulator", R"("dosbox")"),
                                       {"severity", R"("bad")"},
                                       {"patterns", "[1]"},
                                       {"configOverrides", R"({"a": 1})"},
                                       {"addedDate", "1e300"},
                                       {"preLaunchCommand", "1"}})
        EXPECT_FALSE(GameException::listFromJson(custom(field, value))) << field;
    for (const char *bytes : {"", "{}", "[1]", "[", "[{}]", "\xFF"})
        EXPECT_TRUE(manager(bytes).customExceptions().isEmpty()) << bytes;
    EXPECT_EQ(GameException::listFromJson(custom("emulator", "null")).value_or(QList<GameException>()).size(), 1);
}

} // namespace
} // namespace ludarium
