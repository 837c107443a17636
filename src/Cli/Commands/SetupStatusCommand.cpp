#include "Cli/CliError.h"
#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Output.h"
#include "Cli/Table.h"
#include "Host/Async.h"
#include "Services/Collections/ExoPackSetupManager.h"

#include <QFileInfo>
#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

QString yesNo(bool value) {
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

/// What lies beside the sets, by the member's name and for people.
struct Part {
    const char *key;
    QString name;
    bool SetupStatus::*flag;
};

const QList<Part> &parts() {
    static const QList<Part> list{
        {"hasUtilArchive", QStringLiteral("Utilities archive"), &SetupStatus::hasUtilArchive},
        {"utilExtracted", QStringLiteral("Utilities unpacked"), &SetupStatus::utilExtracted},
        {"hasGameData", QStringLiteral("Game data"), &SetupStatus::hasGameData},
        {"hasMagazines", QStringLiteral("Magazines"), &SetupStatus::hasMagazines},
        {"hasBooks", QStringLiteral("Books"), &SetupStatus::hasBooks},
        {"hasCatalogs", QStringLiteral("Catalogs"), &SetupStatus::hasCatalogs},
        {"hasSoundtracks", QStringLiteral("Soundtracks"), &SetupStatus::hasSoundtracks},
        {"hasVideos", QStringLiteral("Videos"), &SetupStatus::hasVideos},
    };
    return list;
}

QString packed(bool hasArchive, bool extracted) {
    return !hasArchive ? QString() : extracted ? QStringLiteral("unpacked") : QStringLiteral("packed");
}

void printAsJson(Output &output, const SetupStatus &status) {
    Json document = jsonDocument();
    document["needsSetup"] = status.needsSetup();
    Json list = Json::array();
    for (const CollectionSetupStatus &set : status.collections) {
        const ExoCollection &collection = ExoCollection::of(set.collectionType);
        Json element = Json::object();
        element["type"] = jsonText(collection.rawValue);
        element["Name"] = jsonText(collection.displayName);
        element["needsSetup"] = set.needsSetup();
        element["hasMetadataArchive"] = set.hasMetadataArchive;
        addText(element, "metadataArchiveName", set.metadataArchiveName);
        element["metadataExtracted"] = set.metadataExtracted;
        element["metadataExtractionIncomplete"] = set.metadataExtractionIncomplete;
        element["hasXOMetadata"] = set.hasXOMetadata;
        addText(element, "xoMetadataArchiveName", set.xoMetadataArchiveName);
        element["xoMetadataExtracted"] = set.xoMetadataExtracted;
        list.push_back(std::move(element));
    }
    document["sets"] = std::move(list);
    for (const Part &part : parts())
        document[part.key] = status.*part.flag;
    printJson(output, document);
}

void printAsTable(Output &output, const SetupStatus &status) {
    Table table({QStringLiteral("SET"), QStringLiteral("METADATA"), QStringLiteral("XO METADATA"),
                 QStringLiteral("NEEDS SETUP")});
    for (const CollectionSetupStatus &set : status.collections)
        table.add({ExoCollection::of(set.collectionType).displayName,
                   set.metadataExtractionIncomplete ? QStringLiteral("incomplete")
                                                    : packed(set.hasMetadataArchive, set.metadataExtracted),
                   packed(set.hasXOMetadata, set.xoMetadataExtracted), yesNo(set.needsSetup())});
    if (!status.collections.isEmpty()) {
        table.print(output);
        output.line();
    }
    FieldList fields;
    fields.add(QStringLiteral("Needs setup"), yesNo(status.needsSetup()));
    for (const Part &part : parts())
        fields.add(part.name, yesNo(status.*part.flag));
    fields.print(output);
}

class SetupStatusCommand : public Command {
  public:
    const char *name() const override { return "setup-status"; }
    const char *description() const override { return "Tell which sets the folder holds and what of them is unpacked"; }

    QCoro::Task<int> run(CommandContext &context) override {
        const QString folder = context.collectionPath();
        if (!QFileInfo(folder).isDir())
            throw CliError(QStringLiteral("There is no folder \"%1\".").arg(folder));
        auto look = [folder] { return ExoPackSetupManager().getSetupStatus(folder); };
        const SetupStatus status = co_await runOnPool(look);
        if (context.json())
            printAsJson(context.output(), status);
        else
            printAsTable(context.output(), status);
        co_return exitDone;
    }
};

} // namespace

std::unique_ptr<Command> makeSetupStatusCommand() {
    return std::make_unique<SetupStatusCommand>();
}

} // namespace ludarium
