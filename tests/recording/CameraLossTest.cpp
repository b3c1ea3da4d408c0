// Cameras that fail a recording: a device that is not there, and a camera
// whose stream ends in the middle of a recording. The program's pictures
// come the way the console hands them over (SourceCaptures through the
// program relay); the recording runs to its stop either way.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

#include "capture/CaptureBackend.h"
#include "capture/CaptureHub.h"
#include "capture/CaptureQuality.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SourceCaptures.h"
#include "capture/linux/V4l2CameraBackend.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramFrameRelay.h"
#include "recording/RecordingManager.h"
#include "support/NoDisplays.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace camera_loss_test {

using test::MediaProbe;
using test::RecordingHarness;

double number(const QJsonObject& object, const char* key) { return object.value(key).toString().toDouble(); }

int countLinesContaining(const std::string& text, const std::string& part) {
    int n = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        if (text.substr(start, end - start).find(part) != std::string::npos) ++n;
        start = end + 1;
    }
    return n;
}

using test::NoDisplays;

StreamingScene cameraScene(const std::string& deviceId) {
    StreamingScene scene;
    scene.name = "Camera";
    scene.backgroundType = BackgroundType::gradient;
    scene.layout = SceneLayout::fullScreen;
    Source camera;
    camera.type = SourceType::camera;
    camera.name = "Camera";
    camera.configuration.cameraDeviceId = deviceId;
    scene.sources = {camera};
    return scene;
}

// The console's path from a camera to the recorder: captures by source, and
// the relay that hands the program's pictures to the recorder's table.
class CameraRecording {
public:
    CameraRecording(RecordingHarness& harness, CameraBackend& cameras)
        : captures_(screens_, cameras, hub_, CaptureQuality{}),
          table_(std::make_shared<LiveFrameTable>()),
          relay_(harness.session(), captures_, table_) {
        RecordingManager& r = harness.recorder();
        r.setOutputFormat(OutputFormat::mp4);
        r.setVideoQuality(VideoQuality::low);
        r.setIncludeAudio(false);
        r.setFrameSource(table_);
    }
    LiveFrameTable& table() { return *table_; }

private:
    NoDisplays screens_;
    CaptureHub hub_;
    SourceCaptures captures_;
    std::shared_ptr<LiveFrameTable> table_;
    ProgramFrameRelay relay_;
};

TEST(CameraLossTest, ACameraDeviceThatIsGoneIsLoggedAndTheRecordingGoesOn) {
    RecordingHarness harness;
    V4l2CameraBackend cameras;
    CameraRecording path(harness, cameras);
    const StreamingScene scene = cameraScene("/dev/video99");

    test::StdoutCapture log;
    harness.session().setProgramScene(scene);
    const RecordingStatus reached = harness.record(1.0);
    const std::string lines = log.text();
    RecordingManager& r = harness.recorder();
    ASSERT_EQ(reached, RecordingStatus::completed) << (r.errorMessage() ? r.errorMessage()->toStdString() : "") << "\n"
                                                   << lines;
    // Said once, not at every frame the recorder asks for the picture.
    EXPECT_EQ(countLinesContaining(lines, "❌ No camera device found"), 1) << lines;
    EXPECT_NE(path.table().latestFrame(scene.sources[0]).state, SourceFrame::State::frame);

    QString error;
    const QJsonObject probe = MediaProbe::probe(r.outputURL()->toLocalFile(), &error);
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    ASSERT_EQ(videos.size(), 1);
    EXPECT_NEAR(number(videos[0].toObject(), "duration"), 1.0, 0.5);
}

TEST(CameraLossTest, ACameraStreamThatEndsMidRecordingLeavesTheRecordingRunningToItsStop) {
    RecordingHarness harness;
    // A second of picture, then the stream ends as an unplugged camera's
    // would.
    LavfiCameraBackend cameras({{{QStringLiteral("lavfi:short"), QStringLiteral("Short camera")},
                                 QStringLiteral("testsrc=size=640x480:rate=30:duration=1")}});
    CameraRecording path(harness, cameras);
    const StreamingScene scene = cameraScene("lavfi:short");
    harness.session().setProgramScene(scene);
    // The recording starts with the camera's picture on the program.
    ASSERT_TRUE(RecordingHarness::waitFor(
        [&] { return path.table().latestFrame(scene.sources[0]).state == SourceFrame::State::frame; }, 10000));

    test::StdoutCapture log;
    RecordingManager& r = harness.recorder();
    const RecordingStatus reached = harness.record(3.0);
    const std::string lines = log.text();
    ASSERT_EQ(reached, RecordingStatus::completed) << (r.errorMessage() ? r.errorMessage()->toStdString() : "") << "\n"
                                                   << lines;
    // The first frame that does not come is a warning, said once; the
    // stream that stays ended is one failure, said once, however often the
    // capture looks again.
    EXPECT_EQ(countLinesContaining(lines, "⚠️ Capture of camera:lavfi:short dropped a frame"), 1) << lines;
    EXPECT_EQ(countLinesContaining(lines, "❌ Error setting up camera: The camera stream ended (lavfi:short)"), 1)
        << lines;
    EXPECT_EQ(countLinesContaining(lines, "The camera stream ended"), 2) << lines;

    const QString file = r.outputURL()->toLocalFile();
    QString error;
    const QJsonObject probe = MediaProbe::probe(file, &error, {"-count_frames"});
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    ASSERT_EQ(videos.size(), 1);
    const QJsonObject video = videos[0].toObject();
    // The whole length, well past the camera's one second.
    EXPECT_NEAR(number(video, "duration"), 3.0, 0.6);
    EXPECT_GE(video.value("nb_read_frames").toString().toLongLong(), 75);
    EXPECT_FALSE(MediaProbe::videoFrame(file, number(video, "duration") - 0.3, QSize(1280, 720)).isNull());
}

}  // namespace
}  // namespace orvane
