#include "support/Picture.h"

#include "support/BuildFolders.h"
#include "support/DesktopFixture.h"

#include <QDir>
#include <QSet>
#include <gtest/gtest.h>

namespace ludarium::test {

void takePicture(DesktopFixture &fixture, QQuickWindow &window, const QString &name) {
    const QImage image = fixture.picture(window);
    const QString folder = inBuild("screenshots");
    QDir().mkpath(folder);
    ASSERT_TRUE(image.save(folder + QLatin1Char('/') + name + QStringLiteral(".png")));
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            colors.insert(image.pixel(x, y));
    EXPECT_GT(colors.size(), 12) << qPrintable(name) << " is all but empty";
}

} // namespace ludarium::test
