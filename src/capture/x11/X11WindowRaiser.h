#pragma once

#include "engine/WindowRaiser.h"

namespace orvane {

class CaptureBackend;

// The engine's way to raise a scene's window, served by a capture backend.
class X11WindowRaiser : public WindowRaiser {
public:
    explicit X11WindowRaiser(CaptureBackend& backend) : backend_(backend) {}
    void bringWindowToFront(std::uint32_t windowId) override;

private:
    CaptureBackend& backend_;
};

}  // namespace orvane
