#!/usr/bin/env python3
"""A presenter's first minutes, through the accessibility bus only: open the
stored preset from its card, rename the scene in the sidebar, send it live,
and find both changes in the preset file. Also checks the driver that the
panel tests share (tests/support/console_driver.py).

Usage: accessible_journey.py APP OUT_DIR
"""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from console_driver import ConsoleDriver, template_preset  # noqa: E402


def main(app, out):
    preset = template_preset()
    # No captures: this journey is about the panels, not the sources.
    for scene in preset["scenes"]:
        scene["sources"] = []
    first = preset["scenes"][0]
    preset["activeSceneId"] = first["id"]
    with ConsoleDriver(app, out) as console:
        console.write_preset(preset)
        console.start()
        console.press(preset["name"])
        console.wait_for_log("Restored active scene: " + first["name"], 20)

        field = console.field("Scene Name")
        console.screenshot(os.path.join(out, "opened.png"))
        console.type_text(field, "Opening Words")
        console.wait_for_log("Scene updated: Opening Words", 10)
        stored = console.read_preset(preset["id"])
        names = [s["name"] for s in stored["scenes"]]
        if names[0] != "Opening Words":
            raise AssertionError("the renamed scene is stored as %r" % names[0])

        console.press("Update Live")
        console.wait_for_log("Updated live program with scene: Opening Words", 10)
        console.screenshot(os.path.join(out, "console.png"))
    print("PASS: opened, renamed, sent live; scenes stored as %s" % names)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2]))
