#pragma once

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "capture/linux/UniqueFd.h"

namespace orvane {

// Shared-memory buffers that the X server fills with MIT-SHM grabs and
// that leave the capture thread as QImages without a copy. A buffer is
// busy while any QImage made from it lives; the pool outlives the capture
// as long as such an image does.
class X11ShmPool : public std::enable_shared_from_this<X11ShmPool> {
public:
    struct Segment {
        UniqueFd fd;
        std::uint8_t* data = nullptr;
        std::uint32_t serverId = 0;  // the capture's MIT-SHM id, 0 until attached
    };

    static std::shared_ptr<X11ShmPool> create(std::size_t bytesPerSegment, int maxSegments);
    ~X11ShmPool();

    // A free segment, created on demand; -1 when all are busy or memory
    // cannot be had. The caller owns it until it wraps or releases it.
    int acquire();
    void release(int index);
    Segment& segment(int index);  // capture thread only
    int segmentCount() const;

    // An image over the segment; the segment is released with the image.
    QImage wrap(int index, int width, int height, int bytesPerLine, QImage::Format format);

private:
    X11ShmPool(std::size_t bytesPerSegment, int maxSegments);

    const std::size_t bytes_;
    const int maxSegments_;
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Segment>> segments_;  // protected by mutex_ (growth only)
    std::vector<bool> busy_;                          // protected by mutex_
};

}  // namespace orvane
