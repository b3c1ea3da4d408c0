#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>

#include <condition_variable>
#include <stdexcept>
#include <thread>

#include "capture/CaptureHub.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"

namespace orvane {
namespace capture_hub_test {

::testing::Environment* const qtEnvironment =
    ::testing::AddGlobalTestEnvironment(new test::QtTestEnvironment(false));

struct Counters {
    std::atomic<int> opened{0};
    std::atomic<int> alive{0};
    std::atomic<int> grabs{0};
};

class CountingSource : public CaptureStream {
public:
    explicit CountingSource(Counters& counters) : counters_(counters) { ++counters_.alive; }
    ~CountingSource() override { --counters_.alive; }
    CaptureResult<GrabbedFrame> grabFrame() override {
        const int n = ++counters_.grabs;
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(QColor(n % 256, 0, 0));
        return GrabbedFrame{image, false};
    }

private:
    Counters& counters_;
};

// Blocks like a camera waiting for its device until interrupted.
class BlockingSource : public CaptureStream {
public:
    bool pacesItself() const override { return true; }
    CaptureResult<GrabbedFrame> grabFrame() override {
        std::unique_lock lock(mutex_);
        cv_.wait_for(lock, std::chrono::seconds(30), [this] { return interrupted_; });
        return CaptureResult<GrabbedFrame>::failure("interrupted");
    }
    void interrupt() override {
        std::lock_guard lock(mutex_);
        interrupted_ = true;
        cv_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable cv_;
    bool interrupted_ = false;  // protected by mutex_
};

SharedCapture::Opener countingOpener(Counters& counters) {
    return [&counters]() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        ++counters.opened;
        return std::unique_ptr<CaptureStream>(std::make_unique<CountingSource>(counters));
    };
}

TEST(CaptureHub, OneCapturePerKeyAndItStopsWithTheLastHolder) {
    CaptureHub hub;
    Counters counters;
    auto first = hub.acquire("display:1", 30, countingOpener(counters));
    auto second = hub.acquire("display:1", 30, countingOpener(counters));
    EXPECT_EQ(first.get(), second.get());
    ASSERT_TRUE(test::waitUntil([&] { return hub.latestFrame("display:1").sequence > 0; }));
    EXPECT_EQ(counters.opened.load(), 1);
    EXPECT_EQ(counters.alive.load(), 1);
    EXPECT_EQ(hub.runningCount(), 1);

    auto other = hub.acquire("display:2", 30, countingOpener(counters));
    EXPECT_NE(other.get(), first.get());
    EXPECT_EQ(hub.runningCount(), 2);
    other.reset();

    first.reset();
    EXPECT_EQ(hub.runningCount(), 1);
    second.reset();
    EXPECT_EQ(hub.runningCount(), 0);
    EXPECT_EQ(counters.alive.load(), 0);
    EXPECT_TRUE(hub.latestFrame("display:1").image.isNull());
}

TEST(CaptureHub, MainThreadSeesOnlyTheLatestFrame) {
    CaptureHub hub;
    Counters counters;
    auto capture = hub.acquire("fast", 200, countingOpener(counters));
    int notices = 0;
    QObject::connect(capture.get(), &SharedCapture::frameAvailable, [&] { ++notices; });
    // Keep the main thread busy while the capture thread runs on.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const int grabsWhileBusy = counters.grabs.load();
    ASSERT_GT(grabsWhileBusy, 20);
    QCoreApplication::processEvents();
    // Dozens of frames were taken, yet one notice stood for all of them (a
    // second may slip in while the events are being processed).
    EXPECT_GE(notices, 1);
    EXPECT_LE(notices, 2);
    const CapturedFrame frame = capture->latestFrame();
    EXPECT_GE(frame.sequence, static_cast<std::uint64_t>(grabsWhileBusy));
    EXPECT_FALSE(frame.image.isNull());
}

TEST(CaptureHub, FailureToOpenIsReported) {
    CaptureHub hub;
    auto capture = hub.acquire("broken", 30, []() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        return CaptureResult<std::unique_ptr<CaptureStream>>::failure("device gone");
    });
    QSignalSpy failed(capture.get(), &SharedCapture::failed);
    ASSERT_TRUE(failed.wait(2000));
    EXPECT_EQ(failed.first().first().toString(), "device gone");
    EXPECT_EQ(capture->errorMessage(), "device gone");
}

// An opener that claims success but hands over no stream, one that throws
// and a capture with no opener at all: each ends as a failed capture with
// a message, and the process goes on.
TEST(CaptureHub, AnOpenWithoutAStreamFailsWithAMessage) {
    CaptureHub hub;
    std::atomic<bool> opened{false};
    auto capture = hub.acquire("camera:empty", 0, [&]() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        opened = true;
        return std::unique_ptr<CaptureStream>();
    });
    QSignalSpy failed(capture.get(), &SharedCapture::failed);
    ASSERT_TRUE(failed.wait(2000));
    EXPECT_TRUE(opened.load());
    EXPECT_EQ(failed.first().first().toString(), "The source opened without a stream");
    EXPECT_EQ(capture->errorMessage(), "The source opened without a stream");
    EXPECT_EQ(capture->latestFrame().sequence, 0u);
    EXPECT_TRUE(hub.latestFrame("camera:empty").image.isNull());
}

TEST(CaptureHub, AnOpenerThatThrowsFailsWithAMessage) {
    CaptureHub hub;
    auto capture = hub.acquire("camera:throws", 0, []() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        throw std::runtime_error("device node vanished");
    });
    QSignalSpy failed(capture.get(), &SharedCapture::failed);
    ASSERT_TRUE(failed.wait(2000));
    EXPECT_EQ(capture->errorMessage(), "Opening the source failed: device node vanished");
}

TEST(CaptureHub, ACaptureWithoutAnOpenerFailsWithAMessage) {
    CaptureHub hub;
    auto capture = hub.acquire("camera:none", 0, SharedCapture::Opener());
    QSignalSpy failed(capture.get(), &SharedCapture::failed);
    ASSERT_TRUE(failed.wait(2000));
    EXPECT_EQ(capture->errorMessage(), "Nothing to open the source with");
}

// A source whose grab throws drops frames like one that fails; the capture
// runs on and stops normally.
TEST(CaptureHub, ASourceThatThrowsOnGrabKeepsTheProcessAlive) {
    class ThrowingSource : public CaptureStream {
    public:
        explicit ThrowingSource(std::atomic<int>& grabs) : grabs_(grabs) {}
        CaptureResult<GrabbedFrame> grabFrame() override {
            ++grabs_;
            throw std::runtime_error("driver hiccup");
        }

    private:
        std::atomic<int>& grabs_;
    };
    CaptureHub hub;
    std::atomic<int> grabs{0};
    auto capture = hub.acquire("display:throws", 100, [&]() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        return std::unique_ptr<CaptureStream>(std::make_unique<ThrowingSource>(grabs));
    });
    ASSERT_TRUE(test::waitUntil([&] { return grabs.load() >= 3; }));
    EXPECT_EQ(capture->latestFrame().sequence, 0u);
    EXPECT_TRUE(capture->errorMessage().isEmpty()) << "a failing grab is not a failed start";
    capture.reset();
    EXPECT_EQ(hub.runningCount(), 0);
}

TEST(CaptureHub, StoppingInterruptsABlockedSource) {
    CaptureHub hub;
    std::atomic<bool> opened{false};
    auto capture = hub.acquire("camera:slow", 0, [&]() -> CaptureResult<std::unique_ptr<CaptureStream>> {
        opened = true;
        return std::unique_ptr<CaptureStream>(std::make_unique<BlockingSource>());
    });
    ASSERT_TRUE(test::waitUntil([&] { return opened.load(); }));
    QElapsedTimer timer;
    timer.start();
    capture.reset();
    EXPECT_LT(timer.elapsed(), 1000);
}

}  // namespace
}  // namespace orvane
