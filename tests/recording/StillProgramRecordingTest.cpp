#include <gtest/gtest.h>

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimer>

#include <cmath>

#include "composition/SceneLayoutHelper.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"

namespace orvane {
namespace still_program_recording_test {

using test::MediaProbe;
using test::RecordingHarness;

// Mean absolute difference of horizontal neighbours' grey levels: high for
// two-pixel stripes, near zero once they are blurred.
double sharpness(const QImage& image, QRect area) {
    const QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    double sum = 0;
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); y += 2) {
        const uchar* line = grey.constScanLine(y);
        for (int x = area.left(); x < area.right(); ++x, ++count) sum += std::abs(line[x + 1] - line[x]);
    }
    return count ? sum / count : 0;
}

// A program of fixed pictures only: nothing changes unless the session
// does, so most frames repeat the last picture, and still the file has a
// frame at every time and shows each change, animated ones to the end.
TEST(StillProgramRecordingTest, RepeatsUnchangedFramesAndStillShowsEveryChange) {
    RecordingHarness harness;
    RecordingManager& r = harness.recorder();
    r.setIncludeAudio(false);
    r.setVideoQuality(VideoQuality::low);
    r.setOutputFormat(OutputFormat::mp4);
    StreamingScene scene = harness.makeScene(RecordingHarness::patternPicture(QSize(1280, 720)));
    // Without the live camera.
    harness.frames().unbind(scene.sources.front().id);
    scene.sources.erase(scene.sources.begin());
    harness.session().setProgramScene(scene);
    harness.session().setIsBlurModeActive(false);

    // Sharp for a second, then blurred (the fade takes 0.3 s).
    ASSERT_EQ(harness.record(2.2, [&] {
        QTimer::singleShot(1000, [&] { harness.session().setIsBlurModeActive(true); });
    }),
              RecordingStatus::completed);
    const RecordingManager::Figures figures = r.lastFigures();
    std::cout << "frames drawn " << figures.framesComposed << ", repeated " << figures.framesRepeated << ", dropped "
              << figures.framesDropped << "\n";
    EXPECT_GT(figures.framesRepeated, 20) << "unchanged frames are not drawn again";
    EXPECT_GE(figures.framesComposed, 4) << "the first picture, the blur's change and fade, a redraw a second";
    EXPECT_EQ(figures.framesEncoded, figures.framesComposed + figures.framesRepeated);

    const QString file = r.outputURL()->toLocalFile();
    const QJsonObject probe = MediaProbe::probe(file, nullptr, {"-count_packets"});
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    ASSERT_EQ(videos.size(), 1);
    EXPECT_EQ(videos[0].toObject().value("nb_read_packets").toString().toLongLong(), figures.framesEncoded)
        << "a repeated frame is a frame of the file";
    EXPECT_NEAR(static_cast<double>(figures.framesEncoded + figures.framesDropped), 66, 8);

    const QSize size(1280, 720);
    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(SceneLayoutHelper::effectiveLayout(scene),
                                                                  QSizeF(size));
    ASSERT_TRUE(frames.contentFrame);
    const QRectF box = *frames.contentFrame;
    const QRect area =
        box.adjusted(box.width() * 0.25, box.height() * 0.25, -box.width() * 0.25, -box.height() * 0.25).toRect();
    const QImage sharp = MediaProbe::videoFrame(file, 0.5, size);
    const QImage blurred = MediaProbe::videoFrame(file, 2.0, size);
    ASSERT_FALSE(sharp.isNull());
    ASSERT_FALSE(blurred.isNull());
    EXPECT_GT(sharpness(sharp, area), 40) << "the stripes are recorded sharp";
    EXPECT_LT(sharpness(blurred, area), 10) << "the blur's fade is drawn to its end";
}

}  // namespace
}  // namespace orvane
