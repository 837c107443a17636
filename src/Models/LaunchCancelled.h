#pragma once

#include <exception>

namespace ludarium {

/// The user answered a question of a launch with "Cancel": nothing was started, and nothing went wrong.
class LaunchCancelled : public std::exception {
  public:
    const char *what() const noexcept override { return "cancelled"; }
};

} // namespace ludarium
