#pragma once

namespace orvane {

// The screen-capture right as onboarding shows it. Unknown until probed.
enum class PermissionStatus { unknown = 0, denied, granted, restricted };

}  // namespace orvane
