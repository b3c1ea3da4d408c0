"""Drives the real application the way a screen-reader user would: a private
X server with a window manager, a session bus with the accessibility bus on
it, optionally a sound server, private home and data directories, and the
application's controls found by their accessible names.

    with ConsoleDriver(app, out) as console:
        console.write_preset(preset)          # before start()
        console.start()
        console.press("Demo", role="push button")   # the preset's card
        console.press("Update Live")
        console.wait_for_log("Program updated")
        console.screenshot("console.png")

Every server is started in `out` and stopped by its pid when the block ends.
"""

import glob
import json
import os
import re
import shutil
import subprocess
import sys
import time
import warnings

# The accessibility binding marks its per-interface getters deprecated in
# favour of ones that the installed version does not have yet.
warnings.filterwarnings("ignore", category=DeprecationWarning)

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from private_servers import Servers  # noqa: E402

TEXT_ROLES = {"text", "entry", "paragraph", "document text", "editbar", "spin button"}


class DriverError(AssertionError):
    pass


class ConsoleDriver:
    def __init__(self, app, out, onboarded=True):
        self.app_path = os.path.abspath(app)
        self.out = os.path.abspath(out)
        if os.path.exists(self.out):
            shutil.rmtree(self.out)
        self.dirs = {name: os.path.join(self.out, name)
                     for name in ("home", "data", "config", "runtime", "documents", "bin")}
        for path in self.dirs.values():
            os.makedirs(path)
        os.chmod(self.dirs["runtime"], 0o700)
        self.presets_dir = os.path.join(self.dirs["data"], "OrvaneUI", "Presets")
        self.logos_dir = os.path.join(self.dirs["data"], "OrvaneUI", "Logos")
        os.makedirs(self.presets_dir)
        os.makedirs(os.path.join(self.dirs["config"], "OrvaneUI"))
        with open(os.path.join(self.dirs["config"], "OrvaneUI", "OrvaneUI.conf"), "w") as f:
            f.write("[General]\nhasCompletedOnboarding=%s\n" % ("true" if onboarded else "false"))
        # Opening a folder or a page hands a URL to xdg-open; here it is
        # written down instead of starting a browser or a file manager.
        opener = os.path.join(self.dirs["bin"], "xdg-open")
        with open(opener, "w") as f:
            f.write("#!/bin/sh\necho \"$@\" >> '%s'\n" % os.path.join(self.out, "opened-urls.log"))
        os.chmod(opener, 0o755)
        with open(os.path.join(self.dirs["config"], "user-dirs.dirs"), "w") as f:
            f.write('XDG_DOCUMENTS_DIR="%s"\n' % self.dirs["documents"])
        self.servers = Servers(self.out)
        self.app = None
        self.atspi = None
        self.app_object = None

    # ------------------------------------------------------------ set-up

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.stop()
        return False

    def write_preset(self, preset):
        """Stores a preset document (a dict) as the application would; returns
        its path."""
        path = os.path.join(self.presets_dir, preset["id"].upper() + ".json")
        with open(path, "w", encoding="utf-8") as f:
            json.dump(preset, f, indent=2, ensure_ascii=False)
        return path

    def start(self, sound=False, width=1920, height=1080, extra_env=None):
        self.servers.start_display(width, height)
        self.servers.start_session_bus(self.dirs["runtime"])
        if sound:
            self.servers.start_sound(self.dirs["runtime"])
        env = self.servers.environment()
        env.update({
            "HOME": self.dirs["home"],
            "XDG_DATA_HOME": self.dirs["data"],
            "XDG_CONFIG_HOME": self.dirs["config"],
            "XDG_RUNTIME_DIR": self.dirs["runtime"],
            "PATH": self.dirs["bin"] + os.pathsep + env.get("PATH", "/usr/bin:/bin"),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_ACCESSIBILITY": "1",
            "QT_QPA_PLATFORM": "xcb",
        })
        env.update(extra_env or {})
        self.app = self.servers.spawn([self.app_path], "app.log", env)
        # Only now is the session bus known to this process.
        os.environ.update(self.servers.env)
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self.atspi = Atspi
        Atspi.init()
        Atspi.set_timeout(4000, 60000)
        self.app_object = self.wait_for(self._find_app_object, 90, "the application on the accessibility bus")
        self.wait_for(self.windows, 60, "a window of the application")
        return self

    def stop(self):
        """Ends the application (as a window manager's close would not: a
        terminate signal) and every server, each by its pid."""
        if self.app is not None and self.app.poll() is None:
            self.servers.stop_one(self.app.pid, grace=10)
        self.servers.stop_all()

    # ----------------------------------------------------------- queries

    def check_running(self):
        if self.app is not None and self.app.poll() is not None:
            raise DriverError("the application exited with status %s; its log:\n%s"
                              % (self.app.returncode, self.log()[-3000:]))

    def wait_for(self, probe, seconds, what):
        deadline = time.monotonic() + seconds
        while True:
            self.check_running()
            try:
                value = probe()
            except DriverError:
                raise
            except Exception:
                value = None
            if value:
                return value
            if time.monotonic() > deadline:
                raise DriverError("timed out after %gs waiting for %s" % (seconds, what))
            time.sleep(0.1)

    def _find_app_object(self):
        desktop = self.atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child is not None and child.get_process_id() == self.app.pid:
                return child
        return None

    def windows(self):
        """The application's showing top-level windows, in bus order."""
        found = []
        for i in range(self.app_object.get_child_count()):
            w = self.app_object.get_child_at_index(i)
            if w is not None and self.has_state(w, "SHOWING"):
                found.append(w)
        return found

    def window(self, title, seconds=10):
        return self.wait_for(lambda: next((w for w in self.windows() if name_of(w) == title), None), seconds,
                             "the window '%s'" % title)

    def has_state(self, obj, state):
        return obj.get_state_set().contains(getattr(self.atspi.StateType, state))

    def walk(self, root=None):
        """Every showing object below root (every window when None)."""
        roots = [root] if root is not None else self.windows()
        found = []
        stack = list(reversed(roots))
        while stack:
            obj = stack.pop()
            try:
                count = obj.get_child_count()
            except Exception:
                continue
            children = []
            for i in range(min(count, 500)):
                try:
                    child = obj.get_child_at_index(i)
                    if child is not None and child.get_state_set().contains(self.atspi.StateType.SHOWING):
                        children.append(child)
                except Exception:
                    continue
            found.extend(children)
            stack.extend(reversed(children))
        return found

    def find_all(self, name, role=None, root=None):
        """Showing objects named exactly `name` (or matching it, when it is a
        compiled pattern), of `role` when given, in tree order."""
        matches = []
        for obj in self.walk(root):
            n = name_of(obj)
            if (name.fullmatch(n) if isinstance(name, re.Pattern) else n == name) and \
                    (role is None or obj.get_role_name() == role):
                matches.append(obj)
        return matches

    def find(self, name, role=None, root=None, seconds=10):
        try:
            return self.wait_for(lambda: (self.find_all(name, role, root) or [None])[0], seconds,
                                 "a control named %r%s" % (name, " (%s)" % role if role else ""))
        except DriverError as e:
            if role is None:
                raise
            others = sorted({o.get_role_name() for o in self.find_all(name, None, root)})
            raise DriverError("%s; showing under that name: %s" % (e, ", ".join(others) or "nothing")) from None

    def absent(self, name, role=None, root=None, seconds=10):
        """Waits until no showing control is named `name`."""
        self.wait_for(lambda: not self.find_all(name, role, root), seconds, "%r to go away" % (name,))

    def names(self, root=None):
        """(role, name) of every showing object: for a failing test's report."""
        return [(o.get_role_name(), name_of(o)) for o in self.walk(root)]

    def text(self, obj):
        t = obj.get_text_iface()
        if t is not None:
            return t.get_text(0, t.get_character_count())
        return name_of(obj)

    def value(self, obj):
        v = obj.get_value_iface()
        return v.get_current_value() if v is not None else None

    def is_checked(self, obj):
        return self.has_state(obj, "CHECKED") or self.has_state(obj, "PRESSED")

    def is_enabled(self, obj):
        return self.has_state(obj, "ENABLED") or self.has_state(obj, "SENSITIVE")

    # ----------------------------------------------------------- actions

    def _target(self, what, role, root, seconds):
        return what if not isinstance(what, (str, re.Pattern)) else self.find(what, role, root, seconds)

    def field(self, name, root=None, seconds=10):
        """The text field named `name`: a heading of the same name (a panel's
        label is often its field's name too) is passed over."""
        return self.wait_for(lambda: next((o for o in self.find_all(name, None, root)
                                           if o.get_role_name() in TEXT_ROLES), None),
                             seconds, "a text field named %r" % (name,))

    def press(self, what, role=None, root=None, seconds=10, action=None):
        """Runs a control's accessible action (its first, or the one named),
        as a click would. A control that opens a modal dialog may answer only
        once the dialog closes; that is not a failure."""
        obj = self._target(what, role, root, seconds)
        act = obj.get_action_iface()
        if act is None or act.get_n_actions() == 0:
            raise DriverError("%r has no accessible action" % name_of(obj))
        names = [act.get_action_name(i) for i in range(act.get_n_actions())]
        if action is not None:
            if action not in names:
                raise DriverError("%r has no action %r, only %s" % (name_of(obj), action, names))
            index = names.index(action)
        else:
            useful = [i for i, n in enumerate(names) if n.lower() not in ("setfocus", "set focus")]
            index = useful[0] if useful else 0
        try:
            act.do_action(index)
        except Exception as e:
            if "timeout" not in str(e).lower() and "timed out" not in str(e).lower():
                raise
        return obj

    def set_text(self, what, text, role=None, root=None, seconds=10):
        """Replaces an editable field's text through the accessibility
        interface, as assistive technology would."""
        obj = self.field(what, root, seconds) if isinstance(what, str) and role is None else \
            self._target(what, role, root, seconds)
        editable = obj.get_editable_text_iface()
        if editable is None:
            raise DriverError("%r is not editable" % name_of(obj))
        editable.set_text_contents(text)
        return obj

    def set_value(self, what, value, role=None, root=None, seconds=10):
        obj = self._target(what, role, root, seconds)
        v = obj.get_value_iface()
        if v is None:
            raise DriverError("%r has no value" % name_of(obj))
        v.set_current_value(float(value))
        return obj

    def focus(self, what, role=None, root=None, seconds=10):
        obj = self._target(what, role, root, seconds)
        component = obj.get_component_iface()
        if component is not None:
            component.grab_focus()
        return obj

    def xdotool(self, *argv, timeout=15):
        done = subprocess.run(["xdotool"] + list(argv), env=self.servers.environment(), capture_output=True,
                              text=True, timeout=timeout)
        return done.stdout

    def activate(self):
        """Gives the keyboard to the application's newest visible window."""
        ids = self.xdotool("search", "--onlyvisible", "--pid", str(self.app.pid)).split()
        if ids:
            self.xdotool("windowactivate", "--sync", ids[-1])

    def type_text(self, what, text, role=None, root=None, enter=True):
        """Focuses a field and types into it with the keyboard, replacing what
        it held; Return at the end when `enter`."""
        self.activate()
        obj = self.field(what, root) if isinstance(what, str) and role is None else \
            self._target(what, role, root, 10)
        self.focus(obj)
        self.xdotool("key", "ctrl+a")
        self.xdotool("type", "--delay", "10", text, timeout=60)
        if enter:
            self.xdotool("key", "Return")

    def key(self, *keys):
        self.xdotool("key", "--delay", "60", *keys)

    # ------------------------------------------------------ observations

    def log(self):
        try:
            with open(os.path.join(self.out, "app.log"), encoding="utf-8", errors="replace") as f:
                return f.read()
        except OSError:
            return ""

    def wait_for_log(self, text, seconds=10, count=1, regex=False):
        """Waits until the application's output holds `text` at least `count`
        times (a regular expression when `regex`); returns the matches."""
        pattern = text if regex else re.escape(text)
        regex = re.compile(pattern)
        return self.wait_for(lambda: (lambda m: m if len(m) >= count else None)(regex.findall(self.log())),
                             seconds, "%d line(s) matching %r in the application's output" % (count, pattern))

    def preset_files(self):
        return sorted(glob.glob(os.path.join(self.presets_dir, "*.json")))

    def read_preset(self, preset_id):
        with open(os.path.join(self.presets_dir, preset_id.upper() + ".json"), encoding="utf-8") as f:
            return json.load(f)

    def screenshot(self, path):
        """The whole screen as a PNG, as a person would see it."""
        subprocess.run(["import", "-window", "root", path], env=self.servers.environment(), check=True,
                       capture_output=True, timeout=30)
        return path


def name_of(obj):
    try:
        return obj.get_name() or ""
    except Exception:
        return ""


def template_preset():
    """A copy of the test data's full preset (three scenes: a screen with a
    camera, a window, slides), for a test to change before writing it."""
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "full_preset.json")
    with open(path, encoding="utf-8") as f:
        return json.load(f)
