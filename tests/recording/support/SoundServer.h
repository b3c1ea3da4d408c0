#pragma once

#include <QString>
#include <QStringList>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace orvane::test {

// A private PulseAudio for one test: a null sink "orvane_rec_sink" as the
// default sink, and a microphone "orvane_rec_mic" as the default source: a
// source remapped from a second null sink's monitor, into which the server
// plays a 440 Hz tone from start() to stop(). A remapped monitor hands its
// first sound to a new client only after the sink's current long block
// (up to two seconds), where a microphone starts at once: start() keeps a
// listener on the microphone from the moment it has sound, so that it runs
// at a short latency when a recording opens it. Without the microphone, the
// null sink is all there is: the only source is its monitor. Started in a
// private runtime directory, stopped by its pid; the tone player too.
class SoundServer {
public:
    static constexpr const char* kSink = "orvane_rec_sink";
    static constexpr const char* kMicrophone = "orvane_rec_mic";
    static constexpr const char* kMicrophoneSink = "orvane_rec_mic_sink";
    static constexpr int kMicrophoneFrequency_hz = 440;

    SoundServer() = default;
    ~SoundServer() { stop(); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    enum class Microphone { present, absent };

    // Empty on success; points this process's PULSE_SERVER at it.
    QString start(Microphone microphone = Microphone::present);
    void stop();
    // Kills the daemon alone with SIGKILL, as a crash would, and waits until
    // it is gone; its clients find their connection cut. Empty on success.
    QString killDaemon();
    QString runtimeDir() const { return runtime_ ? runtime_->path() : QString(); }
    // Runs a client tool against this server; empty on success. Its
    // standard output goes to `output` when given.
    QString runTool(const QStringList& argv, int timeoutMs = 10000, QString* output = nullptr) const;
    // Plays a 20-second 1 kHz tone into the sink, the system sound a
    // recording takes, until stop(); empty on success.
    QString playSinkTone();

private:
    std::unique_ptr<QTemporaryDir> runtime_;
    std::unique_ptr<QProcess> voice_;     // the microphone's tone
    std::unique_ptr<QProcess> listener_;  // keeps the microphone running
    std::unique_ptr<QProcess> sinkTone_;  // the system sound
    qint64 pid_ = -1;
};

}  // namespace orvane::test
