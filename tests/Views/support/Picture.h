#pragma once

#include <QQuickWindow>
#include <QString>

namespace ludarium::test {

class DesktopFixture;

/// Draws the window into build/screenshots and fails the test when it shows hardly more than a plain area.
void takePicture(DesktopFixture &fixture, QQuickWindow &window, const QString &name);

} // namespace ludarium::test
