"""What a user sees of failed steps although the window reports completion."""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from driver import Vantreo, click, press_key, wait_for
from samples import ffmpeg, make_movie
from window_case import WindowCase

SERVICE = Path(__file__).with_name("notification_service.py")
# Half of a movie of ten seconds; its header still has the whole length.
TRUNCATED = ("half.avi", ())


def make_truncated_movie(path: Path, options: tuple[str, ...]) -> Path:
    ffmpeg(
        *("-f", "lavfi", "-i", "testsrc2=size=160x120", "-f", "lavfi", "-i", "sine", "-t", 10),
        *("-c:v", "mpeg4", "-g", 10, "-c:a", "aac", *options, path),
    )
    with path.open("r+b") as file:
        file.truncate(path.stat().st_size // 2)
    return path


class Failures(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        self.shown = self.movies.parent / "shown"
        self.shown.touch()
        service = subprocess.Popen(
            [sys.executable, SERVICE, self.shown], stdout=subprocess.PIPE, text=True
        )
        self.addCleanup(service.communicate)
        self.addCleanup(service.kill)
        self.assertEqual(service.stdout.readline(), "ready\n")

    def notifications(self) -> list[dict]:
        return [json.loads(line) for line in self.shown.read_text().splitlines()]

    def on_screen(self) -> list[str]:
        """The texts of the notifications that no later one has replaced."""
        replaced = {one["replaces"] for one in self.notifications()}
        return [
            f"{one['summary']}\n{one['body']}"
            for one in self.notifications()
            if one["number"] not in replaced
        ]

    def wait_for_notification(self, *words: str) -> str:
        """Waits for a notification with all these words; returns its text."""

        def found() -> str | None:
            return next((text for text in self.on_screen() if all(w in text for w in words)), None)

        return wait_for(found, f"a notification of {words}")

    def mount(self, name: str, options: str) -> Path:
        """Mounts a small file system in the output folder."""
        place = self.output / name
        place.mkdir()
        subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", place], check=True)
        self.addCleanup(subprocess.run, ["umount", place], check=True)
        return place

    def convert_into(self, window: Vantreo, movie: Path, folder: Path) -> None:
        window.type_output_folder(folder)
        window.drop([movie], window.movie_list)
        window.convert()

    def check_refused_movie(self, window: Vantreo) -> None:
        song = self.movies / "song.m4a"
        ffmpeg("-f", "lavfi", "-i", "sine=duration=1", song)
        window.drop([song], window.movie_list)
        window.press_convert()
        window.answer("OK")
        self.assertIn(f"ffmpeg: '{song}' is not a movie: it has sound only", self.said())
        click(window.movie_entry(0))
        press_key("Delete")
        wait_for(lambda: not window.movies, "an empty list")

    def check_read_only_folder(self, window: Vantreo) -> None:
        movie = make_movie(self.movies / "R&B <live>.mkv", 1)
        self.convert_into(window, movie, self.mount("sealed", "ro,size=64k"))
        text = self.wait_for_notification(movie.name)
        (note,) = self.movies.glob("R&B <live>.mp4~*.failed.txt")
        name = note.name.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
        self.assertEqual(
            text,
            f"{movie.name}\nIt was not converted: the output folder cannot be written to.\n"
            f"For details, see {self.movies}/{name}",
        )
        self.assertIn("Choose another output folder", note.read_text())
        self.assertIn(f"what happened is written in '{note}'", self.said())

    def check_full_disk(self, window: Vantreo) -> Path:
        movie = make_movie(self.movies / "large.mkv", 2, grain=50)
        folder = self.mount("full", "size=64k")
        self.convert_into(window, movie, folder)
        self.assertEqual([path.name for path in folder.iterdir()], ["large.mp4.failed.txt"])
        self.assertIn("Free some space", (folder / "large.mp4.failed.txt").read_text())
        return movie

    def check_truncated_movie(self, window: Vantreo) -> Path:
        name, options = TRUNCATED
        movie = make_truncated_movie(self.movies / name, options)
        movie.with_suffix(".srt").write_text("no subtitles")
        self.convert_into(window, movie, self.output)
        note = self.output / "half.mp4.failed.txt"
        self.assertTrue(note.with_name("half.mp4").is_file())
        for words in ("Check whether the movie plays to its end", "has no subtitles"):
            self.assertIn(words, note.read_text())
        return movie

    def said(self) -> str:
        return Path(self.console.name).read_text()

    def test_each_movie_leaves_a_notification_and_a_failure_note(self) -> None:
        self.console = self.enterContext(tempfile.NamedTemporaryFile())
        good = make_movie(self.movies / "good.mkv", 1)
        window = self.enterContext(Vantreo(console=self.console))
        self.check_refused_movie(window)
        self.convert_into(window, good, self.output)
        self.check_read_only_folder(window)
        full = self.check_full_disk(window)
        half = self.check_truncated_movie(window)
        self.wait_for_notification(full.name, "there is no space left for the MP4 file")
        self.wait_for_notification(
            half.name,
            "The MP4 file is shorter than the movie should be. The subtitles were not added",
        )
        for name in ("R&B <live>.mkv", full.name, half.name):
            self.assertEqual(sum(name in text for text in self.on_screen()), 1, name)
        self.assertFalse(any("good" in text for text in self.on_screen()))


if __name__ == "__main__":
    unittest.main()
