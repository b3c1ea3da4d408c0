#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

#include "engine/ProgramWindow.h"
#include "engine/WindowLayer.h"

class QSettings;

namespace orvane {

class FrameSource;
class StreamManager;
class VirtualCameraOutputView;

// The pop-out program window: 1280 by 720 centred the first time, then where
// the user left it; never smaller than 640 by 360, its picture kept at 16:9.
// A close by the title bar is reported to the session; a close by the
// session is not.
class ProgramOutputWindow : public QWidget, public ProgramWindow {
    Q_OBJECT

public:
    ProgramOutputWindow(StreamManager& streamManager, const FrameSource* frames,
                        const WindowLayer::ProgramWindowOptions& options, std::function<void(ProgramWindow*)> onUserClose,
                        QSettings& settings);
    ~ProgramOutputWindow() override;

    void bringToFront() override;
    void close() override;
    void setLevel(Level level) override;
    void hideCursor() override;

    Level level() const { return level_; }
    bool isCursorHidden() const { return cursorHidden_; }
    VirtualCameraOutputView* outputView() const { return content_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void saveGeometryNow();
    void keepAspect();

    std::function<void(ProgramWindow*)> onUserClose_;
    QSettings& settings_;
    QString frameKey_;
    VirtualCameraOutputView* content_ = nullptr;
    Level level_ = Level::normal;
    bool closingBySession_ = false;
    bool cursorHidden_ = false;
    int aspectWidth_ = 16;
    int aspectHeight_ = 9;
    // Settles the window back to 16:9 once a resize has come to rest, so
    // that it never fights the window manager during a drag.
    QTimer aspectTimer_;
};

}  // namespace orvane
