"""Writes docs/collection.md: the result for each kind of movie."""

import datetime
import re
import subprocess
from pathlib import Path

INTRODUCTION = """\
# A collection of movies

The results for kinds of movies from many makers. `tests/collection/run` makes each one with the
public tools in the second column, from a pattern with numbered frames and simultaneous flashes and
beeps, converts it as the program does, and plays the MP4 file with GStreamer's own demultiplexer,
openh264 and faad, which share no code with ffmpeg. “Right” means that all of these match the
pattern: the length of the MP4 file (within 0.12 s or one frame) and the reported length (within a
second), the shape (within 3 %), the colours, every frame and its time, the pitch and the level of
the audio, and flashes and beeps (within 40 ms of each other). “Bytes” are changes to a finished
file, for makers whose tools are not public.
"""

HEAD = "| Movie | Made with | Result |\n|---|---|---|\n"
LINE = re.compile(r"\| (.*) \| (.*) \| (.*) \|")


def early_or_late(off: re.Match) -> str:
    return f"the audio is {off[2]} ms " + ("late" if off[1] == "+" else "early")


def result(verdict: str, details: str, is_refused: bool) -> str:
    if verdict == "right":
        return "right: rejected, and the console says why" if is_refused else "right"
    words = details.replace("|", "/").replace("\n", " ")
    words = re.sub(r"/[^ ]*/collection-[^/]*/(movies/)?", "", words).partition(" ffmpeg: [")[0]
    words = re.sub(r"^(\d+x\d+), should be", r"shown as \1, should be", words)
    words = re.sub(r"sound ([+-])(\d+) ms off the picture", early_or_late, words)
    return ("cannot be made on this system: " if verdict == "NOT MADE" else "wrong: ") + words[:300]


def lines_in(document: Path) -> dict[str, str]:
    """The rows of the table by the movie's name."""
    text = document.read_text(encoding="utf-8") if document.exists() else ""
    found = [(LINE.fullmatch(line), line) for line in text.splitlines()]
    return {match[1]: line for match, line in found if match and match[1] != "Movie"}


def version() -> str:
    words = subprocess.run(["ffmpeg", "-version"], stdout=subprocess.PIPE, check=True).stdout
    return words.split()[2].decode().partition("-")[0]


def write(document: Path, names: list[str], judged: dict[str, str]) -> None:
    """Writes the rows of all `names`; those without a new result stay."""
    lines = {**lines_in(document), **judged}
    kept = [lines[name] for name in names if name in lines]
    right = sum("| right" in line for line in kept)
    total = f"{right} of {len(kept)} right.\n"
    when = f"Judged on {datetime.date.today()} with ffmpeg {version()}: {total}"
    document.write_text(
        "\n".join([INTRODUCTION, when, HEAD + "\n".join(kept)]) + "\n", encoding="utf-8"
    )
