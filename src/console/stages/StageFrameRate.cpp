#include "console/stages/StageFrameRate.h"

namespace orvane {

int StageFrameRate::forQuality(StreamQuality quality) {
    switch (quality) {
    case StreamQuality::performance: return 10;
    case StreamQuality::balanced: return 15;
    case StreamQuality::quality: return 30;
    case StreamQuality::maximum: return 60;
    }
    return 15;
}

}  // namespace orvane
