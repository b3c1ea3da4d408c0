"""The data directory a monkey run starts from: the welcome assistant done,
and a few presets with several scenes each, written as the application
writes them, one JSON file per preset named after its id."""

import copy
import json
import os
import random
import uuid

# No camera device of this name exists: the camera source shows its
# placeholder for the whole run.
MISSING_CAMERA = "/dev/orvane-monkey-no-camera"


def _new_id(rng):
    return str(uuid.UUID(int=rng.getrandbits(128), version=4)).upper()


def _renumber(node, rng):
    """Gives every record below node a fresh id, so that presets built from
    one template share none."""
    if isinstance(node, dict):
        for key, value in node.items():
            if key == "id" and isinstance(value, str):
                node[key] = _new_id(rng)
            else:
                _renumber(value, rng)
    elif isinstance(node, list):
        for item in node:
            _renumber(item, rng)


def _sources_of(template, kind):
    return [copy.deepcopy(s) for scene in template["scenes"] for s in scene["sources"] if s["type"] == kind]


def _slides(template, rng, count):
    deck = copy.deepcopy(_sources_of(template, "content")[0])
    resource = deck["configuration"]["slidesResource"]
    first = resource["slides"][0]
    resource["slides"] = []
    for i in range(count):
        slide = copy.deepcopy(first)
        slide["title"] = "Slide %d" % (i + 1)
        slide["content"] = "# Point %d\n\n- first\n- second\n\n**bold** and *italic*" % (i + 1)
        slide["order"] = i
        resource["slides"].append(slide)
    resource["currentSlideIndex"] = rng.randrange(count)
    resource["title"] = deck["name"] = "Deck of %d" % count
    return deck


def build_presets(template_path, window_id, seed):
    """Three presets as dictionaries. The screen sources name no display,
    the window source names window_id, the camera source a device that
    does not exist."""
    rng = random.Random(seed)
    with open(template_path, encoding="utf-8") as f:
        template = json.load(f)

    screen = _sources_of(template, "screen")[0]
    screen["configuration"].pop("screenId", None)
    screen["name"] = "Screen"
    camera = _sources_of(template, "camera")[0]
    camera["configuration"]["cameraDeviceId"] = MISSING_CAMERA
    camera["name"] = "No Camera"
    window = _sources_of(template, "window")[0]
    window["configuration"]["windowId"] = window_id
    window["configuration"]["windowTitle"] = "Monkey Terminal"
    window["name"] = "Monkey Terminal"

    scene_template = template["scenes"][0]

    def scene(name, sources, layout, background):
        s = copy.deepcopy(scene_template)
        s["name"] = name
        s["sources"] = [copy.deepcopy(src) for src in sources]
        s.pop("selectedSourceId", None)
        s["layout"] = layout
        s["backgroundType"] = background
        return s

    presets = []
    first = copy.deepcopy(template)
    first["name"] = "Monkey Keynote"
    first["scenes"] = [
        scene("Screen and Camera", [screen, camera], "Split 50/50", "gradient"),
        scene("Window", [window], "Full Camera", "solid"),
        scene("Slides", [_slides(template, rng, 4)], "PIP Top Left", "gradient"),
        scene("Everything", [screen, window, camera, _slides(template, rng, 2)], "Split 50/50", "solid"),
    ]
    presets.append(first)

    second = copy.deepcopy(template)
    second["name"] = "Monkey Lecture"
    second["scenes"] = [
        scene("Lecture Slides", [_slides(template, rng, 6)], "Full Camera", "solid"),
        scene("Camera Only", [camera], "PIP Top Left", "gradient"),
        scene("Empty", [], "Split 50/50", "solid"),
    ]
    second["teleprompter"]["text"] = "Good morning.\n" * 40
    presets.append(second)

    third = copy.deepcopy(template)
    third["name"] = "Monkey Demo"
    third["scenes"] = [
        scene("Terminal", [window, camera], "PIP Top Left", "solid"),
        scene("Desktop", [screen], "Full Camera", "gradient"),
        scene("Two Decks", [_slides(template, rng, 3), _slides(template, rng, 1)], "Split 50/50", "gradient"),
    ]
    third["progressBar"]["enabled"] = False
    presets.append(third)

    for preset in presets:
        _renumber(preset, rng)
        for s in preset["scenes"]:
            if s["sources"]:
                s["selectedSourceId"] = s["sources"][-1]["id"]
        preset["activeSceneId"] = preset["scenes"][0]["id"]
    return presets


def write_data_directory(template_path, window_id, seed, data_home, config_home):
    """Writes the settings file and the presets; returns the presets
    directory."""
    os.makedirs(os.path.join(config_home, "OrvaneUI"), exist_ok=True)
    with open(os.path.join(config_home, "OrvaneUI", "OrvaneUI.conf"), "w", encoding="utf-8") as f:
        f.write("[General]\nhasCompletedOnboarding=true\n")
    presets_dir = os.path.join(data_home, "OrvaneUI", "Presets")
    os.makedirs(presets_dir, exist_ok=True)
    for preset in build_presets(template_path, window_id, seed):
        with open(os.path.join(presets_dir, preset["id"] + ".json"), "w", encoding="utf-8") as f:
            json.dump(preset, f, indent=2, ensure_ascii=False)
    return presets_dir
