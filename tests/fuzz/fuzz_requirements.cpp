// Any text as a collection's list of DOSBox builds: nothing may crash, every line that was taken is found again by its
// own title, and what is found by any other text is what a plain walk over the list finds.

#include "FuzzCheck.h"
#include "Services/Dos/RequirementTable.h"

#include <QSet>
#include <QStringDecoder>
#include <functional>

using namespace ludarium;
using namespace Qt::StringLiterals;

namespace {

using Test = std::function<bool(const EmulatorRequirement &)>;

const EmulatorRequirement *first(const RequirementTable &table, const Test &test) {
    for (const EmulatorRequirement &entry : table.entries())
        if (test(entry))
            return &entry;
    return nullptr;
}

const EmulatorRequirement *walk(const RequirementTable &table, const QString &title) {
    const auto is = [](const QString &text) {
        return [text](const EmulatorRequirement &entry) { return entry.listedTitle == text; };
    };
    const auto isLower = [](const QString &text) {
        return
            [lower = text.toLower()](const EmulatorRequirement &entry) { return entry.listedTitle.toLower() == lower; };
    };
    QString cleaned = title;
    cleaned.remove(" (DOS)"_L1).remove(" (CD)"_L1).remove(" (Floppy)"_L1).remove(", The"_L1);
    QList<Test> tests{is(title), isLower(title), is(cleaned)};
    if (title.startsWith("The "_L1)) {
        const QString behind = title.sliced(4) + ", The"_L1;
        tests += {is(behind), isLower(behind)};
    }
    if (!cleaned.isEmpty())
        tests += [lower = cleaned.toLower()](const EmulatorRequirement &entry) {
            return entry.listedTitle.toLower().startsWith(lower);
        };
    for (const Test &test : tests)
        if (const EmulatorRequirement *found = first(table, test))
            return found;
    return nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytesOf(data, size));
    const RequirementTable table = RequirementTable::parse(text);

    int line = 0;
    QSet<QString> titles;
    for (const EmulatorRequirement &entry : table.entries()) {
        check(entry.line > line && !entry.listedTitle.isEmpty() && !entry.wineExecutablePath.isEmpty());
        line = entry.line;
        titles.insert(entry.listedTitle);
        check(entry.emulatorType == classifyDOSBoxVersion(entry.version));
        check(table.find(entry.listedTitle) == &entry);
    }
    const RequirementStats &stats = table.stats();
    check(titles.size() == table.entries().size() && stats.total == titles.size());
    check(stats.staging + stats.dosboxX + stats.ece + stats.vanilla + stats.custom >= stats.total);

    // The start of each line, cut at every kind of place, is a title to look for.
    for (const QStringView given : QStringView(text).split(u'\n').mid(0, 12)) {
        const QString whole = given.first(std::min<qsizetype>(given.size(), 60)).toString();
        for (const QString &title : {whole, whole.first(whole.size() / 2), u"The "_s + whole, whole + " (CD)"_L1,
                                     whole.section(u':', 0, 0).toUpper()})
            check(table.find(title) == walk(table, title));
    }
    return 0;
}
