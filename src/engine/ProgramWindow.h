#pragma once

namespace orvane {

// The pop-out program output window as the session drives it. The console
// supplies the real window (hosting the program output); tests use a double.
class ProgramWindow {
public:
    // `floating` stays above other windows and gives up the full-screen
    // button; `normal` is an ordinary window that may go full screen.
    enum class Level { normal, floating };

    virtual ~ProgramWindow() = default;

    // Shows the window if needed, raises it and gives it the keyboard.
    virtual void bringToFront() = 0;
    // Closes on request of the session. Drops the content first and does not
    // call the window's user-close callback.
    virtual void close() = 0;
    virtual void setLevel(Level level) = 0;
    // A blank cursor over this window only; it comes back when it closes.
    virtual void hideCursor() = 0;
};

}  // namespace orvane
