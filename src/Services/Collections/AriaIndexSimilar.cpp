// The walk through a whole index for a title that no hash look-up finds.

#include "Host/AppLogger.h"
#include "Services/Collections/AriaIndex.h"
#include "Services/Collections/TitleMatching.h"

#include <algorithm>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

struct BaseTitle {
    QString plain;
    QString normalized;
};

BaseTitle baseTitle(const QString &title) {
    BaseTitle base;
    base.plain =
        TitleMatching::convertRomanToArabic(TitleMatching::withoutTrailingParenthesis(title)).toLower().trimmed();
    base.normalized = base.plain;
    base.normalized.replace(u':', u'-').replace("  "_L1, " "_L1);
    base.normalized = base.normalized.trimmed();
    return base;
}

void logMatch(const QString &kind, const QString &title, const IndexEntry &entry) {
    Log::info(u"%1: '%2' matched '%3'"_s.arg(kind, title, entry.gameName));
}

} // namespace

const IndexEntry *AriaIndex::similar(const QString &title, const QString &lower) const {
    const QString withYear = lower + " ("_L1;
    const QString withPoint = lower + u'.';
    for (const IndexEntry &entry : m_entries) {
        const QString key = entry.gameName.toLower();
        if (key.startsWith(withYear) || key.startsWith(withPoint) || lower.startsWith(key + u' '))
            return &entry;
    }

    if (const BaseTitle base = baseTitle(title); !base.normalized.isEmpty()) {
        for (const IndexEntry &entry : m_entries) {
            const BaseTitle other = baseTitle(entry.gameName);
            if (other.plain == base.plain) {
                logMatch(u"Base title match"_s, title, entry);
                return &entry;
            }
            if (other.normalized == base.normalized) {
                logMatch(u"Normalized base title match"_s, title, entry);
                return &entry;
            }
        }
    }

    if (const QString series = TitleMatching::extractSeriesPrefix(title).toLower(); !series.isEmpty()) {
        for (const IndexEntry &entry : m_entries) {
            const QString key = entry.gameName.toLower();
            if (!key.startsWith(series) || key.size() == series.size())
                continue;
            const QChar next = key[series.size()];
            if (next == u' ' || next == u'-' || next == u':') {
                logMatch(u"Series prefix match"_s, title, entry);
                return &entry;
            }
        }
    }

    const QSet<QString> words = TitleMatching::extractSignificantWords(lower);
    if (words.size() < 3)
        return nullptr;
    const QSet<QString> variants = TitleMatching::normalizeSpellingVariants(words);
    const IndexEntry *best = nullptr;
    double bestScore = 0;
    for (const IndexEntry &entry : m_entries) {
        const QSet<QString> other = TitleMatching::extractSignificantWords(entry.gameName.toLower());
        const double size = double(other.size());
        if (other.size() < 2 || size / double(words.size()) < 0.5)
            continue;
        const QSet<QString> otherVariants = TitleMatching::normalizeSpellingVariants(other);
        const double common = double(std::count_if(variants.begin(), variants.end(),
                                                   [&](const QString &word) { return otherVariants.contains(word); }));
        if (common / size < 0.7)
            continue;
        const double score = (common / size + common / double(words.size())) * 0.5;
        if (score > bestScore) {
            bestScore = score;
            best = &entry;
        }
    }
    if (best != nullptr)
        logMatch(u"Partial word-set match (score: %1)"_s.arg(bestScore, 0, 'f', 2), title, *best);
    return best;
}

} // namespace ludarium
