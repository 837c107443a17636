// Any bytes as our version database and as the user's own, and any text as a title to look for: nothing may crash or
// hang, and what is in a database is found by its own title.

#include "FuzzCheck.h"
#include "Services/Dos/GameVersionDetector.h"
#include "Services/Dos/VersionTitles.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace ludarium;
using namespace Qt::StringLiterals;

namespace {

/// A folder that is not there.
const QString nowhere = u"/proc/self/fd/none/"_s;

/// A file of these bytes that lies in memory only.
QString fileOf(const QByteArray &bytes) {
    static const int descriptor = ::memfd_create("fuzz", MFD_CLOEXEC);
    check(::ftruncate(descriptor, 0) == 0);
    check(::pwrite(descriptor, bytes.constData(), size_t(bytes.size()), 0) == ssize_t(bytes.size()));
    return u"/proc/self/fd/%1"_s.arg(descriptor);
}

void checkMenu(const std::optional<GameVersionMenu> &menu) {
    if (!menu)
        return;
    QSet<QUuid> ids;
    for (const GameVersionOption &option : menu->options)
        ids.insert(option.id);
    check(ids.size() == menu->options.size() && menu->hasMultipleVersions == (ids.size() > 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QList<QByteArray> files = filesOf(data, size);
    const std::optional<VersionDatabase> ours = parseVersionDatabase(files.value(0));
    const std::optional<VersionDatabase> own = parseVersionDatabase(files.value(1));
    const GameVersionDetector detector({files.value(0), files.size() > 1 ? fileOf(files[1]) : QString(), {}});

    const VersionDatabase &database = detector.lookup().database();
    for (auto it = database.cbegin(); it != database.cend(); ++it) {
        const QString title = it.key();
        check(it->isUsersOwn ? own && own->contains(title) : ours && ours->contains(title));
        check(detector.lookup().find(title) == title);
        const std::optional<GameVersionMenu> menu = detector.detectVersions(title, nowhere + u"folder"_s);
        check(title.isEmpty() || menu.has_value());
        checkMenu(menu);
        check(detector.lookup().searchKeys(title, u"Name (1990)"_s).value(0) ==
              (title.isEmpty() ? u"Name (1990)"_s : title));
    }
    check(own.value_or(VersionDatabase()).size() <= database.size());
    check(detector.mt32NormalizedTitles().size() <= database.size());

    for (const QByteArray &line : files.last().split('\n').mid(0, 6)) {
        const QString title = QString::fromUtf8(line);
        checkMenu(detector.detectVersions(title, nowhere + title));
        const VersionTitles::YearStripped stripped = VersionTitles::stripYear(title);
        check(stripped.text.size() + (stripped.year.isNull() ? 0 : 6) <= title.size());
        const QString normalized = VersionTitles::normalizeTitle(title);
        check(VersionTitles::normalizeTitle(normalized).size() <= normalized.size());
        check(VersionTitles::simplifySeriesTitle(title).size() <= title.size() + 3 * title.count(u'1'));
    }
    return 0;
}
