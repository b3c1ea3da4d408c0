#include "capture/StreamQualitySize.h"

namespace orvane {

CaptureQuality captureQualityFor(StreamQuality quality) {
    switch (quality) {
    case StreamQuality::performance: return CaptureQuality::forOrdinal(0);
    case StreamQuality::balanced: return CaptureQuality::forOrdinal(1);
    case StreamQuality::quality: return CaptureQuality::forOrdinal(2);
    case StreamQuality::maximum: return CaptureQuality::forOrdinal(3);
    }
    return CaptureQuality::forOrdinal(1);
}

}  // namespace orvane
