#include <gtest/gtest.h>

#include <QtGlobal>

extern "C" {
#include <libavutil/log.h>
}

#include <thread>

#include "LibraryLog.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace library_log_test {

class LibraryLogTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { LibraryLog::install(); }
};

TEST_F(LibraryLogTest, FfmpegPiecesBecomeOneWholeLineOfOurs) {
    testing::internal::CaptureStderr();
    test::StdoutCapture out;
    av_log(nullptr, AV_LOG_ERROR, "Cannot open %s", "/dev/video99");
    av_log(nullptr, AV_LOG_ERROR, ": No such file or directory\n");
    av_log(nullptr, AV_LOG_INFO, "using cpu capabilities\n");  // below a warning: left out
    av_log(nullptr, AV_LOG_WARNING, "first\nsecond\n");
    EXPECT_EQ(out.text(),
              "⚠️ FFmpeg: Cannot open /dev/video99: No such file or directory\n"
              "⚠️ FFmpeg: first\n"
              "⚠️ FFmpeg: second\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LibraryLogTest, PiecesFromTwoThreadsDoNotMix) {
    test::StdoutCapture out;
    std::thread([] { av_log(nullptr, AV_LOG_ERROR, "camera "); }).join();  // a thread that ends mid-line
    av_log(nullptr, AV_LOG_ERROR, "encoder ");
    std::thread([] { av_log(nullptr, AV_LOG_ERROR, "reader done\n"); }).join();
    av_log(nullptr, AV_LOG_ERROR, "done\n");
    EXPECT_EQ(out.text(), "⚠️ FFmpeg: reader done\n⚠️ FFmpeg: encoder done\n");
}

TEST_F(LibraryLogTest, QtWarningsAreTaggedLinesAndDebugChatterIsLeftOut) {
    testing::internal::CaptureStderr();
    test::StdoutCapture out;
    qWarning("QXcbConnection: XCB error 3 (BadWindow)");
    qDebug("a debug line");
    qInfo("an info line");
    EXPECT_EQ(out.text(), "⚠️ Qt: QXcbConnection: XCB error 3 (BadWindow)\nℹ️ Qt: an info line\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace orvane
