#include "console/bars/WindowManager.h"

#include <QWidget>

#include "document/Log.h"

namespace orvane {

WindowManager::WindowManager(QObject* parent) : QObject(parent) {}

void WindowManager::setIsAlwaysOnTop(bool onTop) {
    if (isAlwaysOnTop_ == onTop) return;
    isAlwaysOnTop_ = onTop;
    emit isAlwaysOnTopChanged(onTop);
    updateWindowLevel();
}

void WindowManager::setIsVisibleInScreenShare(bool visible) {
    if (isVisibleInScreenShare_ == visible) return;
    isVisibleInScreenShare_ = visible;
    emit isVisibleInScreenShareChanged(visible);
    updateSharingType();
}

void WindowManager::setupMainWindow(QWidget* window) {
    QPointer<QWidget> target(window);
    QMetaObject::invokeMethod(
        this,
        [this, target] {
            if (!target) return;
            mainWindow_ = target->window();
            updateWindowLevel();
            updateSharingType();
        },
        Qt::QueuedConnection);
}

void WindowManager::updateWindowLevel() {
    if (!mainWindow_) return;
    const bool wasVisible = mainWindow_->isVisible();
    if (mainWindow_->windowFlags().testFlag(Qt::WindowStaysOnTopHint) == isAlwaysOnTop_) return;
    mainWindow_->setWindowFlag(Qt::WindowStaysOnTopHint, isAlwaysOnTop_);
    // Changing a flag hides a top-level window; bring it back as it was.
    if (wasVisible) mainWindow_->show();
}

void WindowManager::updateSharingType() {
    if (!mainWindow_) return;
    logLine(std::string("🪟 Visible in screen share: ") + (isVisibleInScreenShare_ ? "on" : "off") + " (" +
            sharingUnsupportedHint + ")");
}

}  // namespace orvane
