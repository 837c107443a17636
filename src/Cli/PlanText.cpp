#include "Cli/PlanText.h"

#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Cli/TerminalText.h"
#include "Models/Game.h"
#include "Models/LaunchPlan.h"

namespace ludarium {

namespace {

QString emulatorText(const LaunchPlan &plan) {
    if (plan.flavour.isEmpty())
        return plan.emulator;
    if (plan.flavour.startsWith(plan.emulator))
        return plan.flavour;
    return QStringLiteral("%1 (%2)").arg(plan.emulator, plan.flavour);
}

/// One argument a line, quoted where a reader could not tell where it begins or ends.
QString argumentLines(const QStringList &arguments) {
    QStringList lines;
    for (const QString &argument : arguments)
        lines << (argument.isEmpty() || argument.contains(u' ') ? u'\'' + argument + u'\'' : argument);
    return lines.join(u'\n');
}

/// Whether the launch was seen to lead to a program.
QString proofText(const LaunchProof &proof) {
    const QString program = proof.program.isEmpty() ? QStringLiteral("a program") : proof.program;
    switch (proof.verdict) {
    case LaunchProof::Verdict::found:
        return proof.detail.isEmpty() ? QStringLiteral("starts %1").arg(program)
                                      : QStringLiteral("starts %1\n%2").arg(program, proof.detail);
    case LaunchProof::Verdict::missing:
        return proof.program.isEmpty() ? proof.detail : QStringLiteral("%1 is %2").arg(program, proof.detail);
    case LaunchProof::Verdict::unknown:
        return proof.detail.isEmpty() ? QString() : QStringLiteral("not known: %1").arg(proof.detail);
    }
    return {};
}

void printFile(Output &output, const GeneratedFile &file) {
    output.line();
    output.line(escapedForTerminal(file.path) +
                    (file.executable ? QStringLiteral(" (executable):") : QStringLiteral(":")),
                Output::Style::strong);
    QString text = QString::fromUtf8(file.content);
    if (text.endsWith(u'\n'))
        text.chop(1);
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        output.line(line.isEmpty() ? QString() : QStringLiteral("  ") + escapedForTerminal(line));
    }
}

} // namespace

void printLaunchPlan(Output &output, const Game &game, const LaunchPlan &plan) {
    FieldList fields;
    fields.add(QStringLiteral("Game"), game.title);
    fields.add(QStringLiteral("Route"), plan.route);
    fields.add(QStringLiteral("Emulator"), emulatorText(plan));
    fields.add(QStringLiteral("Program"), plan.program);
    fields.add(QStringLiteral("Arguments"), argumentLines(plan.arguments));
    fields.add(QStringLiteral("Working directory"), plan.workingDirectory);
    fields.add(QStringLiteral("Proof"), proofText(plan.proof));
    fields.add(QStringLiteral("Before"), plan.preparations.join(u'\n'));
    fields.print(output);
    if (!plan.decisions.isEmpty()) {
        output.line();
        output.line(QStringLiteral("DECISIONS"), Output::Style::strong);
        FieldList decisions;
        for (const LaunchDecision &decision : plan.decisions)
            decisions.add(decision.subject, decision.choice + u'\n' + decision.reason);
        decisions.print(output);
    }
    for (const GeneratedFile &file : plan.files)
        printFile(output, file);
}

} // namespace ludarium
