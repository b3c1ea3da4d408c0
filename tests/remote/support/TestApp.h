#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QDeadlineTimer>
#include <functional>

namespace orvane::test {

// One application object per test process, created on first use.
inline QCoreApplication& ensureApp() {
    static int argc = 1;
    static char name[] = "remote_tests";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = QCoreApplication::instance() ? QCoreApplication::instance()
                                                                 : new QCoreApplication(argc, argv);
    return *app;
}

// Runs the main loop until `done` holds or `timeoutMs` has passed.
inline bool waitUntil(const std::function<bool()>& done, int timeoutMs = 5000) {
    QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired()) return false;
        QEventLoop loop;
        QTimer::singleShot(5, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

// Runs the main loop for a while, for things that must not happen.
inline void spinFor(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace orvane::test
