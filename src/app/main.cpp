#include <QApplication>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QScreen>

#include "LibraryLog.h"

#include "console/BottomBarView.h"
#include "console/ContentView.h"
#include "console/MainStreamingView.h"
#include "console/RightSidebarView.h"
#include "console/Theme.h"
#include "console/WindowManager.h"
#include "engine/StreamManager.h"
#include "teleprompter/TeleprompterManager.h"

#ifdef ORVANE_HAVE_REMOTE
#include "remote/QRCodeURL.h"
#include "remote/QrCodeImage.h"
#include "remote/WebServerManager.h"
#include "remote/session/StreamManagerRemoteBridge.h"
#endif
#ifdef ORVANE_HAVE_CAPTURE
#include <vector>

#include "CaptureFrameSource.h"
#include "capture/CaptureHub.h"
#include "capture/ScreenCapturePermissionProbe.h"
#include "capture/SourceCaptures.h"
#include "capture/StreamQualitySize.h"
#include "capture/linux/V4l2CameraBackend.h"
#include "capture/x11/X11CaptureBackend.h"
#include "capture/x11/X11TargetWatcher.h"
#include "capture/x11/X11WindowRaiser.h"
#include "console/PermissionsManager.h"
#endif
#ifdef ORVANE_HAVE_RECORDING
#include <memory>

#include "recording/LiveFrameTable.h"
#include "recording/ProgramFrameRelay.h"
#include "recording/RecordingManager.h"
#include "recording/RecordingStateMirror.h"
#include "recording/RemoteRecordingSwitch.h"
#endif

// Wires the subsystems into one application: the session, the console's
// root view, and what exists of the remote server and the capture layer.
int main(int argc, char* argv[]) {
    // Before anything can print: every line on standard output is ours.
    orvane::LibraryLog::install();
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANE_PROJECT_VERSION));
    orvane::Theme::apply(app);

#ifdef ORVANE_HAVE_RECORDING
    // Outlives the session, whose remote bridge holds it.
    std::unique_ptr<orvane::RemoteRecordingSwitch> remoteRecording;
#endif
    orvane::StreamManager streamManager;

    const orvane::FrameSource* frames = nullptr;
#ifdef ORVANE_HAVE_CAPTURE
    // One X11 backend lists, probes, captures and raises windows for the
    // whole process; the stages and the pop-out window read live pictures
    // through the hub, one capture per target.
    orvane::X11CaptureBackend captureBackend;
    orvane::V4l2CameraBackend cameraBackend;
    orvane::CaptureHub captureHub;
    orvane::SourceCaptures sourceCaptures(captureBackend, cameraBackend, captureHub,
                                          orvane::captureQualityFor(streamManager.streamQuality()));
    orvane::CaptureFrameSource captureFrames(sourceCaptures);
    frames = &captureFrames;
    QObject::connect(&streamManager, &orvane::StreamManager::streamQualityChanged, &sourceCaptures,
                     [&] { sourceCaptures.setQuality(orvane::captureQualityFor(streamManager.streamQuality())); });
    // A failed capture tries again at once when a camera is plugged in or
    // out (its device node comes or goes), not only at its next delay.
    QFileSystemWatcher deviceNodes({QStringLiteral("/dev")});
    QObject::connect(&deviceNodes, &QFileSystemWatcher::directoryChanged, &sourceCaptures,
                     &orvane::SourceCaptures::retryFailedNow);
    // Likewise when a monitor is plugged in or a window opens: re-plugging
    // the monitor brings its picture back by itself.
    orvane::X11TargetWatcher targetWatcher;
    QObject::connect(&targetWatcher, &orvane::X11TargetWatcher::targetsChanged, &sourceCaptures,
                     &orvane::SourceCaptures::retryFailedNow);
#ifdef ORVANE_HAVE_RECORDING
    // The recorder composes the program on a thread of its own and reads
    // the program's captures' frames there itself, through a table; the
    // relay only tells it which capture is whose. The session owns the
    // recorder.
    auto* recorder = new orvane::RecordingManager(streamManager);
    streamManager.setRecordingManager(recorder);
    orvane::mirrorRecordingState(*recorder, streamManager);
    auto recorderFrames = std::make_shared<orvane::LiveFrameTable>();
    recorder->setFrameSource(recorderFrames);
    auto* programRelay = new orvane::ProgramFrameRelay(streamManager, sourceCaptures, recorderFrames, recorder);
#endif
    // Captures run only for the sources of the two scenes on screen, and
    // for those the recorder reads.
    auto retainShown = [&] {
        std::vector<orvane::Uuid> shown;
        for (const auto* scene : {&streamManager.activeScene(), &streamManager.programScene()})
            if (*scene)
                for (const auto& source : (*scene)->sources) shown.push_back(source.id);
#ifdef ORVANE_HAVE_RECORDING
        for (const auto& id : programRelay->programSourceIds()) shown.push_back(id);
#endif
        sourceCaptures.retainOnly(shown);
    };
    QObject::connect(&streamManager, &orvane::StreamManager::activeSceneChanged, &sourceCaptures, retainShown);
    QObject::connect(&streamManager, &orvane::StreamManager::programSceneChanged, &sourceCaptures, retainShown);
    streamManager.setWindowRaiser(std::make_shared<orvane::X11WindowRaiser>(captureBackend));
    // One probe for the process, so that asking again does not repeat itself.
    orvane::ScreenCapturePermissionProbe permissionProbe(captureBackend);
    orvane::PermissionsManager::setDefaultProbe(
        [&permissionProbe] { return permissionProbe.getScreenCapturePermissionStatus(); });
#endif
#ifdef ORVANE_HAVE_REMOTE
    // Constructed but not started: the remote panel turns it on. The bridge
    // publishes the session to the server and carries the telephone's
    // actions back to it.
    auto* server = new orvane::WebServerManager;
    streamManager.setWebServerManager(server);
    auto* bridge = new orvane::StreamManagerRemoteBridge(&streamManager, server, server);
#ifdef ORVANE_HAVE_RECORDING
    // POST /api/recording drives the real recorder.
    remoteRecording = std::make_unique<orvane::RemoteRecordingSwitch>(*recorder, streamManager);
    bridge->setRecordingControl(remoteRecording.get());
#endif
#endif

    // The session owns the teleprompter; the bottom bar and the preset tab
    // open and close its window.
    auto* teleprompter = new orvane::TeleprompterManager(streamManager);
    streamManager.setTeleprompterManager(teleprompter);

    orvane::WindowManager windowManager;
    orvane::ContentView root(streamManager, windowManager, frames);
    root.mainStreamingView()->bottomBar()->setTeleprompterManager(teleprompter);
    root.mainStreamingView()->rightSidebar()->setTeleprompterManager(teleprompter);
#ifdef ORVANE_HAVE_REMOTE
    root.mainStreamingView()->bottomBar()->setQrCodeGenerator([server](const QString&) {
        // The diagnostic lines of a showing, then the code of its address.
        const auto shown = orvane::QRCodeURL::forServer(server->localIP(), server->serverPort());
        return orvane::generateQRCode(shown.url);
    });
#endif
#ifdef ORVANE_HAVE_CAPTURE
    // The sidebar's sheets list displays, windows and cameras through the
    // same backends that capture them.
    root.mainStreamingView()->rightSidebar()->setCaptureBackends(&captureBackend, &cameraBackend);
#ifdef ORVANE_HAVE_RECORDING
    root.mainStreamingView()->rightSidebar()->setRecordingManager(recorder);
#endif
#endif
    root.setWindowTitle(QStringLiteral("OrvaneUI"));
    root.setMinimumSize(900, 600);
    root.resize(1440, 900);
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect available = screen->availableGeometry();
        root.resize(std::min(1440, available.width()), std::min(900, available.height()));
        root.move(available.center() - QPoint(root.width() / 2, root.height() / 2));
    }
    root.show();
    return app.exec();
}
