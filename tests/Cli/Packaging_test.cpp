#include "Cli/CommandLine.h"
#include "support/BuildFolders.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

struct HelpFile {
    const char *path;
    const char *command; ///< how the file names the command %1, a regular expression
    const char *option;  ///< how it names an option, %1 being its name without the dashes
};

/// The man page and the completions, which are written by hand.
const HelpFile helpFiles[] = {
    {"packaging/ludarium-cli.1", R"(^\.BI? %1\b|^\.BR %1 )", R"(\\-\\-%1\b)"},
    {"packaging/completions/ludarium-cli.bash", R"(commands="[^"]*\b%1\b)", R"(--%1\b)"},
    {"packaging/completions/_ludarium-cli", R"(^ +'%1:)", R"(--%1\[|--%1\})"},
    {"packaging/completions/ludarium-cli.fish", R"(__fish_use_subcommand -a %1 )", R"( -l %1 )"},
};

QString content(const char *path) {
    QFile file(inSources(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return QString::fromUtf8(file.readAll());
}

bool names(const QString &text, const char *pattern, const QString &name) {
    const QRegularExpression expression(QString::fromUtf8(pattern).arg(name), QRegularExpression::MultilineOption);
    EXPECT_TRUE(expression.isValid());
    return text.contains(expression);
}

TEST(Packaging, ManPageAndCompletionsNameEveryCommandAndOption) {
    const CommandLine line;
    for (const HelpFile &file : helpFiles) {
        const QString text = content(file.path);
        // A man page writes a hyphen that is to be typed as "\-", which the expression has to escape again.
        const auto written = [&](QString name) {
            return text.startsWith(QStringLiteral(".TH")) ? name.replace(u'-', QStringLiteral("\\\\-")) : name;
        };
        QStringList options = line.globalOptions();
        for (const CommandSummary &command : line.summaries()) {
            EXPECT_TRUE(names(text, file.command, written(command.name)))
                << file.path << ": " << command.name.toStdString();
            options += command.options;
        }
        for (const QString &option : options) {
            EXPECT_TRUE(names(text, file.option, written(option.mid(2)))) << file.path << ": " << option.toStdString();
        }
    }
}

} // namespace
} // namespace ludarium
