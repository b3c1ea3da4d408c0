#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace orvane {

// The desktop's own settings program, where one is known: GNOME's control
// centre on its privacy page, KDE's system settings. The desktop is read
// from XDG_CURRENT_DESKTOP and the program must be found on PATH, both at
// the time of asking; elsewhere there is nothing to open, and the views hide
// their "Open System Settings" button and say what to check instead.
class SystemSettingsLauncher {
public:
    struct Command {
        QString program;  // absolute path
        QStringList arguments;
    };

    static constexpr const char* whatToCheck =
        "No settings program is known for this desktop: check that it lets OrvaneUI capture the screen (on "
        "Wayland, accept the screen-sharing prompt when it appears).";

    // For the running desktop.
    static std::optional<Command> find();
    // For a desktop named as XDG_CURRENT_DESKTOP names it ("ubuntu:GNOME").
    static std::optional<Command> find(const QString& currentDesktop);
    static bool available() { return find().has_value(); }
    // Starts the program detached; false, and a log line, when there is none
    // or it would not start.
    static bool open();
};

}  // namespace orvane
