// A window that is live on program and being recorded closes: the
// recording goes on to its stop and plays whole, the program shows the
// capture's failure in place of a frozen picture, and the failure is said
// once.
#include <gtest/gtest.h>

#include <QTest>

#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SourceCaptures.h"
#include "capture/x11/X11CaptureBackend.h"
#include "composition/SceneLayoutHelper.h"
#include "recording/ProgramFrameRelay.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"
#include "support/StdoutCapture.h"
#include "support/TestDisplayServer.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace vanishing_window_recording_test {

using test::MediaProbe;
using test::RecordingHarness;

int redPixels(const QImage& image, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); y += 4)
        for (int x = area.left(); x <= area.right(); x += 4) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 180 && c.green() < 80 && c.blue() < 80) ++count;
        }
    return count;
}

TEST(VanishingWindowRecordingTest, AClosedWindowOnProgramFailsVisiblyAndTheRecordingPlaysWhole) {
    test::TestDisplayServer server;
    const QString failure = server.start(true, false);
    ASSERT_TRUE(failure.isEmpty()) << failure.toStdString();
    test::X11TestClient client(server.displayName());
    test::X11TestClient::RawWindow spec;
    spec.title = "Slides to show";
    spec.wmClass = "presenter";
    spec.geometry = QRect(100, 100, 640, 360);
    spec.background = Qt::red;
    const xcb_window_t window = client.createWindow(spec);

    RecordingHarness harness;
    X11CaptureBackend screens(server.displayName());
    LavfiCameraBackend cameras;
    CaptureHub hub;
    SourceCaptures captures(screens, cameras, hub, CaptureQuality::forOrdinal(1));
    ProgramFrameRelay relay(harness.session(), captures,
                            std::shared_ptr<LiveFrameTable>(&harness.frames(), [](LiveFrameTable*) {}));

    StreamingScene scene;
    scene.name = "Window";
    scene.layout = SceneLayout::fullScreen;
    Source shown;
    shown.type = SourceType::window;
    shown.name = "Slides to show";
    shown.configuration.windowId = window;
    shown.configuration.windowOwner = "presenter";
    shown.configuration.windowTitle = "Slides to show";
    scene.sources = {shown};
    harness.session().setProgramScene(scene);
    ASSERT_TRUE(RecordingHarness::waitFor(
        [&] { return captures.latestFrame(shown).state == SourceFrame::State::frame; }, 10000))
        << "the window is captured before the recording starts";

    RecordingManager& recorder = harness.recorder();
    recorder.setIncludeAudio(false);
    recorder.setVideoQuality(VideoQuality::low);
    recorder.setOutputFormat(OutputFormat::mp4);
    test::StdoutCapture log;
    SourceFrame whenClosed;
    const RecordingStatus status = harness.record(6.0, [&] {
        QTest::qWait(1500);
        client.destroyWindow(window);
        RecordingHarness::waitFor(
            [&] {
                whenClosed = captures.latestFrame(shown);
                return whenClosed.state == SourceFrame::State::failed;
            },
            int(SharedCapture::kGiveUpAfter.count()) + 2500);
    });
    const std::string text = log.text();
    ASSERT_EQ(status, RecordingStatus::completed) << text;
    EXPECT_EQ(whenClosed.state, SourceFrame::State::failed) << "the program shows that the window is gone";
    EXPECT_TRUE(whenClosed.message.startsWith("Capture error: ")) << whenClosed.message.toStdString();

    const QString file = recorder.outputURL()->toLocalFile();
    const QJsonObject probe = MediaProbe::probe(file);
    ASSERT_FALSE(probe.isEmpty()) << "the file plays";
    EXPECT_GT(probe["format"].toObject()["duration"].toString().toDouble(), 7.0) << "no part of it lost";

    const QSize size(1280, 720);
    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(scene.layout, QSizeF(size));
    ASSERT_TRUE(frames.contentFrame);
    const QRect middle = frames.contentFrame->adjusted(frames.contentFrame->width() * 0.3, frames.contentFrame->height() * 0.3,
                                                       -frames.contentFrame->width() * 0.3, -frames.contentFrame->height() * 0.3)
                             .toRect();
    const QImage before = MediaProbe::videoFrame(file, 1.0, size);
    const QImage after = MediaProbe::videoFrame(file, 7.0, size);
    ASSERT_FALSE(before.isNull());
    ASSERT_FALSE(after.isNull());
    EXPECT_GT(redPixels(before, middle), 100) << "the window is recorded while it is open";
    EXPECT_EQ(redPixels(after, middle), 0) << "no frozen picture of a closed window";

    // Said when it began; the retries are quiet.
    int failures = 0;
    for (auto at = text.find("❌ Capture error: "); at != std::string::npos; at = text.find("❌ Capture error: ", at + 1))
        ++failures;
    EXPECT_EQ(failures, 1) << text;
}

}  // namespace
}  // namespace orvane
