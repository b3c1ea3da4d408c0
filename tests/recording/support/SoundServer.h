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
// plays a 440 Hz tone from start() to stop(). Started in a private runtime
// directory, stopped by its pid; the tone player too.
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

    // Empty on success; points this process's PULSE_SERVER at it.
    QString start();
    void stop();
    QString runtimeDir() const { return runtime_ ? runtime_->path() : QString(); }
    // Runs a client tool against this server; empty on success.
    QString runTool(const QStringList& argv, int timeoutMs = 10000) const;

private:
    std::unique_ptr<QTemporaryDir> runtime_;
    std::unique_ptr<QProcess> voice_;  // the microphone's tone
    qint64 pid_ = -1;
};

}  // namespace orvane::test
