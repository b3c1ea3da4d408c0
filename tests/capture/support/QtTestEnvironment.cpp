#include "support/QtTestEnvironment.h"

#include <QTest>

#include <cstdlib>

namespace orvane::test {

namespace {
QtTestEnvironment* current = nullptr;
int argc = 1;
char arg0[] = "capture-tests";
char* argv[] = {arg0, nullptr};
}  // namespace

QtTestEnvironment* QtTestEnvironment::instance() { return current; }

void QtTestEnvironment::SetUp() {
    current = this;
    if (withDisplayServer_) {
        const QString failure = server_.start(true, splitMonitors_);
        ASSERT_TRUE(failure.isEmpty()) << failure.toStdString();
        ::setenv("DISPLAY", server_.displayName().constData(), 1);
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    } else {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    app_ = std::make_unique<QApplication>(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvaneprobe"));
}

void QtTestEnvironment::TearDown() {
    app_.reset();
    server_.stop();
    current = nullptr;
}

bool waitUntil(const std::function<bool()>& condition, int timeoutMs) {
    return QTest::qWaitFor(condition, timeoutMs);
}

}  // namespace orvane::test
