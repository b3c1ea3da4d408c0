#pragma once

#include <QObject>

#include <memory>

#include "engine/ProgramWindow.h"

namespace orvane {

class PointerState;
class VirtualCameraManager;
class WindowLayer;

// The pop-out program window: opens it through the window layer, closes it,
// sets its level and hears when the user closes it. The window is the
// virtual camera, whose flag follows it. Main thread only.
class ProgramWindowController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isProgramWindowOpen READ isProgramWindowOpen NOTIFY isProgramWindowOpenChanged)
    Q_PROPERTY(bool programWindowAlwaysOnTop READ programWindowAlwaysOnTop WRITE setProgramWindowAlwaysOnTop NOTIFY programWindowAlwaysOnTopChanged)

public:
    static constexpr const char* programWindowTitle = "OrvaneUI - Virtual Camera Output";
    static constexpr const char* programWindowFrameName = "VirtualCameraWindow";

    // `pointer` says whether a new window hides the cursor; `camera` is the
    // flag that follows the window. Both must outlive the controller.
    ProgramWindowController(const PointerState& pointer, VirtualCameraManager& camera, QObject* parent = nullptr);
    ~ProgramWindowController() override;

    bool isProgramWindowOpen() const { return isProgramWindowOpen_; }
    bool programWindowAlwaysOnTop() const { return programWindowAlwaysOnTop_; }
    void setProgramWindowAlwaysOnTop(bool onTop);  // applied by updateProgramWindowLevel

    // The windowing system; without one, opening logs and does nothing.
    void setWindowLayer(std::shared_ptr<WindowLayer> layer);

public slots:
    void openProgramWindow();
    void closeProgramWindow();
    void updateProgramWindowLevel();
    // The pop-out window's user-close callback; any other window is ignored.
    void windowWillClose(orvane::ProgramWindow* window);

signals:
    void isProgramWindowOpenChanged(bool open);
    void programWindowAlwaysOnTopChanged(bool onTop);

private:
    void setIsProgramWindowOpen(bool open);

    const PointerState& pointer_;
    VirtualCameraManager& camera_;
    std::shared_ptr<WindowLayer> windowLayer_;
    bool isProgramWindowOpen_ = false;
    bool programWindowAlwaysOnTop_ = false;
    // Kept alive by a queued release when the user closes it, so that its
    // own close handler may finish.
    std::shared_ptr<ProgramWindow> programWindow_;
};

}  // namespace orvane
