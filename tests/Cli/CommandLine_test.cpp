#include "Cli/CommandLine.h"

#include "Cli/CommandOptions.h"

#include <QDir>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

Command *parse(CommandLine &line, const QList<QByteArray> &arguments) {
    std::vector<const char *> pointers{"ludarium-cli"};
    for (const QByteArray &argument : arguments)
        pointers.push_back(argument.constData());
    return line.parse(int(pointers.size()), pointers.data());
}

TEST(CommandLine, RefusesWrongUsageInOneLine) {
    const QList<QByteArray> rows[] = {
        {},
        {"dance"},
        {"games", "--speed"},
        {"games", "superfluous"},
        {"games", "--limit", "-1"},
        {"games", "--limit", "many"},
        {"games", "--limit", "99999999999"},
        {"games", "--search"},
        {"show"},
        {"show", ""},
        {"show", "two", "titles"},
        {"play", "Zork", "--wait", "--dry-run"},
        {"demo"},
        {"search", "--sort", "size"},
        {"search", "--year", "x"},
        {"facets", "colours"},
        {"rate", "Zork", "6"},
        {"rate", "Zork", "-1"},
        {"rate", "Zork", "4.5"},
        {"rate"},
        {"progress", "Zork", "won"},
        {"note", "Zork", "text", "--clear"},
        {"note", "Zork", ""},
        {"status", "one", "two"},
        {"demo", ""},
        {"--collection", "", "games"},
        {"--home", "", "games"},
        {"--collection"},
        {"platforms", "games"},
        {"dance\n\x1b[2J"},
    };
    for (const auto &arguments : rows) {
        CommandLine line;
        EXPECT_EQ(parse(line, arguments), nullptr) << arguments.join(' ').constData();
        EXPECT_EQ(line.exitStatus(), 2) << arguments.join(' ').constData();
        EXPECT_FALSE(line.text().isEmpty());
        for (const QChar c : line.text())
            EXPECT_GE(c, u' ') << line.text().toStdString();
    }
}

TEST(CommandLine, TakesTheCommonOptionsBeforeAndBehindTheCommand) {
    const QList<QByteArray> rows[] = {
        {"--json", "--collection", "/set", "--home=/keep", "platforms"},
        {"platforms", "--json", "--collection", "/set", "--home=/keep"},
    };
    for (const auto &arguments : rows) {
        CommandLine line;
        const Command *command = parse(line, arguments);
        ASSERT_TRUE(command) << line.text().toStdString();
        EXPECT_STREQ(command->name(), "platforms");
        EXPECT_TRUE(line.options().json);
        EXPECT_EQ(line.options().collection, QStringLiteral("/set"));
        EXPECT_EQ(line.options().home, QStringLiteral("/keep"));
    }
}

TEST(CommandLine, MakesFoldersAbsolute) {
    CommandLine line;
    ASSERT_TRUE(parse(line, {"games", "--collection", "sets/../größe/", "--home", "."}));
    EXPECT_EQ(line.options().collection, QDir::currentPath() + QStringLiteral("/größe"));
    EXPECT_EQ(line.options().home, QDir::currentPath());
}

TEST(CommandLine, AnswersHelpAndVersionWithStatusZero) {
    CommandLine version;
    EXPECT_EQ(parse(version, {"--version"}), nullptr);
    EXPECT_EQ(version.exitStatus(), 0);
    EXPECT_EQ(version.text().trimmed(), QStringLiteral("ludarium-cli " LUDARIUM_VERSION));

    CommandLine help;
    EXPECT_EQ(parse(help, {"--help"}), nullptr);
    EXPECT_EQ(help.exitStatus(), 0);
    for (const CommandSummary &command : help.summaries())
        EXPECT_TRUE(help.text().contains(command.name)) << command.name.toStdString();

    CommandLine commandHelp;
    EXPECT_EQ(parse(commandHelp, {"games", "--help"}), nullptr);
    EXPECT_EQ(commandHelp.exitStatus(), 0);
    EXPECT_TRUE(commandHelp.text().contains(QStringLiteral("--limit")));
}

/// Keeps what it was given.
class ProbeCommand : public Command {
  public:
    QString game;
    QString search;
    std::optional<int> limit;
    bool wait = false;
    const char *name() const override { return "probe"; }
    const char *description() const override { return "For the test"; }
    void declare(CommandOptions &options) override {
        options.argument("GAME", game, "");
        options.text("--search", "TEXT", search, "");
        options.number("--limit", "N", limit, "");
        options.flag("--wait", wait, "");
    }
    QCoro::Task<int> run(CommandContext &) override { co_return exitDone; }
};

TEST(CommandLine, HandsValuesToTheCommandAsTheyAre) {
    auto owned = std::make_unique<ProbeCommand>();
    const ProbeCommand *probe = owned.get();
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::move(owned));
    CommandLine line(std::move(commands));
    EXPECT_EQ(parse(line, {"probe", "--search", "a b=\"c\" [x,y] {z}", "--limit", "0", "--wait", "--", "-Größe 日本"}),
              probe)
        << line.text().toStdString();
    EXPECT_EQ(probe->search, QStringLiteral("a b=\"c\" [x,y] {z}"));
    EXPECT_EQ(probe->game, QStringLiteral("-Größe 日本"));
    EXPECT_EQ(probe->limit, std::optional(0));
    EXPECT_TRUE(probe->wait);
}

} // namespace
} // namespace ludarium
