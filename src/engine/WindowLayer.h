#pragma once

#include <functional>
#include <memory>
#include <string>

namespace orvane {

class ProgramWindow;

// What the session needs of the windowing system: the pop-out window and
// raising the application's own windows. Implemented by the console.
class WindowLayer {
public:
    struct ProgramWindowOptions {
        int contentWidth = 0;
        int contentHeight = 0;
        std::string title;
        std::string frameName;  // the window's geometry is remembered under it
        int minimumWidth = 0;
        int minimumHeight = 0;
        int aspectWidth = 0;  // content aspect ratio kept while resizing
        int aspectHeight = 0;
    };

    virtual ~WindowLayer() = default;

    // Creates the window centred (or where `frameName` remembers it), not yet
    // shown. `onUserClose` runs when the user closes it with the title bar,
    // with the window itself; it must not run for ProgramWindow::close().
    virtual std::shared_ptr<ProgramWindow> createProgramWindow(
        const ProgramWindowOptions& options, std::function<void(ProgramWindow*)> onUserClose) = 0;

    // Activates the application and raises each of its visible windows
    // except dialogs.
    virtual void bringApplicationToFront() = 0;
};

}  // namespace orvane
