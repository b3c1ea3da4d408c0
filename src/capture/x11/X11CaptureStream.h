#pragma once

#include <xcb/xcb.h>

#include <QImage>
#include <QRect>

#include <atomic>
#include <memory>

#include "capture/CaptureTarget.h"
#include "capture/CaptureStream.h"
#include "capture/x11/X11CursorPainter.h"
#include "capture/x11/X11ShmPool.h"
#include "capture/x11/XcbConnection.h"

namespace orvane {

// A live display or window on a connection of its own. Displays are cut
// from the root window with MIT-SHM; windows are redirected with Composite
// when the stream opens, so a covered window keeps drawing into its own
// pixmap, which is what gets grabbed.
class X11CaptureStream : public CaptureStream {
public:
    // displayArea: where the display lies on the screen (unused for windows).
    static CaptureResult<std::unique_ptr<CaptureStream>> open(const QByteArray& displayName,
                                                            const CaptureTarget& target, const QRect& displayArea,
                                                            std::shared_ptr<std::atomic<int>> openStreams);
    ~X11CaptureStream() override;

    CaptureResult<GrabbedFrame> grabFrame() override;

private:
    X11CaptureStream(std::unique_ptr<XcbConnection> connection, const CaptureTarget& target,
                   std::shared_ptr<std::atomic<int>> openStreams);

    QString start(const QRect& displayArea);
    CaptureResult<QImage> grab(xcb_drawable_t drawable, const QRect& area, QImage::Format format);
    CaptureResult<QImage> grabWithoutShm(xcb_drawable_t drawable, const QRect& area, QImage::Format format);
    QString nameWindowPixmap();
    void dropQueuedEvents();
    void resetPool(const QSize& size);
    void detachPool();

    std::unique_ptr<XcbConnection> connection_;
    const CaptureTarget target_;
    std::shared_ptr<std::atomic<int>> openStreams_;
    std::unique_ptr<X11CursorPainter> cursor_;  // only when the target has a cursor region
    bool hasShm_ = false;
    std::shared_ptr<X11ShmPool> pool_;
    QSize poolSize_;
    QRect area_;                  // what is grabbed, in the drawable's coordinates
    QPoint origin_;               // screen position of the grabbed area's corner
    xcb_pixmap_t windowPixmap_ = XCB_NONE;
    QImage::Format format_ = QImage::Format_RGB32;
    bool redirected_ = false;
};

}  // namespace orvane
