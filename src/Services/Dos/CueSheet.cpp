#include "Services/Dos/CueSheet.h"

#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"
#include "Services/Dos/GuestDrives.h"

#include <QDir>
#include <QFile>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// Where the file name of a "FILE" line stands in it.
struct NamePlace {
    qsizetype start = 0;
    qsizetype size = 0;
    bool quoted = false;
};

std::optional<NamePlace> fileNameIn(const QByteArray &line) {
    const QByteArray trimmed = line.trimmed();
    if (!trimmed.toUpper().startsWith("FILE "))
        return std::nullopt;
    qsizetype start = line.toUpper().indexOf("FILE ") + 5;
    while (start < line.size() && line[start] == ' ')
        ++start;
    if (start < line.size() && line[start] == '"') {
        const qsizetype end = line.indexOf('"', start + 1);
        return end < 0 ? std::nullopt : std::optional(NamePlace{start + 1, end - start - 1, true});
    }
    const qsizetype end = line.indexOf(' ', start);
    return end < 0 ? std::nullopt : std::optional(NamePlace{start, end - start, false});
}

/// The file that a sheet means: spelled as it is, in other letters, or by the last piece of a path that held on the
/// machine where the sheet was made.
QString meantFile(FolderView &view, const QString &folder, const QByteArray &name) {
    if (const QString exact = QFile::decodeName(name); exact.startsWith(u'/') && view.isFile(exact))
        return exact;
    const QString path = hostNameFrom(QByteArray(name).replace('\\', '/'));
    for (const QString &relative : {path, lastPathComponent(path)})
        if (const QString found = view.resolve(folder, relative); view.isFile(found))
            return found;
    return {};
}

} // namespace

std::optional<CueTrack> firstDataTrack(FolderView &view, const QString &cuePath) {
    const std::optional<QByteArray> text = view.read(cuePath);
    if (!text)
        return std::nullopt;
    const QString folder = parentPath(cuePath);
    CueTrack track{{}, {}, 0};
    for (const QByteArray &raw : text->split('\n')) {
        const QByteArray line = raw.trimmed();
        if (const auto place = fileNameIn(raw)) {
            if (!track.mode.isEmpty() || !track.path.isNull())
                break;
            track.path = meantFile(view, folder, raw.mid(place->start, place->size));
            continue;
        }
        const QByteArrayList words = line.simplified().toUpper().split(' ');
        if (words.value(0) == "TRACK") {
            if (!track.mode.isEmpty())
                break;
            track.mode = words.value(2);
            if (!track.mode.startsWith("MODE"))
                return std::nullopt;
        } else if (words.value(0) == "INDEX" && words.value(1).toInt() == 1) {
            const QByteArrayList time = words.value(2).split(':');
            track.firstSector =
                (time.value(0).toLongLong() * 60 + time.value(1).toLongLong()) * 75 + time.value(2).toLongLong();
            break;
        }
    }
    return track.mode.isEmpty() ? std::nullopt : std::optional(track);
}

std::optional<QByteArray> correctedCueSheet(FolderView &view, const QString &cuePath) {
    const std::optional<QByteArray> text = view.read(cuePath);
    if (!text)
        return std::nullopt;
    const QString folder = parentPath(cuePath);
    QByteArrayList lines = text->split('\n');
    bool isWrong = false;
    for (QByteArray &line : lines) {
        const auto place = fileNameIn(line);
        if (!place)
            continue;
        const QByteArray name = line.mid(place->start, place->size);
        const QString found = meantFile(view, folder, name);
        const QByteArray onDisk = QFile::encodeName(found);
        if (found.isNull() || onDisk.contains('"'))
            return std::nullopt;
        isWrong = isWrong || (name != onDisk && QFile::encodeName(folder) + '/' + name != onDisk);
        line.replace(place->start, place->size, place->quoted ? onDisk : '"' + onDisk + '"');
    }
    return isWrong ? std::optional(lines.join('\n')) : std::nullopt;
}

CorrectedDiscs correctDiscs(const QByteArray &configuration, const QString &workingDirectory, const QString &folder,
                            const QString &game, FolderView &view) {
    CorrectedDiscs result;
    QByteArrayList lines = configuration.split('\n');
    for (QByteArray &line : lines) {
        if (!dosCommandWord(line).startsWith("imgmount") || !line.toLower().contains(".cue"))
            continue;
        for (const QByteArray &word : guestArguments(line)) {
            if (!word.toLower().endsWith(".cue"))
                continue;
            const QString named = QFile::decodeName(QByteArray(word).replace("%%", "%"));
            const QString path = named.startsWith(u'/') ? named : QDir::cleanPath(childPath(workingDirectory, named));
            const auto corrected = correctedCueSheet(view, path);
            if (!corrected)
                continue;
            const QString copy =
                childPath(folder, generatedConfigName(game, u"_disc%1.cue"_s.arg(result.files.size() + 1)));
            result.files.append({copy, *corrected});
            const QByteArray quoted = '"' + word + '"';
            line.replace(line.contains(quoted) ? quoted : word, quotedHostPath(copy));
        }
    }
    result.text = result.files.isEmpty() ? configuration : lines.join('\n');
    return result;
}

} // namespace ludarium
