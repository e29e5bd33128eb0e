"""Stalls of the program's GUI thread, seen from outside.

Every ten milliseconds the window is asked its name over the accessibility bus. The answer comes
from the GUI thread's own event loop, so it is late by as long as the loop stands still.
"""

import sys
import threading
import time
from pathlib import Path
from subprocess import PIPE, Popen

BEAT_SECONDS = 0.010


class Heartbeat:
    """Queries from a process of its own, so that driving the window does not interfere."""

    def __init__(self, pid: int) -> None:
        self._process = Popen(
            [sys.executable, __file__, str(pid)], stdin=PIPE, stdout=PIPE, text=True
        )
        if self._process.stdout.readline().strip() != "beating":
            raise RuntimeError("the window does not answer")

    def __enter__(self) -> "Heartbeat":
        return self

    def __exit__(self, *_: object) -> None:
        self._process.kill()
        self._process.wait()

    def longest_stall(self) -> float:
        """The longest wait for an answer since the last call, in seconds."""
        self._process.stdin.write("\n")
        self._process.stdin.flush()
        return float(self._process.stdout.readline())


def beat(pid: int) -> None:
    from smallest import frame_of

    frame = frame_of(pid)
    frame.get_name()
    print("beating", flush=True)
    longest = [0.0]

    def answer() -> None:
        for _ in sys.stdin:
            print(longest[0], flush=True)
            longest[0] = 0.0

    threading.Thread(target=answer, daemon=True).start()
    while True:
        frame.clear_cache()
        asked = time.monotonic()
        frame.get_name()
        waited = time.monotonic() - asked
        longest[0] = max(longest[0], waited)
        time.sleep(max(0.0, BEAT_SECONDS - waited))


if __name__ == "__main__":
    sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests" / "e2e"))
    beat(int(sys.argv[1]))
