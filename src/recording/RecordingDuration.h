#pragma once

#include <QString>

namespace orvane {

// "m:ss" under an hour, "h:mm:ss" from then on; fractions are cut off.
QString formatDuration(double seconds);

}  // namespace orvane
