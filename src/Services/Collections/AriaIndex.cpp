#include "Services/Collections/AriaIndex.h"

#include "Host/SafeFiles.h"
#include "Services/Collections/TitleMatching.h"

#include <algorithm>
#include <limits>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// An integer and nothing else: no blanks, no group separators. None when it does not fit.
std::optional<qint64> strictInteger(QStringView text) {
    const QStringView digits = text.startsWith(u'-') || text.startsWith(u'+') ? text.sliced(1) : text;
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return std::nullopt;
    bool fits = false;
    const qint64 value = text.toLongLong(&fits);
    return fits ? std::optional(value) : std::nullopt;
}

bool isSizeText(QStringView text) {
    if (text.contains("iB"_L1))
        return true;
    // "500B", "3MB"
    for (qsizetype b = text.indexOf(u'B'); b >= 0; b = text.indexOf(u'B', b + 1)) {
        qsizetype digit = b - 1;
        if (digit >= 0 && (text[digit] == u'K' || text[digit] == u'M' || text[digit] == u'G'))
            --digit;
        if (digit >= 0 && text[digit].isDigit())
            return true;
    }
    return false;
}

QStringView lastComponent(QStringView path) {
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

bool isNoGame(QStringView filename) {
    return filename == "!DOSmetadata.zip"_L1 || filename == "LaunchBox.zip"_L1 || filename == "XODOSMetadata.zip"_L1 ||
           filename.contains("eXoDOS Catalog"_L1);
}

} // namespace

QString AriaIndex::parseAria2cOutput(const QString &output) {
    QStringList lines;
    QString index; // null while no entry waits for its size
    QString path;
    for (QStringView line : QStringView(output).tokenize(u'\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith("---"_L1) || line.startsWith("==="_L1))
            continue;
        const qsizetype bar = line.indexOf(u'|');
        if (bar < 0)
            continue;
        const QStringView left = line.first(bar).trimmed();
        const QStringView right = line.sliced(bar + 1);
        if (const auto number = strictInteger(left)) {
            index = QString::number(*number);
            path = right.toString();
        } else if (left.isEmpty() && !index.isNull()) {
            const QStringView size = right.trimmed();
            if (!isSizeText(size))
                continue;
            lines.append(index + u':' + size.toString() + u':' + path);
            index = QString();
        }
    }
    return lines.join(u'\n');
}

qint64 AriaIndex::parseSize(const QString &text) {
    const qsizetype open = text.indexOf(u'(');
    const qsizetype close = open < 0 ? -1 : text.indexOf(u')', open + 1);
    if (close >= 0) {
        QString exact = text.sliced(open + 1, close - open - 1);
        exact.remove(u',');
        if (const auto bytes = strictInteger(exact))
            return std::max<qint64>(*bytes, 0);
    }
    QString number = text;
    number.removeIf([](QChar c) { return c.isLetter(); });
    bool isNumber = false;
    double value = number.trimmed().toDouble(&isNumber);
    if (!isNumber || !(value > 0))
        return 0;
    const QString lower = text.toLower();
    if (lower.contains("gib"_L1) || lower.contains("gb"_L1))
        value *= 1024.0 * 1024 * 1024;
    else if (lower.contains("mib"_L1) || lower.contains("mb"_L1))
        value *= 1024.0 * 1024;
    else if (lower.contains("kib"_L1) || lower.contains("kb"_L1))
        value *= 1024.0;
    constexpr auto most = std::numeric_limits<qint64>::max();
    return value >= double(most) ? most : qint64(value);
}

void AriaIndex::parseIndex(const QString &text, CollectionType type) {
    const CollectionTypeInfo &collection = CollectionTypeInfo::of(type);
    for (QStringView line : QStringView(text).tokenize(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        const qsizetype first = line.indexOf(u':');
        const qsizetype second = first < 0 ? -1 : line.indexOf(u':', first + 1);
        if (second < 0)
            continue;
        // aria2c counts from 1; with any other number it would fetch something else or nothing.
        const auto index = strictInteger(line.first(first));
        if (!index || *index < 1)
            continue;
        const QStringView path = line.sliced(second + 1);
        const QStringView filename = lastComponent(path);
        const qsizetype extension = filename.endsWith(".zip"_L1) ? 4 : filename.endsWith(".7z"_L1) ? 3 : 0;
        if (extension == 0 || extension == filename.size() || isNoGame(filename))
            continue;
        const bool isGameData = path.contains(collection.gameDataPathComponent);
        if (path.contains(u'/') && !isGameData && !path.contains(collection.eXoPathComponent))
            continue;
        IndexEntry entry{*index,
                         path.toString(),
                         filename.toString(),
                         filename.chopped(extension).toString(),
                         parseSize(line.sliced(first + 1, second - first - 1).toString()),
                         type};
        // A download is stored under this name.
        if (!isSafeName(entry.filename))
            continue;
        const QString lower = entry.gameName.toLower();
        if (isGameData) {
            m_gameDataEntries.insert(lower, std::move(entry));
            continue;
        }
        const auto known = m_indexEntries.constFind(lower);
        const qsizetype place = known == m_indexEntries.cend() ? m_entries.size() : *known;
        if (const QString key = TitleMatching::normalize(entry.gameName); !key.isEmpty())
            m_normalizedEntries.insert(key, place);
        if (const QString key = TitleMatching::wordSetKeyOfLower(lower); !key.isEmpty())
            m_wordSetEntries.insert(key, place);
        if (place < m_entries.size()) {
            m_entries[place] = std::move(entry);
        } else {
            m_indexEntries.insert(lower, place);
            m_entries.append(std::move(entry));
        }
    }
}

const IndexEntry *AriaIndex::at(std::optional<qsizetype> position) const {
    return position ? &m_entries[*position] : nullptr;
}

namespace {

std::optional<qsizetype> find(const QHash<QString, qsizetype> &table, const QString &key) {
    const auto found = table.constFind(key);
    return found == table.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

const IndexEntry *AriaIndex::getDownloadInfo(const QString &name) const {
    return at(find(m_indexEntries, name.toLower()));
}

const IndexEntry *AriaIndex::getGameData(const QString &name) const {
    const auto found = m_gameDataEntries.constFind(name.toLower());
    return found == m_gameDataEntries.cend() ? nullptr : &*found;
}

const IndexEntry *AriaIndex::getDownloadInfoByTitle(const QString &title, bool fastOnly) const {
    const QString lower = title.toLower();
    // An empty text would begin every name below.
    if (lower.isEmpty() || m_entries.isEmpty())
        return nullptr;
    auto found = find(m_indexEntries, lower);
    if (!found)
        found = find(m_normalizedEntries, TitleMatching::normalize(title));
    if (!found)
        found = find(m_wordSetEntries, TitleMatching::wordSetKeyOfLower(lower));
    if (found || fastOnly)
        return at(found);
    return similar(title, lower);
}

} // namespace ludarium
