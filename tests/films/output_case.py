"""Helpers for the tests of outputs: they start the two tools as the program does, and provide
places that fail."""

import os
import resource
import subprocess
import time
import uuid
from collections.abc import Callable
from pathlib import Path

from movie_case import DEADLINE, FFMPEG, OPTIONS, TOOLS, MovieCase, picture, probe, tone

MP4BOX = TOOLS / "MP4Box"
CUES = "1\n00:00:00,200 --> 00:00:00,700\nOne\n\n2\n00:00:01,000 --> 00:00:01,500\nTwo\n"

IN_A_SMALL_PLACE = """
mount -t tmpfs -o size="$SIZE" tmpfs "$PLACE" || exit 99
cp -a "$SEED/." "$PLACE"
if [ -n "$FULL" ]; then cat /dev/zero > "$PLACE/filler" 2> /dev/null; fi
if [ -n "$READ_ONLY" ]; then mount -o remount,ro "$PLACE" || exit 99; fi
"$@"; status=$?
cp -a "$PLACE/." "$AFTER"
exit $status
"""


def can_mount() -> bool:
    """Whether this machine allows mounts in a user namespace."""
    words = ["unshare", "-Ur", "--mount", "mount", "-t", "tmpfs", "tmpfs", "/mnt"]
    return subprocess.run(words, stderr=subprocess.DEVNULL, check=False).returncode == 0


def transcoding(source: Path, out: Path, size: str = "160x120") -> list[str]:
    return [str(FFMPEG), "-y", "-i", str(source), *OPTIONS, "-s", size, str(out)]


def adding(text: Path, movie: Path) -> list[str]:
    return [str(MP4BOX), "-add", f"{text}:hdlr=sbtl", str(movie)]


def note_of(out: Path) -> Path:
    return out.with_name(out.name + ".failed.txt")


def names(folder: Path) -> list[str]:
    return sorted(path.name for path in folder.iterdir())


def small_files() -> None:
    """Limits files to 20,000 bytes, like a quota."""
    resource.setrlimit(resource.RLIMIT_FSIZE, (20_000, 20_000))


def eventually(condition: Callable[[], object]) -> bool:
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.002)
    return False


class Started:
    """A running command whose descendants are found by a variable in their environment."""

    def __init__(self, words: list[str], **variables: str) -> None:
        self.mark = f"FILMS_MARK={uuid.uuid4().hex}"
        name, value = self.mark.split("=")
        self.process = subprocess.Popen(
            words,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE,
            env=os.environ | variables | {name: value},
        )

    def all(self) -> dict[int, str]:
        """The running processes: the first word of each command line, by process id."""
        found = {}
        for entry in Path("/proc").iterdir():
            try:
                if self.mark.encode() in (entry / "environ").read_bytes():
                    found[int(entry.name)] = (entry / "cmdline").read_bytes().split(b"\0")[0]
            except (OSError, ValueError):
                continue
        return {pid: os.fsdecode(word) for pid, word in found.items()}

    def number_of(self, *endings: str) -> int | None:
        """The process whose program has one of these endings and is not one of our tools."""
        for pid, word in self.all().items():
            if word.endswith(endings) and not word.startswith(str(TOOLS)):
                return pid
        return None

    def tool(self) -> int | None:
        for pid, word in self.all().items():
            if word.startswith(str(TOOLS)):
                return pid
        return None

    def send(self, pid: int | None, signal: int) -> None:
        try:
            if pid is not None:
                os.kill(pid, signal)
        except ProcessLookupError:
            pass

    def end(self) -> tuple[int, str]:
        """Waits until all processes have ended; returns the exit status and the error output."""
        _, errors = self.process.communicate(timeout=DEADLINE)
        assert eventually(lambda: not self.all()), f"left running: {self.all()}"
        return self.process.returncode, errors.decode("utf-8", "replace").replace("\r", "\n")


class OutputCase(MovieCase):
    def setUp(self) -> None:
        super().setUp()
        self.place = self.folder / "place"
        self.place.mkdir()
        self.out = self.place / "movie.mp4"
        self.text = self.folder / "movie.srt"
        self.text.write_text(CUES, encoding="utf-8")
        self.source = self.folder / "movie.avi"

    def make_source(self, seconds: float = 1, size: str = "160x120") -> Path:
        return self.movie(
            "movie.avi", *picture(seconds, size), *tone(seconds), "-c:v", "mpeg4", "-q:v", 5
        )

    def make_mp4(self, path: Path) -> bytes:
        """Makes an MP4 file like the first step's; returns its content."""
        self.movie("made.mp4", *picture(2), *tone(2), "-c:v", "libx264", "-f", "ipod")
        (self.folder / "made.mp4").rename(path)
        return path.read_bytes()

    def run_words(self, words: list[str], **more: object) -> tuple[int, str]:
        done = subprocess.run(
            words,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE,
            timeout=DEADLINE,
            check=False,
            **more,
        )
        return done.returncode, done.stderr.decode("utf-8", "replace").replace("\r", "\n")

    def run_in(self, size: str, words: list[str], **more: str) -> tuple[int, str, Path]:
        """Runs the words with a file system of `size` mounted at `self.place`, with the same
        content; returns the status, the error output, and a folder with the final content."""
        after = self.folder / "after"
        after.mkdir()
        seed = self.folder / "seed"
        self.place.rename(seed)
        self.place.mkdir()
        settings = {"SIZE": size, "PLACE": self.place, "SEED": seed, "AFTER": after}
        environment = os.environ | {"FULL": "", "READ_ONLY": ""} | settings | more
        status, said = self.run_words(
            ["unshare", "-Ur", "--mount", "sh", "-c", IN_A_SMALL_PLACE, "sh", *words],
            env=environment,
        )
        self.assertNotEqual(status, 99, said)
        return status, said, after

    def assert_whole_mp4(self, path: Path, seconds: float) -> None:
        movie = probe(path)
        kinds = {stream["codec_type"] for stream in movie["streams"]}
        self.assertTrue({"video", "audio"} <= kinds, kinds)
        self.assertAlmostEqual(float(movie["format"]["duration"]), seconds, delta=0.2)
