#include "Views/TitleArt.h"

#include <QStringList>

namespace ludarium {

namespace {

/// First letter or digit of a word, upper case; also of characters that take two units.
QString initial(const QString &word) {
    for (const char32_t c : word.toUcs4())
        if (QChar::isLetterOrNumber(c)) {
            const char32_t upper = QChar::toUpper(c);
            return QString::fromUcs4(&upper, 1);
        }
    return {};
}

} // namespace

QString titleInitials(const QString &title) {
    QStringList letters;
    QString article;
    const QStringList words = title.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const QString letter = initial(word);
        if (letter.isEmpty())
            continue;
        const bool isArticle = letters.isEmpty() && (word.compare(QLatin1StringView("the"), Qt::CaseInsensitive) == 0 ||
                                                     word.compare(QLatin1StringView("a"), Qt::CaseInsensitive) == 0 ||
                                                     word.compare(QLatin1StringView("an"), Qt::CaseInsensitive) == 0);
        if (isArticle && article.isEmpty()) {
            article = letter;
            continue;
        }
        letters.append(letter);
        if (letters.size() == 2)
            break;
    }
    if (letters.isEmpty())
        return article.isEmpty() ? QStringLiteral("?") : article;
    return letters.join(QString());
}

double titleHue(const QString &title) {
    // FNV-1a: qHash differs from run to run.
    quint32 hash = 2166136261u;
    for (const char byte : title.toUtf8())
        hash = (hash ^ quint8(byte)) * 16777619u;
    return (hash >> 8) % 360 / 360.0;
}

} // namespace ludarium
