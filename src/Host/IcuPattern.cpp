#include "Host/IcuPattern.h"

#include <unicode/uregex.h>

namespace ludarium {

namespace {

// ICU's unit, on the order of a millisecond; an honest title takes none of them.
constexpr int32_t stepLimit = 50;
constexpr int32_t stackLimit = 1 << 20; // bytes

struct Closer {
    void operator()(URegularExpression *expression) const { uregex_close(expression); }
};
using Expression = std::unique_ptr<URegularExpression, Closer>;

QString group(URegularExpression *expression, const QString &text, int32_t number) {
    UErrorCode status = U_ZERO_ERROR;
    const int32_t start = uregex_start(expression, number, &status);
    const int32_t end = uregex_end(expression, number, &status);
    return U_FAILURE(status) || start < 0 ? QString() : text.sliced(start, end - start);
}

} // namespace

struct IcuPattern::Compiled {
    Expression expression;

    /// The expression itself keeps the text and the place of a search, so each search has one of its own.
    Expression over(const QString &text) const {
        UErrorCode status = U_ZERO_ERROR;
        Expression search(uregex_clone(expression.get(), &status));
        uregex_setTimeLimit(search.get(), stepLimit, &status);
        uregex_setStackLimit(search.get(), stackLimit, &status);
        uregex_setText(search.get(), reinterpret_cast<const UChar *>(text.utf16()), int32_t(text.size()), &status);
        return U_FAILURE(status) ? Expression() : std::move(search);
    }
};

std::optional<IcuPattern> IcuPattern::compile(const QString &pattern, Case sensitivity) {
    UErrorCode status = U_ZERO_ERROR;
    const uint32_t flags = sensitivity == Case::Insensitive ? UREGEX_CASE_INSENSITIVE : 0;
    Expression expression(uregex_open(reinterpret_cast<const UChar *>(pattern.utf16()), int32_t(pattern.size()), flags,
                                      nullptr, &status));
    if (U_FAILURE(status))
        return std::nullopt;
    return IcuPattern(std::make_shared<const Compiled>(Compiled{std::move(expression)}));
}

IcuPattern::IcuPattern(const QString &pattern, Case sensitivity) {
    const std::optional<IcuPattern> compiled = compile(pattern, sensitivity);
    Q_ASSERT(compiled);
    if (compiled)
        m_compiled = compiled->m_compiled;
}

std::optional<IcuPattern::Match> IcuPattern::find(const QString &text) const {
    const Expression search = m_compiled ? m_compiled->over(text) : Expression();
    UErrorCode status = U_ZERO_ERROR;
    if (!search || !uregex_find(search.get(), 0, &status) || U_FAILURE(status))
        return std::nullopt;
    Match match;
    match.start = uregex_start(search.get(), 0, &status);
    match.length = uregex_end(search.get(), 0, &status) - match.start;
    const int32_t count = uregex_groupCount(search.get(), &status);
    for (int32_t number = 0; number <= count; ++number)
        match.groups.append(group(search.get(), text, number));
    return match;
}

QString IcuPattern::replaceAll(const QString &text, const QString &replacement) const {
    const Expression search = m_compiled ? m_compiled->over(text) : Expression();
    if (!search)
        return text;
    QString result;
    qsizetype behind = 0;
    UErrorCode status = U_ZERO_ERROR;
    while (uregex_findNext(search.get(), &status) && U_SUCCESS(status)) {
        const int32_t start = uregex_start(search.get(), 0, &status);
        result += QStringView(text).sliced(behind, start - behind);
        result += replacement;
        behind = uregex_end(search.get(), 0, &status);
    }
    result += QStringView(text).sliced(behind);
    return result;
}

} // namespace ludarium
