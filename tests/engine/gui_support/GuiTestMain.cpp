#include <QGuiApplication>

#include <gtest/gtest.h>

// The pointer tests need real windows and a real pointer: a GUI application
// on the offscreen platform unless the environment names another one.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
