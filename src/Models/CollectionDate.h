#pragma once

#include <QDate>
#include <QDateTime>
#include <optional>
#include <string_view>

namespace ludarium {

/// A date of the collection: "1995-01-13T03:00:00", with milliseconds, "1995-01-13", "01/13/1995" or "1995". A date and
/// time in the first form is also read when anything follows it, so that the usual
/// "2021-04-21T08:02:32.2482401-05:00" gives its wall-clock time; fractions other than milliseconds and the zone are
/// ignored. The result carries the wall-clock time as Qt::UTC, which costs no zone look-up. Any other text and
/// impossible dates give no value.
std::optional<QDateTime> parseCollectionDate(std::string_view text);

/// The leading "yyyy-MM-dd" of a text.
std::optional<QDate> parseLeadingIsoDay(std::string_view text);

} // namespace ludarium
