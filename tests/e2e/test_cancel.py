"""Stopping a run, and closing the window."""

import time
import unittest

from driver import Vantreo, click, press_key, processes, type_text, wait_for
from samples import make_long_movie
from window_case import WindowCase

QUESTION = "A movie Conversion is being processed. Do you really want to Cancel it?"


class Cancel(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        self.result = self.output / "movie.mp4"

    def open_running(self) -> Vantreo:
        """The window during a conversion that lasts much longer than any test."""
        movie = make_long_movie(self.movies / "movie.mkv")
        window = self.open_window(**self.unhurried())
        window.drop([movie], window.movie_list)
        window.press_convert()
        wait_for(lambda: window.gauge > 0, "progress")
        return window

    def assert_goes_on(self, window: Vantreo) -> None:
        reached = window.gauge
        wait_for(lambda: window.gauge > reached, "more progress")
        self.assertEqual(window.status, "Conversion in progress...")
        self.assertTrue(window.is_running)

    def test_no_to_canceling_continues_the_run(self) -> None:
        window = self.open_running()
        window.press_convert()

        self.assertEqual(window.answer("No"), QUESTION)
        self.assert_goes_on(window)

    def test_yes_to_canceling_stops_within_a_second(self) -> None:
        self.write_settings(Overwrite="false")
        self.result.write_text("kept")
        window = self.open_running()
        self.assertNotEqual(processes("ffmpeg"), [])
        window.press_convert()
        window.wait_for_dialog()

        answered = time.monotonic()
        window.answer("Yes")
        window.wait_for_status("Conversion canceled")
        self.assertEqual(processes("ffmpeg"), [])
        wait_for(lambda: self.output_names() == ["movie.mp4"], "a clean output folder")
        self.assertLess(time.monotonic() - answered, 1)
        self.assertFalse(window.is_running)
        self.assertEqual(self.result.read_text(), "kept")

    def test_closing_during_a_run_asks(self) -> None:
        window = self.open_running()
        window.close()
        self.assertEqual(window.answer("No"), QUESTION)
        self.assert_goes_on(window)

        window.close()
        window.answer("Yes")
        self.assertEqual(window.wait_for_end(), 0)
        self.assertEqual(processes("ffmpeg"), [])
        wait_for(lambda: self.output_names() == [], "a clean output folder")

    def test_the_list_and_the_field_accept_nothing_during_a_run(self) -> None:
        window = self.open_running()
        movies = window.movies
        click(window.movie_entry(0))
        press_key("Delete")
        click(window.movie_list, times=2)
        click(window.output_field, times=2)
        type_text("x")

        self.assert_goes_on(window)
        self.assertIsNone(window.dialog)
        self.assertEqual(window.movies, movies)
        self.assertEqual(window.output_folder, str(self.output))

    def test_closing_an_idle_window_does_not_ask(self) -> None:
        window = self.open_window()
        window.close()
        self.assertEqual(window.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main()
