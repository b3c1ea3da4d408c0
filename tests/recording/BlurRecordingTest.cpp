#include <gtest/gtest.h>

#include <QPainter>
#include <QTest>

#include <cmath>

#include "composition/SceneLayoutHelper.h"
#include "recording/ProgramFramePainter.h"
#include "recording/ProgramSnapshot.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"

namespace orvane {
namespace blur_recording_test {

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

double meanDifference(const QImage& a, const QImage& b, QRect area) {
    const QImage x = a.convertToFormat(QImage::Format_RGB888);
    const QImage y = b.convertToFormat(QImage::Format_RGB888);
    double sum = 0;
    int count = 0;
    for (int row = area.top(); row <= area.bottom(); row += 2) {
        const uchar* p = x.constScanLine(row);
        const uchar* q = y.constScanLine(row);
        for (int i = area.left() * 3; i < (area.right() + 1) * 3; ++i, ++count) sum += std::abs(p[i] - q[i]);
    }
    return count ? sum / count : 0;
}

TEST(BlurRecordingTest, BlurModeBlursTheScreenSourceInTheFile) {
    RecordingHarness harness;
    RecordingManager& r = harness.recorder();
    r.setIncludeAudio(false);
    r.setVideoQuality(VideoQuality::low);
    r.setOutputFormat(OutputFormat::mp4);
    const StreamingScene scene = harness.makeScene(RecordingHarness::patternPicture(QSize(1280, 720)));
    harness.session().setProgramScene(scene);
    harness.session().setIsBlurModeActive(false);

    // Sharp for the first second, then blurred (the fade takes 0.3 s).
    ASSERT_EQ(harness.record(2.2, [&] {
        QTimer::singleShot(1000, [&] { harness.session().setIsBlurModeActive(true); });
    }),
              RecordingStatus::completed);
    const QString file = r.outputURL()->toLocalFile();
    const QSize size(1280, 720);
    const QImage sharp = MediaProbe::videoFrame(file, 0.5, size);
    const QImage blurred = MediaProbe::videoFrame(file, 1.9, size);
    ASSERT_FALSE(sharp.isNull());
    ASSERT_FALSE(blurred.isNull());

    const LayoutFrame frames = SceneLayoutHelper::calculateFrames(scene.layout, QSizeF(size));
    ASSERT_TRUE(frames.contentFrame);
    ASSERT_TRUE(frames.cameraFrame);
    // The middle of each source's box, clear of borders and rounded corners.
    const auto inner = [](QRectF box) {
        return box.adjusted(box.width() * 0.25, box.height() * 0.25, -box.width() * 0.25, -box.height() * 0.25)
            .toRect();
    };
    const QRect screenArea = inner(*frames.contentFrame);
    const QRect cameraArea = inner(*frames.cameraFrame);
    const double before = sharpness(sharp, screenArea);
    const double after = sharpness(blurred, screenArea);
    EXPECT_GT(before, 40) << "the stripes are recorded sharp";
    EXPECT_LT(after, before * 0.2) << "sharpness " << before << " -> " << after;
    // The camera is not a captured screen: it stays as it was.
    EXPECT_LT(meanDifference(sharp, blurred, cameraArea), 8);

    // The recorded frame is the program composition and nothing else: the
    // same snapshot drawn directly matches it to within coding noise.
    ProgramSnapshot snapshot;
    snapshot.programScene = scene;
    snapshot.isBlurModeActive = true;
    snapshot.frames = std::shared_ptr<const FrameSource>(&harness.frames(), [](const FrameSource*) {});
    QImage reference(size, QImage::Format_RGB32);
    ProgramFramePainter painter;
    {
        QPainter p(&reference);
        painter.paint(p, size, snapshot, 0);
    }
    {
        QPainter p(&reference);
        painter.paint(p, size, snapshot, 5);  // after the fade
    }
    EXPECT_LT(meanDifference(reference, blurred, QRect(QPoint(0, 0), size)), 6);
}

}  // namespace
}  // namespace orvane
