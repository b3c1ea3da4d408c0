#!/usr/bin/env python3
"""A presenter tunes a camera and tidies a scene's sources, through the
accessibility bus only: the camera's zoom, size, shape and border from the
"CAMERA SETTINGS" panel, found in the preset file and in the preview's
pixels; a window's "VISUAL EFFECTS"; then "Manage Sources" removes a source
behind its question, and the file has it gone after the half-second write.
Screenshots of every panel and sheet are left in OUT_DIR (and copied to
IMAGES_DIR when given).

Usage: source_panels_journey.py APP OUT_DIR [IMAGES_DIR]
"""
import os
import shutil
import subprocess
import sys
import time
import uuid

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from console_driver import ConsoleDriver, DriverError, template_preset  # noqa: E402
from e2e_pixels import read_ppm  # noqa: E402

CONVERT = "/usr/bin/convert"


def extents(console, obj):
    """(x, y, w, h) of an accessible object on the screen."""
    e = obj.get_component_iface().get_extents(console.atspi.CoordType.SCREEN)
    return e.x, e.y, e.width, e.height


def crop(console, shot, box, path):
    x, y, w, h = box
    subprocess.run([CONVERT, shot, "-crop", "%dx%d+%d+%d" % (w, h, x, y), "+repage", path], check=True,
                   env=console.servers.environment(), timeout=30)
    return path


def bright_pixels(console, shot, box):
    """How many pixels of the box are nearly white: the camera's border."""
    ppm = shot + ".ppm"
    subprocess.run([CONVERT, shot, ppm], check=True, timeout=30)
    w, _, px = read_ppm(ppm)
    x0, y0, bw, bh = box
    count = 0
    for y in range(y0, y0 + bh):
        row = (y * w) * 3
        for x in range(x0, x0 + bw):
            i = row + x * 3
            if px[i] > 200 and px[i + 1] > 200 and px[i + 2] > 200:
                count += 1
    return count


def stored_source(console, preset_id, name):
    for source in console.read_preset(preset_id)["scenes"][0]["sources"]:
        if source["name"] == name:
            return source
    return None


def wait_stored(console, preset_id, name, check, what, seconds=10):
    return console.wait_for(lambda: (lambda s: s if s is not None and check(s["configuration"]) else None)(
        stored_source(console, preset_id, name)), seconds, what)


def hover(console, obj):
    x, y, w, h = extents(console, obj)
    console.xdotool("mousemove", str(x + w // 3), str(y + h // 2))
    time.sleep(0.2)


def scroll_sidebar(console, clicks, down=True):
    # The sidebar's head stays put while its content scrolls below it.
    x, y, w, _ = extents(console, console.find("Configuration"))
    console.xdotool("mousemove", str(x + 100), str(y + 400))
    time.sleep(0.1)
    for _ in range(clicks):
        console.xdotool("click", "5" if down else "4")
    time.sleep(0.3)


def main(app, out, images=None):
    started = time.monotonic()
    preset = template_preset()
    scene = preset["scenes"][0]
    camera = next(s for s in scene["sources"] if s["type"] == "camera")
    camera["name"] = "Desk Cam"
    # No such device: the camera's box shows its state, framed by its border.
    camera["configuration"]["cameraDeviceId"] = "/dev/video-absent"
    window = {"id": str(uuid.uuid4()).upper(), "type": "window", "name": "Old Window",
              "configuration": dict(camera["configuration"])}
    window["configuration"].pop("cameraDeviceId", None)
    window["configuration"]["windowId"] = 0x7ffffff0
    window["configuration"]["windowTitle"] = "Old Window"
    window["configuration"]["windowOwner"] = "editor"
    scene["name"] = "Camera Talk"
    scene["layout"] = "PIP Bottom Right"
    scene["sources"] = [camera, window]
    scene["selectedSourceId"] = camera["id"]
    preset["scenes"] = [scene]
    preset["activeSceneId"] = scene["id"]
    shots = {}

    with ConsoleDriver(app, out) as console:
        console.write_preset(preset)
        console.start()
        console.press(preset["name"])
        console.wait_for_log("Restored active scene: Camera Talk", 20)

        # The camera's panel: zoom, size, shape, border width.
        console.find("CAMERA SETTINGS")
        console.set_value(console.find("Zoom", role="slider"), 1.3)
        console.press(console.find("Large"))
        console.press(console.find("Circle"))
        border_width = console.find("Width", role="slider", root=console.find("Border settings"))
        console.set_value(border_width, 10)
        stored = wait_stored(console, preset["id"], "Desk Cam",
                             lambda c: c["cameraBorderWidth"] == 10 and c["cameraShape"] == "circle",
                             "the camera's settings in the preset file")["configuration"]
        problems = []
        for key, want in (("cameraZoom", 1.3), ("cameraSize", "large"), ("cameraShape", "circle"),
                          ("cameraBorderWidth", 10), ("cameraWidth", 1), ("cameraBorderEnabled", True)):
            if stored[key] != want:
                problems.append("%s is %r, not %r" % (key, stored[key], want))
        if problems:
            raise AssertionError("; ".join(problems))
        if abs(console.value(border_width) - 10) > 1e-9:
            raise AssertionError("the border width reads %r" % console.value(border_width))

        preview = console.find("Preview")
        box = extents(console, preview)
        time.sleep(0.5)
        shots["camera"] = console.screenshot(os.path.join(out, "camera-on.png"))
        lit_with_border = bright_pixels(console, shots["camera"], box)
        scroll_sidebar(console, 6)
        shots["camera-settings"] = console.screenshot(os.path.join(out, "camera-settings-full.png"))
        scroll_sidebar(console, 8)
        shots["camera-border"] = console.screenshot(os.path.join(out, "camera-border-full.png"))
        # Scrolling the sidebar over its sliders changed none of them.
        after = stored_source(console, preset["id"], "Desk Cam")["configuration"]
        moved = [k for k in after if k.startswith("camera") and after[k] != stored[k]]
        if moved:
            raise AssertionError("scrolling the sidebar changed %s" % moved)

        # Border off: the ring leaves the picture, its width stays stored.
        console.press(console.find("Border", role="check box"))
        wait_stored(console, preset["id"], "Desk Cam", lambda c: not c["cameraBorderEnabled"],
                    "the border switched off in the file")
        console.absent("Glow", role="slider")
        time.sleep(0.5)
        off = console.screenshot(os.path.join(out, "camera-off.png"))
        lit_without_border = bright_pixels(console, off, box)
        if stored_source(console, preset["id"], "Desk Cam")["configuration"]["cameraBorderWidth"] != 10:
            raise AssertionError("switching the border off lost its width")
        if not lit_with_border > lit_without_border + 200:
            raise AssertionError("the preview's border pixels: %d with the border, %d without"
                                 % (lit_with_border, lit_without_border))
        console.press(console.find("Border", role="check box"))
        wait_stored(console, preset["id"], "Desk Cam", lambda c: c["cameraBorderEnabled"], "the border back on")

        # A window source has the capture's panel.
        scroll_sidebar(console, 10, down=False)
        console.press(console.find("Old Window", role="push button"))
        console.find("VISUAL EFFECTS")
        console.absent("CAMERA SETTINGS")
        console.set_value(console.find("Scale", role="slider"), 1.2)
        console.press(console.find("Border", role="check box"))
        wait_stored(console, preset["id"], "Old Window", lambda c: c["scale"] == 1.2 and c["borderEnabled"],
                    "the window's scale and border in the file")
        scroll_sidebar(console, 6)
        shots["visual-effects"] = console.screenshot(os.path.join(out, "visual-effects-full.png"))
        moved = stored_source(console, preset["id"], "Old Window")["configuration"]
        if (moved["horizontalOffset"], moved["verticalOffset"], moved["brightness"]) != (0, 0, 1):
            raise AssertionError("scrolling the sidebar moved the window's sliders: %s" % moved)
        scroll_sidebar(console, 10, down=False)

        # Manage Sources: remove the window behind its question.
        console.press(console.find("Manage Sources", role="push button"))
        sheet = console.window("Manage Sources - Camera Talk")
        sheet_box = extents(console, sheet)
        row = console.find("Old Window", root=sheet)
        hover(console, row)
        console.find("Delete Source", role="push button", root=sheet)
        shots["manage-sources"] = console.screenshot(os.path.join(out, "manage-sources-full.png"))
        console.press(console.find("Delete Source", role="push button", root=sheet))
        question = console.window("Delete Source")
        message = console.find("Are you sure you want to delete 'Old Window'?", root=question)
        shots["confirm-dialog"] = console.screenshot(os.path.join(out, "confirm-dialog-full.png"))
        question_box = extents(console, question)
        if message is None:
            raise AssertionError("no question")
        console.press(console.find("Delete", role="push button", root=question))
        console.wait_for_log("📝 Scene marked as changed, sources count: 1", 10)
        console.wait_for_log("🔄 Synced scene changes to binding", 10)
        names = [s["name"] for s in console.read_preset(preset["id"])["scenes"][0]["sources"]]
        if names != ["Desk Cam"]:
            raise AssertionError("after the write the file holds %s" % names)
        console.press(console.find("Done", role="push button", root=sheet))
        console.absent("Manage Sources - Camera Talk", seconds=10)
        console.absent("Old Window", role="push button")
        if console.log().count("🔄 Synced scene changes to binding") != 1:
            raise AssertionError("closing after the write wrote again")

        # The add dialog, for the pictures.
        console.press(console.find("Manage Sources", role="push button"))
        sheet = console.window("Manage Sources - Camera Talk")
        console.press(console.find("Add Source", role="push button", root=sheet))
        adder = console.window("Add Source")
        console.set_text(console.field("Source Name", root=adder), "Second Screen")
        console.press(console.find("Window Capture", root=adder))
        console.find("Select a window", role="push button", root=adder)
        shots["add-source"] = console.screenshot(os.path.join(out, "add-source-full.png"))
        adder_box = extents(console, adder)
        console.press(console.find("Cancel", role="push button", root=adder))
        console.absent("Add Source", role="dialog")

        crop(console, shots["camera"], box, os.path.join(out, "camera-preview.png"))
        # The sidebar: from its head's left edge to the window's right, over
        # the window's height.
        head = extents(console, console.find("Configuration"))
        main_window = extents(console, console.window("OrvaneUI"))
        left = head[0] - 10
        sidebar_box = (left, main_window[1], main_window[0] + main_window[2] - left, main_window[3])
        crop(console, shots["camera-settings"], sidebar_box, os.path.join(out, "camera-settings.png"))
        crop(console, shots["camera-border"], sidebar_box, os.path.join(out, "camera-border.png"))
        crop(console, shots["visual-effects"], sidebar_box, os.path.join(out, "visual-effects.png"))
        crop(console, shots["manage-sources"], sheet_box, os.path.join(out, "manage-sources.png"))
        crop(console, shots["confirm-dialog"], question_box, os.path.join(out, "confirm-dialog.png"))
        crop(console, shots["add-source"], adder_box, os.path.join(out, "add-source.png"))
    if images:
        for name in ("camera-settings", "camera-border", "visual-effects", "manage-sources", "confirm-dialog", "add-source"):
            shutil.copy(os.path.join(out, name + ".png"), os.path.join(images, name + ".png"))
    print("PASS: camera tuned (border pixels %d -> %d), window effects set, a source removed through the "
          "manager; %.0f s" % (lit_with_border, lit_without_border, time.monotonic() - started))
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(*sys.argv[1:4]))
    except DriverError as e:
        print("FAIL:", e)
        sys.exit(1)
