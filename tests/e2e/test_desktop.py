"""The program in the test's desktop session."""

import os
import signal
import threading
import unittest

from desktop import (
    BACKEND,
    ENVIRONMENT,
    PANEL,
    SCALE,
    SIZE,
    DesktopWindow,
    find_window,
    label_pixels,
    sees_text,
    wait_for_empty_desktop,
)
from driver import Atspi, Page, Program, has_state, press_key, wait_for
from samples import describe, make_movie
from site_server import SiteServer, http_reply, send_after
from window_case import WindowCase

SAME = http_reply("CURRENT_VERSION=>1.24<=CURRENT_VERSION")
# A pixel of the check screen's text after the answer.
GREEN = bytes((10, 201, 26))
ROUNDING = 2 * SCALE
# A second for a picture that does not come, half a second for the answer to be read, and the pages.
STUCK_SECONDS = 5


class Desktop(WindowCase):
    def test_a_whole_conversion_in_a_completely_visible_window(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 2)
        window = self.enterContext(DesktopWindow())
        self.assertEqual(window.size, SIZE)
        self.assertEqual(window.outside(), [])
        if BACKEND == "x11":  # elsewhere the session chooses the position
            self.assertLess(window.off_centre[0], ROUNDING)
            self.assertLess(window.off_centre[1], PANEL + ROUNDING)

        window.press(window.movies_button, lambda: window.dialog)
        window.enter_path(movie)
        self.assertEqual(window.movies, [str(movie)])
        window.convert()
        self.assertEqual(
            describe(self.output / "movie.mp4"),
            "h264 Constrained Baseline level 30 yuv420p, 320x240, 25.00 fps, 2 s,"
            " aac LC 44100 Hz stereo, no subtitles",
        )
        self.assertEqual(window.size, SIZE)
        self.assertEqual(window.outside(), [])


class ChoiceBoxes(WindowCase):
    def test_one_click_on_the_text_of_a_box_opens_its_list(self) -> None:
        window = self.enterContext(DesktopWindow())
        window.show_page(Page.OPTIONS)
        for box in window.language_box, window.device_box:
            # The session then has the pointer in the window, and the box has no focus.
            check = window.overwrite_check
            before = has_state(check, Atspi.StateType.CHECKED)
            window.press(check, lambda: has_state(check, Atspi.StateType.CHECKED) != before)
            window.press(box, lambda box=box: window.is_open(box), clicks=1)
            press_key("Escape")
            wait_for(lambda box=box: not window.is_open(box), "no list")


class CheckScreen(WindowCase):
    """During the request the program does not answer: everything is read from screenshots."""

    def start(self) -> tuple[Program, threading.Event]:
        """The program during the request, and a function that lets the site answer."""
        may_answer = threading.Event()
        server = self.enterContext(SiteServer(send_after(may_answer, SAME)))
        self.addCleanup(may_answer.set)
        wait_for_empty_desktop()
        environment = {"VANTREO_SITE": server.address}
        program = self.enterContext(Program(environment=ENVIRONMENT | environment))
        wait_for(lambda: server.request_lines, "the request")
        return program, may_answer

    def test_it_is_visible_during_the_request_and_after_the_answer(self) -> None:
        _, may_answer = self.start()
        wait_for(sees_text, "the check screen", 4)
        box = find_window()
        self.assertNotIn(GREEN, label_pixels(box))
        may_answer.set()
        wait_for(lambda: GREEN in label_pixels(box), "the answer", 2)

    @unittest.skipUnless(BACKEND == "wayland", "an X11 display draws itself")
    def test_a_stopped_display_does_not_delay_the_start(self) -> None:
        program, may_answer = self.start()
        compositor = int(os.environ["VANTREO_COMPOSITOR"])
        os.kill(compositor, signal.SIGSTOP)
        self.addCleanup(os.kill, compositor, signal.SIGCONT)
        may_answer.set()
        # The bus still shows what the screen no longer can.
        role = Atspi.Role.PAGE_TAB
        wait_for(lambda: program.controls(role), "the pages", STUCK_SECONDS)


if __name__ == "__main__":
    unittest.main()
