"""The pattern that every movie of the collection shows: a disc, four colour patches, a frame number
in bits, and flashes with beeps. Pictures as YUV4MPEG, audio as WAV."""

import math
import struct
from dataclasses import dataclass
from pathlib import Path

import numpy

# Shares of the picture: the patches on top, the bits at the bottom, the disc between them.
PATCHES_BELOW = 1 / 6
BITS_FROM = 0.9
BITS = 10
DISC = 0.22  # radius, of the picture's smaller shown side
BEEP = 0.08
PITCH = 1000
LEFT, RIGHT = 0.5, 0.25

PATCHES = {"red": (180, 16, 16), "green": (16, 180, 16), "blue": (16, 16, 180)}
PATCHES["yellow"] = (180, 180, 16)
GREY, WHITE, BLACK = (90, 90, 90), (250, 250, 250), (10, 10, 10)


@dataclass(frozen=True)
class Pattern:
    """The parameters; `period` is the time between flashes in seconds."""

    width: int = 160
    height: int = 120
    rate: str = "25"
    seconds: float = 3
    aspect: str = "1:1"
    period: float = 1
    matrix: str = "601"
    interlace: str = "p"
    sample_rate: int = 48000
    channels: int = 2
    sound_seconds: float | None = None

    @property
    def frames_per_second(self) -> float:
        above, _, below = self.rate.partition("/")
        return int(above) / int(below or 1)

    @property
    def pixel(self) -> float:
        above, below = self.aspect.split(":")
        return int(above) / int(below)

    @property
    def frames(self) -> int:
        return max(1, round(self.seconds * self.frames_per_second))

    def flashes(self) -> dict[int, int]:
        """The first frames of the flashes, and how many frames each one has."""
        rate = self.frames_per_second
        firsts = {}
        at = self.period / 2
        while at < self.seconds:
            firsts[math.ceil(at * rate - 1e-9)] = max(1, round(BEEP * rate))
            at += self.period
        return firsts

    def flash_times(self) -> list[float]:
        return [first / self.frames_per_second for first in self.flashes()]


def yuv(colour: tuple[int, int, int], matrix: str) -> tuple[int, int, int]:
    red, green, blue = (value / 255 for value in colour)
    of_red, of_blue = (0.299, 0.114) if matrix == "601" else (0.2126, 0.0722)
    luma = of_red * red + (1 - of_red - of_blue) * green + of_blue * blue
    u, v = (blue - luma) / (2 - 2 * of_blue), (red - luma) / (2 - 2 * of_red)
    return round(16 + 219 * luma), round(128 + 224 * u), round(128 + 224 * v)


def drawing(pattern: Pattern, flash: bool) -> numpy.ndarray:
    """The picture without its number, as YUV of each pixel."""
    width, height = pattern.width, pattern.height
    y, x = numpy.mgrid[0:height, 0:width] + 0.5
    radius = DISC * min(width * pattern.pixel, height)
    disc = numpy.hypot((x - width / 2) * pattern.pixel, y - height / 2) <= radius
    colours = [GREY, WHITE, BLACK, *PATCHES.values()]
    kinds = numpy.where(disc, 2 if flash else 1, 1 if flash else 0)
    kinds = numpy.where(y / height < PATCHES_BELOW, 3 + (x * 4 / width).astype(int), kinds)
    return numpy.array([yuv(colour, pattern.matrix) for colour in colours], numpy.uint8)[kinds]


def planes(drawn: numpy.ndarray, pattern: Pattern, number: int) -> bytes:
    """The picture with its number at the bottom, the highest bit on the left."""
    columns = (numpy.arange(pattern.width) + 0.5) / pattern.width * BITS
    bits = number >> (BITS - 1 - columns.astype(int)) & 1
    top = math.ceil(pattern.height * BITS_FROM)
    picture = drawn.copy()
    picture[top:, :, 0] = numpy.where(bits == 1, 235, 16)
    picture[top:, :, 1:] = 128
    return picture[:, :, 0].tobytes() + b"".join(picture[::2, ::2, p].tobytes() for p in (1, 2))


def write_pictures(pattern: Pattern, path: Path) -> None:
    above, _, below = pattern.rate.partition("/")
    drawn = {flash: drawing(pattern, flash) for flash in (False, True)}
    flashing = {at for first, n in pattern.flashes().items() for at in range(first, first + n)}
    with path.open("wb") as file:
        header = f"YUV4MPEG2 W{pattern.width} H{pattern.height} F{above}:{below or 1} "
        header += f"I{pattern.interlace} A{pattern.aspect} C420jpeg\n"
        file.write(header.encode())
        for number in range(pattern.frames):
            file.write(b"FRAME\n" + planes(drawn[number in flashing], pattern, number))


def write_sound(pattern: Pattern, path: Path) -> None:
    rate, channels = pattern.sample_rate, pattern.channels
    seconds = pattern.seconds if pattern.sound_seconds is None else pattern.sound_seconds
    data = bytearray(2 * channels * round(seconds * rate))
    for start in pattern.flash_times():
        first = round(start * rate)
        for at in range(first, min(first + round(BEEP * rate), len(data) // 2 // channels)):
            wave = math.sin(2 * math.pi * PITCH * (at - first) / rate)
            values = [round(32767 * (RIGHT if c == 1 else LEFT) * wave) for c in range(channels)]
            struct.pack_into(f"<{channels}h", data, at * 2 * channels, *values)
    form = struct.pack("<HHIIHH", 1, channels, rate, rate * channels * 2, channels * 2, 16)
    body = b"WAVEfmt " + struct.pack("<I", 16) + form
    body += b"data" + struct.pack("<I", len(data)) + data
    path.write_bytes(b"RIFF" + struct.pack("<I", len(body)) + body)
