"""The start of a program up to its usable window, and the smallest such program."""

import contextlib
import os
import subprocess
import time
from collections.abc import Callable, Iterator, Mapping
from pathlib import Path

from driver import BUILD, Atspi, GLib, has_state

SMALLEST = BUILD / "bench" / "smallest_frame"
POLL_SECONDS = 0.002
LONGEST_START = 20

Condition = Callable[[Atspi.Accessible], bool]


def frame_of(pid: int) -> Atspi.Accessible | None:
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application and application.get_process_id() == pid:
            return application.get_child_at_index(0)
    return None


def is_usable(pid: int, has_content: Condition) -> bool:
    """Whether the window accepts input. A busy program does not answer until it is done."""
    with contextlib.suppress(GLib.Error):
        if frame := frame_of(pid):
            frame.clear_cache()
            return has_state(frame, Atspi.StateType.ACTIVE) and has_content(frame)
    return False


@contextlib.contextmanager
def started(
    program: Path, has_content: Condition, environment: Mapping[str, str] | None = None
) -> Iterator[tuple[int, float]]:
    """Starts a program; returns its process id and the seconds until its window is usable."""
    start = time.monotonic()
    process = subprocess.Popen([program], env=os.environ | dict(environment or {}))
    try:
        while not is_usable(process.pid, has_content):
            if time.monotonic() - start > LONGEST_START:
                raise TimeoutError(f"{program.name} shows no usable window")
            time.sleep(POLL_SECONDS)
        yield process.pid, time.monotonic() - start
    finally:
        process.kill()
        process.wait()


def smallest_started() -> contextlib.AbstractContextManager[tuple[int, float]]:
    return started(SMALLEST, lambda frame: True)
