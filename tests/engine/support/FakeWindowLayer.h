#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "engine/ProgramWindow.h"
#include "engine/WindowLayer.h"
#include "engine/WindowRaiser.h"

namespace orvane::test {

// A program window that records what the session asked of it.
class FakeProgramWindow : public ProgramWindow {
public:
    void bringToFront() override { ++broughtToFront; }
    void close() override { ++closed; }
    void setLevel(Level level) override { levels.push_back(level); }
    void hideCursor() override { ++cursorHidden; }

    // The user's click on the close button.
    void closeByUser() {
        if (onUserClose) onUserClose(this);
    }

    int broughtToFront = 0;
    int closed = 0;
    int cursorHidden = 0;
    std::vector<Level> levels;
    std::function<void(ProgramWindow*)> onUserClose;
};

class FakeWindowLayer : public WindowLayer {
public:
    std::shared_ptr<ProgramWindow> createProgramWindow(const ProgramWindowOptions& options,
                                                       std::function<void(ProgramWindow*)> onUserClose) override {
        lastOptions = options;
        auto window = std::make_shared<FakeProgramWindow>();
        window->onUserClose = std::move(onUserClose);
        windows.push_back(window);
        return window;
    }
    void bringApplicationToFront() override { ++applicationBroughtToFront; }

    std::optional<ProgramWindowOptions> lastOptions;
    std::vector<std::weak_ptr<FakeProgramWindow>> windows;  // every window made, in order
    int applicationBroughtToFront = 0;
};

class FakeWindowRaiser : public WindowRaiser {
public:
    void bringWindowToFront(std::uint32_t windowId) override { raised.push_back(windowId); }
    std::vector<std::uint32_t> raised;
};

}  // namespace orvane::test
