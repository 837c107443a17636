#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <string_view>

namespace ludarium {

// How a field's text, UTF-8 without surrounding white space, becomes a value. Shared by all record decoders.

/// The text; an empty text is not null.
QString fieldText(std::string_view utf8);
/// True for "true" in any case, false for any other text.
bool fieldFlag(std::string_view text);
/// A decimal integer with optional sign; none for anything else and for numbers that do not fit.
std::optional<int> fieldInteger(std::string_view text);
/// A finite floating-point number; none for anything else.
std::optional<double> fieldReal(std::string_view text);

/// The lower-cased form that searches compare with, as UTF-8.
QByteArray searchForm(std::string_view utf8);

} // namespace ludarium
