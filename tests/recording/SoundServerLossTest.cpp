// Recording without a sound server: none at all from the start, and one
// that dies in the middle of a recording. Either way the recording runs to
// its stop, and the file keeps both sound tracks, silent where there was no
// server, as long as the picture.

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

#include "recording/RecordingManager.h"
#include "support/MediaProbe.h"
#include "support/RecordingHarness.h"
#include "support/SoundServer.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace sound_server_loss_test {

using test::MediaProbe;
using test::RecordingHarness;
using test::SoundServer;

constexpr double kSampleRate = 44100;  // what MediaProbe decodes to

// Sets environment variables for the life of the object, then puts back
// what was there.
class EnvironmentOverride {
public:
    void set(const char* name, const QByteArray& value) {
        saved_.push_back({name, qEnvironmentVariableIsSet(name), qgetenv(name)});
        qputenv(name, value);
    }
    ~EnvironmentOverride() {
        for (auto it = saved_.rbegin(); it != saved_.rend(); ++it) {
            if (it->wasSet)
                qputenv(it->name, it->value);
            else
                qunsetenv(it->name);
        }
    }

private:
    struct Saved {
        const char* name;
        bool wasSet;
        QByteArray value;
    };
    std::vector<Saved> saved_;
};

double number(const QJsonObject& object, const char* key) { return object.value(key).toString().toDouble(); }

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos) break;
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> linesContaining(const std::string& text, const std::string& part) {
    std::vector<std::string> found;
    for (const auto& line : linesOf(text))
        if (line.find(part) != std::string::npos) found.push_back(line);
    return found;
}

// The samples from `from_s` to `to_s` of a decoded track.
std::vector<float> slice(const std::vector<float>& samples, double from_s, double to_s) {
    const auto first = static_cast<std::size_t>(std::max(0.0, from_s) * kSampleRate);
    const auto last = std::min(samples.size(), static_cast<std::size_t>(std::max(0.0, to_s) * kSampleRate));
    if (first >= last) return {};
    return {samples.begin() + static_cast<std::ptrdiff_t>(first), samples.begin() + static_cast<std::ptrdiff_t>(last)};
}

// Both sound tracks are there and as long as the picture, and the picture
// decodes at the end: the file plays whole.
void expectPlaysWhole(const QString& file, double seconds) {
    QString error;
    const QJsonObject probe = MediaProbe::probe(file, &error);
    ASSERT_FALSE(probe.isEmpty()) << error.toStdString();
    const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
    const QJsonArray audios = MediaProbe::streamsOfType(probe, "audio");
    ASSERT_EQ(videos.size(), 1);
    ASSERT_EQ(audios.size(), 2);
    const QJsonObject video = videos[0].toObject();
    EXPECT_NEAR(number(video, "duration"), seconds, 0.6);
    for (const auto& audio : audios) {
        const QJsonObject track = audio.toObject();
        EXPECT_EQ(track.value("codec_name").toString(), "aac");
        EXPECT_NEAR(number(track, "duration"), number(video, "duration"), 0.15);
    }
    EXPECT_EQ(audios[0].toObject().value("channels").toInt(), 2);
    EXPECT_EQ(audios[1].toObject().value("channels").toInt(), 1);
    EXPECT_FALSE(MediaProbe::videoFrame(file, number(video, "duration") - 0.2, QSize(1280, 720)).isNull());
}

TEST(SoundServerLossTest, WithoutAnySoundServerTheRecordingHasSilentTracksAndCompletes) {
    // A runtime directory of our own with no server in it, and the address
    // of a socket that does not exist.
    QTemporaryDir runtime;
    ASSERT_TRUE(runtime.isValid());
    EnvironmentOverride environment;
    environment.set("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    environment.set("PULSE_SERVER", ("unix:" + runtime.path() + "/pulse/native").toLocal8Bit());
    // A client configuration that never starts a server by itself.
    {
        QFile config(runtime.filePath("client.conf"));
        ASSERT_TRUE(config.open(QIODevice::WriteOnly));
        config.write("autospawn = no\n");
    }
    environment.set("PULSE_CLIENTCONFIG", runtime.filePath("client.conf").toLocal8Bit());

    RecordingHarness harness;
    RecordingManager& r = harness.recorder();
    r.setOutputFormat(OutputFormat::mp4);
    r.setVideoQuality(VideoQuality::low);
    ASSERT_TRUE(r.includeAudio() && r.includeSystemAudio() && r.includeMicrophone());
    harness.session().setProgramScene(harness.makeScene());

    test::StdoutCapture log;
    const RecordingStatus reached = harness.record(1.5);
    const std::string lines = log.text();
    ASSERT_EQ(reached, RecordingStatus::completed) << (r.errorMessage() ? r.errorMessage()->toStdString() : "") << "\n"
                                                   << lines;
    EXPECT_FALSE(r.errorMessage());
    // Said once for each track, with the reason.
    const auto unavailable = linesContaining(lines, "⚠️ System audio unavailable");
    ASSERT_EQ(unavailable.size(), 1u) << lines;
    EXPECT_NE(unavailable[0].find("the track stays silent: Connection refused"), std::string::npos) << unavailable[0];
    EXPECT_EQ(linesContaining(lines, "⚠️ No microphone device found").size(), 1u) << lines;
    EXPECT_EQ(linesContaining(lines, "❌").size(), 0u) << lines;

    const QString file = r.outputURL()->toLocalFile();
    expectPlaysWhole(file, 1.5);
    for (int track : {0, 1}) {
        const std::vector<float> samples = MediaProbe::audioSamples(file, track);
        EXPECT_GT(samples.size(), static_cast<std::size_t>(1.2 * kSampleRate)) << "track " << track;
        EXPECT_LT(MediaProbe::rms(samples), 0.001) << "track " << track;
    }
}

TEST(SoundServerLossTest, ASoundServerThatDiesMidRecordingLeavesSilenceFromThenOn) {
    SoundServer sound;
    ASSERT_EQ(sound.start(SoundServer::Microphone::present), QString());
    ASSERT_EQ(sound.playSinkTone(), QString());

    RecordingHarness harness;
    RecordingManager& r = harness.recorder();
    r.setOutputFormat(OutputFormat::mp4);
    r.setVideoQuality(VideoQuality::low);
    harness.session().setProgramScene(harness.makeScene());

    test::StdoutCapture log;
    double killedAt_s = 0;
    const RecordingStatus reached = harness.record(2.0, [&] {
        // Both tones are in the file up to here.
        ASSERT_TRUE(RecordingHarness::waitFor([&] { return r.recordingDuration() >= 2.0; }, 10000));
        killedAt_s = r.recordingDuration();
        ASSERT_EQ(sound.killDaemon(), QString());
    });
    const std::string lines = log.text();
    ASSERT_EQ(reached, RecordingStatus::completed) << (r.errorMessage() ? r.errorMessage()->toStdString() : "") << "\n"
                                                   << lines;
    ASSERT_GE(killedAt_s, 2.0);

    // One line says what happened, for both tracks together; no error.
    const auto lost = linesContaining(lines, "sound server");
    ASSERT_EQ(lost.size(), 1u) << lines;
    EXPECT_EQ(lost[0].rfind("⚠️ Lost the sound server", 0), 0u) << lost[0];
    EXPECT_NE(lost[0].find("the sound tracks go on silent"), std::string::npos) << lost[0];
    EXPECT_EQ(linesContaining(lines, "❌").size(), 0u) << lines;

    const QString file = r.outputURL()->toLocalFile();
    const double recorded_s = killedAt_s + 2.0;
    expectPlaysWhole(file, recorded_s);

    // The tone of each track before the kill (after the first half second,
    // which the devices may start late into), silence from shortly after.
    struct Track {
        int index;
        double frequency_hz;
    };
    for (const Track& track : {Track{0, 1000}, Track{1, SoundServer::kMicrophoneFrequency_hz}}) {
        const std::vector<float> samples = MediaProbe::audioSamples(file, track.index);
        const std::vector<float> before = slice(samples, 0.5, killedAt_s - 0.3);
        const std::vector<float> after = slice(samples, killedAt_s + 0.5, recorded_s - 0.3);
        ASSERT_GT(before.size(), static_cast<std::size_t>(kSampleRate)) << "track " << track.index;
        ASSERT_GT(after.size(), static_cast<std::size_t>(kSampleRate)) << "track " << track.index;
        EXPECT_GT(MediaProbe::rms(before), 0.05) << "track " << track.index;
        EXPECT_GT(MediaProbe::toneShare(before, track.frequency_hz, kSampleRate), 0.5) << "track " << track.index;
        EXPECT_LT(MediaProbe::rms(after), 0.001) << "track " << track.index;
    }
}

}  // namespace
}  // namespace orvane
