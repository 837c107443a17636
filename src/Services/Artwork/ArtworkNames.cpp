#include "Services/Artwork/ArtworkNames.h"

#include "Host/SafeFiles.h"

#include <QFileInfo>

namespace ludarium::ArtworkNames {

namespace {

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QString replaced(QString text, const QString &characters, char by) {
    for (QChar &c : text)
        if (characters.contains(c))
            c = QLatin1Char(by);
    return text;
}

void dropEmpty(QStringList &names) {
    names.removeIf([](const QString &name) { return name.isEmpty(); });
}

} // namespace

const QStringList &imageExtensions() {
    static const QStringList list = words("png jpg jpeg gif webp");
    return list;
}

const QStringList &videoExtensions() {
    static const QStringList list = words("mp4 mkv avi webm mov");
    return list;
}

const QStringList &manualExtensions() {
    static const QStringList list = words("pdf txt doc docx htm html");
    return list;
}

const QStringList &musicFileExtensions() {
    static const QStringList list = words("mp3 ogg flac wav m4a s3m mod xm it");
    return list;
}

const QStringList &musicFolderExtensions() {
    static const QStringList list = words("mp3 ogg flac wav m4a s3m");
    return list;
}

const QStringList &trackExtensions() {
    static const QStringList list = words("mp3 ogg flac wav m4a aac s3m mod xm it");
    return list;
}

QString lowerExtension(const QString &fileName) {
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : fileName.mid(dot + 1).toLower();
}

QString composed(const QString &name) {
    return name.normalized(QString::NormalizationForm_C);
}

QString folded(const QString &name) {
    return composed(name.toLower());
}

QString safeName(QString name) {
    static const QString forbidden = QStringLiteral(":/\\?%*|\"<>");
    return replaced(std::move(name), forbidden, '_');
}

QString normalizeForSearch(const QString &text) {
    const QString lower = folded(text);
    QString result;
    result.reserve(lower.size());
    for (const QChar c : lower)
        if (c.isLetterOrNumber())
            result.append(c);
    return result;
}

QStringList imageCandidates(const Game &game) {
    // -00 is what some tools number from; it is the last choice all the same.
    static const QStringList numbers = words("-01 -02 -00");
    const QString san = replaced(game.title, QStringLiteral(":'"), '_');
    const bool differs = san != game.title;
    QStringList names;
    for (const QString &number : numbers)
        names.append(game.title + number);
    if (differs)
        for (const QString &number : numbers)
            names.append(san + number);
    names.append(game.title);
    if (differs)
        names.append(san);
    names.append(game.gameFolderName());
    if (const QStringList pieces = pathComponents(game.applicationPath); !pieces.isEmpty())
        names.append(QFileInfo(pieces.last()).completeBaseName());
    dropEmpty(names);
    return names;
}

QStringList mediaCandidates(const Game &game) {
    QStringList names{titleWithArticleMovedAndYear(game), titleWithYear(game), moveArticleToEnd(game.title), game.title,
                      game.gameFolderName()};
    dropEmpty(names);
    return names;
}

QStringList galleryPrefixes(const Game &game) {
    const QString prefix = composed(game.title) + QLatin1Char('-');
    QStringList prefixes{prefix, replaced(prefix, QStringLiteral(":"), '_'),
                         replaced(prefix, QStringLiteral(":/"), '-')};
    prefixes.removeDuplicates();
    return prefixes;
}

QString moveArticleToEnd(const QString &title) {
    static const QStringList articles = words("The A An");
    for (const QString &article : articles)
        if (title.startsWith(article + QLatin1Char(' ')))
            return QStringLiteral("%1, %2").arg(QStringView(title).mid(article.size()).trimmed(), article);
    return {};
}

QString titleWithYear(const Game &game) {
    return game.releaseYear ? QStringLiteral("%1 (%2)").arg(game.title).arg(*game.releaseYear) : QString();
}

QString titleWithArticleMovedAndYear(const Game &game) {
    const QString moved = moveArticleToEnd(game.title);
    return moved.isNull() || !game.releaseYear ? QString()
                                               : QStringLiteral("%1 (%2)").arg(moved).arg(*game.releaseYear);
}

} // namespace ludarium::ArtworkNames
