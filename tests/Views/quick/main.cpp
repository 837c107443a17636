#include "quick/QuickSetup.h"

#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(LudariumPlugin)

int main(int argc, char **argv) {
    QTEST_SET_MAIN_SOURCE_PATH
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    ludarium::test::QuickSetup setup;
    return quick_test_main_with_setup(argc, argv, "ludarium", nullptr, &setup);
}
