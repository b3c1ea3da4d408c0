#!/usr/bin/python3
"""A seeded monkey: the real application under a private X server, driven
at random through the accessibility bus and the keyboard for a given time,
then checked: still running and answering, quits when its window closes,
no sanitizer report, every preset file still readable, every recording
still playable. On failure it prints the seed and the last actions.

  monkey.py --app PATH --checker PATH --out DIR [--seed N] [--seconds S]

MONKEY_PROFILE=1 in the environment logs how long each step took.
The same seed gives the same sequence of choices; what the application
shows at each step depends on timing, so a replay is close, not exact."""

import argparse
import collections
import glob
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
import warnings

# The accessibility binding marks its per-interface getters deprecated in
# favour of ones that the installed version does not have yet.
warnings.filterwarnings("ignore", category=DeprecationWarning)

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
sys.path.insert(0, os.path.join(HERE, "..", "support"))

import monkey_data  # noqa: E402
from private_servers import Servers  # noqa: E402

DATA_TEMPLATE = os.path.join(HERE, "..", "data", "full_preset.json")

# Controls the monkey never presses: ones that leave the application's
# windows or would end the run for reasons of their own.
FORBIDDEN_NAMES = {
    "Pick Screen Color",  # grabs the pointer until the next click
    "Quit", "Quit OrvaneUI",
}
# Dialogs that browse the file system: closed with Escape, never used.
FILE_DIALOG_TITLES = ("Choose Image", "Choose", "Open", "Select Folder", "Save", "Select a logo image")
TEXT_ROLES = {"text", "entry", "paragraph", "document text", "editbar"}
TYPED_CHARACTERS = ("abcdefghijklmnopqrstuvwxyz" "ABCDEFGHIJKLMNOPQRSTUVWXYZ" "0123456789" "     .,-!?#*_()[]/"
                    "äöüéß")


class RunFailed(Exception):
    pass


class Monkey:
    def __init__(self, args):
        self.args = args
        self.rng = random.Random(args.seed)
        self.out = os.path.abspath(args.out)
        self.actions = collections.deque(maxlen=40)
        self.count = 0
        self.servers = Servers(self.out)
        self.app = None
        self.app_pid = None
        self.atspi = None
        self.app_object = None
        self.started = time.monotonic()
        self.counts = collections.Counter()

    # ---------------------------------------------------------------- setup

    def prepare(self):
        if os.path.exists(self.out):
            shutil.rmtree(self.out)
        self.dirs = {name: os.path.join(self.out, name)
                     for name in ("home", "data", "config", "runtime", "documents", "bin", "sanitizer")}
        for path in self.dirs.values():
            os.makedirs(path)
        os.chmod(self.dirs["runtime"], 0o700)
        # Opening a folder or a page hands a URL to xdg-open; here it is
        # written down instead of starting a browser or a file manager.
        opener = os.path.join(self.dirs["bin"], "xdg-open")
        with open(opener, "w") as f:
            f.write("#!/bin/sh\necho \"$@\" >> '%s'\n" % os.path.join(self.out, "opened-urls.log"))
        os.chmod(opener, 0o755)
        # Recordings go to the documents folder that this names.
        with open(os.path.join(self.dirs["config"], "user-dirs.dirs"), "w") as f:
            f.write('XDG_DOCUMENTS_DIR="%s"\n' % self.dirs["documents"])

    def start_servers(self):
        self.servers.start_display()
        self.servers.start_session_bus(self.dirs["runtime"])
        try:
            self.servers.start_sound(self.dirs["runtime"])
        except (RuntimeError, subprocess.SubprocessError, OSError) as e:
            # The recorder records silence without a sound server.
            self.log("no sound server: %s" % e)
        # A window for the window sources to show, right of the console so
        # that clicks meant for the console never land on it; it reads no
        # input.
        env = self.servers.environment()
        self.servers.spawn(["xterm", "-T", "Monkey Terminal", "-geometry", "60x20+1940+40", "-e",
                            "tail", "-f", "/dev/null"], "xterm.log", env)
        self.terminal = self.wait_for(lambda: self.xdotool(["search", "--name", "^Monkey Terminal$"]).split(),
                                      10, "the terminal window")[0]

    def app_environment(self):
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
            # Leaks are looked for when the application quits; the caches
            # that Qt, fontconfig and the X libraries keep to the end stay
            # reachable and are not reported.
            "ASAN_OPTIONS": "log_path=%s/asan:detect_leaks=1:abort_on_error=0:print_summary=1"
                            % self.dirs["sanitizer"],
            "UBSAN_OPTIONS": "log_path=%s/ubsan:print_stacktrace=1:halt_on_error=1" % self.dirs["sanitizer"],
        })
        return env

    def start_app(self):
        presets = monkey_data.write_data_directory(DATA_TEMPLATE, int(self.terminal), self.args.seed,
                                                   self.dirs["data"], self.dirs["config"])
        self.presets_dir = presets
        self.app = self.servers.spawn([self.args.app], "app.log", self.app_environment())
        self.app_pid = self.app.pid
        self.log("application pid %d" % self.app_pid)
        # Only now is the session bus known to this process.
        os.environ.update(self.servers.env)
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        self.atspi = Atspi
        self.atspi_error = GLib.Error
        Atspi.init()
        Atspi.set_timeout(4000, 60000)
        self.app_object = self.wait_for(self.find_app_object, 90, "the application on the accessibility bus")
        self.wait_for(lambda: self.app_windows(), 60, "a window of the application")

    def find_app_object(self):
        self.check_running()
        desktop = self.atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            try:
                child = desktop.get_child_at_index(i)
                if child is not None and child.get_process_id() == self.app_pid:
                    return child
            except Exception:
                continue
        return None

    # -------------------------------------------------------------- helpers

    def log(self, text):
        print("[%7.1fs] %s" % (time.monotonic() - self.started, text), flush=True)

    def action(self, text):
        self.count += 1
        line = "#%d %s" % (self.count, text)
        self.actions.append(line)
        self.log(line)

    def wait_for(self, probe, seconds, what):
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            try:
                value = probe()
            except RunFailed:
                raise
            except Exception:
                value = None
            if value:
                return value
            time.sleep(0.2)
        raise RunFailed("timed out waiting for " + what)

    def xdotool(self, argv, timeout=10):
        try:
            done = subprocess.run(["xdotool"] + argv, env=self.servers.environment(), capture_output=True,
                                  text=True, timeout=timeout)
        except subprocess.TimeoutExpired:
            return ""
        return done.stdout

    def check_running(self):
        if self.app is not None and self.app.poll() is not None:
            raise RunFailed("the application exited with status %s" % self.app.returncode)

    def app_windows(self):
        """The application's top-level accessible windows that are showing."""
        windows = []
        for i in range(self.app_object.get_child_count()):
            w = self.app_object.get_child_at_index(i)
            if w is not None and self.has_state(w, "SHOWING"):
                windows.append(w)
        return windows

    def has_state(self, obj, name):
        return obj.get_state_set().contains(getattr(self.atspi.StateType, name))

    def role(self, obj):
        return obj.get_role_name()

    def name(self, obj):
        try:
            return obj.get_name() or ""
        except Exception:
            return ""

    def walk(self, root, limit=1500):
        """Every showing object below root, pruning hidden branches."""
        found = []
        stack = [root]
        while stack and len(found) < limit:
            obj = stack.pop()
            try:
                count = obj.get_child_count()
            except Exception:
                continue
            for i in range(min(count, 400)):
                try:
                    child = obj.get_child_at_index(i)
                    if child is None:
                        continue
                    states = child.get_state_set()
                    if not states.contains(self.atspi.StateType.SHOWING):
                        continue
                except Exception:
                    continue
                found.append(child)
                stack.append(child)
        return found

    def window_title(self, window):
        return self.name(window)

    def is_file_dialog(self, window):
        title = self.window_title(window)
        return any(title == t or title.startswith(t + " ") for t in FILE_DIALOG_TITLES) or \
            self.role(window) == "file chooser"

    def actionable(self, obj):
        try:
            act = obj.get_action_iface()
        except Exception:
            return None
        if act is None:
            return None
        try:
            names = [act.get_action_name(i) for i in range(act.get_n_actions())]
        except Exception:
            return None
        useful = [i for i, n in enumerate(names) if n and n.lower() not in ("setfocus", "set focus")]
        return (act, useful, names) if useful else None

    def preset_count(self):
        return len(glob.glob(os.path.join(self.presets_dir, "*.json")))

    def focus_app(self):
        """Makes sure the keyboard goes to one of the application's windows,
        never to the terminal."""
        active = self.xdotool(["getactivewindow"]).strip()
        if active:
            pid = self.xdotool(["getwindowpid", active]).strip()
            if pid == str(self.app_pid):
                return True
        ids = self.xdotool(["search", "--onlyvisible", "--pid", str(self.app_pid)]).split()
        for wid in reversed(ids):
            self.xdotool(["windowactivate", "--sync", wid], timeout=5)
            active = self.xdotool(["getactivewindow"]).strip()
            if active and self.xdotool(["getwindowpid", active]).strip() == str(self.app_pid):
                return True
        return False

    # -------------------------------------------------------------- actions

    def open_windows(self):
        windows = self.app_windows()
        return [(w, self.window_title(w)) for w in windows]

    def close_file_dialogs(self, windows):
        for w, title in windows:
            if self.is_file_dialog(w):
                self.action("escape out of the file dialog '%s'" % title)
                self.focus_app()
                self.xdotool(["key", "Escape"])
                return True
        return False

    def controls(self, windows):
        """Actionable, enabled controls in the application's windows; the
        topmost modal window alone when one is open."""
        modal = [w for w, _ in windows if self.has_state(w, "MODAL")]
        roots = modal[-1:] if modal else [w for w, _ in windows]
        found = []
        for root in roots:
            title = self.window_title(root)
            for obj in self.walk(root):
                try:
                    states = obj.get_state_set()
                    if not (states.contains(self.atspi.StateType.ENABLED) or
                            states.contains(self.atspi.StateType.SENSITIVE)):
                        continue
                    name = self.name(obj)
                    if name in FORBIDDEN_NAMES:
                        continue
                    role = self.role(obj)
                except Exception:
                    continue
                found.append((obj, role, name, title))
        return found

    def do_click(self, controls):
        candidates = []
        for obj, role, name, title in controls:
            a = self.actionable(obj)
            if a:
                candidates.append((obj, role, name, title, a))
        if not candidates:
            return self.do_escape()
        # A window first, then a control in it: a sheet's few controls get
        # as much attention as the console's many.
        titles = sorted(set(c[3] for c in candidates))
        window = self.rng.choice(titles)
        obj, role, name, title, (act, useful, names) = self.rng.choice([c for c in candidates if c[3] == window])
        if title == "Delete Preset" and name == "Delete" and self.preset_count() <= 1:
            # The last preset stays, so that the check afterwards has a
            # file to read.
            return self.do_escape()
        index = self.rng.choice(useful)
        self.action("%s on %s '%s' in '%s'" % (names[index], role, name, title))
        try:
            act.do_action(index)
        except Exception as e:
            # A control that opens a modal dialog answers once the dialog
            # closes; the call's timeout is not a failure.
            self.log("   (no answer yet: %s)" % str(e).splitlines()[0][:120])

    def do_type(self, controls):
        fields = []
        for obj, role, name, title in controls:
            try:
                if role in TEXT_ROLES and self.has_state(obj, "EDITABLE"):
                    fields.append((obj, role, name, title))
            except Exception:
                continue
        if not fields:
            return self.do_key_digit()
        obj, role, name, title = self.rng.choice(fields)
        length = self.rng.choice((1, 3, 8, 20, 60))
        text = "".join(self.rng.choice(TYPED_CHARACTERS) for _ in range(length))
        self.action("type %r into %s '%s' in '%s'" % (text, role, name, title))
        try:
            component = obj.get_component_iface()
            if component is not None:
                component.grab_focus()
        except Exception:
            pass
        if self.focus_app():
            if self.rng.random() < 0.3:
                self.xdotool(["key", "ctrl+a"])
            self.xdotool(["type", "--delay", "8", text], timeout=30)
            if self.rng.random() < 0.3:
                self.xdotool(["key", "Return"])

    def do_key_digit(self):
        digit = str(self.rng.randint(1, 9))
        double = self.rng.random() < 0.5
        self.action("key %s%s" % (digit, " twice" if double else ""))
        if self.focus_app():
            if double:
                self.xdotool(["key", "--delay", "120", digit, digit])
            else:
                self.xdotool(["key", digit])

    def do_key_b(self):
        self.action("key B")
        if self.focus_app():
            self.xdotool(["key", "b"])

    def do_escape(self):
        self.action("key Escape")
        if self.focus_app():
            self.xdotool(["key", "Escape"])

    def do_cancel(self, controls):
        buttons = [c for c in controls if c[1] in ("push button", "button") and
                   c[2] in ("Cancel", "Close", "Done", "OK", "No")]
        if not buttons:
            return self.do_escape()
        obj, role, name, title = self.rng.choice(buttons)
        self.action("press '%s' in '%s'" % (name, title))
        self.press(obj)

    def press(self, obj):
        """Runs a control's first accessible action, as a click would."""
        act = self.actionable(obj)
        if act:
            try:
                act[0].do_action(act[1][0])
            except Exception as e:
                self.log("   (no answer yet: %s)" % str(e).splitlines()[0][:120])

    def do_named(self, controls, pattern, what):
        """Presses a control whose name matches pattern, when one shows."""
        matching = [c for c in controls if re.search(pattern, c[2])]
        if not matching:
            return self.do_click(controls)
        obj, role, name, title = self.rng.choice(matching)
        self.action("%s: press '%s' in '%s'" % (what, name, title))
        self.press(obj)

    def do_close_window(self, windows):
        """Closes one of the application's secondary windows as its title
        bar would."""
        ids = self.xdotool(["search", "--onlyvisible", "--pid", str(self.app_pid)]).split()
        titled = []
        for wid in ids:
            title = self.xdotool(["getwindowname", wid]).strip()
            if title and title != "OrvaneUI":
                titled.append((wid, title))
        if not titled:
            return self.do_escape()
        wid, title = self.rng.choice(titled)
        self.action("close the window '%s'" % title)
        self.xdotool(["windowactivate", "--sync", wid], timeout=5)
        active = self.xdotool(["getactivewindow"]).strip()
        if active == wid:
            self.xdotool(["key", "--clearmodifiers", "alt+F4"])

    def do_pointer(self, windows):
        """A click or a short drag at a random point of the main window,
        where the drawing overlay and the stages take the pointer."""
        main = [w for w, t in windows if t == "OrvaneUI"]
        if not main:
            return self.do_escape()
        try:
            box = main[0].get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
        except Exception:
            return self.do_escape()
        if box.width < 20 or box.height < 20:
            return self.do_escape()
        x = box.x + self.rng.randrange(box.width)
        y = box.y + self.rng.randrange(box.height)
        if self.rng.random() < 0.5:
            self.action("click at %d,%d" % (x, y))
            self.xdotool(["mousemove", str(x), str(y), "click", "1"])
        else:
            x2 = min(max(box.x, x + self.rng.randint(-200, 200)), box.x + box.width - 1)
            y2 = min(max(box.y, y + self.rng.randint(-200, 200)), box.y + box.height - 1)
            self.action("drag from %d,%d to %d,%d" % (x, y, x2, y2))
            self.xdotool(["mousemove", str(x), str(y), "mousedown", "1", "mousemove", str(x2), str(y2),
                          "mouseup", "1"])

    def step(self):
        t0 = time.monotonic()
        self.check_running()
        windows = self.open_windows()
        if self.close_file_dialogs(windows):
            return
        choice = self.rng.choices(
            ["click", "type", "digit", "b", "escape", "cancel", "popout", "record", "close", "pointer"],
            weights=[40, 10, 14, 3, 6, 5, 3, 3, 3, 4])[0]
        self.counts[choice] += 1
        if choice in ("click", "type", "cancel", "popout", "record"):
            controls = self.controls(windows)
        if choice == "click":
            self.do_click(controls)
        elif choice == "type":
            self.do_type(controls)
        elif choice == "digit":
            self.do_key_digit()
        elif choice == "b":
            self.do_key_b()
        elif choice == "escape":
            self.do_escape()
        elif choice == "cancel":
            self.do_cancel(controls)
        elif choice == "popout":
            self.do_named(controls, r"(?i)pop ?out|virtual camera", "pop-out window")
        elif choice == "record":
            # Start or stop when the recording panel shows, else open it.
            if any(re.fullmatch(r"(Start|Stop) Recording", c[2]) for c in controls):
                self.do_named(controls, r"^(Start|Stop) Recording$", "recording")
            else:
                self.do_named(controls, r"(?i)record", "recording")
        elif choice == "close":
            self.do_close_window(windows)
        elif choice == "pointer":
            self.do_pointer(windows)
        if os.environ.get("MONKEY_PROFILE"):
            self.log("   step took %.2f s" % (time.monotonic() - t0))
        time.sleep(self.rng.choice((0.02, 0.05, 0.1, 0.2, 0.5)))

    # --------------------------------------------------------------- checks

    def answers(self, seconds=10):
        """The application object answers an accessibility call."""
        self.atspi.set_timeout(seconds * 1000, 60000)
        result = {}

        def ask():
            try:
                result["children"] = self.app_object.get_child_count()
                result["name"] = self.app_object.get_name()
            except Exception as e:
                result["error"] = str(e)

        worker = threading.Thread(target=ask, daemon=True)
        worker.start()
        worker.join(seconds + 5)
        self.atspi.set_timeout(4000, 60000)
        if worker.is_alive() or "error" in result:
            raise RunFailed("the application does not answer: %s" % result.get("error", "no reply"))
        self.log("the application answers: %s with %d windows" % (result["name"], result["children"]))

    def sanitizer_reports(self):
        reports = [p for p in glob.glob(os.path.join(self.dirs["sanitizer"], "*")) if os.path.getsize(p) > 0]
        text = ""
        try:
            with open(os.path.join(self.out, "app.log"), errors="replace") as f:
                text = f.read()
        except OSError:
            pass
        markers = [m for m in ("runtime error:", "ERROR: AddressSanitizer", "ERROR: LeakSanitizer",
                               "ERROR: UndefinedBehaviorSanitizer") if m in text]
        return reports, markers

    def describe_hang(self, why):
        """What the application shows and where each of its threads is,
        for a report about a hang."""
        env = self.servers.environment()
        shot = os.path.join(self.out, "hang.png")
        subprocess.run(["import", "-window", "root", shot], env=env, capture_output=True, timeout=60)
        lines = ["%s; its windows:" % why]
        for wid in self.xdotool(["search", "--onlyvisible", "--pid", str(self.app_pid)]).split():
            lines.append("  %s '%s'" % (wid, self.xdotool(["getwindowname", wid]).strip()))
        lines.append("screen: " + shot)
        if shutil.which("gdb"):
            trace = subprocess.run(["gdb", "-p", str(self.app_pid), "-batch", "-nx", "-ex", "thread apply all bt 30"],
                                   capture_output=True, text=True, timeout=180)
            path = os.path.join(self.out, "hang-backtrace.txt")
            with open(path, "w") as f:
                f.write(trace.stdout + trace.stderr)
            main = trace.stdout.split("\nThread ")
            lines.append("threads: " + path)
            # The main thread comes last in gdb's listing.
            lines.append("main thread:\n" + (main[-1][:6000] if main else ""))
        return "\n".join(lines)

    def quit_app(self, seconds=60):
        """Asks the console window to close, as its title bar does, and
        waits for the process to end by itself."""
        for _ in range(3):
            self.focus_app()
            self.xdotool(["key", "Escape"])
            time.sleep(0.2)
        ids = self.xdotool(["search", "--onlyvisible", "--name", "^OrvaneUI$"]).split()
        mine = [w for w in ids if self.xdotool(["getwindowpid", w]).strip() == str(self.app_pid)]
        if not mine:
            raise RunFailed("the console window is gone")
        self.log("closing the console window")
        subprocess.run(["wmctrl", "-i", "-c", mine[0]], env=self.servers.environment(), capture_output=True,
                       timeout=10)
        try:
            code = self.app.wait(timeout=seconds)
        except subprocess.TimeoutExpired:
            raise RunFailed(self.describe_hang("the application did not quit within %d s of closing its window"
                                               % seconds))
        self.log("the application quit with status %d" % code)
        if code != 0:
            raise RunFailed("the application quit with status %d" % code)

    def check_presets(self):
        done = subprocess.run([self.args.checker, self.presets_dir, "1"], capture_output=True, text=True,
                              timeout=120)
        sys.stdout.write(done.stdout)
        sys.stdout.write(done.stderr)
        if done.returncode != 0:
            raise RunFailed("a preset file no longer loads")

    def check_recordings(self):
        """Every movie the run recorded opens and holds a video stream,
        including one that was still recording when the window closed."""
        movies = sorted(glob.glob(os.path.join(self.dirs["documents"], "**", "*.mov"), recursive=True))
        broken = []
        for movie in movies:
            probe = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0",
                                    movie], capture_output=True, text=True, timeout=120)
            # ffprobe at this level reports only damage, such as a movie
            # cut off in the middle of a fragment.
            if probe.returncode != 0 or "video" not in probe.stdout or probe.stderr.strip():
                broken.append("%s: %s" % (os.path.basename(movie), (probe.stderr.strip() or "no video stream")[:300]))
        self.log("%d recordings, %d unreadable" % (len(movies), len(broken)))
        if broken:
            raise RunFailed("recordings that do not open: " + "; ".join(broken))

    # ------------------------------------------------------------------ run

    def run(self):
        print("seed=%d" % self.args.seed, flush=True)
        failure = None
        try:
            self.prepare()
            self.start_servers()
            self.start_app()
            self.log("started; running for %d s" % self.args.seconds)
            deadline = time.monotonic() + self.args.seconds
            next_check = time.monotonic() + 10
            while time.monotonic() < deadline:
                try:
                    self.step()
                except self.atspi_error as e:
                    # A window or control that closed between listing and
                    # use; a hang shows in the regular check instead.
                    self.log("   (the application changed under the action: %s)" % str(e).splitlines()[0][:160])
                if time.monotonic() > next_check:
                    self.answers()
                    next_check = time.monotonic() + 10
            self.check_running()
            self.answers()
            self.quit_app()
        except RunFailed as e:
            failure = str(e)
        except Exception as e:  # the driver's own trouble is a failure too
            failure = "%s: %s" % (type(e).__name__, e)
        finally:
            if self.app is not None and self.app.poll() is None:
                self.servers.stop_one(self.app_pid, grace=10)
            self.servers.stop_all()

        reports, markers = self.sanitizer_reports()
        problems = []
        if failure:
            problems.append(failure)
        if reports:
            problems.append("sanitizer reports: " + ", ".join(os.path.basename(r) for r in reports))
        if markers:
            problems.append("the application's output holds: " + ", ".join(markers))
        if self.app is not None and not (failure and "timed out" in failure):
            try:
                self.check_presets()
            except RunFailed as e:
                problems.append(str(e))
            except (OSError, subprocess.SubprocessError) as e:
                problems.append("the preset checker did not run: %s" % e)
        if not failure and self.app is not None:
            try:
                self.check_recordings()
            except RunFailed as e:
                problems.append(str(e))
            except (OSError, subprocess.SubprocessError) as e:
                problems.append("ffprobe did not run: %s" % e)

        duration = time.monotonic() - self.started
        summary = "seed=%d actions=%d duration=%.0fs" % (self.args.seed, self.count, duration)
        print("actions by kind: " + ", ".join("%s %d" % kv for kv in sorted(self.counts.items())))
        if problems:
            print("FAIL " + summary)
            for p in problems:
                print("  " + p)
            print("last actions:")
            for line in self.actions:
                print("  " + line)
            for r in reports:
                print("--- " + r)
                with open(r, errors="replace") as f:
                    print(f.read()[:20000])
            print("--- end of the application's output (%s)" % os.path.join(self.out, "app.log"))
            try:
                with open(os.path.join(self.out, "app.log"), errors="replace") as f:
                    print("".join(f.readlines()[-60:]))
            except OSError:
                pass
            print("replay with: --seed %d --seconds %d" % (self.args.seed, self.args.seconds))
            return 1
        print("PASS " + summary)
        return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--app", required=True, help="the application executable")
    parser.add_argument("--checker", required=True, help="the preset checker executable")
    parser.add_argument("--out", required=True, help="a directory for this run (emptied first)")
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--seconds", type=float, default=60)
    args = parser.parse_args()
    if args.seed is None:
        args.seed = int.from_bytes(os.urandom(4), "little")
    for path in (args.app, args.checker):
        if not (os.path.isfile(path) and os.access(path, os.X_OK)):
            print("seed=%d" % args.seed)
            print("FAIL no executable at %s" % path)
            if path == args.app:
                print("the sanitized application is built by `make sanitized` (a second build tree)")
            return 1
    # A stop from the test runner still takes the servers down.
    def stop(*_):
        raise KeyboardInterrupt()

    signal.signal(signal.SIGTERM, stop)
    monkey = Monkey(args)
    try:
        return monkey.run()
    except KeyboardInterrupt:
        monkey.servers.stop_all()
        print("stopped; seed=%d actions=%d" % (args.seed, monkey.count))
        return 1


if __name__ == "__main__":
    sys.exit(main())
