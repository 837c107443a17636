// Any bytes as a games file and as a playlist file: nothing may crash, and what is read in parts must be what is read
// whole.

#include "FuzzCheck.h"
#include "Models/RecordEncoder.h"
#include "Models/TextPool.h"
#include "Services/Library/CollectionFile.h"
#include "Services/Library/GameRecovery.h"
#include "Services/Library/GamesSink.h"
#include "Services/Library/PlaylistsSink.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace ludarium;

namespace {

QByteArray written(GamesFileContent content) {
    content.settle();
    QByteArray text;
    for (const GamePtr &game : content.games)
        appendJson(text, *game);
    // The ids of applications without one differ from run to run.
    text += QByteArray::number(qsizetype(content.additionalApplications.size()));
    for (const AdditionalApplication &application : content.additionalApplications)
        appendJsonText(text, application.gameId + application.name + application.applicationPath);
    return text;
}

struct Outcome {
    bool wellFormed;
    GamesFileContent content;
};

Outcome readPart(const CollectionFile &file, XmlPart part, TextPool &pool) {
    GamesSink sink(pool);
    XmlPartSource source(file, std::move(part));
    const bool wellFormed = readXmlRecords(source, sink).wellFormed;
    return {wellFormed, sink.takeContent()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const int descriptor = ::memfd_create("fuzz", MFD_CLOEXEC);
    check(::ftruncate(descriptor, 0) == 0 && ::pwrite(descriptor, data, size, 0) == ssize_t(size));
    const CollectionFile file(QStringLiteral("/proc/self/fd/%1").arg(descriptor));

    TextPool pool;
    Outcome whole = readPart(file, {0, file.size(), {}, {}}, pool);
    const QByteArray wholeText = written(whole.content);
    for (const qint64 partSize : {100, 700}) {
        const std::vector<XmlPart> parts = xmlParts(file, partSize);
        bool wellFormed = true;
        GamesFileContent joined;
        for (const XmlPart &part : parts) {
            Outcome outcome = readPart(file, part, pool);
            wellFormed = wellFormed && outcome.wellFormed;
            joined.append(std::move(outcome.content));
        }
        if (wellFormed)
            check(whole.wellFormed && written(std::move(joined)) == wholeText);
    }

    XmlPartSource again(file, {0, file.size(), {}, {}});
    recoverGames(again, pool);

    PlaylistsSink playlists;
    XmlTextSource source({reinterpret_cast<const char *>(data), size});
    readXmlRecords(source, playlists);
    QByteArray text;
    for (const Playlist &playlist : playlists.takeContent().playlists)
        appendJson(text, playlist);
    return 0;
}
