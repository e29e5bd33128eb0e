"""The built site behind the real nginx, on loopback."""

import http.client
import os
import pathlib
import select
import subprocess
import tempfile
import time
import urllib.parse

SERVE = pathlib.Path(__file__).resolve().parents[2] / "site/serve"


class Served:
    """`site/serve` as a child: `base` is the address that it printed, `state` the only folder that
    it may write to."""

    def __init__(self, *arguments):
        self._folder = tempfile.TemporaryDirectory()
        self.state = pathlib.Path(self._folder.name)
        self.process = subprocess.Popen(
            [SERVE, *arguments],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            text=True,
            env={**os.environ, "TMPDIR": str(self.state)},
        )
        ready, _, _ = select.select([self.process.stdout], [], [], 30)
        self.base = self.process.stdout.readline().strip() if ready else ""
        if not self.base:
            self.close()
            raise AssertionError("the site is not served")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait(30)
        self.process.stdout.close()
        self._folder.cleanup()

    @property
    def port(self):
        return urllib.parse.urlsplit(self.base).port

    def request(self, path, method="GET", host=None):
        """(status, headers, body) for a path below the base address; redirects are not followed."""
        return request(self.port, "/" + path, method, host)


def request(port, target, method="GET", host=None):
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=10)
    try:
        connection.request(method, target, headers={"Host": host} if host else {})
        answer = connection.getresponse()
        return answer.status, answer.headers, answer.read()
    finally:
        connection.close()


def until(condition, seconds=10):
    """Whether the condition becomes true in time."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.02)
    return True
