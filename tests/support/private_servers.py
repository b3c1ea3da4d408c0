"""The private servers a monkey run needs: an X server with a window
manager, a D-Bus session bus with the accessibility bus on it, and a sound
server with a null sink. Everything started here is stopped by pid, with
the helpers those servers started themselves."""

import os
import signal
import subprocess
import time


def _children(pid):
    """The pids of every process below pid, deepest last."""
    found = []
    try:
        tasks = os.listdir("/proc/%d/task" % pid)
    except OSError:
        return found
    for task in tasks:
        try:
            with open("/proc/%d/task/%s/children" % (pid, task)) as f:
                kids = [int(k) for k in f.read().split()]
        except OSError:
            continue
        for kid in kids:
            found.append(kid)
            found.extend(_children(kid))
    return found


def _alive(pid):
    try:
        os.kill(pid, 0)
    except OSError:
        return False
    try:
        with open("/proc/%d/stat" % pid) as f:
            return f.read().split(")")[-1].split()[0] != "Z"
    except OSError:
        return False


def _wait_gone(pid, seconds):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        try:
            done, _ = os.waitpid(pid, os.WNOHANG)
            if done == pid:
                return True
        except ChildProcessError:
            if not _alive(pid):
                return True
        time.sleep(0.05)
    return False


class Servers:
    def __init__(self, out):
        self.out = out
        self.pids = []  # in start order; stopped in reverse
        self.env = {}

    def _track(self, pid):
        self.pids.append(pid)
        return pid

    def _spawn(self, argv, log, env=None):
        with open(os.path.join(self.out, log), "ab") as f:
            proc = subprocess.Popen(argv, stdout=f, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                    env=env, start_new_session=True)
        self._track(proc.pid)
        return proc

    def environment(self):
        env = dict(os.environ)
        env.update(self.env)
        return env

    def start_display(self, width=2400, height=1200):
        # Xvfb picks a free display number itself and writes it once it
        # accepts connections, so two runs never share a server.
        read_end, write_end = os.pipe()
        with open(os.path.join(self.out, "xvfb.log"), "ab") as log:
            proc = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0",
                                     "%dx%dx24" % (width, height), "-noreset", "-nolisten", "tcp"],
                                    stdout=log, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                    pass_fds=(write_end,), start_new_session=True)
        self._track(proc.pid)
        os.close(write_end)
        number = b""
        with os.fdopen(read_end, "rb") as announced:
            number = announced.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        display = ":" + number.decode()
        self.env["DISPLAY"] = display
        env = self.environment()
        self._spawn(["openbox"], "openbox.log", env=env)
        for _ in range(100):
            probe = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=env,
                                   capture_output=True, text=True)
            if "window id" in probe.stdout:
                break
            time.sleep(0.1)
        else:
            raise RuntimeError("openbox did not start")
        return display

    def start_session_bus(self, runtime):
        address = "unix:path=" + os.path.join(runtime, "bus")
        env = self.environment()
        proc = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--address=" + address, "--print-address"],
                                stdout=subprocess.PIPE, stderr=open(os.path.join(self.out, "dbus.log"), "ab"),
                                stdin=subprocess.DEVNULL, env=env, start_new_session=True)
        self._track(proc.pid)
        line = proc.stdout.readline().decode().strip()
        if not line:
            raise RuntimeError("dbus-daemon printed no address")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = line
        # The accessibility bus: the launcher owns org.a11y.Bus on the
        # session bus and starts the bus and its registry.
        env = self.environment()
        env["XDG_RUNTIME_DIR"] = runtime
        self._spawn(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], "atspi.log", env=env)
        for _ in range(100):
            probe = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                                    "org.a11y.Bus.GetAddress"], env=env, capture_output=True, text=True)
            if probe.returncode == 0 and "unix:" in probe.stdout:
                return line
            time.sleep(0.1)
        raise RuntimeError("the accessibility bus did not start")

    def start_sound(self, runtime):
        """A PulseAudio daemon of its own with a null sink as default;
        returns its server address."""
        pulse_home = os.path.join(runtime, "pulse-home")
        os.makedirs(pulse_home, exist_ok=True)
        env = self.environment()
        env.update({"XDG_RUNTIME_DIR": runtime, "HOME": pulse_home})
        env.pop("DISPLAY", None)
        env.pop("PULSE_SERVER", None)
        done = subprocess.run(["pulseaudio", "-D", "--exit-idle-time=-1", "-n",
                               "--load=module-native-protocol-unix", "--log-target=stderr"],
                              env=env, capture_output=True, text=True, timeout=30)
        if done.returncode != 0:
            raise RuntimeError("pulseaudio failed: " + done.stderr)
        with open(os.path.join(runtime, "pulse", "pid")) as f:
            self._track(int(f.read().strip()))
        server = "unix:" + os.path.join(runtime, "pulse", "native")
        env["PULSE_SERVER"] = server
        for argv in (["pactl", "load-module", "module-null-sink", "sink_name=monkey_sink"],
                     ["pactl", "set-default-sink", "monkey_sink"]):
            subprocess.run(argv, env=env, check=True, capture_output=True, timeout=30)
        self.env["PULSE_SERVER"] = server
        return server

    def spawn(self, argv, log, env):
        return self._spawn(argv, log, env=env)

    def stop_one(self, pid, grace=5.0):
        """SIGTERM, then SIGKILL after grace seconds, for pid and the
        helpers it started."""
        family = [pid] + _children(pid)
        for p in reversed(family):
            if _alive(p):
                try:
                    os.kill(p, signal.SIGTERM)
                except OSError:
                    pass
        for p in family:
            if not _wait_gone(p, grace if p == pid else 1.0):
                try:
                    os.kill(p, signal.SIGKILL)
                except OSError:
                    pass
                _wait_gone(p, 2.0)
        if pid in self.pids:
            self.pids.remove(pid)

    def stop_all(self):
        while self.pids:
            self.stop_one(self.pids[-1])
