// Any text as a download index, as what aria2c prints, and as a title to look for: nothing may crash or hang, and what
// is in an index can be found by its own name.

#include "FuzzCheck.h"
#include "Services/Collections/AriaIndex.h"
#include "Services/Collections/TitleMatching.h"

#include "Host/SafeFiles.h"

using namespace ludarium;

namespace {

void checkEntries(const AriaIndex &index) {
    for (const IndexEntry &entry : index.entries()) {
        check(entry.index >= 1 && entry.sizeBytes >= 0 && !entry.gameName.isEmpty() && isSafeName(entry.filename));
        check(!entry.sizeFormatted().isEmpty());
        const IndexEntry *found = index.getDownloadInfo(entry.gameName);
        check(found != nullptr && found->gameName.toLower() == entry.gameName.toLower());
        check(index.getDownloadInfoByTitle(entry.gameName, true) == found);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    AriaIndex index;
    index.parseIndex(text, CollectionType::eXoDOS);
    checkEntries(index);

    // The program's own form of a listing is an index, and has no line that is none.
    const QString listing = AriaIndex::parseAria2cOutput(text);
    AriaIndex listed;
    listed.parseIndex(listing, CollectionType::eXoDemoScene);
    checkEntries(listed);
    if (!listing.isEmpty())
        for (const QStringView line : QStringView(listing).tokenize(u'\n'))
            check(line.count(u':') >= 2);

    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        const QString title = line.toString();
        index.getDownloadInfoByTitle(title, false);
        check(TitleMatching::normalizeSpellingVariants(TitleMatching::extractSignificantWords(title)).size() <=
              title.size());
        check(AriaIndex::parseSize(title) >= 0);
        check(TitleMatching::withoutTrailingYear(title).size() <= title.size());
        check(TitleMatching::extractSeriesPrefix(title).size() <= title.size());
    }
    return 0;
}
