#include "Cli/TerminalText.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <unicode/uchar.h>

namespace ludarium {

namespace {

bool steersTerminal(char32_t c) {
    switch (QChar::category(c)) {
    case QChar::Other_Control: // C0, DEL, C1
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

QString visibleForm(char32_t c) {
    switch (c) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    return c < 0x100 ? QStringLiteral("\\x%1").arg(uint(c), 2, 16, QLatin1Char('0'))
                     : QStringLiteral("\\u{%1}").arg(uint(c), 4, 16, QLatin1Char('0'));
}

int characterWidth(char32_t c) {
    switch (u_charType(static_cast<UChar32>(c))) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
    case U_CONTROL_CHAR:
        return 0;
    default:
        break;
    }
    switch (u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_EAST_ASIAN_WIDTH)) {
    case U_EA_WIDE:
    case U_EA_FULLWIDTH:
        return 2;
    default:
        return 1;
    }
}

/// A character with its marks is as wide as its widest part; the emoji selector makes it two, and so do the two
/// letters of a flag.
int clusterWidth(QStringView cluster) {
    int width = 0;
    int flagLetters = 0;
    for (const char32_t c : cluster.toUcs4()) {
        width = std::max(width, characterWidth(c));
        if (c == 0xFE0F)
            width = 2;
        if (c >= 0x1F1E6 && c <= 0x1F1FF && ++flagLetters == 2)
            width = 2;
    }
    return width;
}

/// Calls `visit(begin, end, width)` for each character with its marks until it returns false.
template<typename Visit>
void forEachCluster(QStringView text, Visit visit) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    qsizetype begin = 0;
    for (qsizetype end = finder.toNextBoundary(); end > begin; end = finder.toNextBoundary()) {
        if (!visit(begin, end, clusterWidth(text.sliced(begin, end - begin))))
            return;
        begin = end;
    }
}

bool isPlainAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c < u'\x7f'; });
}

} // namespace

QString escapedForTerminal(QStringView text) {
    if (isPlainAscii(text))
        return text.toString();
    QString result;
    for (const char32_t c : text.toUcs4()) {
        if (steersTerminal(c))
            result += visibleForm(c);
        else
            result += QStringView(QChar::fromUcs4(c));
    }
    return result;
}

QString oneLine(QStringView text) {
    QString blanked = text.toString();
    for (QChar &c : blanked)
        if (c.category() == QChar::Other_Control)
            c = u' ';
    return escapedForTerminal(blanked.simplified());
}

int displayWidth(QStringView text) {
    if (isPlainAscii(text))
        return int(text.size());
    int width = 0;
    forEachCluster(text, [&](qsizetype, qsizetype, int cluster) {
        width += cluster;
        return true;
    });
    return width;
}

QString elided(const QString &text, int width) {
    if (displayWidth(text) <= width)
        return text;
    qsizetype kept = 0;
    int used = 0;
    forEachCluster(text, [&](qsizetype, qsizetype end, int cluster) {
        if (used + cluster > width - 1)
            return false;
        used += cluster;
        kept = end;
        return true;
    });
    return text.left(kept) + u'…';
}

QString padded(const QString &text, int width) {
    return text + QString(std::max(0, width - displayWidth(text)), u' ');
}

} // namespace ludarium
