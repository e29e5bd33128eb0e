"""Helpers for all tests with movies: they make movies, run the tools as the program does, and
measure the result."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from dataclasses import dataclass
from fractions import Fraction
from pathlib import Path

TOOLS = Path(os.environ["VANTREO_TOOLS"])
FFMPEG = TOOLS / "ffmpeg"
DEADLINE = 100

# Intended failures must not show notifications on the desktop of whoever runs the tests.
os.environ["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"

# What the program reads from a report; "." matches line breaks there too.
REPORT = re.compile(
    rb"Duration: ([0-9:]{8}).*Stream #[0-9/.]{3}.* Video:.* "
    rb"([0-9]{1,6})x([0-9]{1,6})[ ,/,]{1}.* ([0-9/.]+) tb",
    re.DOTALL,
)

# The program's fixed options between the input and "-r" or "-s".
OPTIONS = (
    "-acodec aac -strict experimental -ab 128k -ac 2 -ar 44100 -coder 0 -flags +loop -cmp +chroma "
    "-partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq 6 -me_range 16 -g 250 "
    "-keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 -qcomp 0.6 -qmin 10 -qmax 51 "
    "-qdiff 4 -bf 0 -refs 2 -directpred 1 -trellis 1 -flags2 +bpyramid+mixed_refs+fastpskip "
    "-wpredp 0 -rc_lookahead 30 -level 30 -maxrate 10000000 -bufsize 10000000 -crf 21 -threads 0 "
    "-f ipod"
).split()

# Options for a movie that is quick to make.
SMALL = ("-c:v", "mpeg4", "-q:v", 4, "-c:a", "aac")

LIMIT = 480


@dataclass
class Report:
    """A report as the program reads it."""

    duration: str
    width: int
    height: int
    rate: float

    @property
    def size(self) -> str:
        return f"{self.width}x{self.height}"


@dataclass
class Ended:
    status: int
    errors: bytes

    @property
    def text(self) -> str:
        return self.errors.decode("utf-8", "replace").replace("\r", "\n")

    @property
    def messages(self) -> list[str]:
        """The output other than progress."""
        return [line for line in self.text.splitlines() if line and not line.startswith("frame=")]


def ffmpeg(*arguments: object) -> None:
    """The system's ffmpeg, for making movies."""
    subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-y", *map(os.fspath, map(_word, arguments))],
        check=True,
        timeout=DEADLINE,
    )


def _word(argument: object) -> object:
    return argument if isinstance(argument, (str, bytes, os.PathLike)) else str(argument)


def picture(seconds: float, size: str = "160x120", rate: object = 25, more: str = "") -> list[str]:
    """A moving picture as input of `ffmpeg`."""
    filters = f"testsrc2=s={size}:r={rate}:d={seconds}" + (f",{more}" if more else "")
    return ["-f", "lavfi", "-i", filters]


def tone(seconds: float, pitch: int = 440, rate: int = 44100) -> list[str]:
    return ["-f", "lavfi", "-i", f"sine=f={pitch}:r={rate}:d={seconds}"]


def probe(path: os.PathLike | bytes | str, *more: str) -> dict:
    name = b"file:" + os.fsencode(path)
    answer = subprocess.run(
        ["ffprobe", "-v", "error", "-of", "json", "-show_streams", "-show_format"]
        + ["-show_chapters", *more, "-i", name],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    return json.loads(answer.stdout)


def streams(path: os.PathLike | bytes | str, kind: str) -> list[dict]:
    return [stream for stream in probe(path)["streams"] if stream["codec_type"] == kind]


def video_of(path: os.PathLike | bytes | str) -> dict:
    (video,) = streams(path, "video")
    return video


def size_of(path: Path) -> str:
    video = video_of(path)
    return f"{video['width']}x{video['height']}"


def rate_of(path: Path) -> Fraction:
    return Fraction(video_of(path)["r_frame_rate"])


def frame_times(path: Path) -> list[float]:
    """When each frame is shown, in seconds."""
    packets = probe(path, "-show_packets", "-select_streams", "v")["packets"]
    return sorted(float(packet["pts_time"]) for packet in packets)


def frame_sums(path: Path, filters: str = "null", index: str = "v:0") -> list[str]:
    """A checksum of each decoded picture after these filters."""
    answer = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", f"0:{index}", "-vf", filters]
        + ["-fps_mode", "passthrough", "-f", "framemd5", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    lines = answer.stdout.decode().splitlines()
    return [line.split(",")[-1].strip() for line in lines if not line.startswith("#")]


def ssim(one: Path, other: Path, to_one: str = "null", to_other: str = "null") -> float:
    """The similarity of two movies' pictures after filters on each; 1 means identical."""
    in_step = "settb=1/25,setpts=N"
    chain = f"[0:v]{to_one},{in_step}[a];[1:v]{to_other},{in_step}[b];[a][b]ssim"
    answer = subprocess.run(
        ["ffmpeg", "-nostdin", "-hide_banner", "-i", one, "-i", other, "-lavfi", chain]
        + ["-f", "null", "-"],
        stderr=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    return float(re.findall(rb"All:([0-9.]+)", answer.stderr)[-1])


def pitch_of(path: Path, index: str = "a:0", after: float = 0) -> int:
    """The pitch of a pure tone in Hz after so many seconds, by zero crossings, rounded to ten."""
    answer = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", f"0:{index}", "-ac", "1"]
        + ["-ar", "8000", "-af", f"atrim={after + 0.3}:{after + 0.8}", "-f", "s16le", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    samples = memoryview(answer.stdout).cast("h")
    crossings = sum(a < 0 <= b for a, b in zip(samples, samples[1:]))
    return round(crossings * 8000 / len(samples) / 10) * 10


def damage_sound(movie: Path, first: int = 0, count: int | None = None, sound: int = 0) -> None:
    """Damages `count` packets of an audio stream, starting with `first`, or all from there on."""
    data = bytearray(movie.read_bytes())
    packets = probe(movie, "-show_packets", "-select_streams", f"a:{sound}")["packets"]
    for packet in packets[first:][:count]:
        start, size = int(packet["pos"]), int(packet["size"])
        data[start : start + size] = b"\xff" * size
    movie.write_bytes(data)


def asked_size(report: Report) -> tuple[int, int]:
    """The size that the program asks for on the smallest device."""
    width, height = report.width, report.height
    if width > height:
        if width > LIMIT:
            width, height = LIMIT, int(LIMIT / (width / height)) // 2 * 2
    elif height > LIMIT:
        width, height = int(LIMIT / (height / width)) // 2 * 2, LIMIT
    return width, height


class MovieCase(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="movies-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.out = self.folder / "out.mp4"

    def movie(self, name: str, *arguments: object) -> Path:
        """Makes a movie from these inputs and options."""
        path = self.folder / name
        ffmpeg(*arguments, b"file:" + os.fsencode(path))
        return path

    def sounds(self, name: str, *pitches: int, more: tuple = SMALL) -> Path:
        """A movie of one second with one audio stream per pitch."""
        inputs = [word for pitch in pitches for word in tone(1, pitch)]
        maps = [word for at in range(len(pitches) + 1) for word in ("-map", at)]
        return self.movie(name, *picture(1), *inputs, *maps, *more)

    def run_tool(self, *arguments: object, **more: object) -> Ended:
        environment = os.environ | more.pop("environment", {})
        done = subprocess.run(
            [os.fspath(FFMPEG), *map(os.fspath, map(_word, arguments))],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=DEADLINE,
            env=environment,
            **more,
        )
        self.assertEqual(done.stdout, b"")
        return Ended(done.returncode, done.stderr)

    def ask(self, path: os.PathLike | bytes | str, **more: object) -> Ended:
        return self.run_tool("-i", path, **more)

    def read(self, ended: Ended) -> Report | None:
        match = REPORT.search(ended.errors)
        if not match:
            return None
        return Report(match[1].decode(), int(match[2]), int(match[3]), float(match[4]))

    def report(self, path: os.PathLike | bytes | str, **more: object) -> Report:
        ended = self.ask(path, **more)
        report = self.read(ended)
        self.assertIsNotNone(report, ended.text)
        return report

    def transcode(
        self, path: object, width: int, height: int, *, rate: bool = False, **more: object
    ) -> Ended:
        """Runs the program's command line; `rate` asks for 30000/1001."""
        asked = ["-r", "30000/1001"] if rate else []
        out = more.pop("out", self.out)
        return self.run_tool(
            "-y", "-i", path, *OPTIONS, *asked, "-s", f"{width}x{height}", out, **more
        )

    def convert(self, path: os.PathLike | bytes | str, **more: object) -> Report:
        """Reports and converts as the program does, and expects success; returns the report. The
        output is in `self.ended`."""
        report = self.report(path, **more)
        self.ended = self.transcode(path, *asked_size(report), rate=report.rate > 29.97, **more)
        self.assertEqual(self.ended.status, 0, self.ended.text)
        return report
