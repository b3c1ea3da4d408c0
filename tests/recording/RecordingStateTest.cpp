#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <sys/resource.h>

#include <algorithm>
#include <csignal>

#include "recording/AudioQuality.h"
#include "recording/OutputFormat.h"
#include "recording/RecordingDuration.h"
#include "recording/RecordingError.h"
#include "recording/RecordingStateMirror.h"
#include "recording/RecordingStatus.h"
#include "recording/RemoteRecordingSwitch.h"
#include "recording/VideoQuality.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"

namespace orvane {
namespace recording_state_test {

using test::RecordingHarness;

struct DurationCase {
    double seconds;
    const char* text;
};

class FormatDurationTest : public ::testing::TestWithParam<DurationCase> {};

TEST_P(FormatDurationTest, ReadsAsThePanelShowsIt) {
    EXPECT_EQ(formatDuration(GetParam().seconds).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Cases, FormatDurationTest,
                         ::testing::Values(DurationCase{59.9, "0:59"}, DurationCase{60, "1:00"},
                                           DurationCase{3599, "59:59"}, DurationCase{3600, "1:00:00"},
                                           DurationCase{0, "0:00"}, DurationCase{0.99, "0:00"},
                                           DurationCase{36061.5, "10:01:01"}, DurationCase{-3, "0:00"}));

TEST(RecordingEnumsTest, TextsInDeclarationOrder) {
    const auto statuses = allCases<RecordingStatus>();
    const char* statusTexts[] = {"Ready", "Preparing...", "Recording...", "Paused", "Stopping...", "Completed", "Error"};
    ASSERT_EQ(statuses.size(), 7u);
    for (std::size_t i = 0; i < statuses.size(); ++i) {
        EXPECT_EQ(static_cast<int>(statuses[i]), static_cast<int>(i));
        EXPECT_EQ(toString(statuses[i]), statusTexts[i]);
    }
    EXPECT_EQ(toString(AudioQuality::low), "Low (64 kbps)");
    EXPECT_EQ(toString(AudioQuality::lossless), "Lossless (PCM)");
    EXPECT_EQ(captureSampleRate_hz(AudioQuality::low), 22050);
    EXPECT_EQ(captureSampleRate_hz(AudioQuality::medium), 44100);
    EXPECT_EQ(toString(VideoQuality::ultra), "Ultra (4K)");
    EXPECT_EQ(toString(OutputFormat::m4v), "m4v");
    EXPECT_STREQ(muxerName(OutputFormat::m4v), "ipod");
    EXPECT_EQ(toString(RecordingError::writingFailed), "Failed to write recording file");
    EXPECT_EQ(toString(RecordingError::noDisplayFound), "No display found for recording");
}

TEST(RecordingEnumsTest, BitRateIsEightBitsPerPixelAboveTheFloor) {
    EXPECT_EQ(videoBitRate_bps(1920, 1080, VideoQuality::medium), 16588800);
    EXPECT_EQ(videoBitRate_bps(1280, 720, VideoQuality::low), 7372800);
    EXPECT_EQ(videoBitRate_bps(640, 360, VideoQuality::low), 2500000);
    EXPECT_EQ(videoBitRate_bps(640, 360, VideoQuality::ultra), 20000000);
    EXPECT_EQ(videoQualityRow(VideoQuality::high).width, 2560);
    EXPECT_EQ(videoQualityRow(VideoQuality::high).height, 1440);
}

class RecordingStateTest : public ::testing::Test {
protected:
    void SetUp() override {
        // No sound here: these tests are about the status machine.
        harness.recorder().setIncludeAudio(false);
        harness.recorder().setVideoQuality(VideoQuality::low);
        harness.session().setProgramScene(harness.makeScene());
    }
    QString recordingsFolder() const { return harness.home() + "/Documents/OrvaneUI Recordings"; }

    RecordingHarness harness;
};

TEST_F(RecordingStateTest, StartsFromThePublishedInitialValues) {
    RecordingManager& r = harness.recorder();
    RecordingHarness fresh;
    RecordingManager& f = fresh.recorder();
    EXPECT_FALSE(f.isRecording());
    EXPECT_EQ(f.recordingDuration(), 0);
    EXPECT_EQ(f.recordingStatus(), RecordingStatus::idle);
    EXPECT_FALSE(f.errorMessage());
    EXPECT_FALSE(f.outputURL());
    EXPECT_TRUE(f.includeAudio());
    EXPECT_TRUE(f.includeMicrophone());
    EXPECT_TRUE(f.includeSystemAudio());
    EXPECT_FALSE(f.selectedMicrophone());
    EXPECT_EQ(f.audioQuality(), AudioQuality::high);
    EXPECT_EQ(f.videoQuality(), VideoQuality::high);
    EXPECT_EQ(f.outputFormat(), OutputFormat::mov);
    EXPECT_EQ(RecordingManager::recordingsFolder(), fresh.home() + "/Documents/OrvaneUI Recordings");
    EXPECT_FALSE(r.isRecording());
}

TEST_F(RecordingStateTest, FileNameFollowsThePatternAndTheFormatAtStart) {
    harness.recorder().setOutputFormat(OutputFormat::m4v);
    const auto made = harness.recorder().createOutputURL();
    ASSERT_TRUE(made.url) << made.error.toStdString();
    const QFileInfo file(made.url->toLocalFile());
    EXPECT_EQ(file.absolutePath(), recordingsFolder());
    EXPECT_TRUE(QFileInfo(recordingsFolder()).isDir());
    EXPECT_TRUE(QRegularExpression("^OrvaneUI_Recording_\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d\\.m4v$")
                    .match(file.fileName())
                    .hasMatch())
        << file.fileName().toStdString();
}

TEST_F(RecordingStateTest, WalksThroughPreparingRecordingStoppingCompleted) {
    RecordingManager& r = harness.recorder();
    r.setOutputFormat(OutputFormat::mp4);
    std::vector<RecordingStatus> seen;
    QObject::connect(&r, &RecordingManager::recordingStatusChanged, [&](RecordingStatus s) { seen.push_back(s); });
    QSignalSpy durations(&r, &RecordingManager::recordingDurationChanged);

    r.startRecording(harness.session());
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::preparing);
    EXPECT_FALSE(r.isRecording());
    ASSERT_TRUE(r.outputURL());
    EXPECT_TRUE(r.outputURL()->toLocalFile().endsWith(".mp4"));
    // Settings changed now wait for the next start.
    r.setOutputFormat(OutputFormat::mov);
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.isRecording(); }, 5000));
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::recording);
    QTest::qWait(1000);
    EXPECT_GE(durations.count(), 5);
    EXPECT_GT(r.recordingDuration(), 0.5);
    EXPECT_LT(r.recordingDuration(), 3.0);

    r.stopRecording();
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::stopping);
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.recordingStatus() == RecordingStatus::completed; }, 15000));
    EXPECT_FALSE(r.isRecording());
    EXPECT_EQ(r.recordingDuration(), 0);
    EXPECT_FALSE(r.errorMessage());
    ASSERT_TRUE(r.outputURL());
    EXPECT_TRUE(r.outputURL()->toLocalFile().endsWith(".mp4"));
    EXPECT_GT(QFileInfo(r.outputURL()->toLocalFile()).size(), 1000);
    const std::vector<RecordingStatus> expected{RecordingStatus::preparing, RecordingStatus::recording,
                                                RecordingStatus::stopping, RecordingStatus::completed};
    EXPECT_EQ(seen, expected);
    EXPECT_GT(r.lastFigures().framesEncoded, 15);
}

TEST_F(RecordingStateTest, WithoutAProgramSceneTheFramesSayNoProgramActive) {
    harness.session().setProgramScene(std::nullopt);
    RecordingManager& r = harness.recorder();
    r.setOutputFormat(OutputFormat::mp4);
    ASSERT_EQ(harness.record(1.0), RecordingStatus::completed);
    const QImage frame = test::MediaProbe::videoFrame(r.outputURL()->toLocalFile(), 0.5, QSize(1280, 720));
    ASSERT_FALSE(frame.isNull());
    // Black, with the white title in the middle of the picture.
    EXPECT_LT(qGray(frame.pixel(20, 20)), 24);
    EXPECT_LT(qGray(frame.pixel(1260, 700)), 24);
    int white = 0;
    for (int y = 330; y < 400; ++y)
        for (int x = 540; x < 740; ++x) white += qGray(frame.pixel(x, y)) > 200 ? 1 : 0;
    EXPECT_GT(white, 50) << "the title's letters";
}

TEST_F(RecordingStateTest, WithoutAProgramSceneTheStartStillSettlesHalfASecond) {
    harness.session().setProgramScene(std::nullopt);
    RecordingManager& r = harness.recorder();
    QElapsedTimer sinceStart;
    qint64 recordingAt_ms = -1;
    QObject::connect(&r, &RecordingManager::isRecordingChanged, [&](bool recording) {
        if (recording && recordingAt_ms < 0) recordingAt_ms = sinceStart.elapsed();
    });
    sinceStart.start();
    r.startRecording(harness.session());
    EXPECT_FALSE(harness.session().programWindowController().isProgramWindowOpen());
    QTest::qWait(static_cast<int>(std::max<qint64>(0, 300 - sinceStart.elapsed())));
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::preparing) << "at " << sinceStart.elapsed() << " ms";
    EXPECT_FALSE(r.isRecording());
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.isRecording(); }, 5000));
    EXPECT_GE(recordingAt_ms, 495);
    EXPECT_LT(recordingAt_ms, 3000);
    EXPECT_FALSE(harness.session().programWindowController().isProgramWindowOpen());
    r.stopRecording();
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.recordingStatus() == RecordingStatus::completed; }, 15000));
}

TEST_F(RecordingStateTest, StopWhileNotRecordingChangesNothing) {
    RecordingManager& r = harness.recorder();
    QSignalSpy statuses(&r, &RecordingManager::recordingStatusChanged);
    QSignalSpy recordings(&r, &RecordingManager::isRecordingChanged);
    r.stopRecording();
    EXPECT_EQ(statuses.count(), 0);
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::idle);

    // Not even during preparing: the start goes on.
    r.startRecording(harness.session());
    ASSERT_EQ(r.recordingStatus(), RecordingStatus::preparing);
    r.stopRecording();
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::preparing);
    EXPECT_EQ(statuses.count(), 1);
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.isRecording(); }, 5000));
    r.stopRecording();
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.recordingStatus() == RecordingStatus::completed; }, 15000));
    EXPECT_EQ(recordings.count(), 2);
}

TEST_F(RecordingStateTest, AFolderThatCannotBeCreatedFailsTheStart) {
    // A plain file where the folder should be.
    ASSERT_TRUE(QDir().mkpath(harness.home() + "/Documents"));
    QFile blocker(recordingsFolder());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    RecordingManager& r = harness.recorder();
    r.startRecording(harness.session());
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::error);
    EXPECT_FALSE(r.isRecording());
    ASSERT_TRUE(r.errorMessage());
    EXPECT_TRUE(r.errorMessage()->startsWith("Failed to start recording: ")) << r.errorMessage()->toStdString();
    EXPECT_FALSE(r.outputURL());
    // A rest state: nothing moves on by itself.
    QTest::qWait(800);
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::error);
}

TEST_F(RecordingStateTest, AWriterThatFailsEndsTheRecording) {
    RecordingManager& r = harness.recorder();
    // Files of this process may not grow beyond 40 KiB; the write fails
    // with EFBIG instead of a signal.
    struct rlimit old {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    auto* oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 40 * 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);

    r.startRecording(harness.session());
    const bool ended = RecordingHarness::waitFor([&] { return r.recordingStatus() == RecordingStatus::error; }, 15000);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    ASSERT_TRUE(ended) << "status " << static_cast<int>(r.recordingStatus());
    ASSERT_TRUE(r.errorMessage());
    EXPECT_EQ(r.errorMessage()->toStdString(), "Failed to write recording file");
    EXPECT_FALSE(r.isRecording());
    // A stop now is a stop while not recording.
    r.stopRecording();
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::error);
    QSignalSpy finished(&r, &RecordingManager::recordingFinished);
    EXPECT_TRUE(finished.wait(10000) || finished.count() > 0);
}

TEST_F(RecordingStateTest, TheSessionMirrorsTheRecorderAndTheRemoteDrivesIt) {
    RecordingManager& r = harness.recorder();
    StreamManager& session = harness.session();
    const QMetaObject::Connection mirror = mirrorRecordingState(r, session);
    RemoteRecordingSwitch remote(r, session);
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(remote.isRecording());

    remote.startRecording();
    EXPECT_EQ(r.recordingStatus(), RecordingStatus::preparing);
    remote.startRecording();  // ignored while preparing
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return session.isRecording(); }, 5000));
    EXPECT_TRUE(remote.isRecording());
    EXPECT_TRUE(r.isRecording());

    remote.stopRecording();
    ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.recordingStatus() == RecordingStatus::completed; }, 15000));
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(remote.isRecording());
    QObject::disconnect(mirror);
}

}  // namespace
}  // namespace orvane
