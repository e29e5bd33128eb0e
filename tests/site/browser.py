"""A headless Chromium, driven by chromedriver over the WebDriver protocol."""

import base64
import contextlib
import json
import os
import signal
import subprocess
import tempfile
import urllib.error
import urllib.request

_FLAGS = [
    "--headless",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-dev-shm-usage",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--disable-default-apps",
    "--disable-extensions",
    "--hide-scrollbars",
    # Resolve no name except the server's own.
    "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
]


class Browser:
    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        home = self._folder.name
        environment = {
            **os.environ,
            "HOME": home,
            "TMPDIR": home,
            "XDG_CONFIG_HOME": home,
            "XDG_CACHE_HOME": home,
        }
        self._session = None
        # Its own process group: all processes of the browser end with it.
        self._driver = subprocess.Popen(
            ["chromedriver", "--port=0"],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
            env=environment,
            start_new_session=True,
        )
        try:
            for line in self._driver.stdout:
                if "started successfully on port" in line:
                    self._base = f"http://127.0.0.1:{line.split()[-1].rstrip('.')}"
                    break
            else:
                raise AssertionError("chromedriver did not start")
            session = self._call(
                "POST",
                "/session",
                {
                    "capabilities": {
                        "alwaysMatch": {
                            "browserName": "chrome",
                            "goog:chromeOptions": {
                                "args": [*_FLAGS, f"--user-data-dir={home}/profile"]
                            },
                            "goog:loggingPrefs": {"browser": "ALL"},
                        }
                    }
                },
            )
            self._session = f"/session/{session['sessionId']}"
        except BaseException:
            self.close()
            raise

    def close(self):
        if self._session:
            self._call("DELETE", self._session)
            self._session = None
        self._driver.terminate()
        self._driver.wait(20)
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self._driver.pid, signal.SIGKILL)
        self._driver.stdout.close()
        self._folder.cleanup()

    def view(self, width, height, scheme):
        """Sets the viewport's size in pixels and the colour scheme, "light" or "dark"."""
        self._devtools(
            "Emulation.setDeviceMetricsOverride",
            width=width,
            height=height,
            deviceScaleFactor=1,
            mobile=width < 600,
        )
        self._devtools(
            "Emulation.setEmulatedMedia",
            features=[{"name": "prefers-color-scheme", "value": scheme}],
        )

    def open(self, address):
        self._call("POST", f"{self._session}/url", {"url": address})

    def evaluate(self, script):
        return self._call("POST", f"{self._session}/execute/sync", {"script": script, "args": []})

    def console(self):
        """The browser's console messages since the last call."""
        entries = self._call("POST", f"{self._session}/se/log", {"type": "browser"})
        return [entry["message"] for entry in entries]

    def picture(self, file):
        picture = self._devtools("Page.captureScreenshot", captureBeyondViewport=True)
        file.write_bytes(base64.b64decode(picture["data"]))

    def _devtools(self, command, **parameters):
        return self._call(
            "POST", f"{self._session}/goog/cdp/execute", {"cmd": command, "params": parameters}
        )

    def _call(self, method, path, body=None):
        request = urllib.request.Request(
            self._base + path,
            method=method,
            headers={"Content-Type": "application/json"},
            data=None if body is None else json.dumps(body).encode(),
        )
        # Connect to loopback directly, without the environment's proxy.
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        try:
            with opener.open(request, timeout=60) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise AssertionError(f"{method} {path}: {error.read().decode()}") from error
