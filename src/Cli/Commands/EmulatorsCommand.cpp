#include "App/Composition.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Services/Dos/DosBoxProbe.h"
#include "Services/Emulators/EmulatorManager.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

struct Found {
    QString name;
    QString path;    ///< null when not installed
    QString flavour; ///< build and version; null when not probed
};

bool isDosBox(EmulatorProgram program) {
    return program == EmulatorProgram::dosbox || program == EmulatorProgram::dosboxX;
}

QCoro::Task<QList<Found>> findAll(Host &host, EmulatorManager &emulators) {
    co_await emulators.checkEmulatorStatus();
    QList<Found> result;
    for (int i = int(EmulatorProgram::dosbox); i <= int(EmulatorProgram::lime3ds); ++i) {
        const auto program = EmulatorProgram(i);
        const EmulatorStatus status = emulators.status(program);
        Found found;
        found.name = emulatorProgramName(program);
        if (status.state == EmulatorStatus::State::installed)
            found.path = status.path;
        if (!found.path.isNull() && isDosBox(program))
            found.flavour = (co_await probeDosBox(host, found.path)).text();
        result << found;
    }
    co_return result;
}

class EmulatorsCommand : public Command {
  public:
    const char *name() const override { return "emulators"; }
    const char *description() const override { return "List the emulators and where they are"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const QList<Found> programs = co_await findAll(context.host(), context.composition().emulators());
        if (context.json()) {
            JsonList list(context.output(), "emulators");
            for (const Found &program : programs) {
                Json element = Json::object();
                element["Name"] = jsonText(program.name);
                element["installed"] = !program.path.isNull();
                addText(element, "path", program.path);
                addText(element, "flavour", program.flavour);
                list.add(element);
            }
            list.finish();
            co_return exitDone;
        }
        Table table({QStringLiteral("EMULATOR"), QStringLiteral("PATH"), QStringLiteral("VERSION")}, 1);
        for (const Found &program : programs) {
            if (program.path.isNull())
                table.addFaint({program.name, QStringLiteral("not installed")});
            else
                table.add({program.name, program.path, program.flavour});
        }
        table.print(context.output());
        co_return exitDone;
    }
};

} // namespace

std::unique_ptr<Command> makeEmulatorsCommand() {
    return std::make_unique<EmulatorsCommand>();
}

} // namespace ludarium
