#!/usr/bin/env python3
"""Branding and the progress bar, through the accessibility bus only: switch
the preset's branding on, type its text, choose a logo in the file dialog,
then find all three in the preset file and the copy in the Logos directory;
switch the progress bar on, add three steps in its sheet, move one up, tick
one off, find the steps in the file and the ticked step's colour on the
program stage.

Usage: branding_journey.py APP OUT_DIR [IMAGES_DIR]
With IMAGES_DIR, the panels' pictures are kept there as well.
"""
import os
import re
import struct
import subprocess
import sys
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "support"))
sys.path.insert(0, HERE)
from console_driver import ConsoleDriver, DriverError, template_preset  # noqa: E402
from e2e_pixels import read_ppm  # noqa: E402



# The progress bar's default colours, (0.3, 0.7, 0.3) when done and a mid
# grey when pending, as they come out under the strip's 0.9 opacity; and the
# logo's orange.
def completed(r, g, b):
    return g > 130 and g - r > 60 and g - b > 60


def pending(r, g, b):
    return 95 < r < 150 and abs(r - g) < 10 and abs(g - b) < 10


def orange(r, g, b):
    return r > 190 and 90 < g < 150 and b < 60


def write_png(path, width, height, rgb):
    """A plain one-colour PNG, written without any imaging library."""
    row = b"\x00" + bytes(rgb) * width
    raw = row * height

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xffffffff)

    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
        f.write(chunk(b"IDAT", zlib.compress(raw)))
        f.write(chunk(b"IEND", b""))


def extents(console, obj):
    """x, y, w, h of an object on the screen."""
    rect = obj.get_component_iface().get_extents(console.atspi.CoordType.SCREEN)
    return rect.x, rect.y, rect.width, rect.height


def grab(console, path):
    """The screen as an 8-bit binary PPM (the screenshot tool's own PPM may
    carry 16 bits a channel)."""
    png = console.screenshot(path[:-4] + ".png")
    subprocess.run(["convert", png, "-depth", "8", path], check=True, capture_output=True, timeout=30)
    return path


def count_where(shot_path, box, wanted):
    """Pixels inside box whose colour `wanted` accepts."""
    w, h, px = read_ppm(shot_path)
    x0, y0, bw, bh = box
    count = 0
    for y in range(max(0, y0), min(h, y0 + bh)):
        base = y * w * 3
        for x in range(max(0, x0), min(w, x0 + bw)):
            i = base + x * 3
            if wanted(px[i], px[i + 1], px[i + 2]):
                count += 1
    return count


def crop(shot, box, path):
    x, y, w, h = box
    subprocess.run(["convert", shot, "-crop", "%dx%d+%d+%d" % (w, h, x, y), "+repage", path], check=True,
                   capture_output=True, timeout=30)


def main(app, out, images=None):
    preset = template_preset()
    # The slides scene first and alone: the stages draw it without captures.
    slides = [s for s in preset["scenes"] if s["sources"] and s["sources"][0]["type"] == "content"][0]
    slides["brandingEnabled"] = True
    slides["progressBarEnabled"] = True
    preset["scenes"] = [slides]
    preset["activeSceneId"] = slides["id"]
    preset.pop("branding", None)
    preset.pop("progressBar", None)
    with ConsoleDriver(app, out) as console:
        # The chosen file lives outside the application's directories.
        logo = os.path.join(out, "input", "orvane-logo.png")
        os.makedirs(os.path.dirname(logo))
        write_png(logo, 64, 32, (230, 120, 20))
        console.write_preset(preset)
        console.start(width=1600, height=1000)
        console.press(preset["name"])
        console.wait_for_log("Restored active scene: " + slides["name"], 20)
        console.press("Update Live")
        console.wait_for_log("Updated live program with scene: " + slides["name"], 10)
        console.press("Preset", role="push button")

        # ---- branding
        console.press("Enable Branding")
        field = console.field("Branding Text")
        console.set_text(field, "Orvane Live")
        console.wait_for(lambda: (console.read_preset(preset["id"]).get("branding") or {}).get("text")
                         == "Orvane Live", 10, "the branding text in the preset file")
        console.press("Select Logo")
        dialog = console.window("Select a logo image", 20)
        name_field = console.wait_for(
            lambda: next((o for o in console.walk(dialog)
                          if o.get_role_name() in ("text", "entry") and o.get_editable_text_iface() is not None
                          and "name" in (o.get_name() or "").lower()), None),
            10, "the file name field of the file dialog")
        console.set_text(name_field, logo, role="text")
        if images:
            shot = console.screenshot(os.path.join(out, "logo-dialog.png"))
            crop(shot, extents(console, dialog), os.path.join(out, "logo-dialog-only.png"))
        console.press("Select", role="push button", root=dialog)
        console.wait_for_log("✅ Logo copied to: ", 15)
        console.wait_for(lambda: not any(w.get_name() == "Select a logo image" for w in console.windows()), 10,
                         "the file dialog to close")
        stored = console.read_preset(preset["id"])
        branding = stored.get("branding")
        if not branding or branding["enabled"] is not True or branding["text"] != "Orvane Live":
            raise AssertionError("branding stored as %r" % branding)
        logos = os.listdir(console.logos_dir)
        if len(logos) != 1 or not logos[0].endswith(".png"):
            raise AssertionError("the Logos directory holds %r" % logos)
        if branding.get("logoImagePath") != os.path.join(console.logos_dir, logos[0]):
            raise AssertionError("logo stored as %r, copy is %r" % (branding.get("logoImagePath"), logos))
        with open(logo, "rb") as a, open(os.path.join(console.logos_dir, logos[0]), "rb") as b:
            if a.read() != b.read():
                raise AssertionError("the copied logo differs from the chosen file")
        program = console.find("Program")
        box = extents(console, program)
        # The logo is drawn on the program: the scene shows the branding.
        logo_pixels = 0
        for attempt in range(50):
            logo_pixels = count_where(grab(console, os.path.join(out, "branding.ppm")), box, orange)
            if logo_pixels > 100:
                break
        if logo_pixels <= 100:
            raise AssertionError("the logo does not show on the program stage (%d pixels)" % logo_pixels)
        shot = os.path.join(out, "branding.png")
        sidebar = console.find("Configuration")
        if images:
            # The branding block is the top of the preset tab.
            x, y, w, h = extents(console, sidebar)
            crop(shot, (x, y, w, min(h, 760)), os.path.join(images, "preset-branding.png"))

        # ---- progress bar
        before = count_where(grab(console, os.path.join(out, "before-steps.ppm")), box, completed)
        console.press("Progress Bar Enabled")
        console.press("Progress Bar Configuration", role="push button")
        sheet = console.window("Progress Bar Configuration", 20)
        for title in ("Welcome", "Live Demo", "Questions"):
            console.press("Add Step", role="push button", root=sheet)
            add = console.window("Add Step", 20)
            console.set_text(console.field("Step Title", root=add), title)
            if images and title == "Welcome":
                shot = console.screenshot(os.path.join(out, "add-step.png"))
                crop(shot, extents(console, add), os.path.join(images, "progress-bar-add-step.png"))
            console.press("Add Step", role="push button", root=add)
            console.wait_for(lambda: not any(w.get_name() == "Add Step" for w in console.windows()), 10,
                             "the add-step sheet to close")
            console.find("Delete: " + title, root=sheet)
        # "Questions" up above "Live Demo", then tick "Welcome" off.
        console.press("Move Up: Questions", root=sheet)
        console.wait_for(lambda: [s["title"] for s in sorted(
            console.read_preset(preset["id"])["progressBar"]["steps"], key=lambda s: s["order"])]
            == ["Welcome", "Questions", "Live Demo"], 10, "the new order in the preset file")
        console.press("Mark Done: Welcome", root=sheet)
        console.wait_for_log("✅ Progress step toggled: Welcome = true", 10)
        sheet_shot = console.screenshot(os.path.join(out, "progress-sheet.png"))
        if images:
            crop(sheet_shot, extents(console, sheet), os.path.join(images, "progress-bar-sheet.png"))
        console.press("Done", role="push button", root=sheet)
        console.wait_for(lambda: not any(w.get_name() == "Progress Bar Configuration" for w in console.windows()),
                         10, "the sheet to close")

        stored = console.read_preset(preset["id"])
        bar = stored["progressBar"]
        titles = [s["title"] for s in bar["steps"]]
        orders = [s["order"] for s in bar["steps"]]
        done = [s["title"] for s in bar["steps"] if s["isCompleted"]]
        if not bar["enabled"] or titles != ["Welcome", "Live Demo", "Questions"] or orders != [0, 2, 1] \
                or done != ["Welcome"]:
            raise AssertionError("progress bar stored as %r" % bar)

        # The ticked step's colour now shows on the program stage.
        after = 0
        for attempt in range(50):
            after = count_where(grab(console, os.path.join(out, "after-tick.ppm")), box, completed)
            if after >= before + 15:
                break
        if after < before + 15:
            raise AssertionError("the program stage shows %d completed pixels, %d before the tick" % (after, before))
        waiting = count_where(os.path.join(out, "after-tick.ppm"), box, pending)
        if waiting < 30:
            raise AssertionError("no pending markers on the program stage (%d pixels)" % waiting)
        shot = console.screenshot(os.path.join(out, "console.png"))
        if images:
            x, y, w, h = extents(console, sidebar)
            crop(shot, (x, y, w, min(h, 700)), os.path.join(images, "progress-bar-panel.png"))
            crop(shot, box, os.path.join(images, "progress-bar-program.png"))

        # ---- the scene tab's two switches
        console.press("Scene", role="push button")
        console.find("Enable Preset Branding")
        console.find("Using Preset Branding")
        console.find("Logo attached")
        console.find("Text: Orvane Live")
        # Both switches are the tab's last items: scrolled into view for the
        # picture.
        bars = [o for o in console.walk(sidebar) if o.get_role_name() == "scroll bar"
                and extents(console, o)[3] > extents(console, o)[2]]
        for bar_object in bars:
            value = bar_object.get_value_iface()
            value.set_current_value(value.get_maximum_value())
        shot = console.screenshot(os.path.join(out, "scene-tab.png"))
        if images:
            x, y, w, h = extents(console, sidebar)
            crop(shot, (x, y, w, h), os.path.join(images, "scene-branding.png"))
        console.press("Show in This Scene")
        console.wait_for(lambda: console.read_preset(preset["id"])["scenes"][0]["progressBarEnabled"] is False, 10,
                         "the scene's progress bar switch in the file")
    print("PASS: branding %r with logo %s; steps %s by order %s, done %s; %d completed pixels on program (was %d), logo %d pixels"
          % (branding["text"], logos[0], titles, orders, done, after, before, logo_pixels))
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(*sys.argv[1:4]))
    except DriverError as e:
        print("FAIL:", e)
        sys.exit(1)
