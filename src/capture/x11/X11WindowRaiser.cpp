#include "capture/x11/X11WindowRaiser.h"

#include "capture/CaptureBackend.h"

namespace orvane {

void X11WindowRaiser::bringWindowToFront(std::uint32_t windowId) { backend_.bringWindowToFront(windowId); }

}  // namespace orvane
