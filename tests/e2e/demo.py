"""Converts two sample movies through the program's real window, as a user would.

    demo.py FOLDER

Leaves the MP4 files and three pictures of the window in FOLDER, and prints a line about each MP4
file. Fails, saying what is missing, when anything is not as it should be. To be run inside
tests/with_display.
"""

import os
import shutil
import subprocess
import sys
from pathlib import Path

from driver import NotSeen, Vantreo, click, wait_for
from samples import SUBTITLES, describe, make_movie

MOVIES = {
    "movie.mp4": "h264 Constrained Baseline level 30 yuv420p, 480x270, 23.98 fps, 20 s,"
    " aac LC 44100 Hz stereo, mov_text (tx3g) subtitles",
    "small.mp4": "h264 Constrained Baseline level 30 yuv420p, 320x240, 25.00 fps, 8 s,"
    " aac LC 44100 Hz stereo, no subtitles",
}
PICTURES = ("idle.png", "converting.png", "completed.png")
PAGE = "How_to_put_a_video_on_your_iPhone"


def make_sources(folder: Path) -> list[Path]:
    movie = make_movie(folder / "movie.mkv", 20, size="1280x720", rate="24000/1001", grain=20)
    movie.with_suffix(".srt").write_text(SUBTITLES)
    return [movie, make_movie(folder / "small.mkv", 8)]


def convert(sources: list[Path], folder: Path) -> None:
    idle, converting, completed = (str(folder / name) for name in PICTURES)
    with Vantreo() as window:
        for source in sources:
            click(window.movies_button)
            window.enter_path(source)
        window.type_output_folder(folder)
        window.picture().savev(idle, "png", [], [])

        window.press_convert()
        wait_for(lambda: 0.2 < window.gauge < 1, "the progress bar under way", 60)
        window.picture().savev(converting, "png", [], [])

        window.wait_for_status("Conversion completed!", 300)
        window.picture().savev(completed, "png", [], [])

        pages = Path(os.environ["BROWSER_LOG"])
        wait_for(lambda: PAGE in pages.read_text(), "the how-to page in the browser")
        window.close()
        if status := window.wait_for_end():
            raise NotSeen(f"the program ended with status {status}")


def find_faults(folder: Path) -> list[str]:
    """Prints a line about each MP4 file; returns what is missing or wrong."""
    names = (*MOVIES, *PICTURES)
    faults = [f"{name} is missing" for name in names if not (folder / name).is_file()]
    for name, expected in MOVIES.items():
        if not (folder / name).is_file():
            continue
        try:
            found = describe(folder / name)
        except subprocess.CalledProcessError:
            faults.append(f"{name} is no movie")
            continue
        print(f"{name}: {found}")
        if found != expected:
            faults.append(f"{name} should be: {expected}")
    return faults


def main() -> None:
    folder = Path(sys.argv[1]).absolute()
    sources, output = Path.home() / "Movies", Path.home() / "Converted"
    try:
        folder.mkdir(parents=True, exist_ok=True)
        if not os.access(folder, os.W_OK):
            sys.exit(f"demo: cannot write in {folder}")
        sources.mkdir()
        output.mkdir()
        convert(make_sources(sources), output)
        faults = find_faults(output)
        for result in output.iterdir():
            # Replace files of an earlier demo only now that there are new ones.
            shutil.copyfile(result, folder / result.name)
    except (NotSeen, OSError) as fault:
        sys.exit(f"demo: {fault}")
    if faults:
        sys.exit("\n".join(f"demo: {fault}" for fault in faults))
    print(f"The MP4 files and the pictures of the window are in {folder}")


if __name__ == "__main__":
    main()
