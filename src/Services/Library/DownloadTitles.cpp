#include "Services/Library/DownloadTitles.h"

#include <QVarLengthArray>
#include <algorithm>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// Without the dots that a title begins with, and without an article of one letter behind three of them.
QString cleanTitle(const QString &title) {
    QStringView text(title);
    if (text.startsWith("..."_L1)) {
        text = text.sliced(3);
        if (text.size() >= 2 && text[0].isLetter() && text[1] == u' ')
            text = text.sliced(2);
        text = text.trimmed();
    }
    while (text.startsWith(u'.'))
        text = text.sliced(1);
    return text.toString();
}

/// "4 Foo Bar - Baz" as "Foo Bar 4 - Baz"; null when a form has another shape.
QString withNumberBehind(const QString &form) {
    const qsizetype dash = form.indexOf(" - "_L1);
    const qsizetype blank = form.indexOf(u' ');
    if (blank < 1 || dash <= blank)
        return {};
    const QStringView number = QStringView(form).first(blank);
    if (!std::all_of(number.begin(), number.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return {};
    return form.sliced(blank + 1, dash - blank - 1) + u' ' + number.toString() + form.sliced(dash);
}

} // namespace

bool forDownloadTitles(const QString &title, std::optional<int> year,
                       const std::function<bool(const QString &)> &accept) {
    const QString clean = cleanTitle(title);
    QVarLengthArray<QString, 6> forms;
    const auto form = [&](QString text) {
        if (!text.isEmpty() && !forms.contains(text))
            forms.append(std::move(text));
    };
    QString noComma = clean;
    noComma.remove(u',');
    form(clean);
    form(noComma);
    if (noComma.contains(u':')) {
        QString dashes = noComma;
        form(dashes.replace(": "_L1, " - "_L1));
        form(dashes.replace(u':', " - "_L1));
    }
    if (noComma.contains(u'&')) {
        QString words = noComma;
        form(words.replace(" & "_L1, " and "_L1));
        form(words.replace(u'&', "and"_L1));
    }
    const auto offer = [&](const QString &text) {
        if (accept(text))
            return true;
        const QString moved = withNumberBehind(text);
        return !moved.isNull() && accept(moved);
    };
    if (std::any_of(forms.begin(), forms.end(), offer))
        return true;
    if (!year)
        return false;
    const QString suffix = u" (%1)"_s.arg(*year);
    return std::any_of(forms.begin(), forms.end(), [&](const QString &text) { return offer(text + suffix); });
}

} // namespace ludarium
