"""A headless Chromium, driven over the pipe of its DevTools protocol."""
import fcntl
import itertools
import json
import os
import shutil
import subprocess
import tempfile


class Browser:
    """One browser process; ends with the context."""

    def __enter__(self):
        program = shutil.which("chromium") or shutil.which("chromium-browser")
        if not program:
            raise RuntimeError("no chromium on this machine: run scripts/bootstrap")
        self.profile = tempfile.mkdtemp()
        to_browser, self.write_end = os.pipe()
        self.read_end, from_browser = os.pipe()
        # The protocol's descriptors are 3 and 4, where the ends of the pipes may lie.
        ends = [fcntl.fcntl(end, fcntl.F_DUPFD, 20) for end in (to_browser, from_browser)]
        command = [program, "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                   "--disable-dev-shm-usage", "--remote-debugging-pipe",
                   f"--user-data-dir={self.profile}", "about:blank"]
        place = f'exec "$0" "$@" 3<&{ends[0]} 4>&{ends[1]}'
        self.process = subprocess.Popen(["bash", "-c", place, *command], pass_fds=ends,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for end in (to_browser, from_browser, *ends):
            os.close(end)
        self.buffer = b""
        self.numbers = itertools.count(1)
        self.events = []
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        os.close(self.write_end)
        os.close(self.read_end)
        shutil.rmtree(self.profile, ignore_errors=True)

    def _receive(self):
        while b"\0" not in self.buffer:
            chunk = os.read(self.read_end, 1 << 20)
            if not chunk:
                raise RuntimeError("the browser has ended")
            self.buffer += chunk
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, session=None, **parameters):
        number = next(self.numbers)
        request = {"id": number, "method": method, "params": parameters}
        if session:
            request["sessionId"] = session
        data = json.dumps(request).encode() + b"\0"
        while data:
            data = data[os.write(self.write_end, data):]
        while True:
            message = self._receive()
            if message.get("id") == number:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.events.append(message)

    def wait_for(self, name, session):
        while True:
            for at, event in enumerate(self.events):
                if event.get("method") == name and event.get("sessionId") == session:
                    return self.events.pop(at)
            self.events.append(self._receive())

    def open(self, path, **settings):
        return Page(self, path, **settings)


class Page:
    """A page in a tab of its own; `complaints` is what the browser has to say against it."""

    def __init__(self, browser, path, scripting=True, dark=False, width=1280, height=900):
        self.browser = browser
        target = browser.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = browser.call("Target.attachToTarget", targetId=target,
                                    flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")
        self.call("Emulation.setScriptExecutionDisabled", value=not scripting)
        self.media("", dark)
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)
        self.call("Page.navigate", url="file://" + os.path.abspath(path))
        browser.wait_for("Page.loadEventFired", self.session)

    def call(self, method, **parameters):
        return self.browser.call(method, self.session, **parameters)

    def media(self, kind, dark=False):
        self.call("Emulation.setEmulatedMedia", media=kind, features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])

    def evaluate(self, expression):
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True,
                           awaitPromise=True, userGesture=True)
        if "exceptionDetails" in answer:
            raise AssertionError(json.dumps(answer["exceptionDetails"], indent=1)[:2000])
        return answer["result"].get("value")

    def wait_until(self, condition):
        self.evaluate("new Promise((done) => { const look = () => "
                      f"({condition}) ? done() : setTimeout(look, 20); look(); }})")

    def complaints(self):
        self.evaluate("0")
        found = []
        for event in self.browser.events:
            if event.get("sessionId") != self.session:
                continue
            method, parameters = event.get("method"), event.get("params", {})
            bad = ("error", "warning")
            if method == "Log.entryAdded" and parameters["entry"]["level"] in bad:
                found.append(parameters["entry"]["text"])
            elif method == "Runtime.consoleAPICalled" and parameters["type"] in bad:
                found.append(json.dumps(parameters["args"])[:500])
            elif method == "Runtime.exceptionThrown":
                found.append(json.dumps(parameters["exceptionDetails"])[:500])
            elif method == "Network.requestWillBeSent":
                if not parameters["request"]["url"].startswith(("file:", "data:")):
                    found.append("asks for " + parameters["request"]["url"])
            elif method == "Page.javascriptDialogOpening":
                found.append("opens a dialog")
        return found
