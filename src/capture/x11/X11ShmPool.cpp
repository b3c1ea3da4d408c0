#include "capture/x11/X11ShmPool.h"

#include <sys/mman.h>

namespace orvane {

namespace {

struct Ticket {
    std::shared_ptr<X11ShmPool> pool;
    int index;
};

void releaseTicket(void* info) {
    auto* ticket = static_cast<Ticket*>(info);
    ticket->pool->release(ticket->index);
    delete ticket;
}

}  // namespace

std::shared_ptr<X11ShmPool> X11ShmPool::create(std::size_t bytesPerSegment, int maxSegments) {
    return std::shared_ptr<X11ShmPool>(new X11ShmPool(bytesPerSegment, maxSegments));
}

X11ShmPool::X11ShmPool(std::size_t bytesPerSegment, int maxSegments)
    : bytes_(bytesPerSegment), maxSegments_(maxSegments) {}

X11ShmPool::~X11ShmPool() {
    for (auto& segment : segments_)
        if (segment->data) ::munmap(segment->data, bytes_);
}

int X11ShmPool::acquire() {
    std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < busy_.size(); ++i) {
        if (!busy_[i]) {
            busy_[i] = true;
            return static_cast<int>(i);
        }
    }
    if (static_cast<int>(segments_.size()) >= maxSegments_) return -1;

    auto segment = std::make_unique<Segment>();
    segment->fd = UniqueFd(::memfd_create("orvane-capture", MFD_CLOEXEC));
    if (!segment->fd.valid() || ::ftruncate(segment->fd.get(), static_cast<off_t>(bytes_)) != 0) return -1;
    void* mapped = ::mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED, segment->fd.get(), 0);
    if (mapped == MAP_FAILED) return -1;
    segment->data = static_cast<std::uint8_t*>(mapped);
    segments_.push_back(std::move(segment));
    busy_.push_back(true);
    return static_cast<int>(segments_.size() - 1);
}

void X11ShmPool::release(int index) {
    std::lock_guard lock(mutex_);
    if (index >= 0 && index < static_cast<int>(busy_.size())) busy_[static_cast<std::size_t>(index)] = false;
}

X11ShmPool::Segment& X11ShmPool::segment(int index) {
    std::lock_guard lock(mutex_);
    return *segments_[static_cast<std::size_t>(index)];
}

int X11ShmPool::segmentCount() const {
    std::lock_guard lock(mutex_);
    return static_cast<int>(segments_.size());
}

QImage X11ShmPool::wrap(int index, int width, int height, int bytesPerLine, QImage::Format format) {
    Segment& seg = segment(index);
    return QImage(seg.data, width, height, bytesPerLine, format, &releaseTicket,
                  new Ticket{shared_from_this(), index});
}

}  // namespace orvane
