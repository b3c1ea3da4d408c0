#include "engine/ProgramWindowController.h"

#include <QPointer>

#include <string>

#include "document/Log.h"
#include "engine/AssignIfChanged.h"
#include "engine/PointerState.h"
#include "engine/VirtualCameraManager.h"
#include "engine/WindowLayer.h"

namespace orvane {

ProgramWindowController::ProgramWindowController(const PointerState& pointer, VirtualCameraManager& camera,
                                                 QObject* parent)
    : QObject(parent), pointer_(pointer), camera_(camera) {}

ProgramWindowController::~ProgramWindowController() = default;

void ProgramWindowController::setWindowLayer(std::shared_ptr<WindowLayer> layer) { windowLayer_ = std::move(layer); }

void ProgramWindowController::openProgramWindow() {
    if (programWindow_) {
        programWindow_->bringToFront();
        return;
    }
    if (!windowLayer_) {
        logLine("❌ Cannot open the program window: no window system attached");
        return;
    }

    WindowLayer::ProgramWindowOptions options;
    options.contentWidth = 1280;
    options.contentHeight = 720;
    options.title = programWindowTitle;
    options.frameName = programWindowFrameName;
    options.minimumWidth = 640;
    options.minimumHeight = 360;
    options.aspectWidth = 16;
    options.aspectHeight = 9;
    QPointer<ProgramWindowController> self(this);
    auto window = windowLayer_->createProgramWindow(options, [self](ProgramWindow* closed) {
        if (self) self->windowWillClose(closed);
    });
    if (!window) {
        logLine("❌ Cannot open the program window: the window could not be created");
        return;
    }
    // A new window is at normal level whatever programWindowAlwaysOnTop says;
    // only updateProgramWindowLevel applies the flag.
    if (!pointer_.showCursor()) window->hideCursor();
    programWindow_ = std::move(window);
    programWindow_->bringToFront();
    setIsProgramWindowOpen(true);

    if (!camera_.isRunning()) {
        camera_.setIsRunning(true);
        logLine("🎥 Virtual camera started");
    }
    logLine("🖱️ Mouse tracking disabled for performance");
    logLine("📺 Virtual camera window opened");
}

void ProgramWindowController::closeProgramWindow() {
    if (camera_.isRunning()) {
        camera_.setIsRunning(false);
        logLine("🎥 Virtual camera stopped");
    }
    if (programWindow_) programWindow_->close();
    programWindow_.reset();
    setIsProgramWindowOpen(false);
    logLine("📺 Virtual camera window closed");
}

void ProgramWindowController::windowWillClose(ProgramWindow* window) {
    if (!window || window != programWindow_.get()) return;
    // The window is inside its own close handler: release it on the next turn
    // of the event loop, not under its feet.
    std::shared_ptr<ProgramWindow> released = std::move(programWindow_);
    programWindow_.reset();
    QMetaObject::invokeMethod(this, [released] {}, Qt::QueuedConnection);
    setIsProgramWindowOpen(false);
    logLine("📺 Program window closed by user");
}

void ProgramWindowController::updateProgramWindowLevel() {
    if (!programWindow_) return;
    programWindow_->setLevel(programWindowAlwaysOnTop_ ? ProgramWindow::Level::floating
                                                       : ProgramWindow::Level::normal);
    logLine(std::string("📺 Program window level updated: ") +
            (programWindowAlwaysOnTop_ ? "Always on Top" : "Normal"));
}

void ProgramWindowController::setProgramWindowAlwaysOnTop(bool onTop) {
    if (assignIfChanged(programWindowAlwaysOnTop_, onTop)) emit programWindowAlwaysOnTopChanged(onTop);
}

void ProgramWindowController::setIsProgramWindowOpen(bool open) {
    if (assignIfChanged(isProgramWindowOpen_, open)) emit isProgramWindowOpenChanged(open);
}

}  // namespace orvane
