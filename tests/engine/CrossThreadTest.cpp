// Other threads (the remote server's workers, capture) hop to the session
// with queued calls; these run on the session's thread at the next turn of
// its event loop.

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <gtest/gtest.h>

#include <thread>

#include "engine/StreamManager.h"
#include "support/SessionTest.h"

namespace orvane {
namespace cross_thread_test {

using test::SessionTest;

TEST_F(SessionTest, QueuedCallsByNameFromAWorkerThreadRunOnTheSessionsThread) {
    const StreamingScene target = scene(2);
    bool posted = false;
    std::thread worker([&] {
        posted = QMetaObject::invokeMethod(session.get(), "switchToScene", Qt::QueuedConnection,
                                           Q_ARG(orvane::StreamingScene, target)) &&
                 QMetaObject::invokeMethod(session.get(), "updateLive", Qt::QueuedConnection) &&
                 QMetaObject::invokeMethod(session.get(), "toggleBlurMode", Qt::QueuedConnection);
    });
    worker.join();
    ASSERT_TRUE(posted);
    EXPECT_EQ(session->activeScene()->name, "A");  // nothing ran yet

    QThread* ranOn = nullptr;
    QObject::connect(session.get(), &StreamManager::activeSceneChanged, session.get(),
                     [&] { ranOn = QThread::currentThread(); });
    QCoreApplication::processEvents();
    EXPECT_EQ(ranOn, session->thread());
    EXPECT_EQ(session->activeScene()->name, "C");
    EXPECT_EQ(session->programScene()->name, "C");
    EXPECT_TRUE(session->isBlurModeActive());
}

}  // namespace
}  // namespace orvane
