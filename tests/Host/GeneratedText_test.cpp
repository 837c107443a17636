#include "Host/SafeFiles.h"

#include "support/TestHost.h"

#include <QDir>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

TEST(GeneratedScripts, PrintAHostileTitleLiterallyAndRunNothingOfIt) {
    test::TestHost host;
    const QString title = QStringLiteral("A\"$(touch X)`touch Y`\\\"; touch Z #\ntouch V\r\ttouch W $HOME ${IFS}\\");
    const QString script =
        host.putProgram(QStringLiteral("/opt/script"), "# " + singleLine(title).toUtf8() + "\nprintf '%s' \"" +
                                                           shellQuotedText(title).toUtf8() + "\"");
    const ProcessSpec spec{script, {}, host.scratch(), {}, {}};
    const ProcessResult result = test::await(host.host().processes.run(spec));

    QString expected = title;
    for (const char16_t control : {u'\n', u'\r', u'\t'})
        expected.replace(QChar(control), u' ');
    EXPECT_EQ(result.standardOutput.toStdString(), expected.toStdString());
    EXPECT_EQ(result.standardError.toStdString(), "");
    EXPECT_TRUE(QDir(host.scratch()).isEmpty()) << "a command of the title was run";
}

TEST(GeneratedScripts, KeepOrdinaryTitlesByteForByte) {
    for (const QString &title :
         {QStringLiteral("King's Quest: Quest for the Crown (1984) [v1.0]"), QStringLiteral("Übersoldier & Söhne!"),
          QStringLiteral("日本語 – 50% *off*; ~done < > | ?"), QString()}) {
        EXPECT_EQ(shellQuotedText(title).toUtf8(), title.toUtf8());
        EXPECT_EQ(singleLine(title).toUtf8(), title.toUtf8());
    }
}

TEST(GeneratedConfigurations, RefuseWhatWouldStartALineOrEndAPath) {
    const struct {
        QByteArray value;
        bool plain;
        bool path;
    } cases[] = {
        {"/games/King's Quest", true, true},
        {"", true, true},
        {"say \"hi\"", true, false},
        {"a\nb=c", false, false},
        {"a\rb", false, false},
        {QByteArray("a\0b", 3), false, false},
    };
    for (const auto &[value, plain, path] : cases) {
        EXPECT_EQ(configurationValueProblem(value).isEmpty(), plain) << value.constData();
        EXPECT_EQ(configurationValueProblem(value, true).isEmpty(), path) << value.constData();
    }
    for (const char *key : {"cycles", "aspect_ratio", "video.driver2"})
        EXPECT_TRUE(isSafeConfigurationKey(QString::fromLatin1(key))) << key;
    for (const QString &key : {QString(), QStringLiteral("a b"), QStringLiteral("a=b"), QStringLiteral("[sdl]"),
                               QStringLiteral("a\n"), QStringLiteral("ä"), QStringLiteral("a-b")})
        EXPECT_FALSE(isSafeConfigurationKey(key)) << key.toStdString();
}

} // namespace
} // namespace ludarium
