#pragma once

namespace orvane {

// The console's accessible interfaces, installed once per process before
// the first window: buttons whose actions click, with their menus' entries
// reachable (ClickingButtonAccessible, MenuEntryAccessible). Everything else
// keeps Qt's own.
class ConsoleAccessibility {
public:
    static void install();
};

}  // namespace orvane
