#include "Services/Runners/ExtrasManager.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/ProcessRunner.h"
#include "Host/SafeFiles.h"
#include "Services/Runners/CollectionDocument.h"

#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

struct TypeRow {
    ExtraType type;
    QStringList extensions;
};

/// Tested in this order.
const QList<TypeRow> &typeTable() {
    static const QList<TypeRow> table{
        {ExtraType::document, {u"pdf"_s, u"doc"_s, u"docx"_s, u"txt"_s, u"rtf"_s, u"htm"_s, u"html"_s, u"md"_s}},
        {ExtraType::image, {u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"bmp"_s, u"tiff"_s, u"tif"_s, u"webp"_s}},
        {ExtraType::video,
         {u"mp4"_s, u"avi"_s, u"mkv"_s, u"mov"_s, u"wmv"_s, u"flv"_s, u"webm"_s, u"mpg"_s, u"mpeg"_s}},
        {ExtraType::audio,
         {u"mp3"_s, u"wav"_s, u"flac"_s, u"ogg"_s, u"m4a"_s, u"aac"_s, u"wma"_s, u"mid"_s, u"midi"_s}},
        {ExtraType::hint, {u"uhs"_s}},
        {ExtraType::launcher, {u"bat"_s, u"com"_s, u"exe"_s, u"cmd"_s}},
        {ExtraType::archive, {u"zip"_s, u"rar"_s, u"7z"_s, u"tar"_s, u"gz"_s}},
    };
    return table;
}

const QStringList &manualExtensions() {
    static const QStringList list{u"pdf"_s, u"txt"_s, u"doc"_s, u"docx"_s, u"htm"_s, u"html"_s,
                                  u"PDF"_s, u"TXT"_s, u"DOC"_s, u"DOCX"_s, u"HTM"_s, u"HTML"_s};
    return list;
}

ExtraItem itemOf(const QFileInfo &file, ExtraType type) {
    ExtraItem item;
    item.url = file.filePath();
    item.name = file.fileName();
    item.type = type;
    item.size = file.size();
    return item;
}

std::optional<ExtraItem> manualFromManualsFolder(const Game &game, const QString &collection) {
    if (!game.manualPath.isEmpty())
        if (const auto path = pathInside(collection, game.manualPath); path && QFileInfo(*path).isFile())
            return itemOf(QFileInfo(*path), ExtraType::manual);
    QStringList names{game.title};
    if (game.releaseYear)
        names.append(u"%1 (%2)"_s.arg(game.title, QString::number(*game.releaseYear)));
    for (const QString &name : names)
        for (const QString &extension : manualExtensions()) {
            const auto path = pathInside(collection, {u"Manuals"_s, game.platform, name + u'.' + extension});
            if (path && QFileInfo(*path).isFile())
                return itemOf(QFileInfo(*path), ExtraType::manual);
        }
    return {};
}

ExtrasManager::Extras scanExtrasFolder(const QString &folder, const QString &collection, const std::stop_token &stop) {
    ExtrasManager::Extras extras;
    QDirIterator files(folder, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (files.hasNext() && !stop.stop_requested()) {
        files.next();
        const QFileInfo file = files.fileInfo();
        // A link may lead to any file of the machine.
        if (file.isSymLink() && !CollectionDocument::isInside(file.filePath(), collection))
            continue;
        const ExtraType type = extraTypeOf(file.fileName());
        extras[type].append(itemOf(file, type));
    }
    for (QList<ExtraItem> &items : extras)
        std::stable_sort(items.begin(), items.end(),
                         [](const ExtraItem &a, const ExtraItem &b) { return a.name < b.name; });
    return extras;
}

/// zipinfo takes the archive's own path for a pattern.
QString withoutPatterns(const QString &path) {
    QString literal;
    for (const QChar c : path)
        literal += c == u'[' || c == u'*' || c == u'?' ? u"[%1]"_s.arg(c) : QString(c);
    return literal;
}

} // namespace

QString extraTypeText(ExtraType type) {
    switch (type) {
    case ExtraType::manual:
        return u"manual"_s;
    case ExtraType::document:
        return u"document"_s;
    case ExtraType::image:
        return u"image"_s;
    case ExtraType::video:
        return u"video"_s;
    case ExtraType::audio:
        return u"audio"_s;
    case ExtraType::hint:
        return u"hint"_s;
    case ExtraType::launcher:
        return u"launcher"_s;
    case ExtraType::archive:
        return u"archive"_s;
    case ExtraType::other:
        return u"other"_s;
    }
    Q_UNREACHABLE();
}

ExtraType extraTypeOf(const QString &fileName) {
    const QString extension = QFileInfo(fileName).suffix().toLower();
    for (const TypeRow &row : typeTable())
        if (row.extensions.contains(extension))
            return row.type;
    return ExtraType::other;
}

const QSet<QString> &ExtrasManager::audioExtensions() {
    static const QSet<QString> set{u"mp3"_s, u"wav"_s, u"flac"_s, u"ogg"_s, u"m4a"_s, u"aac"_s, u"wma"_s};
    return set;
}

std::optional<QString> ExtrasManager::getExtrasURL(const Game &game, const QString &collection) {
    if (game.applicationPath.isEmpty())
        return {};
    QString path = game.applicationPath;
    path.replace(u'\\', u'/');
    const qsizetype lastPiece = path.lastIndexOf(u'/') + 1;
    if (path.indexOf(u'.', lastPiece) >= 0)
        path.truncate(lastPiece);
    const auto folder = pathInside(collection, path + u"/Extras"_s);
    return folder && QFileInfo(*folder).isDir() ? folder : std::nullopt;
}

QCoro::Task<ExtrasManager::Extras> ExtrasManager::getExtras(GamePtr game, QString collection, std::stop_token stop) {
    ExtrasManager self = *this; // which may be gone when the answers come
    const auto work = [game, collection, stop] {
        Extras found;
        if (const auto folder = getExtrasURL(*game, collection))
            found = scanExtrasFolder(*folder, collection, stop);
        if (auto manual = manualFromManualsFolder(*game, collection))
            found[ExtraType::manual].append(*std::move(manual));
        return found;
    };
    Extras extras = co_await runOnPool(work);
    extras.remove(ExtraType::launcher);
    const QList<ExtraItem> packed = extras.take(ExtraType::archive);
    QList<ExtraItem> archives;
    for (ExtraItem item : packed) {
        const QString name = item.name.toLower();
        bool isMusic = name.contains(u"soundtrack"_s);
        if (!isMusic && name.endsWith(u".zip"_s) && !stop.stop_requested())
            isMusic = co_await self.zipContainsAudio(item.url, stop);
        if (isMusic) {
            item.type = ExtraType::audio;
            extras[ExtraType::audio].append(item);
        } else {
            archives.append(item);
        }
    }
    if (!archives.isEmpty())
        extras.insert(ExtraType::archive, archives);
    co_return extras;
}

QCoro::Task<bool> ExtrasManager::zipContainsAudio(QString path, std::stop_token stop) {
    ProcessSpec spec;
    spec.program = m_host.paths.which(u"zipinfo"_s);
    spec.arguments = {u"-1"_s, withoutPatterns(path)};
    if (spec.program.isEmpty())
        co_return false;
    ProcessResult result;
    try {
        result = co_await m_host.processes.run(spec, stop);
    } catch (const ProcessError &error) {
        Log::debug(u"Archive not listed: %1: %2"_s.arg(path, QString::fromUtf8(error.what())));
        co_return false;
    }
    for (const QByteArray &line : result.standardOutput.split('\n'))
        if (audioExtensions().contains(QFileInfo(QString::fromUtf8(line.trimmed())).suffix().toLower()))
            co_return true;
    co_return false;
}

} // namespace ludarium
