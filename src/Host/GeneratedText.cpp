#include "Host/SafeFiles.h"

#include <algorithm>

namespace ludarium {

QString singleLine(const QString &text) {
    QString line = text;
    for (QChar &character : line) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return line;
}

QString shellQuotedText(const QString &text) {
    QString quoted;
    quoted.reserve(text.size());
    for (const QChar character : singleLine(text)) {
        if (character == u'\\' || character == u'"' || character == u'$' || character == u'`')
            quoted += u'\\';
        quoted += character;
    }
    return quoted;
}

QString configurationValueProblem(const QByteArray &value, bool isPath) {
    if (value.contains('\r') || value.contains('\n'))
        return QStringLiteral("it holds a line break");
    if (value.contains('\0'))
        return QStringLiteral("it holds a NUL character");
    if (isPath && value.contains('"'))
        return QStringLiteral("it holds a double quote");
    return {};
}

bool isSafeConfigurationKey(const QString &key) {
    return !key.isEmpty() && std::all_of(key.cbegin(), key.cend(), [](QChar character) {
        const char16_t c = character.unicode();
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_' ||
               c == u'.';
    });
}

} // namespace ludarium
