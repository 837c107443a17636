#pragma once

#include <stdexcept>
#include <string>

namespace ludarium {

/// Why there is no picture. `what()` is fit for the log.
class ImageError : public std::runtime_error {
  public:
    enum class Case {
        unreadable, ///< the file system gave no bytes: perhaps they are there again later
        broken,     ///< the bytes are no picture of a known format, or a damaged one
        tooLarge,   ///< more pixels or bytes than are worth decoding
    };
    ImageError(Case kind, const std::string &text) : std::runtime_error(text), m_case(kind) {}
    Case kind() const { return m_case; }

  private:
    Case m_case;
};

} // namespace ludarium
