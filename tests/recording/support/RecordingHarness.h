#pragma once

#include <QImage>
#include <QSettings>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "document/PresetStorage.h"
#include "document/StreamingScene.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"
#include "recording/RecordingManager.h"

namespace orvane::test {

// A session with a recorder in a private home: recordings land in
// <home>/Documents/OrvaneUI Recordings. Live pictures come from a lavfi
// test camera through the capture hub, and from fixed pictures.
class RecordingHarness {
public:
    // A private home of its own, removed afterwards; or the given folder.
    RecordingHarness();
    explicit RecordingHarness(const QString& home);
    ~RecordingHarness();

    QString home() const { return homePath_; }
    StreamManager& session() { return *session_; }
    RecordingManager& recorder() { return *recorder_; }
    LiveFrameTable& frames() { return *frames_; }

    // A gradient scene with the test camera (left) and a screen source
    // (right) that shows `screenPicture` when it is not null.
    StreamingScene makeScene(const QImage& screenPicture = {});
    // Binds the camera source of a scene to the running test camera.
    void bindCamera(const Source& camera);

    // Starts, waits for `recording`, records `seconds`, stops and waits for
    // the file to close. The status reached, or the one it got stuck in.
    RecordingStatus record(double seconds, std::function<void()> whileRecording = {});

    static bool waitFor(const std::function<bool()>& condition, int timeoutMs);
    static QImage patternPicture(QSize size);

private:
    QTemporaryDir ownHome_;
    QString homePath_;
    QByteArray oldHome_;
    std::unique_ptr<PresetStorage> storage_;
    std::unique_ptr<StreamManager> session_;
    std::unique_ptr<RecordingManager> recorder_;  // goes before the session
    // The camera backend is shared with every opener handed to the hub, so
    // that it outlives a capture thread still opening through it, whoever
    // holds that capture last (the frame table, a recording's snapshot).
    std::shared_ptr<LavfiCameraBackend> cameras_ = std::make_shared<LavfiCameraBackend>();
    CaptureHub hub_;
    std::shared_ptr<LiveFrameTable> frames_;
    std::shared_ptr<SharedCapture> camera_;
};

}  // namespace orvane::test
