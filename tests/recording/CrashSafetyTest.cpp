#include <gtest/gtest.h>

#include <signal.h>

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "support/MediaProbe.h"
#include "support/SoundServer.h"

namespace orvane {
namespace crash_safety_test {

using test::MediaProbe;
using test::SoundServer;

TEST(CrashSafetyTest, AKilledRecorderLeavesAPlayableFile) {
    SoundServer sound;
    ASSERT_EQ(sound.start(), QString());
    QTemporaryDir home;
    ASSERT_TRUE(home.isValid());

    QProcess helper;
    helper.setProcessChannelMode(QProcess::SeparateChannels);
    helper.start(QStringLiteral(RECORDING_CRASH_HELPER), {home.path()});
    ASSERT_TRUE(helper.waitForStarted(5000));
    QString file;
    QDeadlineTimer deadline(15000);
    while (file.isEmpty() && !deadline.hasExpired() && helper.state() == QProcess::Running) {
        helper.waitForReadyRead(200);
        while (helper.canReadLine()) {
            const QString line = QString::fromLocal8Bit(helper.readLine()).trimmed();
            if (line.startsWith("RECORDING ")) file = line.mid(10);
            ASSERT_FALSE(line.startsWith("ERROR ")) << line.toStdString();
        }
    }
    ASSERT_FALSE(file.isEmpty()) << "the helper never started recording";
    QTest::qWait(4000);
    ASSERT_EQ(::kill(static_cast<pid_t>(helper.processId()), SIGKILL), 0);
    ASSERT_TRUE(helper.waitForFinished(5000));
    EXPECT_EQ(helper.exitStatus(), QProcess::CrashExit);

    QString error;
    const QJsonObject probe = MediaProbe::probe(file, &error, {"-count_packets"});
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    ASSERT_EQ(videos.size(), 1);
    const QJsonObject video = videos[0].toObject();
    const qint64 packets = video.value("nb_read_packets").toString().toLongLong();
    EXPECT_GE(packets, 60) << "at least two seconds at 30 frames a second";
    // The frames decode: a picture from past the two-second mark.
    const QImage frame = MediaProbe::videoFrame(file, 2.0, QSize(1280, 720));
    EXPECT_FALSE(frame.isNull());
    // The sound tracks that were running survive too.
    EXPECT_EQ(MediaProbe::streamsOfType(probe, "audio").size(), 2);
    EXPECT_GE(MediaProbe::audioSamples(file, 0).size(), 2u * 44100);
}

}  // namespace
}  // namespace orvane
