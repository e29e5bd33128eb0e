"""Double clicks and held keys: they must not answer the boxes that they open."""

import tempfile
import time
import unittest
from collections.abc import Callable
from pathlib import Path

from driver import (
    DOUBLE_CLICK_SECONDS,
    Atspi,
    Gdk,
    NotSeen,
    Vantreo,
    click,
    click_at_once,
    holding,
    middle,
    picture_of,
    press_key,
    wait_for,
    xdotool,
)
from samples import make_long_movie, make_movie
from window_case import WindowCase

# The program draws a window shortly before it is visible.
QUICK_SECONDS = 0.3
ATTEMPTS = 10
Place = tuple[int, int]


def shown_windows() -> int:
    return len(Gdk.Screen.get_default().get_window_stack())


def around(place: Place) -> bytes:
    """A screenshot of that place."""
    x, y = place
    return picture_of(x - 12, y - 6, 24, 12).get_pixels()


class DoubleClick(WindowCase):
    @classmethod
    def setUpClass(cls) -> None:
        folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.long_movie = make_long_movie(folder / "movie.mkv")

    def open_with_movie(self, long: bool = False) -> Vantreo:
        window = self.open_window(**self.unhurried())
        movie = self.long_movie if long else make_movie(self.movies / "movie.mkv", 2)
        window.drop([movie], window.movie_list)
        return window

    def open_running(self) -> Vantreo:
        window = self.open_with_movie(long=True)
        window.press_convert()
        wait_for(lambda: window.gauge > 0, "progress")
        return window

    def assert_goes_on(self, window: Vantreo) -> None:
        reached = window.gauge
        wait_for(lambda: window.gauge > reached, "more progress")
        self.assertTrue(window.is_running)
        self.assertIsNone(window.dialog)

    def double_click(self, first: Place, second: Place, windows: int, again: Callable) -> None:
        """Clicks at the first place, and at the second one as soon as that many windows are shown
        and it looks different there.

        Where that took longer than a double click, from the first click or from when a window was
        seen to open, `again` is called and it is tried again.
        """
        for _ in range(ATTEMPTS):
            time.sleep(DOUBLE_CLICK_SECONDS)
            before = around(second)
            opens = shown_windows() < windows
            began = since = time.monotonic()
            click_at_once(*first)
            while shown_windows() != windows or around(second) == before:
                since = time.monotonic() if opens else began
                self.assertLess(time.monotonic() - began, 15, "nothing opens or closes")
            click_at_once(*second)
            if time.monotonic() - since < QUICK_SECONDS:
                return
            again()
        raise NotSeen("a double click that was quick enough")

    # ---- what opens under the pointer ------------------------------------------------------------

    def test_the_overwrite_question_is_not_answered(self) -> None:
        result = self.output / "movie.mp4"
        result.write_text("kept")
        window = self.open_with_movie()

        def refuse() -> None:
            window.leave_dialog()
            window.wait_for_status("Conversion canceled")

        window.press_convert()
        yes = middle(window.dialog_button("Yes"))
        refuse()
        self.double_click(middle(window.convert_button), yes, 2, refuse)
        refuse()
        self.assertEqual(result.read_text(), "kept")
        self.assertFalse(window.is_running)

        # A click that is not part of a double click answers.
        window.press_convert()
        window.answer("Yes")
        window.wait_for_status("Conversion completed!", 60)

    def test_clicks_on_a_box_that_has_just_appeared_are_ignored(self) -> None:
        window = self.open_running()
        window.press_convert()
        yes = middle(window.dialog_button("Yes"))
        window.leave_dialog()
        for _ in range(2):
            Atspi.Component.grab_focus(window.convert_button)
            before = around(yes)
            xdotool("mousemove", *yes)
            press_key("Return")
            wait_for(lambda: shown_windows() == 2 and around(yes) != before, "the question")
            # For longer than a double click; the first one is ignored, and so are the others.
            xdotool("click", "--repeat", 12, "--delay", 60, 1)
            window.leave_dialog()
        self.assert_goes_on(window)

    def test_the_cancel_question_is_not_answered(self) -> None:
        window = self.open_running()
        window.press_convert()
        yes = middle(window.dialog_button("Yes"))
        window.leave_dialog()

        cancel = middle(window.convert_button)
        self.double_click(cancel, yes, 2, window.leave_dialog)
        window.leave_dialog()
        self.assert_goes_on(window)

        window.press_convert()
        window.answer("Yes")
        window.wait_for_status("Conversion canceled")

    def test_the_dialogs_of_the_choose_buttons_are_not_answered(self) -> None:
        movie = self.movies / "movie.mkv"
        movie.touch()
        window = self.open_window()
        for button in (window.movies_button, window.output_button):
            click(button)
            cancel = middle(window.dialog_button("Cancel"))
            window.leave_dialog()
            self.double_click(middle(button), cancel, 2, window.leave_dialog)
            window.enter_path(movie if button == window.movies_button else self.movies)
        wait_for(lambda: window.movies == [str(movie)], "the chosen movie")
        wait_for(lambda: window.output_folder == str(self.movies), "the chosen folder")

    # ---- one click is intended -------------------------------------------------------------------

    def test_a_double_click_on_convert_only_starts_the_run(self) -> None:
        window = self.open_with_movie(long=True)
        click(window.convert_button, times=2)
        wait_for(lambda: window.gauge > 0, "progress")
        self.assert_goes_on(window)

    def test_a_double_click_on_cancel_asks_once(self) -> None:
        window = self.open_running()
        click(window.convert_button, times=2)
        window.leave_dialog()
        self.assert_goes_on(window)

    # ---- what a closed box leaves behind ---------------------------------------------------------

    def test_a_double_click_on_an_answer_presses_nothing_below(self) -> None:
        window = self.open_running()
        window.press_convert()
        no = middle(window.dialog_button("No"))
        cancel = middle(window.convert_button)

        def ask_again() -> None:
            if window.dialog:
                window.leave_dialog()
            window.press_convert()
            window.wait_for_dialog()

        self.double_click(no, cancel, 1, ask_again)
        self.assert_goes_on(window)

    # ---- held keys -------------------------------------------------------------------------------

    def hold(self, key: str, until: Callable[[], object], what: str) -> None:
        """Holds the key down until that is seen and the keyboard has repeated the key a while."""
        with holding(key):
            wait_for(until, what)
            time.sleep(1)

    def test_a_held_key_on_convert_only_starts_the_run(self) -> None:
        window = self.open_with_movie(long=True)
        for key in ("Return", "KP_Enter", "space"):
            with self.subTest(key):
                Atspi.Component.grab_focus(window.convert_button)
                self.hold(key, lambda: window.is_running, "a run")
                self.assert_goes_on(window)
                press_key(key)
                window.answer("Yes")
                window.wait_for_status("Conversion canceled")

    def test_a_held_key_does_not_answer_the_question_it_opened(self) -> None:
        (self.output / "movie.mp4").write_text("kept")
        window = self.open_with_movie()
        Atspi.Component.grab_focus(window.convert_button)
        self.hold("Return", lambda: window.dialog, "the question")
        self.assertIsNotNone(window.dialog)
        press_key("Return")
        window.wait_for_no_dialog()
        window.wait_for_status("Conversion canceled")

    def test_a_held_key_does_not_answer_the_dialog_it_opened(self) -> None:
        movie = self.movies / "movie.mkv"
        movie.touch()
        window = self.open_window()
        Atspi.Component.grab_focus(window.movies_button)
        self.hold("Return", lambda: window.dialog, "the dialog")
        window.enter_path(movie)
        wait_for(lambda: window.movies == [str(movie)], "the chosen movie")

    def test_a_key_that_is_pressed_again_works_again(self) -> None:
        window = self.open_running()
        Atspi.Component.grab_focus(window.convert_button)
        for _ in range(2):
            press_key("Return")
            wait_for(lambda: window.dialog, "the question")
            press_key("Return")
            window.wait_for_no_dialog()
        self.assert_goes_on(window)

    def test_a_held_space_still_types_blanks(self) -> None:
        window = self.open_window()
        click(window.output_field)
        press_key("ctrl+a")
        self.hold("space", lambda: len(window.output_folder) > 2, "blanks")
        self.assertEqual(window.output_folder.strip(), "")


if __name__ == "__main__":
    unittest.main()
