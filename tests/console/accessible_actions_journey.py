#!/usr/bin/env python3
"""Controls run through their accessible actions do what a click does: the
background's "Solid Color" and "Gradient" segments, an entry of the
transition menu, and "Center" in the slides editor, each checked in the
preset file; the teleprompter's settings sheet opens above the floating
teleprompter. Everything goes through the accessibility bus.

Usage: accessible_actions_journey.py APP OUT_DIR
"""
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from console_driver import ConsoleDriver, DriverError, template_preset  # noqa: E402


def checked(console, obj):
    return console.has_state(obj, "CHECKED")


def stacking(console):
    """The application's client windows, bottom to top, as the window
    manager stacks them."""
    out = subprocess.run(["xprop", "-root", "_NET_CLIENT_LIST_STACKING"], env=console.servers.environment(),
                         capture_output=True, text=True, timeout=15).stdout
    return [int(w, 16) for w in re.findall(r"0x[0-9a-fA-F]+", out)]


def window_id(console, title):
    ids = console.xdotool("search", "--onlyvisible", "--name", "^%s$" % re.escape(title)).split()
    return int(ids[-1]) if ids else None


def main(app, out):
    preset = template_preset()
    # No captures: the journey is about the panels.
    for scene in preset["scenes"]:
        scene["sources"] = [s for s in scene["sources"] if s["type"] == "content"]
    slides_scene = preset["scenes"][2]
    slides_source = slides_scene["sources"][0]
    slides_scene["selectedSourceId"] = slides_source["id"]
    slides_scene["backgroundType"] = "solid"
    preset["activeSceneId"] = slides_scene["id"]
    preset["sceneTransition"] = {"enabled": True, "type": "Fade", "duration": 0.6}
    first_slide = slides_source["configuration"]["slidesResource"]["slides"][0]
    assert first_slide["textAlignment"] == "leading"

    def stored_scene(console):
        stored = console.read_preset(preset["id"])
        return next(s for s in stored["scenes"] if s["id"] == slides_scene["id"])

    with ConsoleDriver(app, out) as console:
        console.write_preset(preset)
        # A desktop without a known settings program, whatever runs the test.
        console.start(extra_env={"XDG_CURRENT_DESKTOP": ""})
        console.press(preset["name"])
        console.wait_for_log("Restored active scene: " + slides_scene["name"], 20)
        # The console opens on the first scene; the slides scene is chosen
        # from the list, and its slides are then on the scene tab.
        console.press(slides_scene["name"], role="push button")
        console.press("Scene", role="push button")
        console.find("Edit Slides", seconds=10)

        # The two segments: each press changes the stored background, and
        # only the chosen segment is lit.
        gradient = console.find("Gradient")
        solid = console.find("Solid Color")
        console.press(gradient)
        console.wait_for(lambda: stored_scene(console)["backgroundType"] == "gradient", 10,
                         "the gradient background in the preset file")
        console.wait_for(lambda: checked(console, gradient) and not checked(console, solid), 10,
                         "only 'Gradient' lit")
        console.screenshot(os.path.join(out, "gradient.png"))
        console.press(solid)
        console.wait_for(lambda: stored_scene(console)["backgroundType"] == "solid", 10,
                         "the solid background in the preset file")
        console.wait_for(lambda: checked(console, solid) and not checked(console, gradient), 10,
                         "only 'Solid Color' lit")

        # The slides editor's "Center", then the editor's close button.
        console.press("Edit Slides")
        editor = console.window("Slides Editor", 20)
        # Marks the editor's reader leaves as text: they show raw in its preview.
        raw = "# Raw marks\n```\ncode line\n```\n---\n#### Fourth level"
        console.set_text(console.field("Slide text", root=editor), raw)
        center = console.find("Center", root=editor)
        console.press(center)
        console.wait_for(lambda: checked(console, center) and not checked(console, console.find("Left", root=editor)),
                         10, "'Center' chosen in the editor")
        console.screenshot(os.path.join(out, "slides-editor.png"))
        # The picture prompt: its field is labelled.
        console.press("From URL", root=editor)
        prompt = console.window("Add Image from URL", 15)
        console.field("Image URL", root=prompt)
        console.screenshot(os.path.join(out, "image-url-prompt.png"))
        console.press("Cancel", root=prompt)
        console.wait_for(lambda: not any(w.get_name() == "Add Image from URL" for w in console.windows()), 10,
                         "the prompt to close")
        console.press("Close", root=editor)
        console.wait_for(lambda: not any(w.get_name() == "Slides Editor" for w in console.windows()), 10,
                         "the slides editor to close")
        console.wait_for(
            lambda: stored_scene(console)["sources"][0]["configuration"]["slidesResource"]["slides"][0]
            ["textAlignment"] == "center", 10, "the centred slide in the preset file")
        stored_slide = stored_scene(console)["sources"][0]["configuration"]["slidesResource"]["slides"][0]
        if stored_slide["content"] != raw:
            raise DriverError("the slide's text is stored as %r" % stored_slide["content"])

        # No settings program is known on this bare desktop: the permissions
        # window says what to check instead of offering a button that would
        # do nothing.
        console.press("Permissions")
        permissions = console.window("Permissions Management", 15)
        console.find(re.compile(r"No settings program is known for this desktop.*"), root=permissions)
        if console.find_all("Open System Settings", root=permissions):
            raise DriverError("'Open System Settings' is offered with no settings program to open")
        console.screenshot(os.path.join(out, "permissions.png"))
        console.press("Close", root=permissions)
        console.wait_for(lambda: not any(w.get_name() == "Permissions Management" for w in console.windows()), 10,
                         "the permissions window to close")

        # A transition reached as an entry under its menu button.
        console.press("Preset", role="push button")
        menu_button = console.find("Transition Type", role="push button")
        entry = console.find("Slide Left", root=menu_button)
        console.press(entry)
        console.wait_for(lambda: console.read_preset(preset["id"])["sceneTransition"]["type"] == "Slide Left", 10,
                         "'Slide Left' in the preset file")
        console.wait_for(lambda: checked(console, console.find("Slide Left", root=menu_button)), 10,
                         "'Slide Left' checked")

        # The floating teleprompter, then its settings sheet above it.
        console.press("Open Teleprompter")
        console.window("Teleprompter", 15)
        prompter = console.wait_for(lambda: window_id(console, "Teleprompter"), 10, "the teleprompter's X window")
        console.screenshot(os.path.join(out, "teleprompter.png"))
        console.press("Teleprompter Settings")
        console.window("Teleprompter Configuration", 15)
        sheet = console.wait_for(lambda: window_id(console, "Teleprompter Configuration"), 10,
                                 "the settings sheet's X window")

        def sheet_above():
            order = stacking(console)
            return prompter in order and sheet in order and order.index(sheet) > order.index(prompter)
        try:
            console.wait_for(sheet_above, 10, "the settings sheet stacked above the teleprompter")
        finally:
            console.screenshot(os.path.join(out, "teleprompter-settings.png"))
        console.press("Close", root=console.window("Teleprompter Configuration"))
    print("PASS: segments, transition entry, slide alignment and the teleprompter's sheet through the bus")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1], sys.argv[2]))
    except DriverError as e:
        print("FAIL: %s" % e)
        sys.exit(1)
