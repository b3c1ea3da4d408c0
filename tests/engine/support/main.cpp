#include <QCoreApplication>

#include <gtest/gtest.h>

// Queued calls and timers of the engine need an application object; tests
// drive its event loop instead of sleeping.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
