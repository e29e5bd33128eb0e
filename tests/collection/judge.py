"""Compares the picture and audio of an MP4 file with the pattern that its movie was made from."""

import math
import re
from dataclasses import dataclass, field
from pathlib import Path

import numpy
import pattern as drawn
from boxes import read_mp4
from pattern import Pattern
from player import Played, play

SYNC = 0.040
COLOUR = 30
DECIBELS = 1.5
WINDOW = 0.002


@dataclass
class Wanted:
    """The expected result, where it differs from the pattern."""

    shown: float | None = None  # width to height
    length: float | None = None
    frames: int | None = None
    first: int = 0  # the first visible number
    starts: float | None = 0  # its time; None for any
    even: bool = True  # numbers follow their times
    jumps: bool = False  # backwards, according to the movie
    late: float = 0  # the audio, according to the movie
    sound: str = "stereo"  # stereo, mono, any (its level is not checked), none
    colour: int | None = COLOUR
    refused: str = ""  # what the console says instead of a conversion


@dataclass
class Look:
    number: int
    flash: bool
    light: float
    patches: list
    box: tuple[int, int] = (0, 0)
    size: tuple[int, int] = (0, 0)


def look_at(picture: numpy.ndarray) -> Look:
    """What one picture shows."""
    height, width, _ = picture.shape
    grey = picture.mean(axis=2)
    number, light = 0, grey[int(height * 0.25) : int(height * 0.85), 2 : max(4, width // 20)].mean()
    row = grey[min(height - 1, int(height * 0.955))]
    for bit in range(drawn.BITS):
        number = number << 1 | int(row[int((bit + 0.5) * width / drawn.BITS)] > 128)
    patches = []
    for at in range(len(drawn.PATCHES)):
        y, x = int(height / 12), int((at + 0.5) * width / 4)
        patches.append(picture[max(0, y - 2) : y + 3, max(0, x - 3) : x + 4].mean(axis=(0, 1)))
    look = Look(number, light > 170, light, patches, size=(width, height))
    if not look.flash:
        look.box = disc_box(grey)
    return look


def disc_box(grey: numpy.ndarray) -> tuple[int, int]:
    """The disc's width and height, by its middle row and column."""
    height, width = grey.shape
    top, low = int(height * 0.2), int(height * 0.88)
    inside = grey[top:low] > 170
    return int(inside[(height // 2) - top].sum()), int(inside[:, width // 2].sum())


def beeps(played: Played) -> list[int]:
    """The samples at which beeps start."""
    step = max(1, int(WINDOW * played.sound_rate))
    loud = numpy.abs(played.sound).max(axis=1)
    peaks = loud[: len(loud) // step * step].reshape(-1, step).max(axis=1)
    over = peaks > 0.35 * max(peaks.max(), 0.02)
    starts, quiet = [], 99
    for at, is_loud in enumerate(over):
        if is_loud and quiet > 0.1 / WINDOW:
            starts.append(at * step)
        quiet = 0 if is_loud else quiet + 1
    return starts


@dataclass
class Judgement:
    wrong: list[str] = field(default_factory=list)
    facts: list[str] = field(default_factory=list)

    def check(self, good: bool, text: str) -> None:
        if not good:
            self.wrong.append(text)


def judge_shape(found: Judgement, pattern: Pattern, wanted: Wanted, looks: list[Look]) -> None:
    width, height = looks[0].size
    shown = wanted.shown or pattern.width * pattern.pixel / pattern.height
    found.check(
        abs(width / height / shown - 1) < 0.03 + 2 / min(width, height),
        f"{width}x{height}, should be {shown:.3f}:1",
    )
    across, down = next((look.box for look in looks if not look.flash), (0, 0))
    found.check(abs(across - down) <= 2 + 0.06 * max(across, down), f"disc of {across}x{down}")
    found.check(across > 0, "no disc")


def judge_colours(found: Judgement, wanted: Wanted, looks: list[Look]) -> None:
    look = looks[len(looks) // 2]
    for (name, colour), seen in zip(drawn.PATCHES.items(), look.patches):
        off = numpy.abs(seen - numpy.array(colour)).max()
        if wanted.colour is not None and off > wanted.colour:
            found.wrong.append(f"{name} {colour} is {tuple(int(v) for v in seen)}")


def judge_numbers(found: Judgement, pattern: Pattern, wanted: Wanted, played: Played) -> None:
    rate = pattern.frames_per_second
    numbers = [look.number for _, look in played.frames]
    found.check(numbers == sorted(numbers) or wanted.jumps, "frames out of order")
    frames = wanted.frames or pattern.frames
    if rate <= 30 and wanted.even:
        missing = sorted(set(range(wanted.first, wanted.first + frames)) - set(numbers))
        found.check(
            len(missing) <= max(1, frames // 1000 * 2),
            f"{len(missing)} frames missing: {missing[:4]}...",
        )
        twice = len(numbers) - len(set(numbers))
        found.check(twice <= 1 + frames // 500, f"{twice} frames twice")
    elif wanted.even:
        due = round(frames / rate * 30000 / 1001)
        found.check(abs(len(numbers) - due) <= 2, f"{len(numbers)} frames, due {due}")
    if wanted.even:
        judge_times(found, rate, wanted, played)


def judge_times(found: Judgement, rate: float, wanted: Wanted, played: Played) -> None:
    start = wanted.starts
    if start is None:
        start = played.frames[0][0] - (played.frames[0][1].number - wanted.first) / rate
    off = [time - start - (look.number - wanted.first) / rate for time, look in played.frames]
    worst = max(off, key=abs)
    found.check(
        abs(worst) <= max(SYNC, 1 / rate) + 0.002, f"a frame {1000 * worst:+.0f} ms off its time"
    )


def judge_sync(found: Judgement, wanted: Wanted, played: Played, times: list[float]) -> None:
    flashes, before = [], True
    for time, look in played.frames:
        if look.flash and not before:
            flashes.append(time)
        before = look.flash
    found.check(bool(flashes), "no flash")
    times = [time - wanted.late for time in times]
    found.check(len(times) >= len(flashes) - 1, f"{len(times)} beeps, {len(flashes)} flashes")
    offs = [min((beep - flash for beep in times), key=abs) for flash in flashes if times]
    offs = [off for off in offs if abs(off) < 0.45] or offs
    if offs:
        worst = max(offs, key=abs)
        found.facts.append(f"sync {1000 * worst:+.0f} ms")
        found.check(abs(worst) <= SYNC, f"sound {1000 * worst:+.0f} ms off the picture")


def judge_tone(found: Judgement, wanted: Wanted, played: Played, starts: list[int]) -> None:
    rate = played.sound_rate
    full = [at for at in starts if at + 0.07 * rate < len(played.sound)]
    if not full:
        return
    at = full[len(full) // 2]
    piece = played.sound[at + int(0.02 * rate) : at + int(0.06 * rate)]
    left = piece[:, 0]
    pitch = numpy.sum((left[:-1] < 0) & (left[1:] >= 0)) / (len(left) / rate)
    found.check(abs(pitch - drawn.PITCH) <= 60, f"tone of {pitch:.0f} Hz")
    peaks = numpy.sqrt((piece**2).mean(axis=0)) * math.sqrt(2)
    levels = [20 * math.log10(max(peak, 1e-4)) for peak in peaks]
    found.facts.append("levels " + "/".join(f"{level:.1f}" for level in levels) + " dB")
    if wanted.sound == "stereo":
        for name, level, due in zip(("left", "right"), levels, (drawn.LEFT, drawn.RIGHT)):
            off = level - 20 * math.log10(due)
            found.check(abs(off) <= DECIBELS, f"{name} {off:+.1f} dB")
    elif wanted.sound == "mono":
        found.check(abs(levels[0] - levels[1]) < 1, f"mono as {levels[0]:.1f}/{levels[1]:.1f} dB")


def judge_sound(found: Judgement, wanted: Wanted, played: Played) -> None:
    if played.sound is None:
        found.check(wanted.sound == "none", "no sound can be played")
        return
    found.check(wanted.sound != "none", "sound out of nothing")
    starts = beeps(played)
    found.check(played.sound_gap < 0.05, f"a gap of {played.sound_gap:.2f} s between AAC frames")
    judge_tone(found, wanted, played, starts)
    judge_sync(
        found, wanted, played, [played.sound_starts + at / played.sound_rate for at in starts]
    )


def judge_length(found: Judgement, pattern: Pattern, wanted: Wanted, mp4, report: str) -> None:
    length = wanted.length if wanted.length is not None else pattern.seconds
    slack = max(0.12, 1.2 / pattern.frames_per_second)
    found.check(abs(mp4.duration - length) <= slack, f"{mp4.duration:.2f} s, due {length:.2f} s")
    clock = re.search(r"Duration: (\d\d):(\d\d):(\d\d)", report)
    if clock:
        said = int(clock[1]) * 3600 + int(clock[2]) * 60 + int(clock[3])
        found.check(abs(said - length) <= 1.2 + 0.01 * length, f"reported as {said} s")


def drop_held(found: Judgement, played: Played) -> None:
    """A picture that starts late may be preceded by its first frame."""
    first = played.frames[0]
    while len(played.frames) > 1 and played.frames[1][1].number == first[1].number:
        played.frames.pop(0)
    held = played.frames[0][0] - first[0]
    if held > 0.1:
        found.facts.append(f"first frame held for {held:.2f} s")


def judge(path: Path, report: str, pattern: Pattern, wanted: Wanted) -> Judgement:
    found = Judgement()
    mp4 = read_mp4(path)
    found.wrong += mp4.problems
    judge_length(found, pattern, wanted, mp4, report)
    played = play(path, bool(mp4.of("soun")), look_at)
    if played.error or not played.frames:
        found.wrong.append(f"does not play: {played.error or 'no frames'}")
        return found
    drop_held(found, played)
    looks = [look for _, look in played.frames]
    judge_shape(found, pattern, wanted, looks)
    judge_colours(found, wanted, looks)
    judge_numbers(found, pattern, wanted, played)
    judge_sound(found, wanted, played)
    return found
