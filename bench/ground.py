"""The common ground of the measurements: films, the window to measure, and how thoroughly.

To be used inside tests/with_display.
"""

import contextlib
import os
import shutil
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator, Mapping, Sequence
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from driver import BUILD, LAUNCHER, Atspi, GLib, Vantreo, wait_for  # noqa: E402
from gi.repository import Gio  # noqa: E402
from samples import ffmpeg  # noqa: E402

SETTINGS = Path(os.environ["XDG_CONFIG_HOME"]) / "Vantreo.ini"
TOOLS = Path("Vantreo.app") / "Contents" / "Resources"
COMPLETED = "Conversion completed!"
# What a probe of a stand-in reports: an ordinary film.
REPORT = (
    "  Duration: 00:02:00.00, start: 0.000000, bitrate: 812 kb/s\n"
    "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n"
)
PROGRESS = "frame=   25 fps= 25 q=28.0 size=      64kB time=1.00 bitrate= 500.0kbits/s    \r"


@dataclass
class Scale:
    """How thoroughly to measure."""

    pairs: int = 5
    # Of a whole run and the bare encoder, whose times spread more than they may differ.
    run_pairs: int = 15
    films: int = 3
    film_seconds: int = 60
    probe_pairs: dict[int, int] = field(default_factory=lambda: {1: 11, 10: 7, 100: 5, 1000: 5})
    starts: int = 11
    idle_seconds: int = 60
    stalls: int = 5
    dropped: int = 5000
    list_lengths: tuple[int, ...] = (625, 1250, 2500, 5000)
    run_lengths: tuple[int, ...] = (1, 10, 100, 300, 1000)
    run_repeats: int = 5


QUICK = Scale(
    pairs=2,
    run_pairs=2,
    films=1,
    film_seconds=15,
    probe_pairs={1: 5, 10: 3, 100: 1},
    starts=3,
    idle_seconds=10,
    stalls=1,
    list_lengths=(625, 5000),
    run_lengths=(1, 10, 100, 1000),
    run_repeats=1,
)


def say(text: str) -> None:
    print(f"  {text}", flush=True)


@contextlib.contextmanager
def folder() -> Iterator[Path]:
    path = Path(tempfile.mkdtemp(dir=Path.home()))
    try:
        yield path
    finally:
        shutil.rmtree(path, ignore_errors=True)


def make_films(target: Path, count: int, seconds: int) -> list[Path]:
    """H.264 and AAC films of 1280x720 with a moving picture, some grain and a tone."""
    films = [target / f"film{number}.mkv" for number in range(1, count + 1)]
    for number, film in enumerate(films, 1):
        ffmpeg(
            *("-f", "lavfi", "-i", "testsrc2=size=1280x720:rate=25,noise=alls=6:allf=t"
              f":all_seed={number}"),
            *("-f", "lavfi", "-i", f"sine=frequency={200 + number}:sample_rate=48000"),
            *("-t", seconds, "-c:v", "libx264", "-preset", "veryfast", "-crf", 23),
            *("-pix_fmt", "yuv420p", "-c:a", "aac", "-f", "matroska", film),
        )
    return films


def stage(target: Path, tools: Mapping[str, Path] | None = None) -> Path:
    """Lays the program out in a folder, with other tools if given; its launcher there."""
    (target / "bin").mkdir(parents=True)
    (target / TOOLS).mkdir(parents=True)
    shutil.copy(LAUNCHER, target / "bin")
    shutil.copy(BUILD / "vantreo", target)
    for name in ("ffmpeg", "MP4Box"):
        (target / TOOLS / name).symlink_to((tools or {}).get(name, BUILD / TOOLS / name))
    return target / "bin" / LAUNCHER.name


@contextlib.contextmanager
def window(
    output: Path, environment: Mapping[str, str] | None = None, launcher: Path = LAUNCHER
) -> Iterator[Vantreo]:
    """The program with fresh settings and all processors. At the end of a run it opens a page in
    the recorder that stands for the browser, as it does unless it is told otherwise."""
    SETTINGS.write_text(f"Output={output}\n")
    with Vantreo(None, environment, launcher=launcher, processors=None) as opened:
        yield opened


@contextlib.contextmanager
def window_with_stand_ins() -> Iterator[tuple[Vantreo, Path]]:
    """The program with doubles for its tools, which do nothing and end at once; and their log, a
    line for each start."""
    double = BUILD / "tests" / "tool_double"
    with folder() as work:
        doubles, output = work / "doubles", work / "out"
        doubles.mkdir()
        output.mkdir()
        (doubles / "report").write_text(REPORT)
        (doubles / "convert").write_text(PROGRESS)
        launcher = stage(work / "program", {"ffmpeg": double, "MP4Box": double})
        with window(output, {"TOOL_DOUBLE_DIR": str(doubles)}, launcher) as opened:
            yield opened, doubles / "log"


def names(count: int) -> list[Path]:
    """That many names of movies, of which none exists."""
    return [Path("/movies") / f"{number:04}.avi" for number in range(count)]


def drop_all(opened: Vantreo, films: Sequence[Path]) -> None:
    opened.drop(films, opened.movie_list)
    wait_for(lambda: opened.movie_count == len(films), "all of the movies", 60)


def press(button: Atspi.Accessible) -> float:
    """Presses a button at once; the reading of the monotonic clock just before."""
    pressed = time.monotonic()
    Atspi.Action.do_action(button, 0)
    return pressed


def wait_quietly(condition: Callable[[], bool], seconds: float, every: float) -> float:
    """Waits for something that can be seen without asking the program; when it came."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise TimeoutError("a measured step came to no end")
        time.sleep(every)
    return time.monotonic()


def wait_for_file(file: Path, seconds: float) -> None:
    """Waits for a file without looking for it again and again, which would cost those measured."""
    loop = GLib.MainLoop()
    monitor = Gio.File.new_for_path(str(file.parent)).monitor_directory(Gio.FileMonitorFlags.NONE)
    monitor.connect("changed", lambda *_: loop.quit() if file.exists() else None)
    timer = GLib.timeout_add(int(1000 * seconds), loop.quit)
    if not file.exists():
        loop.run()
    monitor.cancel()
    if not file.exists():
        raise TimeoutError("a measured step came to no end")
    GLib.source_remove(timer)


def wait_for_completion(opened: Vantreo, seconds: float = 600) -> float:
    """When the window told the end; the program is asked only now and then."""
    wait_for(lambda: opened.status == COMPLETED, "the end of the run", seconds)
    return time.monotonic()


def silent(command: Sequence[object], **more: object) -> None:
    subprocess.run(
        list(map(str, command)),
        check=True,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
        **more,
    )
