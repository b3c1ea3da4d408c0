#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <cmath>
#include <mutex>
#include <vector>

#include "capture/linux/PulseAudioCapture.h"
#include "capture/linux/PulseAudioDevices.h"
#include "support/ChildProcess.h"
#include "support/QStringPrinter.h"
#include "support/QtTestEnvironment.h"
#include "support/TestSoundServer.h"

namespace orvane {
namespace audio_test {

::testing::Environment* const qtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtTestEnvironment(false));

class AudioTest : public ::testing::Test {
protected:
    void SetUp() override {
        const QString failure = server.start();
        ASSERT_TRUE(failure.isEmpty()) << failure.toStdString();
    }
    test::TestSoundServer server;
};

TEST_F(AudioTest, MicrophonesAreTheSourcesThatAreNotMonitors) {
    auto microphones = PulseAudioDevices::microphones();
    ASSERT_TRUE(microphones.ok()) << microphones.error().toStdString();
    ASSERT_EQ(microphones.value().size(), 1u);
    EXPECT_EQ(microphones.value()[0].id, "orvane_test_mic");
    EXPECT_FALSE(microphones.value()[0].name.isEmpty());
    for (const MicrophoneDevice& device : microphones.value()) EXPECT_FALSE(device.id.endsWith(".monitor"));
}

TEST_F(AudioTest, SystemSoundIsTheDefaultSinksMonitor) {
    auto source = PulseAudioDevices::systemSoundSource();
    ASSERT_TRUE(source.ok()) << source.error().toStdString();
    EXPECT_EQ(source.value(), "orvane_test_sink.monitor");
}

TEST_F(AudioTest, TwoSecondsOfAToneFromTheMonitor) {
    const QString tone = server.runtimeDir() + "/tone.wav";
    ASSERT_EQ(server.runTool({"sox", "-n", "-r", "48000", "-c", "2", tone, "synth", "6", "sine", "1000", "vol", "0.5"}),
              QString());
    test::ChildProcess player;
    ASSERT_TRUE(player.start({"paplay", "--device=orvane_test_sink", tone.toStdString()}));

    auto monitor = PulseAudioDevices::systemSoundSource();
    ASSERT_TRUE(monitor.ok());
    std::mutex mutex;
    std::vector<float> left;  // protected by mutex
    PulseAudioCapture capture(monitor.value(), [&](const float* samples, std::size_t frames) {
        std::lock_guard lock(mutex);
        for (std::size_t i = 0; i < frames; ++i) left.push_back(samples[i * PulseAudioCapture::kChannels]);
    });
    ASSERT_EQ(capture.start(), QString());
    // A null sink that was rendering in long blocks before this stream asked
    // for 10 ms ones finishes its current block first; the two seconds count
    // from the first delivery.
    ASSERT_TRUE(test::waitUntil([&] { return capture.framesCaptured() > 0; }, 3000));
    {
        std::lock_guard lock(mutex);
        left.clear();
    }
    QElapsedTimer timer;
    timer.start();
    test::waitUntil([] { return false; }, 2000);
    capture.stop();
    const double wallSeconds = timer.elapsed() / 1000.0;

    std::lock_guard lock(mutex);
    const double seconds = static_cast<double>(left.size()) / PulseAudioCapture::kSampleRate;
    EXPECT_NEAR(seconds, 2.0, 0.1) << "wall clock " << wallSeconds;

    double energy = 0;
    int crossings = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        energy += static_cast<double>(left[i]) * left[i];
        if (i > 0 && (left[i - 1] < 0) != (left[i] < 0)) ++crossings;
    }
    const double rms = std::sqrt(energy / static_cast<double>(std::max<std::size_t>(left.size(), 1)));
    EXPECT_GT(rms, 0.1);  // a 0.5 sine has an RMS of 0.35
    // A 1 kHz tone crosses zero 2000 times a second.
    EXPECT_NEAR(crossings / seconds, 2000, 100);
}

TEST_F(AudioTest, UnknownSourceFailsToOpen) {
    PulseAudioCapture capture("no_such_source", nullptr);
    EXPECT_FALSE(capture.start().isEmpty());
    EXPECT_FALSE(capture.isRunning());
}

TEST(AudioWithoutServer, ListingFailsAsAValue) {
    ::setenv("PULSE_SERVER", "unix:/nonexistent/orvane/native", 1);
    auto microphones = PulseAudioDevices::microphones();
    EXPECT_FALSE(microphones.ok());
    EXPECT_TRUE(microphones.error().startsWith("Cannot connect to the sound server"));
    EXPECT_FALSE(PulseAudioDevices::systemSoundSource().ok());
    ::unsetenv("PULSE_SERVER");
}

}  // namespace
}  // namespace orvane
