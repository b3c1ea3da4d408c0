#include <QGuiApplication>
#include <gtest/gtest.h>

// The recorder composes frames, which needs a QGuiApplication for fonts; no
// window is shown.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
