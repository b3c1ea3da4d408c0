#include "capture/CaptureQuality.h"

#include <array>

namespace orvane {

CaptureQuality CaptureQuality::forOrdinal(int ordinal) {
    // The top row stays at 1440 lines whatever the menu's label promises.
    static constexpr std::array<CaptureQuality, 4> rows{{
        {960, 540, 10},
        {1280, 720, 15},
        {1920, 1080, 30},
        {2560, 1440, 60},
    }};
    if (ordinal < 0 || ordinal >= static_cast<int>(rows.size())) return rows[1];
    return rows[static_cast<std::size_t>(ordinal)];
}

}  // namespace orvane
