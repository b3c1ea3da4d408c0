#pragma once

#include <cstdint>

namespace orvane {

// Raises another application's window, named by the capture layer's window
// id. The X11 implementation lives with capture; the engine only asks. The
// call may finish later and its outcome is not reported.
class WindowRaiser {
public:
    virtual ~WindowRaiser() = default;
    virtual void bringWindowToFront(std::uint32_t windowId) = 0;
};

}  // namespace orvane
