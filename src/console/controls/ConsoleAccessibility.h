#pragma once

namespace orvane {

// The console's accessible interfaces: buttons whose actions click, with
// their menus' entries reachable (ClickingButtonAccessible,
// MenuEntryAccessible); everything else keeps Qt's own. Installed once per
// process, after the application object (whose own factory they must
// follow, to be asked first) and before the first button is made.
class ConsoleAccessibility {
public:
    static void install();
};

}  // namespace orvane
