#!/usr/bin/env python3
"""Writes a preset whose active scene points at things that are not there.

    make_preset.py <golden preset.json> <presets dir> <config dir> [screenId]

The scene holds a screen source whose display the X server does not list,
a window source whose window is gone, and a camera whose device node is
gone. The preset is made the last selected one, so the console opens it,
and restores that scene onto the program, at start.
"""
import json
import sys
import uuid

golden, presets_dir, config_dir = sys.argv[1:4]
screen_id = int(sys.argv[4]) if len(sys.argv) > 4 else 0

with open(golden, encoding="utf-8") as f:
    preset = json.load(f)

scene = preset["scenes"][0]
template = scene["sources"][0]


def source(kind, name, **configuration):
    made = json.loads(json.dumps(template))
    made["id"] = str(uuid.uuid4()).upper()
    made["type"] = kind
    made["name"] = name
    for key in ("screenId", "windowId", "windowTitle", "windowOwner", "cameraDeviceId"):
        made["configuration"].pop(key, None)
    made["configuration"].update(configuration)
    return made


scene["sources"] = [
    source("screen", "Unplugged monitor", screenId=screen_id),
    source("window", "Closed window", windowId=4000000001, windowTitle="Gone", windowOwner="Gone App"),
    source("camera", "Unplugged camera", cameraDeviceId="/dev/video99"),
]
scene["layout"] = "PIP Bottom Right"
scene["name"] = "Missing sources"
preset["activeSceneId"] = scene["id"]
preset["name"] = "Missing Sources Show"

with open(f"{presets_dir}/{preset['id']}.json", "w", encoding="utf-8") as f:
    json.dump(preset, f, indent=2)
with open(f"{config_dir}/OrvaneUI.conf", "w", encoding="utf-8") as f:
    f.write(f"[General]\nhasCompletedOnboarding=true\nlast_selected_preset={preset['id']}\n")
print(preset["id"])
