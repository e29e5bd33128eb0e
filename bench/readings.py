"""What the kernel reports about running processes (Linux, proc(5))."""

import os
import resource
import time
from pathlib import Path

TICKS_PER_SECOND = os.sysconf("SC_CLK_TCK")


def _stat_seconds(pid: int, first: int, last: int) -> float:
    """The sum of fields of /proc/PID/stat that count clock ticks, numbered as in proc(5)."""
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    return sum(int(fields[number - 3]) for number in range(first, last + 1)) / TICKS_PER_SECOND


def own_seconds(pid: int) -> float:
    """Processor time of the process itself, in all threads."""
    return _stat_seconds(pid, 14, 15)


def children_seconds(pid: int) -> float:
    """Processor time of its descendants that have ended."""
    return _stat_seconds(pid, 16, 17)


def main_thread_seconds(pid: int) -> float:
    """Processor time of the first thread, to the nanosecond."""
    return int(Path(f"/proc/{pid}/task/{pid}/schedstat").read_text().split()[0]) / 1e9


def peak_memory(pid: int) -> int:
    """The largest resident memory so far, in KiB."""
    for line in Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith("VmHWM:"):
            return int(line.split()[1])
    raise ValueError(f"process {pid} has no VmHWM")


class Watch:
    """Wall time, and the processor time of the processes that have ended, since construction."""

    def __init__(self) -> None:
        self._start = time.monotonic()
        self._usage = self._children()

    @staticmethod
    def _children() -> float:
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    def read(self) -> dict[str, float]:
        return {
            "wall": time.monotonic() - self._start,
            "processor": self._children() - self._usage,
        }
