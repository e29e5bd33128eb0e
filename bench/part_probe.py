"""From pressing Convert to the first transcode, beside bare ffprobe on each film."""

import os
import shutil
import time
from pathlib import Path
from statistics import median

from figures import Figure, growth_exponent, in_turns, ratio_figure
from ground import (
    Scale, drop_all, folder, press, say, silent, wait_quietly, window,
)  # fmt: skip
from samples import make_film

# What a person would ask about a film.
FFPROBE = ("ffprobe", "-v", "error", "-show_format", "-show_streams", "-of", "json", "-i")
LONGEST_STRAIGHT_EXPONENT = 1.05


def through_window(films: list[Path], output: Path) -> dict[str, float]:
    # Nothing is encoded: what is measured ends where a transcode begins.
    with window(output, {"VANTREO_FFMPEG": shutil.which("false")}) as opened:
        drop_all(opened, films)
        os.sync()
        pressed = press(opened.convert_button)
        # The first thing that a transcode does is to make its unfinished file.
        begun = wait_quietly(lambda: any(os.scandir(output)), 600, 0.001)
    for made in output.iterdir():
        made.unlink()
    return {"wall": begun - pressed}


def bare(films: list[Path]) -> dict[str, float]:
    started = time.monotonic()
    for film in films:
        silent([*FFPROBE, film])
    return {"wall": time.monotonic() - started}


def measure(scale: Scale) -> list[Figure]:
    figures, points = [], []
    with folder() as work:
        output = work / "out"
        output.mkdir()
        first = make_film(work / "0000.mkv", 2, size="320x240")
        films = [first]
        for count, pairs in scale.probe_pairs.items():
            for number in range(len(films), count):
                films.append(Path(shutil.copy(first, work / f"{number:04}.mkv")))
            say(f"{pairs} times: {count} films through the window, and bare ffprobe")
            legs = {
                "ours": lambda: through_window(films, output),
                "bare": lambda: bare(films),
            }
            results = in_turns(pairs, legs)
            ours, others = results["ours"]["wall"], results["bare"]["wall"]
            figures.append(ratio_figure("probe", f"{count} films", ours, others, 1.3))
            points.append((count, median(ours)))
    exponent = growth_exponent(points)
    note = "the power of the number of films that the time grows with"
    figures.append(
        Figure("probe", "straightness", exponent, "power", LONGEST_STRAIGHT_EXPONENT, note=note)
    )
    return figures
