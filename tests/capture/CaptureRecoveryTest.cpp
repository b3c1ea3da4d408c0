// A capture that fails is a state the console shows and recovers from:
// tried again with growing delays and at once when the targets change,
// logged when the failure begins and when it ends, and never restarted
// from inside its own failure notice.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <atomic>

#include "capture/CaptureHub.h"
#include "capture/CaptureRetry.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/ScreenCaptureViewModel.h"
#include "capture/SourceCaptures.h"
#include "support/FakeCaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace capture_recovery_test {

using namespace std::chrono_literals;

int countOf(const std::string& text, const std::string& needle) {
    int count = 0;
    for (auto at = text.find(needle); at != std::string::npos; at = text.find(needle, at + needle.size())) ++count;
    return count;
}

Source screenSource(std::optional<std::uint32_t> id) {
    Source s;
    s.type = SourceType::screen;
    s.configuration.screenId = id;
    return s;
}

// ------------------------------------------------------------ the delays

TEST(CaptureRetry, DelaysDoubleFromOneSecondToThirty) {
    const std::vector<std::chrono::milliseconds> expected{1s, 2s, 4s, 8s, 16s, 30s, 30s, 30s};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(CaptureRetry::delayAfter(static_cast<int>(i) + 1), expected[i]) << "failure " << i + 1;
    EXPECT_EQ(CaptureRetry::delayAfter(0), 1s);
    EXPECT_EQ(CaptureRetry::delayAfter(1000000), 30s);
}

TEST(CaptureRetry, AttemptsOnlyFromItsTimerAndSoonWhenAsked) {
    int attempts = 0;
    CaptureRetry retry([&] { ++attempts; });
    retry.retrySoon();  // nothing waits: nothing to bring forward
    retry.scheduleAfterFailure();
    EXPECT_EQ(attempts, 0) << "never inside the caller";
    EXPECT_TRUE(retry.isWaiting());
    EXPECT_EQ(retry.pendingDelay(), 1s);
    retry.scheduleAfterFailure();
    EXPECT_EQ(retry.pendingDelay(), 2s);
    EXPECT_EQ(retry.failureCount(), 2);

    retry.retrySoon();
    EXPECT_EQ(attempts, 0) << "never inside the caller";
    ASSERT_TRUE(test::waitUntil([&] { return attempts == 1; }, 1000)) << "a two-second wait brought forward";

    retry.scheduleAfterFailure();
    retry.reset();
    EXPECT_FALSE(retry.isWaiting());
    EXPECT_EQ(retry.failureCount(), 0);
    test::waitUntil([] { return false; }, 200);
    EXPECT_EQ(attempts, 1);
}

// ------------------------------------------------------------ the shared capture

TEST(SharedCaptureFailure, AGrabThatKeepsFailingEndsTheCapture) {
    test::FakeCaptureBackend backend;
    backend.displayList = {{71, 320, 240, "Main Display", QRect(0, 0, 320, 240)}};
    CaptureHub hub;
    CaptureTarget target;
    target.kind = CaptureTarget::Kind::display;
    target.id = 71;
    target.outputSize = QSize(320, 240);
    target.framesPerSecond = 30;
    auto capture = hub.acquire(target.key(), 30, [&] { return backend.openStream(target); });
    ASSERT_TRUE(test::waitUntil([&] { return capture->latestFrame().sequence > 0; }));

    QSignalSpy failed(capture.get(), &SharedCapture::failed);
    backend.setGrabsFail(true);
    ASSERT_TRUE(failed.wait(int((SharedCapture::kGiveUpAfter + 3s).count())));
    EXPECT_EQ(capture->errorMessage(), "Window not found");
    EXPECT_EQ(backend.openStreamCount(), 0) << "the ended capture closed its stream";

    // Nobody is handed the failed capture again: the next ask opens anew.
    backend.setGrabsFail(false);
    auto fresh = hub.acquire(target.key(), 30, [&] { return backend.openStream(target); });
    EXPECT_NE(fresh, capture);
    EXPECT_TRUE(test::waitUntil([&] { return fresh->latestFrame().sequence > 0; }));
}

// ------------------------------------------------------------ one view

class CaptureRecoveryTest : public ::testing::Test {
protected:
    void SetUp() override { backend.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)}}; }

    test::FakeCaptureBackend backend;
    LavfiCameraBackend cameras;
    CaptureHub hub;
};

TEST_F(CaptureRecoveryTest, AMissingDisplayIsTriedAgainAndComesBackWhenPluggedIn) {
    test::StdoutCapture log;
    ScreenCaptureViewModel model(backend, hub);
    QSignalSpy capturing(&model, &ScreenCaptureViewModel::isCapturingChanged);
    Source unplugged = screenSource(73);
    unplugged.name = "Side monitor";
    model.startCapture(unplugged, CaptureQuality::forOrdinal(0));
    EXPECT_EQ(model.errorMessage(), "Capture error: No display found");
    EXPECT_TRUE(model.retry().isWaiting());
    EXPECT_EQ(model.retry().pendingDelay(), 1s);
    const int listingsAfterStart = backend.listings();

    // The first retry finds the display still missing: the failure stands,
    // quietly, and the next wait is longer.
    ASSERT_TRUE(test::waitUntil([&] { return backend.listings() > listingsAfterStart; }, 3000));
    EXPECT_EQ(model.errorMessage(), "Capture error: No display found");
    EXPECT_FALSE(model.isCapturing()) << "no flash of \"Starting capture...\" between attempts";
    EXPECT_EQ(model.retry().pendingDelay(), 2s);
    const int flipsWhileFailing = capturing.count();

    // The monitor comes back; the change of targets brings the retry forward.
    backend.displayList.push_back({73, 960, 1080, "Display 73", QRect(960, 0, 960, 1080)});
    model.retryNow();
    ASSERT_TRUE(test::waitUntil([&] { return !model.capturedImage().isNull(); }, 1500))
        << "recovered before the two-second wait ran out";
    EXPECT_TRUE(model.errorMessage().isNull());
    EXPECT_TRUE(model.isCapturing());
    EXPECT_FALSE(model.retry().isWaiting());
    EXPECT_EQ(flipsWhileFailing, 2) << "on at the start, off at the failure, nothing while retrying";

    const std::string text = log.text();
    EXPECT_EQ(countOf(text, "❌ Capture error: No display found (Side monitor)\n"), 1) << text;
    EXPECT_EQ(countOf(text, "✅ Capture recovered: display:73"), 1) << text;
    EXPECT_EQ(countOf(text, "🎬 Capture started"), 0) << "a retry does not announce itself: " << text;
}

TEST_F(CaptureRecoveryTest, ACaptureWhoseTargetVanishesShowsTheFailureAndRecovers) {
    test::StdoutCapture log;
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screenSource(71), CaptureQuality::forOrdinal(0));
    ASSERT_TRUE(test::waitUntil([&] { return !model.capturedImage().isNull(); }));

    backend.setGrabsFail(true);
    ASSERT_TRUE(test::waitUntil([&] { return !model.errorMessage().isNull(); },
                                int((SharedCapture::kGiveUpAfter + 3s).count())));
    EXPECT_EQ(model.errorMessage(), "Capture error: Window not found");
    EXPECT_TRUE(model.capturedImage().isNull()) << "no frozen last picture passing for a live one";
    EXPECT_FALSE(model.isCapturing());

    backend.setGrabsFail(false);
    ASSERT_TRUE(test::waitUntil([&] { return !model.capturedImage().isNull(); }, 4000)) << "the one-second retry";
    EXPECT_TRUE(model.errorMessage().isNull());
    const std::string text = log.text();
    EXPECT_EQ(countOf(text, "❌ Capture error: Window not found"), 1) << text;
    EXPECT_EQ(countOf(text, "✅ Capture recovered"), 1) << text;
}

TEST_F(CaptureRecoveryTest, AStopEndsTheRetries) {
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screenSource(73), CaptureQuality::forOrdinal(0));
    ASSERT_TRUE(model.retry().isWaiting());
    model.stopCapture();
    EXPECT_FALSE(model.retry().isWaiting());
    const int listings = backend.listings();
    model.retryNow();
    test::waitUntil([] { return false; }, 1500);
    EXPECT_EQ(backend.listings(), listings);
}

// ------------------------------------------------------------ the compositor's captures

TEST_F(CaptureRecoveryTest, AFailureSeenWhileAskingDoesNotStartTheCaptureAgain) {
    // Whoever repaints on a change asks for the picture again at once, as
    // the recorder's relay does; a capture that fails at once must not
    // answer that ask by starting over.
    test::StdoutCapture log;
    SourceCaptures captures(backend, cameras, hub, CaptureQuality::forOrdinal(0));
    const Source missing = screenSource(4242);
    int asks = 0;
    QObject::connect(&captures, &SourceCaptures::pictureChanged, [&](const Uuid&) {
        ++asks;
        captures.latestFrame(missing);
    });
    EXPECT_EQ(captures.latestFrame(missing).state, SourceFrame::State::starting);
    EXPECT_EQ(backend.listings(), 0) << "nothing opens inside the ask";
    ASSERT_TRUE(test::waitUntil([&] { return captures.latestFrame(missing).state == SourceFrame::State::failed; }));
    EXPECT_EQ(captures.latestFrame(missing).message, "Capture error: No display found");
    test::waitUntil([] { return false; }, 300);
    EXPECT_EQ(backend.listings(), 1);
    EXPECT_LE(asks, 2);
    EXPECT_EQ(countOf(log.text(), "❌ Capture error: No display found"), 1);
}

TEST_F(CaptureRecoveryTest, TargetChangesRetryEveryFailedSource) {
    SourceCaptures captures(backend, cameras, hub, CaptureQuality::forOrdinal(0));
    const Source missing = screenSource(73);
    captures.latestFrame(missing);
    ASSERT_TRUE(test::waitUntil([&] { return captures.latestFrame(missing).state == SourceFrame::State::failed; }));
    backend.displayList.push_back({73, 960, 1080, "Display 73", QRect(960, 0, 960, 1080)});
    captures.retryFailedNow();
    EXPECT_TRUE(test::waitUntil([&] { return captures.latestFrame(missing).state == SourceFrame::State::frame; },
                                800))
        << "well before the one-second retry";
}

TEST_F(CaptureRecoveryTest, AMissingCameraShowsItsFailure) {
    test::StdoutCapture log;
    SourceCaptures captures(backend, cameras, hub, CaptureQuality::forOrdinal(0));
    Source camera;
    camera.type = SourceType::camera;
    camera.configuration.cameraDeviceId = "/dev/video99";
    SourceFrame picture;
    ASSERT_TRUE(test::waitUntil([&] {
        picture = captures.latestFrame(camera);
        return picture.state == SourceFrame::State::failed;
    }));
    EXPECT_EQ(picture.message, "No camera device found");
    // Tried again later, quietly.
    test::waitUntil([] { return false; }, 1500);
    EXPECT_EQ(countOf(log.text(), "❌ No camera device found (/dev/video99)\n"), 1);
}

TEST_F(CaptureRecoveryTest, ACameraStreamThatEndsFailsAndIsOpenedAgain) {
    LavfiCameraBackend shortCamera{{{{"lavfi:short", "Short"}, "color=c=red:size=160x120:rate=25:duration=1"}}};
    test::StdoutCapture log;
    SourceCaptures captures(backend, shortCamera, hub, CaptureQuality::forOrdinal(0));
    Source camera;
    camera.type = SourceType::camera;
    camera.configuration.cameraDeviceId = "lavfi:short";
    ASSERT_TRUE(test::waitUntil([&] { return captures.latestFrame(camera).state == SourceFrame::State::frame; }));
    SourceFrame picture;
    ASSERT_TRUE(test::waitUntil([&] {
        picture = captures.latestFrame(camera);
        return picture.state == SourceFrame::State::failed;
    }, int((1s + SharedCapture::kGiveUpAfter + 3s).count())));
    EXPECT_TRUE(picture.message.startsWith("Error setting up camera: ")) << picture.message.toStdString();
    ASSERT_TRUE(test::waitUntil([&] { return captures.latestFrame(camera).state == SourceFrame::State::frame; },
                                4000))
        << "opened again after the one-second wait";
    const std::string text = log.text();
    EXPECT_EQ(countOf(text, "❌ Error setting up camera: "), 1) << text;
    EXPECT_EQ(countOf(text, "✅ Camera recovered: lavfi:short"), 1) << text;
}

}  // namespace
}  // namespace orvane
