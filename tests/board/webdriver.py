"""A browser driven through its driver, a headless Chromium or WebKitGTK: WebDriver is JSON over
HTTP."""

import base64
import glob
import json
import os
import re
import select
import shutil
import signal
import socket
import subprocess
import time
import urllib.request

PORT = re.compile(r"successfully on port (\d+)")
START_PATIENCE = 20  # seconds
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
FLAGS = ["--headless=new", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-sync",
         "--disable-background-networking", "--disable-component-update"]
KEYS = {"Tab": "\ue004", "Enter": "\ue007", "Escape": "\ue00c", "End": "\ue010", "Home": "\ue011",
        "Left": "\ue012", "Right": "\ue014", "Shift": "\ue008"}


def find_browser():
    """Chromium and its driver, or None."""
    browser = shutil.which("chromium") or shutil.which("google-chrome")
    driver = shutil.which("chromedriver")
    return (browser, driver) if browser and driver else None


def find_webkit():
    """The small browser of WebKitGTK and its driver, or None. It needs a screen, real or not."""
    found = [path for folder in ("lib", "lib/*", "lib64", "libexec")
             for path in glob.glob(f"/usr/{folder}/webkit2gtk-*/MiniBrowser")]
    driver = shutil.which("WebKitWebDriver")
    screen = "DISPLAY" in os.environ or shutil.which("Xvfb")
    return (found[0], driver) if found and driver and screen else None


class Browser:
    """One browser with an empty profile in `folder`. Elements are named by CSS selectors."""

    def __init__(self, found, folder, size=(1280, 800)):
        browser, driver = found
        self.processes = []
        if os.path.basename(driver) == "WebKitWebDriver":
            port, wishes = self.start_webkit(browser, driver)
        else:
            self.start(driver, "--port=0")
            port = self.read_port(time.time() + START_PATIENCE)
            flags = [*FLAGS, f"--user-data-dir={folder}", "--window-size=%d,%d" % size]
            flags += ["--no-sandbox"] if os.geteuid() == 0 else []
            wishes = {"goog:chromeOptions": {"binary": browser, "args": flags},
                      "goog:loggingPrefs": {"browser": "ALL"}}
        self.root = f"http://127.0.0.1:{port}/session"
        try:
            self.root += "/" + self.call("POST", "", {"capabilities": {"alwaysMatch": wishes}},
                                         START_PATIENCE)["sessionId"]
        except (AssertionError, OSError) as error:
            self.end()
            raise SystemExit(f"{browser} cannot be started: {error}") from None

    def start(self, *command, **options):
        """In a session of its own, so that all of it can be ended at once."""
        self.driver = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                       start_new_session=True, **options)
        self.processes.append(self.driver)

    def start_webkit(self, browser, driver):
        environment = dict(os.environ)
        if "DISPLAY" not in environment:
            self.start("Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24")
            environment["DISPLAY"] = ":" + self.driver.stdout.readline().decode().strip()
        with socket.create_server(("127.0.0.1", 0)) as listener:
            port = listener.getsockname()[1]
        self.start(driver, f"--port={port}", env=environment)
        deadline = time.time() + START_PATIENCE
        while time.time() < deadline:
            try:
                socket.create_connection(("127.0.0.1", port)).close()
                break
            except ConnectionRefusedError:
                time.sleep(0.05)
        return port, {"webkitgtk:browserOptions": {"binary": browser, "args": ["--automation"]}}

    def read_port(self, deadline):
        """The port that the driver says it listens on."""
        said = ""
        while not (found := PORT.search(said)):
            patience = max(0, deadline - time.time())
            ready = select.select([self.driver.stdout], [], [], patience)[0]
            piece = os.read(self.driver.stdout.fileno(), 4096).decode() if ready else ""
            if not piece:
                self.end()
                raise SystemExit(f"chromedriver cannot be started: {said.strip() or 'no answer'}")
            said += piece
        return found[1]

    def end(self):
        for process in reversed(self.processes):
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()

    def call(self, method, path, body=None, patience=60):
        data = None if method != "POST" else json.dumps(body or {}).encode()
        request = urllib.request.Request(self.root + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=patience) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise AssertionError(json.load(error)["value"]["message"]) from None

    def js(self, script, *args):
        return self.call("POST", "/execute/sync", {"script": "return " + script, "args": args})

    def go(self, url):
        self.call("POST", "/url", {"url": url})

    def find(self, selector):
        found = self.call("POST", "/element", {"using": "css selector", "value": selector})
        return f"/element/{found[ELEMENT]}"

    def click(self, selector):
        self.call("POST", self.find(selector) + "/click")

    def type(self, selector, text):
        self.call("POST", self.find(selector) + "/value", {"text": text})

    def keys(self, *names):
        """Presses keys wherever the focus is."""
        strokes = [{"type": kind, "value": KEYS.get(name, name)}
                   for name in names for kind in ("keyDown", "keyUp")]
        self.call("POST", "/actions", {"actions": [
            {"type": "key", "id": "keys", "actions": strokes}]})

    def pointer(self, *steps):
        """Steps are (x, y) of the window, "down" or "up"."""
        def action(step):
            if isinstance(step, str):
                return {"type": "pointer" + step.title(), "button": 0}
            return {"type": "pointerMove", "duration": 5, "x": round(step[0]), "y": round(step[1])}
        self.call("POST", "/actions", {"actions": [
            {"type": "pointer", "id": "mouse", "actions": [action(step) for step in steps]}]})

    def tap(self, selector):
        """A click on the middle of an element, at whatever is on top there."""
        self.pointer(self.middle(selector), "down", "up")

    def middle(self, selector):
        return self.js("(b => [b.x + b.width / 2, b.y + b.height / 2])"
                       "(document.querySelector(arguments[0]).getBoundingClientRect())", selector)

    def wait(self, script, *args, seconds=10):
        """Waits until the script's value is true, and returns it."""
        end = time.monotonic() + seconds
        while not (value := self.js(script, *args)):
            assert time.monotonic() < end, f"waited in vain for {script} {args}"
            time.sleep(0.01)
        return value

    def cdp(self, command, **params):
        return self.call("POST", "/goog/cdp/execute", {"cmd": command, "params": params})

    def picture(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.call("GET", "/screenshot")))

    def complaints(self):
        """What the browser's console says that is not good."""
        return [entry["message"] for entry in
                self.call("POST", "/se/log", {"type": "browser"}) if entry["level"] == "SEVERE"]

    def close(self):
        try:
            self.call("DELETE", "")
        finally:
            self.end()
