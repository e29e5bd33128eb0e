"""A whole run through the window, compared with the bare encoder and with HandBrake."""

import os
import re
import shutil
import subprocess
from pathlib import Path
from statistics import median

from figures import Figure, in_turns, ratio_figure
from ground import (
    Scale,
    drop_all,
    folder,
    make_movies,
    press,
    say,
    silent,
    wait_for_completion,
    wait_for_file,
    window,
)  # fmt: skip
from readings import Watch, children_seconds, own_seconds

# Records the arguments of the real program, each ended by a NUL, and its real, user and system time
# in seconds.
WITNESS = """\
#!/bin/bash
printf '%s\\0' "$@" >"$RECORDS/$$.arguments"
TIMEFORMAT='%3R %3U %3S'
{ time "$REAL_FFMPEG" "$@" 2>&3 3>&-; } 3>&2 2>"$RECORDS/$$.seconds"
"""
LONGEST_RUN = 600
# The same codec, profile, level, quality, size and audio as the program's first device.
HANDBRAKE = (
    "--format av_mp4 --encoder x264 --encoder-preset medium --encoder-profile baseline"
    " --encoder-level 3.0 --quality 21 --width 480 --height 270 --non-anamorphic --crop 0:0:0:0"
    " --no-comb-detect --no-decomb --aencoder av_aac --ab 128 --mixdown stereo --arate 44.1"
).split()


class Runs:
    """The movies, and the ways to convert all of them."""

    def __init__(self, work: Path, scale: Scale) -> None:
        self.output = work / "out"
        self.records = work / "records"
        self.other_output = work / "other"
        for made in (self.output, self.records, self.other_output):
            made.mkdir()
        self.movies = make_movies(work, scale.movies, scale.movie_seconds)
        self.witness = work / "witness"
        self.witness.write_text(WITNESS)
        self.witness.chmod(0o700)
        self.commands = self._record()

    def _record(self) -> list[list[str]]:
        """The commands that the program's tool passes to the system's ffmpeg."""
        self.witnessed()
        arguments = [path.read_text().split("\0")[:-1] for path in self.records.glob("*.arguments")]
        commands = []
        for movie in self.movies:
            (command,) = [words for words in arguments if f"file:{movie}" in words]
            commands.append(["ffmpeg", *command[:-1], f"file:{self._beside(movie)}"])
        return commands

    def witnessed(self) -> dict[str, float]:
        """A run of the program, and the encoders' share of its time."""
        for record in self.records.iterdir():
            record.unlink()
        whole = self.program(
            VANTREO_FFMPEG=str(self.witness),
            RECORDS=str(self.records),
            REAL_FFMPEG=shutil.which("ffmpeg"),
        )
        seconds = [path.read_text().split() for path in self.records.glob("*.seconds")]
        wall, user, system = map(sum, zip(*(map(float, words) for words in seconds), strict=True))
        return {
            "wall": whole["wall"],
            "processor": whole["processor"],
            "encoder's wall": wall,
            "encoder's processor": user + system,
        }

    def _beside(self, movie: Path) -> Path:
        return self.other_output / movie.with_suffix(".mp4").name

    def program(self, **environment: str) -> dict[str, float]:
        for made in self.output.iterdir():
            made.unlink()
        last = self.output / self.movies[-1].with_suffix(".mp4").name
        with window(self.output, environment) as opened:
            drop_all(opened, self.movies)
            os.sync()
            own, children = own_seconds(opened.pid), children_seconds(opened.pid)
            pressed = press(opened.convert_button)
            # The window is only queried for the end, so that watching it does not slow it down.
            wait_for_file(last, LONGEST_RUN)
            ended = wait_for_completion(opened)
            window_seconds = own_seconds(opened.pid) - own
            encoder_seconds = children_seconds(opened.pid) - children
        return {
            "wall": ended - pressed,
            "processor": window_seconds + encoder_seconds,
            "share": window_seconds / encoder_seconds,
        }

    def bare(self) -> dict[str, float]:
        for made in self.other_output.iterdir():
            made.unlink()
        os.sync()
        watch = Watch()
        for command in self.commands:
            silent(command)
        return watch.read()

    def handbrake(self) -> dict[str, float]:
        os.sync()
        watch = Watch()
        for movie in self.movies:
            silent(["HandBrakeCLI", "-i", movie, "-o", movie.with_suffix(".handbrake"), *HANDBRAKE])
        return watch.read()

    def size(self, suffix: str, target: Path) -> float:
        return sum((target / f.with_suffix(suffix).name).stat().st_size for f in self.movies)

    def likeness(self, made: Path) -> float:
        """SSIM against the first movie, at its size."""
        scaled = "[0:v]scale=1280:720:flags=bicubic,setpts=N[a];[1:v]setpts=N[b];[a][b]ssim"
        done = subprocess.run(
            ["ffmpeg", "-nostdin", "-hide_banner", "-i", made, "-i", self.movies[0]]
            + ["-filter_complex", scaled, "-an", "-f", "null", "-"],
            check=True, capture_output=True, text=True,
        )  # fmt: skip
        return float(re.findall(r"All:([0-9.]+)", done.stderr)[-1])


def told_apart(runs: dict[str, list[float]]) -> list[Figure]:
    """A whole run compared with the encoders of the same run. Whatever slows the machine slows both;
    an encoder slowed down by the program does not show here."""
    return [
        ratio_figure(
            "run",
            f"{name} time, relative to its own encoders",
            runs[name],
            runs[f"encoder's {name}"],
            1.02,
        )
        for name in ("wall", "processor")
    ]


def compared(runs: Runs, results: dict[str, dict[str, list[float]]]) -> list[Figure]:
    """The program compared with HandBrake; size and SSIM are the same in every run."""
    ours, theirs = results["program"], results["handbrake"]
    source = runs.movies[0].parent
    sizes = runs.size(".mp4", runs.output), runs.size(".handbrake", source)
    first = runs.movies[0]
    likeness = (
        runs.likeness(runs.output / first.with_suffix(".mp4").name),
        runs.likeness(first.with_suffix(".handbrake")),
    )
    note = f"SSIM {likeness[0]:.4f} against {likeness[1]:.4f}"
    return [
        ratio_figure("HandBrake", "wall time", ours["wall"], theirs["wall"], 1.0, note),
        ratio_figure("HandBrake", "processor time", ours["processor"], theirs["processor"], None),
        ratio_figure("HandBrake", "size", [sizes[0]], [sizes[1]], None),
        ratio_figure("HandBrake", "1 - SSIM", [1 - likeness[0]], [1 - likeness[1]], None, note),
    ]


def measure(scale: Scale) -> list[Figure]:
    with folder() as work:
        say(f"making {scale.movies} movies of {scale.movie_seconds} s, and a first run")
        runs = Runs(work, scale)
        say(f"{scale.run_pairs} times: the program, the bare encoder")
        results = in_turns(scale.run_pairs, {"program": runs.program, "bare": runs.bare})
        ours, bare = results["program"], results["bare"]
        say(f"{scale.pairs} times: the program with timed encoders, the program, HandBrake")
        others = in_turns(
            scale.pairs,
            {"witnessed": runs.witnessed, "program": runs.program, "handbrake": runs.handbrake},
        )
        seconds = median(a - b for a, b in zip(ours["wall"], bare["wall"], strict=True))
        share = median(ours["share"])
        note = f"{1000 * seconds / scale.movies:.0f} ms per movie"
        return [
            ratio_figure("run", "wall time", ours["wall"], bare["wall"], 1.02, note),
            ratio_figure("run", "processor time", ours["processor"], bare["processor"], 1.02),
            *told_apart(others["witnessed"]),
            Figure("run", "the window's share of the encoder's processor time", 100 * share, "%",
                   1.0, {"ours": [100 * value for value in ours["share"]]}),
            *compared(runs, others),
        ]  # fmt: skip
