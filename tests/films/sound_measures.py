"""Measures the level of each tone on each side, breaks in a tone, flashes and beeps."""

import math
import re
import subprocess
from array import array
from pathlib import Path

from movie_case import DEADLINE

RATE = 8000


def samples(path: Path, rate: int, *options: str) -> array:
    """The decoded samples of the first audio stream, from -1 to 1."""
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", "0:a:0", *options]
        + ["-ar", str(rate), "-f", "f32le", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    return array("f", done.stdout)


def level(wave: array, pitch: int) -> float:
    """The amplitude of one tone in samples that cover whole periods of it."""
    angle = 2 * math.pi * pitch / RATE
    real = sum(value * math.cos(angle * at) for at, value in enumerate(wave))
    imaginary = sum(value * math.sin(angle * at) for at, value in enumerate(wave))
    return 2 * math.hypot(real, imaginary) / len(wave)


def levels(path: Path, *pitches: int, after: float = 0) -> list[list[float]]:
    """The amplitudes of these tones, each a multiple of 100 Hz, on the left and on the right, in
    the middle of the second that starts at `after`."""
    both = samples(path, RATE, "-ac", "2")
    start = int(2 * RATE * after) + RATE // 2
    return [
        [level(both[side + start : side + start + RATE // 2 : 2], pitch) for pitch in pitches]
        for side in (0, 1)
    ]


def tears(path: Path, pitch: int) -> int:
    """The number of periods of a pure tone, which lasts for the whole movie, that are off by more
    than 5 %."""
    rate = 44100
    wave = samples(path, rate, "-ac", "1")
    wave = wave[rate // 10 : -rate // 10]
    crossings = [at + a / (a - b) for at, (a, b) in enumerate(zip(wave, wave[1:])) if a < 0 <= b]
    lengths = [(b - a) * pitch / rate for a, b in zip(crossings, crossings[1:])]
    return sum(abs(length - 1) > 0.05 for length in lengths)


def flashes(path: Path) -> list[float]:
    """The times when a black picture turns white, in seconds."""
    filters = "signalstats,metadata=print:key=lavfi.signalstats.YAVG:file=-"
    found, time, was_light = [], 0.0, False
    for line in _output(path, "-an", "-vf", filters):
        if match := re.search(r"pts_time:([0-9.]+)", line):
            time = float(match[1])
        if match := re.search(r"YAVG=([0-9.]+)", line):
            is_light = float(match[1]) > 128
            if is_light and not was_light:
                found.append(time)
            was_light = is_light
    return found


def beeps(path: Path) -> list[float]:
    """The times when beeps start, in seconds, in a movie that ends with silence."""
    return silence_ends(path)[:-1]


def silence_ends(path: Path) -> list[float]:
    """The times when silence of at least 0.2 s ends, in seconds."""
    lines = _output(path, "-vn", "-af", "silencedetect=n=-30dB:d=0.2")
    matches = [re.search(r"silence_end: ([0-9.]+)", line) for line in lines]
    return [float(match[1]) for match in matches if match]


def _output(path: Path, *options: str) -> list[str]:
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-hide_banner", "-i", path, *options, "-f", "null", "-"],
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        check=True,
        timeout=DEADLINE,
    )
    return done.stdout.decode().splitlines()
