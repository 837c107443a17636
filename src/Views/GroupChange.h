#pragma once

#include <functional>

namespace ludarium {

struct Host;

/// Makes a change of the platform groups. A store that refuses it has not changed, and the user is told why.
void changeGroups(Host &host, const std::function<void()> &change);

} // namespace ludarium
