#include "Cli/Command.h"
#include "Cli/CommandContext.h"
#include "Cli/CommandOptions.h"
#include "Cli/Commands/Commands.h"
#include "Cli/JsonText.h"
#include "Cli/Table.h"
#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

const QStringList &facetNames() {
    static const QStringList names{QStringLiteral("genres"), QStringLiteral("developers"), QStringLiteral("publishers"),
                                   QStringLiteral("series"), QStringLiteral("years")};
    return names;
}

struct Facet {
    QString name;
    QStringList values;
    Json json;
};

QList<Facet> facetsOf(const MetadataIndexes &metadata, const QString &wanted) {
    QStringList years;
    for (const int year : metadata.years)
        years << QString::number(year);
    const QStringList *lists[] = {&metadata.genres, &metadata.developers, &metadata.publishers, &metadata.series,
                                  &years};
    QList<Facet> result;
    for (qsizetype i = 0; i < facetNames().size(); ++i) {
        const QString name = facetNames()[i];
        if (wanted.isNull() || wanted == name)
            result.append({name, *lists[i], lists[i] == &years ? Json(metadata.years) : jsonTexts(*lists[i])});
    }
    return result;
}

class FacetsCommand : public Command {
  public:
    const char *name() const override { return "facets"; }
    const char *description() const override { return "List the genres, developers, publishers, series and years"; }

    void declare(CommandOptions &options) override {
        options.choiceArgument("FACET", m_facet, facetNames(), "One of them alone");
    }

    QCoro::Task<int> run(CommandContext &context) override {
        const GameLibrary *library = co_await context.loadLibraryAsSeen();
        const QList<Facet> facets = facetsOf(library->metadata(), m_facet);
        if (context.json()) {
            Json document = jsonDocument();
            // "Series" is the field of a game.
            for (const Facet &facet : facets)
                document[facet.name == u"series" ? "seriesNames" : facet.name.toStdString()] = facet.json;
            printJson(context.output(), document);
            co_return exitDone;
        }
        Table table({QStringLiteral("FACET"), QStringLiteral("VALUE")}, 1);
        for (const Facet &facet : facets)
            for (const QString &value : facet.values)
                table.add({facet.name, value});
        table.print(context.output());
        co_return exitDone;
    }

  private:
    QString m_facet;
};

} // namespace

std::unique_ptr<Command> makeFacetsCommand() {
    return std::make_unique<FacetsCommand>();
}

} // namespace ludarium
