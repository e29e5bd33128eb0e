"""The progress that the window shows during a run."""

import time
import unittest
from typing import NamedTuple

from driver import Vantreo, wait_for
from samples import make_long_movie
from window_case import WindowCase

WATCHED_SECONDS = 20
UNKNOWN = "??:??:??"


class Shown(NamedTuple):
    at: float  # seconds since the button was pressed
    title: str
    percent: int
    gauge: float
    elapsed: int
    remaining: str


def seconds_of(text: str) -> int:
    hours, minutes, seconds = map(int, text.split(":"))
    return (hours * 60 + minutes) * 60 + seconds


def watch(window: Vantreo) -> list[Shown]:
    """Presses Convert; returns what the window shows after each second's change."""
    start = time.monotonic()
    window.press_convert()
    shown = []
    for second in range(1, WATCHED_SECONDS + 1):
        wait_for(lambda: seconds_of(window.elapsed) >= second, f"{second} s elapsed", 5)
        at = time.monotonic() - start
        # The other values are set right after the elapsed time, before anything is painted.
        shown.append(
            Shown(
                at,
                window.title,
                int(window.percent.removesuffix("%")),
                window.gauge,
                seconds_of(window.elapsed),
                window.remaining,
            )
        )
    return shown


class Progress(WindowCase):
    def test_percent_and_times_change_once_a_second(self) -> None:
        movie = make_long_movie(self.movies / "movie.mkv")
        window = self.open_window(**self.unhurried())
        window.drop([movie], window.movie_list)
        shown = watch(window)

        for now in shown:
            with self.subTest(now):
                self.assertAlmostEqual(now.elapsed, now.at, delta=1.5)
                self.assertEqual(now.title, f"{now.percent}% - Vantreo")
                self.assertAlmostEqual(now.gauge * 100, now.percent, delta=0.5)
                self.assertEqual(now.remaining == UNKNOWN, now.elapsed <= 4)

        for before, now in zip(shown, shown[1:]):
            self.assertGreaterEqual(now.percent, before.percent)
        percents = {now.percent for now in shown}
        self.assertGreater(len(percents), WATCHED_SECONDS / 2)

        last = shown[-1]
        expected = last.elapsed * (100 - last.percent) / last.percent
        self.assertAlmostEqual(seconds_of(last.remaining), expected, delta=0.1 * expected + 1)


if __name__ == "__main__":
    unittest.main()
