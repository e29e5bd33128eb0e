"""The time from Convert to the first transcode, compared with bare ffprobe on each movie."""

import os
import shutil
import time
from pathlib import Path
from statistics import median

from figures import Figure, growth_exponent, in_turns, ratio_figure
from ground import (
    Scale,
    drop_all,
    folder,
    press,
    say,
    silent,
    wait_quietly,
    window,
)  # fmt: skip
from samples import make_movie

# A typical query about a movie.
FFPROBE = ("ffprobe", "-v", "error", "-show_format", "-show_streams", "-of", "json", "-i")
LONGEST_STRAIGHT_EXPONENT = 1.05


def through_window(movies: list[Path], output: Path) -> dict[str, float]:
    # Nothing is encoded: the measurement ends when a transcode starts.
    with window(output, {"VANTREO_FFMPEG": shutil.which("false")}) as opened:
        drop_all(opened, movies)
        os.sync()
        pressed = press(opened.convert_button)
        # A transcode starts by creating its unfinished file.
        begun = wait_quietly(lambda: any(os.scandir(output)), 600, 0.001)
    for made in output.iterdir():
        made.unlink()
    return {"wall": begun - pressed}


def bare(movies: list[Path]) -> dict[str, float]:
    started = time.monotonic()
    for movie in movies:
        silent([*FFPROBE, movie])
    return {"wall": time.monotonic() - started}


def measure(scale: Scale) -> list[Figure]:
    figures, points = [], []
    with folder() as work:
        output = work / "out"
        output.mkdir()
        first = make_movie(work / "0000.mkv", 2, size="320x240")
        movies = [first]
        for count, pairs in scale.probe_pairs.items():
            for number in range(len(movies), count):
                movies.append(Path(shutil.copy(first, work / f"{number:04}.mkv")))
            say(f"{pairs} times: {count} movies through the window, and bare ffprobe")
            legs = {
                "ours": lambda: through_window(movies, output),
                "bare": lambda: bare(movies),
            }
            results = in_turns(pairs, legs)
            ours, others = results["ours"]["wall"], results["bare"]["wall"]
            name = f"{count} movie{'s' if count > 1 else ''}"
            figures.append(ratio_figure("probe", name, ours, others, 1.3))
            points.append((count, median(ours)))
    exponent = growth_exponent(points)
    figures.append(
        Figure(
            "probe",
            "growth with the number of movies",
            exponent,
            "",
            LONGEST_STRAIGHT_EXPONENT,
            note="exponent",
        )  # fmt: skip
    )
    return figures
