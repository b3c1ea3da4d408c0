#include "support/FakeCaptureBackend.h"

#include <chrono>
#include <thread>

namespace orvane::test {

namespace {

class SolidCaptureStream : public CaptureStream {
public:
    SolidCaptureStream(QSize size, QColor colour, std::shared_ptr<std::atomic<int>> open,
                       std::shared_ptr<std::atomic<bool>> fail)
        : size_(size), colour_(colour), open_(std::move(open)), fail_(std::move(fail)) {
        ++*open_;
    }
    ~SolidCaptureStream() override { --*open_; }
    CaptureResult<GrabbedFrame> grabFrame() override {
        if (*fail_) return CaptureResult<GrabbedFrame>::failure(QStringLiteral("Window not found"));
        QImage image(size_, QImage::Format_RGB32);
        image.fill(colour_);
        return GrabbedFrame{image, false};
    }

private:
    QSize size_;
    QColor colour_;
    std::shared_ptr<std::atomic<int>> open_;
    std::shared_ptr<std::atomic<bool>> fail_;
};

}  // namespace

CaptureResult<std::vector<CaptureDisplay>> FakeCaptureBackend::displays() {
    ++listings_;
    if (!listingError.isEmpty())
        return listingDeclined ? CaptureResult<std::vector<CaptureDisplay>>::declined(listingError)
                               : CaptureResult<std::vector<CaptureDisplay>>::failure(listingError);
    return displayList;
}

CaptureResult<std::vector<ShareableWindow>> FakeCaptureBackend::windows() {
    ++listings_;
    if (!listingError.isEmpty())
        return listingDeclined ? CaptureResult<std::vector<ShareableWindow>>::declined(listingError)
                               : CaptureResult<std::vector<ShareableWindow>>::failure(listingError);
    return windowList;
}

CaptureResult<std::unique_ptr<CaptureStream>> FakeCaptureBackend::openStream(const CaptureTarget& target) {
    if (openDelayMs > 0) std::this_thread::sleep_for(std::chrono::milliseconds(openDelayMs));
    if (!openError.isEmpty()) return CaptureResult<std::unique_ptr<CaptureStream>>::failure(openError);
    ++*opened_;
    return std::unique_ptr<CaptureStream>(std::make_unique<SolidCaptureStream>(target.outputSize, colour, open_, grabsFail_));
}

}  // namespace orvane::test
