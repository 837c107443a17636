#include "Cli/Table.h"

#include "Cli/Output.h"

#include <QTemporaryFile>
#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace ludarium {
namespace {

/// A terminal of its own; what is printed to it can be read back.
class Terminal {
  public:
    explicit Terminal(int columns) {
        winsize size{};
        size.ws_col = ushort(columns);
        size.ws_row = 10;
        termios settings{};
        cfmakeraw(&settings);
        EXPECT_EQ(openpty(&m_master, &m_slave, nullptr, &settings, &size), 0);
    }
    ~Terminal() {
        close(m_master);
        close(m_slave);
    }
    template<typename Print>
    QString printed(Print print) {
        Output output(m_slave);
        print(output);
        output.finish();
        QByteArray text(4096, 0);
        text.resize(read(m_master, text.data(), size_t(text.size())));
        return QString::fromUtf8(text);
    }

  private:
    int m_master = -1;
    int m_slave = -1;
};

template<typename Print>
QString printedToFile(Print print) {
    QTemporaryFile file;
    EXPECT_TRUE(file.open());
    Output output(file.handle());
    print(output);
    output.finish();
    file.seek(0);
    return QString::fromUtf8(file.readAll());
}

Table sample() {
    Table table({QStringLiteral("TITLE"), QStringLiteral("YEAR")});
    table.add({QStringLiteral("日本"), QStringLiteral("1990")});
    table.add({QStringLiteral("A title that is far too long for so narrow a terminal"), QString()});
    table.addFaint({QStringLiteral("a\nb"), QStringLiteral("1")});
    return table;
}

TEST(Table, AlignsColumnsAndCutsNothingWithoutATerminal) {
    EXPECT_EQ(printedToFile([](Output &output) { sample().print(output); }),
              QStringLiteral("TITLE                                                  YEAR\n"
                             "日本                                                   1990\n"
                             "A title that is far too long for so narrow a terminal\n"
                             "a\\nb                                                   1\n"));
}

TEST(Table, FitsTheTerminalAndColoursOnlyThereAndWithoutNoColor) {
    Terminal terminal(40);
    qputenv("TERM", "xterm");
    qunsetenv("NO_COLOR");
    const QString coloured = terminal.printed([](Output &output) { sample().print(output); });
    qputenv("NO_COLOR", "1");
    const QString plain = terminal.printed([](Output &output) { sample().print(output); });
    qunsetenv("NO_COLOR");
    EXPECT_TRUE(coloured.startsWith(QStringLiteral("\033[1mTITLE"))) << coloured.toStdString();
    EXPECT_TRUE(coloured.contains(QStringLiteral("\033[2ma\\nb")));
    EXPECT_EQ(plain, QStringLiteral("TITLE                               YEAR\n"
                                    "日本                                1990\n"
                                    "A title that is far too long for …\n"
                                    "a\\nb                                1\n"));
}

TEST(Table, CutsAnIdToWhatStillNamesAThingAndNoFurther) {
    const QString id = QStringLiteral("0a1b2c3d-4e5f-6789");
    Table table({QStringLiteral("TITLE"), QStringLiteral("PLATFORM"), QStringLiteral("ID")});
    table.add({QStringLiteral("A long title that is cut"), QStringLiteral("A long platform"), id});
    Terminal terminal(40);
    qputenv("NO_COLOR", "1");
    const QString text = terminal.printed([&](Output &output) { table.print(output); });
    qunsetenv("NO_COLOR");
    EXPECT_EQ(text, QStringLiteral("TITLE          PLATFORM        ID\n"
                                   "A long title…  A long platfo…  0a1b2c3d…\n"));
}

TEST(FieldList, KeepsTheLinesOfAValueUnderOneAnother) {
    const QString text = printedToFile([](Output &output) {
        FieldList fields;
        fields.add(QStringLiteral("Title"), QStringLiteral("Zork"));
        fields.add(QStringLiteral("Empty"), QString());
        fields.add(QStringLiteral("Overview"), QStringLiteral("First\r\n\nThird\x1b"));
        fields.print(output);
    });
    EXPECT_EQ(text, QStringLiteral("Title:     Zork\nOverview:  First\n\n           Third\\x1b\n"));
}

} // namespace
} // namespace ludarium
