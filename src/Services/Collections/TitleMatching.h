#pragma once

#include <QSet>
#include <QString>
#include <QStringView>

/// How titles of games are brought near to the names of archives, which seldom are the same text. The functions up to
/// `makeWordSetKey` run for every game of a library, so they scan by hand what would be a regular expression.
namespace ludarium::TitleMatching {

/// Without `\s*\([^)]+\)$`, a last parenthesis.
QString withoutTrailingParenthesis(const QString &text);
/// Without `\s*\(\d{4}\)$`, a last year.
QString withoutTrailingYear(const QString &text);

/// Roman numerals I to X beside a blank become digits, in any case. There is no test for whole words: both the titles
/// and the names that they are compared with go through this, so "Doom in" and "doom 1n" still agree.
QString convertRomanToArabic(const QString &text);

/// Lower case, without a last parenthesis, blanks and punctuation, with Arabic digits and "and" for "&".
QString normalize(const QString &name);

/// The words of a text in lower case that are longer than one character and no articles or prepositions.
QSet<QString> extractSignificantWords(const QString &text);
/// The significant words of the lower-case name, sorted and joined by "-"; empty when there are fewer than two.
QString makeWordSetKey(const QString &name);
/// The same for a text that is in lower case already.
QString wordSetKeyOfLower(const QString &lower);

/// American spellings for British ones, and "cd" for "deluxe" and "enhanced".
QSet<QString> normalizeSpellingVariants(const QSet<QString> &words);

/// The words up to the first Roman numeral (I to XV) behind the first word; null when there is none. "Ultima VI: The
/// False Prophet" gives "Ultima VI".
QString extractSeriesPrefix(const QString &title);

} // namespace ludarium::TitleMatching
