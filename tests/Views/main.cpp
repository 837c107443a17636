#include <QGuiApplication>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(LudariumPlugin)

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
