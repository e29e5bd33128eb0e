"""What all measurements share: movies, the window, and the number of repetitions.

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
# The stand-in's probe report: an ordinary movie.
REPORT = (
    "  Duration: 00:02:00.00, start: 0.000000, bitrate: 812 kb/s\n"
    "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n"
)
PROGRESS = "frame=   25 fps= 25 q=28.0 size=      64kB time=1.00 bitrate= 500.0kbits/s    \r"


@dataclass
class Scale:
    """How often and how long to measure."""

    pairs: int = 5
    # For a whole run and the bare encoder: their spread is larger than the allowed difference.
    run_pairs: int = 15
    movies: int = 3
    movie_seconds: int = 60
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
    movies=1,
    movie_seconds=15,
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


def make_movies(target: Path, count: int, seconds: int) -> list[Path]:
    """H.264 and AAC movies of 1280x720 with a moving picture, some grain and a tone."""
    movies = [target / f"movie{number}.mkv" for number in range(1, count + 1)]
    for number, movie in enumerate(movies, 1):
        ffmpeg(
            *(
                "-f",
                "lavfi",
                "-i",
                f"testsrc2=size=1280x720:rate=25,noise=alls=6:allf=t:all_seed={number}",
            ),
            *("-f", "lavfi", "-i", f"sine=frequency={200 + number}:sample_rate=48000"),
            *("-t", seconds, "-c:v", "libx264", "-preset", "veryfast", "-crf", 23),
            *("-pix_fmt", "yuv420p", "-c:a", "aac", "-f", "matroska", movie),
        )
    return movies


def stage(target: Path, tools: Mapping[str, Path] | None = None) -> Path:
    """Sets up the program in a folder, with other tools if given; returns its launcher."""
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
    """The program with fresh settings and all processors. At the end of a run it opens its page in
    the recorder that replaces the browser, as it does by default."""
    SETTINGS.write_text(f"Output={output}\n")
    with Vantreo(None, environment, launcher=launcher, processors=None) as opened:
        yield opened


@contextlib.contextmanager
def window_with_stand_ins() -> Iterator[tuple[Vantreo, Path]]:
    """The program with doubles for its tools, which exit at once, and their log, which has one line
    for each start."""
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
    """Names of `count` movies that do not exist."""
    return [Path("/movies") / f"{number:04}.avi" for number in range(count)]


def drop_all(opened: Vantreo, movies: Sequence[Path]) -> None:
    opened.drop(movies, opened.movie_list)
    wait_for(lambda: opened.movie_count == len(movies), "all of the movies", 60)


def press(button: Atspi.Accessible) -> float:
    """Presses a button; returns the monotonic clock just before."""
    pressed = time.monotonic()
    Atspi.Action.do_action(button, 0)
    return pressed


def wait_quietly(condition: Callable[[], bool], seconds: float, every: float) -> float:
    """Waits for a condition that needs no query to the program; returns the time."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise TimeoutError("a measured step did not finish")
        time.sleep(every)
    return time.monotonic()


def wait_for_file(file: Path, seconds: float) -> None:
    """Waits for a file without polling, which would slow down what is measured."""
    loop = GLib.MainLoop()
    monitor = Gio.File.new_for_path(str(file.parent)).monitor_directory(Gio.FileMonitorFlags.NONE)
    monitor.connect("changed", lambda *_: loop.quit() if file.exists() else None)
    timer = GLib.timeout_add(int(1000 * seconds), loop.quit)
    if not file.exists():
        loop.run()
    monitor.cancel()
    if not file.exists():
        raise TimeoutError("a measured step did not finish")
    GLib.source_remove(timer)


def wait_for_completion(opened: Vantreo, seconds: float = 600) -> float:
    """The time when the window reports the end; polls the program only rarely."""
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
