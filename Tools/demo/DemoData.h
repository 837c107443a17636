#pragma once

namespace ludarium::demo {

/// The embedded collection: a binary Qt resource, to be registered with QResource.
const unsigned char *demoData();

} // namespace ludarium::demo
