"""The results of a run."""

import subprocess
import unittest

from driver import Page, Vantreo, click
from samples import SUBTITLES, describe, make_movie
from window_case import SITE, WindowCase


class Conversion(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        self.movie = make_movie(self.movies / "movie.mkv", 2)
        self.result = self.output / "movie.mp4"

    def open_with_movie(self) -> Vantreo:
        window = self.open_window()
        window.drop([self.movie], window.movie_list)
        return window

    def test_subtitles_beside_a_movie_become_a_text_track(self) -> None:
        self.movie.with_suffix(".srt").write_text(SUBTITLES)
        self.open_with_movie().convert()

        self.assertEqual(
            describe(self.result),
            "h264 Constrained Baseline level 30 yuv420p, 320x240, 25.00 fps, 2 s,"
            " aac LC 44100 Hz stereo, mov_text (tx3g) subtitles",
        )
        track = subprocess.run(
            ["ffmpeg", "-v", "error", "-i", self.result, "-f", "srt", "-"],
            check=True,
            stdout=subprocess.PIPE,
            text=True,
        )
        self.assertEqual(track.stdout.strip(), SUBTITLES.strip())

    def test_a_strange_file_name_is_kept(self) -> None:
        stem = "we\"ird\\ name's 100% ünï – $HOME"
        self.movie = self.movie.rename(self.movies / f"{stem}.avi")
        self.open_with_movie().convert()

        self.assertEqual(self.output_names(), [f"{stem}.mp4"])

    def test_no_to_overwriting_leaves_the_file(self) -> None:
        self.result.write_text("kept")
        window = self.open_with_movie()
        window.press_convert()

        self.assertIn(f"{self.result}:\n", window.answer("No"))
        window.wait_for_status("Conversion canceled")
        self.assertFalse(window.is_running)
        self.assertEqual(self.result.read_text(), "kept")

    def test_yes_to_overwriting_replaces_the_file(self) -> None:
        self.result.write_text("replaced")
        window = self.open_with_movie()
        window.press_convert()

        self.assertIn(f"{self.result}:\n", window.answer("Yes"))
        window.wait_for_status("Conversion completed!", 60)
        self.assertIn("320x240, 25.00 fps, 2 s", describe(self.result))

    def test_the_tools_of_the_current_folder_are_never_run(self) -> None:
        tools = self.movies / "Vantreo.app" / "Contents" / "Resources"
        tools.mkdir(parents=True)
        trace = self.movies / "trace"
        for name in ("ffmpeg", "MP4Box"):
            (tools / name).write_text(f'#!/bin/sh\necho "$0" >>"{trace}"\n')
            (tools / name).chmod(0o755)
        window = self.open_window(self.movies)
        window.drop([self.movie], window.movie_list)
        window.convert()

        self.assertFalse(trace.exists())
        self.assertEqual(self.output_names(), ["movie.mp4"])

    def test_the_how_to_page_opens_once_after_a_run(self) -> None:
        self.write_settings(HowToMove="true")
        second = make_movie(self.movies / "second.mkv", 2)
        window = self.open_window()
        window.drop([self.movie, second], window.movie_list)
        window.convert()
        self.wait_for_pages(1)
        window.open_page(Page.ABOUT)
        click(window.donate_button)

        self.assertEqual(
            self.wait_for_pages(2),
            [SITE + "How_to_put_a_video_on_your_iPhone", SITE + "Donate"],
        )

    def test_a_bad_movie_stops_the_run_before_any_conversion(self) -> None:
        bad = self.movies / "second.avi"
        bad.write_text("no movie\n")
        third = make_movie(self.movies / "third.mkv", 2)
        window = self.open_window()
        window.drop([self.movie, bad, third], window.movie_list)
        window.press_convert()

        self.assertEqual(
            window.answer("OK"),
            f"{bad}:\nError: The movie file you have selected is not valid."
            " Please select another one.",
        )
        window.wait_for_status("Conversion canceled")
        self.assertFalse(window.is_running)
        self.assertEqual(self.output_names(), [])


if __name__ == "__main__":
    unittest.main()
