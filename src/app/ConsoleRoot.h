#pragma once

#include <QFileSystemWatcher>

#include <memory>

class QSettings;

namespace orvane {

class CaptureFrameSource;
class CaptureHub;
class ContentView;
class FrameSource;
class LiveFrameTable;
class PresetStorage;
class ProgramFrameRelay;
class RecordingManager;
class RemoteRecordingSwitch;
class ScreenCapturePermissionProbe;
class SourceCaptures;
class StreamManager;
class StreamManagerRemoteBridge;
class TeleprompterManager;
class V4l2CameraBackend;
class WebServerManager;
class WindowManager;
class X11CaptureBackend;
class X11TargetWatcher;

// The composition root: owns the session and every subsystem around it (the
// capture layer, the recorder, the remote server, the teleprompter) and
// hands each lower layer what it needs, typed. Members are destroyed in the
// reverse order of their declaration, so everything that uses the session
// goes before it, and the console window before everything it shows.
class ConsoleRoot {
public:
    // The application's session: the shared preset store and the
    // application's settings.
    ConsoleRoot();
    // Over any store and settings file, for tests.
    ConsoleRoot(PresetStorage& storage, std::unique_ptr<QSettings> settings);
    ~ConsoleRoot();
    ConsoleRoot(const ConsoleRoot&) = delete;
    ConsoleRoot& operator=(const ConsoleRoot&) = delete;

    StreamManager& session() const { return *session_; }
    SourceCaptures& captures() const { return *sourceCaptures_; }
    const FrameSource& frames() const;
    RecordingManager& recorder() const { return *recorder_; }
    WebServerManager& webServer() const { return *server_; }
    TeleprompterManager& teleprompter() const { return *teleprompter_; }

    // The main window, made on the first call and wired to the subsystems.
    // Needs a QApplication.
    ContentView& console();

private:
    explicit ConsoleRoot(std::unique_ptr<StreamManager> session);
    void retainShownCaptures();

    std::unique_ptr<StreamManager> session_;

    // One X11 backend lists, probes, captures and raises windows for the
    // whole process; the stages, the pop-out window and the recorder read
    // live pictures through the hub, one capture per target.
    std::unique_ptr<X11CaptureBackend> captureBackend_;
    std::unique_ptr<V4l2CameraBackend> cameraBackend_;
    std::unique_ptr<CaptureHub> captureHub_;
    std::unique_ptr<SourceCaptures> sourceCaptures_;
    std::unique_ptr<CaptureFrameSource> captureFrames_;
    // A failed capture tries again at once when a camera is plugged in or
    // out (its device node comes or goes), or a monitor or window appears.
    QFileSystemWatcher deviceNodes_;
    std::unique_ptr<X11TargetWatcher> targetWatcher_;
    // One probe for the process, so that asking again does not repeat itself.
    std::unique_ptr<ScreenCapturePermissionProbe> permissionProbe_;

    // The recorder composes the program on a thread of its own from a table
    // that the relay keeps bound to the program's captures.
    std::unique_ptr<RecordingManager> recorder_;
    std::shared_ptr<LiveFrameTable> recorderFrames_;
    ProgramFrameRelay* programRelay_ = nullptr;  // child of the recorder

    // POST /api/recording drives the real recorder; outlives the server,
    // whose bridge holds it.
    std::unique_ptr<RemoteRecordingSwitch> remoteRecording_;
    // Constructed but not started: the remote panel turns it on. The bridge
    // publishes the session to the server and carries the telephone's
    // actions back to it.
    std::unique_ptr<WebServerManager> server_;
    StreamManagerRemoteBridge* bridge_ = nullptr;  // child of the server

    // The bottom bar and the preset tab open and close its window.
    std::unique_ptr<TeleprompterManager> teleprompter_;

    std::unique_ptr<WindowManager> windowManager_;
    std::unique_ptr<ContentView> console_;
};

}  // namespace orvane
