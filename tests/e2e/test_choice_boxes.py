"""The two boxes of the Options page that cannot be typed in."""

import time
import unittest

from driver import (
    Atspi,
    Page,
    Vantreo,
    click,
    click_at,
    descendants,
    has_state,
    middle,
    picture_of,
    place_on_screen,
    press_key,
    wait_for,
)
from window_case import WindowCase

# From the box's left edge into its text, and to its arrow.
TEXT_PIXELS = 30
ARROW_BUTTON_PIXELS = 24
# From the edge of the box, which shows the focus, to its text.
EDGE_PIXELS = 5
# Longer than a caret stays in one state.
BLINK_SECONDS = 1.5


class ChoiceBoxes(WindowCase):
    def open_options(self) -> Vantreo:
        window = self.open_window()
        window.open_page(Page.OPTIONS)
        return window

    def boxes(self, window: Vantreo) -> tuple[Atspi.Accessible, Atspi.Accessible]:
        return window.language_box, window.device_box

    def click_text(self, box: Atspi.Accessible) -> None:
        area = place_on_screen(box)
        click_at(area.x + TEXT_PIXELS, area.y + area.height // 2)

    def text_picture(self, box: Atspi.Accessible) -> bytes:
        area = place_on_screen(box)
        return picture_of(
            area.x + EDGE_PIXELS,
            area.y + EDGE_PIXELS,
            area.width - EDGE_PIXELS - ARROW_BUTTON_PIXELS,
            area.height - 2 * EDGE_PIXELS,
        ).get_pixels()

    def test_a_click_on_the_text_opens_the_list_and_another_closes_it(self) -> None:
        window = self.open_options()
        for box in self.boxes(window):
            name = box.get_name()
            self.click_text(box)
            wait_for(lambda: window.is_open(box), "the list")
            self.click_text(box)
            wait_for(lambda: not window.is_open(box), "no list")
            self.assertEqual(box.get_name(), name)

    def test_an_entry_is_chosen_after_a_click_on_the_text(self) -> None:
        window = self.open_options()
        self.click_text(window.language_box)
        wait_for(lambda: window.is_open(window.language_box), "the list")
        click(next(e for e in window.entries(window.language_box) if e.get_name() == "Italiano"))
        wait_for(lambda: window.page_titles[0] == "Converti", "an Italian window")

        self.click_text(window.device_box)
        wait_for(lambda: window.is_open(window.device_box), "the list")
        press_key("Escape")
        wait_for(lambda: not window.is_open(window.device_box), "no list")
        press_key("Down")
        wait_for(lambda: self.read_settings()["Optimize"] == "1", "the next device")

    def test_the_keyboard_opens_the_list_and_chooses(self) -> None:
        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        press_key("alt+Down")
        wait_for(lambda: window.is_open(window.language_box), "the list")
        press_key("Down")
        press_key("Return")
        wait_for(lambda: window.page_titles[0] == "Convertir", "a Spanish window")

    def test_the_arrow_opens_the_list(self) -> None:
        window = self.open_options()
        window.choose(window.device_box, "iPad")
        wait_for(lambda: self.read_settings()["Optimize"] == "2", "the chosen device")

    def test_a_focused_box_shows_no_caret_and_no_selection(self) -> None:
        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        first, second = self.boxes(window)

        def has_focus(box: Atspi.Accessible) -> bool:
            return any(has_state(c, Atspi.StateType.FOCUSED) for c in (box, *descendants(box)))

        wait_for(lambda: has_focus(first), "the focused language box")
        window.picture()  # at rest
        focused = {self.text_picture(first)}
        deadline = time.monotonic() + BLINK_SECONDS
        while time.monotonic() < deadline:
            focused.add(self.text_picture(first))
        press_key("Tab")
        press_key("Tab")
        wait_for(lambda: has_focus(second), "the focused device box")
        window.picture()
        self.assertEqual(focused, {self.text_picture(first)})

        # Also after keys and clicks that would move a caret.
        before = self.text_picture(second)
        press_key("Home")
        press_key("shift+Right")
        window.picture()
        self.assertEqual(self.text_picture(second), before)
        self.click_text(second)
        wait_for(lambda: window.is_open(second), "the list")
        self.click_text(second)
        wait_for(lambda: not window.is_open(second), "no list")
        click_at(*middle(window.overwrite_check))
        window.picture()
        self.assertEqual(self.text_picture(second), before)


if __name__ == "__main__":
    unittest.main()
