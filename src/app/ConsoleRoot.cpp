#include "ConsoleRoot.h"

#include <QSettings>

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
#include "console/bars/BottomBarView.h"
#include "console/bars/TopBarView.h"
#include "console/bars/WindowManager.h"
#include "console/controls/ConsoleAccessibility.h"
#include "console/main_window/ContentView.h"
#include "console/main_window/MainStreamingView.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/sidebar/RightSidebarView.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramFrameRelay.h"
#include "recording/RecordingManager.h"
#include "recording/RecordingStateMirror.h"
#include "recording/RemoteRecordingSwitch.h"
#include "remote/QRCodeURL.h"
#include "remote/QrCodeImage.h"
#include "remote/WebServerManager.h"
#include "remote/session/StreamManagerRemoteBridge.h"
#include "teleprompter/TeleprompterManager.h"

namespace orvane {

ConsoleRoot::ConsoleRoot() : ConsoleRoot(std::make_unique<StreamManager>()) {}

ConsoleRoot::ConsoleRoot(PresetStorage& storage, std::unique_ptr<QSettings> settings)
    : ConsoleRoot(std::make_unique<StreamManager>(storage, std::move(settings))) {}

ConsoleRoot::ConsoleRoot(std::unique_ptr<StreamManager> session)
    : session_(std::move(session)), deviceNodes_({QStringLiteral("/dev")}) {
    // Before any window: every button's accessible action clicks it.
    ConsoleAccessibility::install();
    StreamManager& s = *session_;

    captureBackend_ = std::make_unique<X11CaptureBackend>();
    cameraBackend_ = std::make_unique<V4l2CameraBackend>();
    captureHub_ = std::make_unique<CaptureHub>();
    sourceCaptures_ = std::make_unique<SourceCaptures>(*captureBackend_, *cameraBackend_, *captureHub_,
                                                       captureQualityFor(s.streamQuality()));
    captureFrames_ = std::make_unique<CaptureFrameSource>(*sourceCaptures_);
    QObject::connect(&s, &StreamManager::streamQualityChanged, sourceCaptures_.get(),
                     [this] { sourceCaptures_->setQuality(captureQualityFor(session_->streamQuality())); });
    QObject::connect(&deviceNodes_, &QFileSystemWatcher::directoryChanged, sourceCaptures_.get(),
                     &SourceCaptures::retryFailedNow);
    targetWatcher_ = std::make_unique<X11TargetWatcher>();
    QObject::connect(targetWatcher_.get(), &X11TargetWatcher::targetsChanged, sourceCaptures_.get(),
                     &SourceCaptures::retryFailedNow);
    s.setWindowRaiser(std::make_shared<X11WindowRaiser>(*captureBackend_));
    permissionProbe_ = std::make_unique<ScreenCapturePermissionProbe>(*captureBackend_);
    PermissionsManager::setDefaultProbe(
        [probe = permissionProbe_.get()] { return probe->getScreenCapturePermissionStatus(); });

    // The recorder composes the program on a thread of its own and reads the
    // program's captures' frames there itself, through a table; the relay
    // only tells it which capture is whose.
    recorder_ = std::make_unique<RecordingManager>(s);
    mirrorRecordingState(*recorder_, s);
    recorderFrames_ = std::make_shared<LiveFrameTable>();
    recorder_->setFrameSource(recorderFrames_);
    programRelay_ = new ProgramFrameRelay(s, *sourceCaptures_, recorderFrames_, recorder_.get());

    // Captures run only for the sources of the two scenes on screen, and for
    // those the recorder reads.
    QObject::connect(&s, &StreamManager::activeSceneChanged, sourceCaptures_.get(), [this] { retainShownCaptures(); });
    QObject::connect(&s, &StreamManager::programSceneChanged, sourceCaptures_.get(), [this] { retainShownCaptures(); });

    remoteRecording_ = std::make_unique<RemoteRecordingSwitch>(*recorder_, s);
    server_ = std::make_unique<WebServerManager>();
    bridge_ = new StreamManagerRemoteBridge(&s, server_.get(), server_.get());
    bridge_->setRecordingControl(remoteRecording_.get());

    teleprompter_ = std::make_unique<TeleprompterManager>(s);
}

ConsoleRoot::~ConsoleRoot() {
    // The window goes first, then the subsystems in reverse order of their
    // making (the members below), the session last. The probe the console
    // reads and the raiser the session holds are ours: they go with us.
    console_.reset();
    PermissionsManager::setDefaultProbe({});
    session_->setWindowRaiser(nullptr);
}

const FrameSource& ConsoleRoot::frames() const { return *captureFrames_; }

void ConsoleRoot::retainShownCaptures() {
    std::vector<Uuid> shown;
    for (const auto* scene : {&session_->activeScene(), &session_->programScene()})
        if (*scene)
            for (const auto& source : (*scene)->sources) shown.push_back(source.id);
    for (const auto& id : programRelay_->programSourceIds()) shown.push_back(id);
    sourceCaptures_->retainOnly(shown);
}

ContentView& ConsoleRoot::console() {
    if (console_) return *console_;
    windowManager_ = std::make_unique<WindowManager>();
    console_ = std::make_unique<ContentView>(*session_, *windowManager_, captureFrames_.get());
    MainStreamingView& main = *console_->mainStreamingView();
    main.setWebServer(server_.get());
    main.bottomBar()->setTeleprompterManager(teleprompter_.get());
    main.rightSidebar()->setTeleprompterManager(teleprompter_.get());
    WebServerManager* server = server_.get();
    main.bottomBar()->setQrCodeGenerator([server](const QString&) {
        // The diagnostic lines of a showing, then the code of its address.
        const auto shown = QRCodeURL::forServer(server->localIP(), server->serverPort());
        return generateQRCode(shown.url);
    });
    // The sidebar's sheets list displays, windows and cameras through the
    // same backends that capture them.
    main.rightSidebar()->setCaptureBackends(captureBackend_.get(), cameraBackend_.get());
    main.rightSidebar()->setRecordingManager(recorder_.get());
    return *console_;
}

}  // namespace orvane
