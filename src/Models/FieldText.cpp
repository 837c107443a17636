#include "Models/FieldText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ludarium {

namespace {

/// std::from_chars takes no "+"; "+-1" must stay refused.
std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c;
}

} // namespace

QString fieldText(std::string_view utf8) {
    return utf8.empty() ? QString(QLatin1String("")) : QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

bool fieldFlag(std::string_view text) {
    return std::ranges::equal(text, std::string_view("true"), {}, asciiLower);
}

std::optional<int> fieldInteger(std::string_view text) {
    text = withoutPlus(text);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<double> fieldReal(std::string_view text) {
    text = withoutPlus(text);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QByteArray searchForm(std::string_view utf8) {
    if (utf8.empty())
        return QByteArray("", 0);
    const bool ascii = std::ranges::all_of(utf8, [](char c) { return (c & 0x80) == 0; });
    if (!ascii)
        return fieldText(utf8).toLower().toUtf8();
    QByteArray lower(qsizetype(utf8.size()), Qt::Uninitialized);
    std::ranges::transform(utf8, lower.begin(), asciiLower);
    return lower;
}

} // namespace ludarium
