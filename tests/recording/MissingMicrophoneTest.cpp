#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

#include <memory>
#include <string>

#include "recording/RecordingManager.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"
#include "support/SoundServer.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace missing_microphone_test {

using test::MediaProbe;
using test::RecordingHarness;
using test::SoundServer;

double number(const QJsonObject& object, const char* key) { return object.value(key).toString().toDouble(); }

// A machine with speakers and no microphone: the sound server's only source
// is the monitor of its sink, which is also what it offers as the default
// input. A 1 kHz tone plays into the sink.
class MissingMicrophoneTest : public ::testing::Test {
protected:
    void SetUp() override {
        const QString failure = sound.start(SoundServer::Microphone::absent);
        ASSERT_TRUE(failure.isEmpty()) << failure.toStdString();
        QString sources;
        ASSERT_EQ(sound.runTool({"pactl", "list", "short", "sources"}, 10000, &sources), QString());
        const QStringList lines = sources.split('\n', Qt::SkipEmptyParts);
        ASSERT_FALSE(lines.isEmpty());
        for (const QString& line : lines)
            ASSERT_TRUE(line.section('\t', 1, 1).endsWith(".monitor")) << "not a monitor: " << line.toStdString();

        harness = std::make_unique<RecordingHarness>();
        ASSERT_EQ(sound.playSinkTone(), QString());
    }
    void TearDown() override {
        harness.reset();
        sound.stop();
    }

    SoundServer sound;
    std::unique_ptr<RecordingHarness> harness;
};

TEST_F(MissingMicrophoneTest, TheMicrophoneTrackStaysAndIsSilentWhileTheSystemTrackCarriesTheTone) {
    RecordingManager& r = harness->recorder();
    r.setOutputFormat(OutputFormat::mp4);
    r.setVideoQuality(VideoQuality::low);
    ASSERT_TRUE(r.includeAudio());
    ASSERT_TRUE(r.includeSystemAudio());
    ASSERT_TRUE(r.includeMicrophone());
    ASSERT_FALSE(r.selectedMicrophone());
    harness->session().setProgramScene(harness->makeScene());

    test::StdoutCapture log;
    const RecordingStatus reached = harness->record(2.0);
    const std::string lines = log.text();
    ASSERT_EQ(reached, RecordingStatus::completed) << (r.errorMessage() ? r.errorMessage()->toStdString() : lines);
    EXPECT_NE(lines.find("⚠️ No microphone device found\n"), std::string::npos) << lines;
    EXPECT_EQ(lines.find("Microphone capture started"), std::string::npos) << lines;

    QString error;
    const QJsonObject probe = MediaProbe::probe(r.outputURL()->toLocalFile(), &error);
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray audios = MediaProbe::streamsOfType(probe, "audio");
    ASSERT_EQ(audios.size(), 2);
    const QJsonObject video = MediaProbe::streamsOfType(probe, "video")[0].toObject();
    const QJsonObject system = audios[0].toObject();
    const QJsonObject microphone = audios[1].toObject();
    EXPECT_EQ(system.value("channels").toInt(), 2);
    EXPECT_EQ(microphone.value("codec_name").toString(), "aac");
    EXPECT_EQ(microphone.value("channels").toInt(), 1);
    EXPECT_EQ(microphone.value("sample_rate").toString(), "44100");
    // As long as the picture, from the same moment.
    EXPECT_NEAR(number(video, "duration"), 2.0, 0.3);
    EXPECT_NEAR(number(microphone, "duration"), number(video, "duration"), 0.1);
    EXPECT_NEAR(number(microphone, "start_time"), number(video, "start_time"), 0.05);

    const std::vector<float> systemSamples = MediaProbe::audioSamples(r.outputURL()->toLocalFile(), 0);
    const std::vector<float> microphoneSamples = MediaProbe::audioSamples(r.outputURL()->toLocalFile(), 1);
    ASSERT_GT(microphoneSamples.size(), 44100u * 3 / 2);
    EXPECT_GT(MediaProbe::rms(systemSamples), 0.05);
    EXPECT_GT(MediaProbe::toneShare(systemSamples, 1000, 44100), 0.5);
    // The tone is what the machine plays, not a voice: nothing of it here.
    EXPECT_LT(MediaProbe::rms(microphoneSamples), 0.001);
}

}  // namespace
}  // namespace orvane
