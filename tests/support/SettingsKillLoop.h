#pragma once

#include <QString>

namespace ludarium::test {

/// Lets two processes write the settings in `folder`, kills both at a moment that `seed` decides, and checks the
/// store against what they had been told was kept; `rounds` times on the same store.
void runSettingsKillLoop(const QString &folder, int rounds, unsigned seed);

} // namespace ludarium::test
