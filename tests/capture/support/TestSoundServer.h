#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace orvane::test {

// A private PulseAudio daemon with a null sink "orvane_test_sink" (the
// default sink) and a null source "orvane_test_mic". Sets XDG_RUNTIME_DIR
// and PULSE_SERVER for this process so that clients find it.
class TestSoundServer {
public:
    TestSoundServer() = default;
    ~TestSoundServer() { stop(); }

    QString start();  // empty on success
    void stop();
    QString runtimeDir() const { return runtime_ ? runtime_->path() : QString(); }
    // Runs a pulseaudio-utils tool against this server; empty on success.
    QString runTool(const QStringList& argv, int timeoutMs = 10000) const;

private:
    std::unique_ptr<QTemporaryDir> runtime_;
    qint64 pid_ = -1;
};

}  // namespace orvane::test
