#pragma once

#include <QImage>
#include <QList>

#include <cstdint>
#include <optional>

#include "capture/CaptureListManager.h"
#include "capture/CaptureWindow.h"

namespace orvane {

// The window list behind the window sheet, and the way to raise a window.
// Short-lived, main thread.
class WindowCaptureManager : public CaptureListManager {
    Q_OBJECT
    Q_PROPERTY(QList<orvane::CaptureWindow> availableWindows READ availableWindows NOTIFY availableWindowsChanged)

public:
    explicit WindowCaptureManager(CaptureBackend& backend, QObject* parent = nullptr);

    // Lists on a worker thread; isLoading stays true until the result is
    // published on the main thread. A failure keeps the previous list and
    // sets errorMessage. Of overlapping fetches the later one wins.
    void fetchAvailableWindows();
    std::optional<QImage> getWindowThumbnail(std::uint32_t windowId);
    void bringWindowToFront(std::uint32_t windowId);

    QList<CaptureWindow> availableWindows() const { return availableWindows_; }

signals:
    void availableWindowsChanged();

private:
    QList<CaptureWindow> availableWindows_;
};

}  // namespace orvane
