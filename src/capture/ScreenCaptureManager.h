#pragma once

#include <QImage>
#include <QList>

#include <cstdint>
#include <optional>

#include "capture/CaptureDisplay.h"
#include "capture/CaptureListManager.h"

namespace orvane {

// The display list behind the display sheet. Short-lived, main thread.
class ScreenCaptureManager : public CaptureListManager {
    Q_OBJECT
    Q_PROPERTY(QList<orvane::CaptureDisplay> availableDisplays READ availableDisplays NOTIFY availableDisplaysChanged)

public:
    explicit ScreenCaptureManager(CaptureBackend& backend, QObject* parent = nullptr);

    // Lists on a worker thread; isLoading stays true until the result is
    // published on the main thread. A failure keeps the previous list and
    // sets errorMessage. Of overlapping fetches the later one wins.
    void fetchAvailableDisplays();
    std::optional<QImage> getDisplayThumbnail(std::uint32_t displayId);

    QList<CaptureDisplay> availableDisplays() const { return availableDisplays_; }

signals:
    void availableDisplaysChanged();

private:
    QList<CaptureDisplay> availableDisplays_;
};

}  // namespace orvane
