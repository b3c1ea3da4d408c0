#include <gtest/gtest.h>

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <thread>

#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SourceCaptures.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramFrameRelay.h"
#include "support/MediaProbe.h"
#include "support/NoDisplays.h"
#include "support/RecordingHarness.h"

namespace orvane {
namespace blocked_main_thread_recording_test {

using test::MediaProbe;
using test::NoDisplays;
using test::RecordingHarness;

// A frame counts as new when its grey levels differ from the frame before
// by more than this on average. The moving test pattern filling the
// picture differs by more than a level from one frame to the next; a
// repeated frame by nothing, or by the encoder's rounding where a key
// frame draws it anew (below a hundredth of a level).
constexpr double kNewPictureDifference = 0.5;

// The longest time in the file between a frame showing a new picture and
// the next one that does.
double longestWithoutChange(const std::vector<MediaProbe::FrameChange>& changes) {
    double longest = 0;
    std::optional<double> last;
    for (const MediaProbe::FrameChange& change : changes) {
        if (last && change.difference <= kNewPictureDifference) continue;
        if (last) longest = std::max(longest, change.seconds - *last);
        last = change.seconds;
    }
    if (last && !changes.empty()) longest = std::max(longest, changes.back().seconds - *last);
    return longest;
}

// The application's way from a capture to the file: the program's camera
// through the shared captures and the relay into the recorder's table. The
// main thread then stops for a second and a half; the camera's pictures
// must go on reaching the file meanwhile, since the recorder reads them
// from the capture on its own thread.
TEST(BlockedMainThreadRecordingTest, FramesKeepReachingTheFileWhileTheMainThreadIsBlocked) {
    RecordingHarness harness;
    RecordingManager& recorder = harness.recorder();
    recorder.setIncludeAudio(false);
    recorder.setVideoQuality(VideoQuality::low);
    recorder.setOutputFormat(OutputFormat::mp4);
    auto table = std::make_shared<LiveFrameTable>();
    recorder.setFrameSource(table);

    NoDisplays screens;
    // A pattern that moves on every one of its 30 pictures a second.
    LavfiCameraBackend cameras({{{QStringLiteral("lavfi:moving"), QStringLiteral("Moving")},
                                 QStringLiteral("testsrc2=size=320x240:rate=30")}});
    CaptureHub hub;
    SourceCaptures captures(screens, cameras, hub, CaptureQuality{});
    ProgramFrameRelay relay(harness.session(), captures, table);

    StreamingScene scene;
    scene.name = "Camera";
    scene.layout = SceneLayout::fullCamera;
    Source camera;
    camera.type = SourceType::camera;
    camera.name = "Moving camera";
    camera.configuration.cameraDeviceId = "lavfi:moving";
    scene.sources = {camera};
    harness.session().setProgramScene(scene);
    ASSERT_TRUE(RecordingHarness::waitFor(
        [&] { return table->latestFrame(camera).state == SourceFrame::State::frame; }, 10000));

    constexpr auto kBlock = std::chrono::milliseconds(1500);
    ASSERT_EQ(harness.record(4.0,
                             [&] {
                                 QTimer::singleShot(1000, [kBlock] { std::this_thread::sleep_for(kBlock); });
                             }),
              RecordingStatus::completed);

    const QString file = recorder.outputURL()->toLocalFile();
    QString error;
    const std::vector<MediaProbe::FrameChange> changes = MediaProbe::videoFrameChanges(file, &error);
    ASSERT_GT(changes.size(), 90u) << error.toStdString();
    const double longest = longestWithoutChange(changes);
    std::cout << "frames " << changes.size() << ", dropped " << recorder.lastFigures().framesDropped
              << ", longest time without a new picture " << longest * 1000 << " ms\n";
    // Thirty pictures a second met by thirty frames a second: now and then
    // a frame finds no new picture, rarely two in a row. A blocked main
    // thread on the way would freeze the picture for the whole block.
    EXPECT_LT(longest, 0.4) << "the picture froze while the main thread was blocked";
    EXPECT_GT(changes.back().seconds, 3.5) << "the recording lasts its four seconds";
}

}  // namespace
}  // namespace orvane
