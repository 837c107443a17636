#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace ludarium {

/// Offers the spellings under which a game may be in the download index, each once, until `accept` takes one.
/// Returns whether it did.
bool forDownloadTitles(const QString &title, std::optional<int> year,
                       const std::function<bool(const QString &)> &accept);

} // namespace ludarium
