#!/usr/bin/python3
"""A thin bridge from a test to headless Chromium over the DevTools protocol.

Reads one JSON command a line on stdin and answers with one JSON line on
stdout. Commands: navigate {url}, eval {expr}, click {selector, index},
key {key}, viewport {width, height}, dialogs, quit. Starts its own Chromium
with a fresh profile and ends it by pid; talks only to 127.0.0.1.
"""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import urllib.request

import websocket

CHROMIUM = "/usr/bin/chromium"
FLAGS = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--remote-debugging-address=127.0.0.1", "--remote-debugging-port=0",
    "--window-size=800,900",
]


class Browser:
    def __init__(self):
        self.profile = tempfile.mkdtemp(prefix="orvane-remote-page-")
        self.process = subprocess.Popen(
            [CHROMIUM, *FLAGS, f"--user-data-dir={self.profile}", "about:blank"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        self.next_id = 0
        self.dialogs = []
        self.load_fired = False
        port = self._debugging_port()
        self.ws = websocket.create_connection(self._page_socket(port), timeout=20)
        self.call("Page.enable")
        self.call("Runtime.enable")

    def _debugging_port(self):
        path = os.path.join(self.profile, "DevToolsActivePort")
        for _ in range(300):  # at most 30 s
            if os.path.exists(path):
                with open(path) as f:
                    lines = f.read().split("\n")
                if lines and lines[0].strip().isdigit():
                    return int(lines[0])
            if self.process.poll() is not None:
                raise RuntimeError("chromium exited early")
            time.sleep(0.1)
        raise RuntimeError("no DevTools port")

    def _page_socket(self, port):
        for _ in range(100):
            with urllib.request.urlopen(f"http://127.0.0.1:{port}/json/list", timeout=5) as reply:
                targets = json.load(reply)
            pages = [t for t in targets if t.get("type") == "page"]
            if pages:
                return pages[0]["webSocketDebuggerUrl"]
            time.sleep(0.1)
        raise RuntimeError("no page target")

    def _event(self, message):
        method = message.get("method")
        if method == "Page.javascriptDialogOpening":
            self.dialogs.append(message["params"].get("message", ""))
            self.send("Page.handleJavaScriptDialog", {"accept": True})
        elif method == "Page.loadEventFired":
            self.load_fired = True

    def send(self, method, params=None):
        self.next_id += 1
        self.ws.send(json.dumps({"id": self.next_id, "method": method, "params": params or {}}))
        return self.next_id

    def call(self, method, params=None):
        wanted = self.send(method, params)
        for _ in range(10000):
            message = json.loads(self.ws.recv())
            if message.get("id") == wanted:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message.get("result", {})
            if "method" in message:
                self._event(message)
        raise RuntimeError(f"no answer to {method}")

    def pump(self, seconds):
        deadline = time.time() + seconds
        self.ws.settimeout(0.05)
        try:
            while time.time() < deadline:
                try:
                    message = json.loads(self.ws.recv())
                except websocket.WebSocketTimeoutException:
                    continue
                if "method" in message:
                    self._event(message)
        finally:
            self.ws.settimeout(20)

    def evaluate(self, expr):
        result = self.call("Runtime.evaluate", {"expression": expr, "returnByValue": True, "awaitPromise": True})
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"].get("text", "exception"))
        return result.get("result", {}).get("value")

    def navigate(self, url):
        self.load_fired = False
        self.call("Page.navigate", {"url": url})
        deadline = time.time() + 20
        while not self.load_fired and time.time() < deadline:
            self.pump(0.1)
        return self.load_fired

    def click(self, selector, index):
        box = self.evaluate(
            "(() => { const e = document.querySelectorAll(%s)[%d]; if (!e) return null;"
            " e.scrollIntoView({block: 'center'}); const r = e.getBoundingClientRect();"
            " return [r.left + r.width / 2, r.top + r.height / 2]; })()" % (json.dumps(selector), index))
        if box is None:
            return False
        x, y = box
        for kind in ("mouseMoved", "mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent",
                      {"type": kind, "x": x, "y": y, "button": "left", "clickCount": 1})
        return True

    def key(self, key):
        code = f"Digit{key}" if key.isdigit() else f"Key{key.upper()}"
        vk = ord(key.upper())
        self.call("Input.dispatchKeyEvent", {"type": "keyDown", "key": key, "code": code, "text": key,
                                             "windowsVirtualKeyCode": vk})
        self.call("Input.dispatchKeyEvent", {"type": "keyUp", "key": key, "code": code,
                                             "windowsVirtualKeyCode": vk})

    def close(self):
        try:
            self.ws.close()
        except Exception:
            pass
        try:
            os.killpg(self.process.pid, signal.SIGTERM)
            self.process.wait(timeout=10)
        except Exception:
            try:
                os.killpg(self.process.pid, signal.SIGKILL)
            except Exception:
                pass
        shutil.rmtree(self.profile, ignore_errors=True)


def answer(payload):
    sys.stdout.write(json.dumps(payload) + "\n")
    sys.stdout.flush()


def main():
    browser = None
    try:
        browser = Browser()
        answer({"ok": True, "ready": True})
        for line in sys.stdin:
            command = json.loads(line)
            name = command.get("cmd")
            try:
                if name == "navigate":
                    answer({"ok": browser.navigate(command["url"])})
                elif name == "eval":
                    answer({"ok": True, "value": browser.evaluate(command["expr"])})
                elif name == "click":
                    answer({"ok": browser.click(command["selector"], command.get("index", 0))})
                elif name == "key":
                    browser.key(command["key"])
                    answer({"ok": True})
                elif name == "viewport":
                    browser.call("Emulation.setDeviceMetricsOverride",
                                 {"width": command["width"], "height": command["height"],
                                  "deviceScaleFactor": 1, "mobile": False})
                    answer({"ok": True})
                elif name == "dialogs":
                    browser.pump(0.05)
                    answer({"ok": True, "value": browser.dialogs})
                elif name == "quit":
                    answer({"ok": True})
                    break
                else:
                    answer({"ok": False, "error": f"unknown command {name}"})
            except Exception as error:  # report and go on; the test decides
                answer({"ok": False, "error": str(error)})
    except Exception as error:
        answer({"ok": False, "error": str(error)})
    finally:
        if browser:
            browser.close()


if __name__ == "__main__":
    main()
