// A disk that fills up in the middle of a recording, made by a file size
// limit in a child process that records (the limit would hit this test
// process's own files too). The recording ends in `error` with "Failed to
// write recording file" and the part already written plays.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>

#include "support/MediaProbe.h"

namespace orvane {
namespace disk_full_recording_test {

using test::MediaProbe;

QString valueAfter(const QStringList& lines, const QString& prefix) {
    for (const QString& line : lines)
        if (line.startsWith(prefix)) return line.mid(prefix.size());
    return {};
}

TEST(DiskFullRecordingTest, AFullDiskEndsTheRecordingInErrorAndWhatWasWrittenPlays) {
    QTemporaryDir home;
    ASSERT_TRUE(home.isValid());
    QProcess helper;
    helper.setProcessChannelMode(QProcess::SeparateChannels);
    helper.start(QStringLiteral(RECORDING_DISK_FULL_HELPER), {home.path()});
    ASSERT_TRUE(helper.waitForStarted(5000));
    ASSERT_TRUE(helper.waitForFinished(60000)) << "the helper did not finish";
    const QString output = QString::fromLocal8Bit(helper.readAllStandardOutput());
    const QStringList lines = output.split('\n', Qt::SkipEmptyParts);
    const std::string shown = output.toStdString() + QString::fromLocal8Bit(helper.readAllStandardError()).toStdString();
    ASSERT_EQ(helper.exitStatus(), QProcess::NormalExit) << shown;
    ASSERT_EQ(helper.exitCode(), 0) << shown;

    EXPECT_EQ(valueAfter(lines, "STATUS "), "error Failed to write recording file") << shown;
    EXPECT_TRUE(lines.contains("FINISHED")) << shown;
    // The writer says why, once; the recording does not claim a clean stop.
    EXPECT_EQ(lines.filter(QRegularExpression("^❌ Recording file write failed: File too large$")).size(), 1) << shown;
    EXPECT_EQ(lines.filter("⏹️ Recording stopped").size(), 0) << shown;

    const QString file = valueAfter(lines, "RECORDING ");
    const qint64 limit = valueAfter(lines, "LIMIT ").toLongLong();
    ASSERT_FALSE(file.isEmpty()) << shown;
    ASSERT_GT(limit, 0) << shown;
    EXPECT_LE(QFileInfo(file).size(), limit) << "nothing was written past the limit";

    QString error;
    const QJsonObject probe = MediaProbe::probe(file, &error, {"-count_frames"});
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    ASSERT_EQ(videos.size(), 1);
    // At least the first second, a whole fragment, from before the limit.
    EXPECT_GE(videos[0].toObject().value("nb_read_frames").toString().toLongLong(), 30);
    EXPECT_FALSE(MediaProbe::videoFrame(file, 0.5, QSize(1280, 720)).isNull());
}

}  // namespace
}  // namespace orvane
