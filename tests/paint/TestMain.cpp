#include <QGuiApplication>
#include <gtest/gtest.h>

// Painting into images needs no window; an off-screen QGuiApplication keeps
// whatever Qt looks up (fonts, the platform) from reaching for a display.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
