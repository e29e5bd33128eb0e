"""The Options page: the language of the whole window, the device and the two check boxes."""

import unittest

from driver import Atspi, Page, Vantreo, click, has_state, wait_for
from texts import LANGUAGES, text
from window_case import WindowCase

PHONE = "iPhone 2g/3g/3gs & iPod touch"
TABLET = "iPad"


def convert_caption(language: str, device: str) -> str:
    return text("buttonConvert", language).replace("iPhone", device)


def shown_texts(window: Vantreo) -> dict[str, str]:
    """Every translated text of the window on the accessibility bus, by its key."""
    titles = dict(zip(("panelConvert", "panelOptions", "panelAbout"), window.page_titles))
    return titles | {
        "buttonMovies": window.movies_button.get_name(),
        "buttonOutput": window.output_button.get_name(),
        "buttonConvert": window.convert_button.get_name(),
        "labelElapsed": window.elapsed_label,
        "labelRemaining": window.remaining_label,
        "labelLanguage": window.language_label.get_name(),
        "labelOptimize": window.device_label.get_name(),
        "checkboxOverwrite": window.overwrite_check.get_name(),
        "checkboxHowToMove": window.how_to_move_check.get_name(),
        "buttonDonate": window.donate_button.get_name(),
    }


class Languages(WindowCase):
    maxDiff = None

    def assert_shows(self, window: Vantreo, language: str, device: str = "iPhone") -> None:
        shown = shown_texts(window)
        expected = {key: text(key, language) for key in shown}
        expected["buttonConvert"] = convert_caption(language, device)
        self.assertEqual(shown, expected)
        self.assertEqual(window.language_box.get_name(), language)

    def test_a_chosen_language_relabels_the_window_and_is_saved(self) -> None:
        before = "English"
        for language in [*LANGUAGES[1:], before]:
            with self.subTest(language):
                self.write_settings(Language=before, Optimize="2")
                window = self.open_window()
                window.open_page(Page.OPTIONS)
                window.choose(window.language_box, language)
                wait_for(lambda: window.language_box.get_name() == language, language)
                self.assertEqual(self.read_settings()["Language"], language)
                self.assert_shows(window, language, device="iPad")
                self.close_window(window)

                window = self.open_window()
                self.assert_shows(window, language, device="iPad")
                self.close_window(window)
            before = language

    def test_the_first_start_uses_the_language_of_the_system(self) -> None:
        # None of these locales is installed.
        for locale, language in {
            "fr_FR.UTF-8": "Français",
            "pt_BR.UTF-8": "Português",
            "ja_JP.UTF-8": "English",
        }.items():
            with self.subTest(locale):
                self.write_settings()
                window = self.open_window(LANG=locale)
                self.assert_shows(window, language)
                self.assertEqual(self.read_settings()["Language"], language)
                self.close_window(window)


class Options(WindowCase):
    def test_the_chosen_device_is_shown_and_saved(self) -> None:
        window = self.open_window()
        self.assertEqual(window.device_box.get_name(), PHONE)
        window.open_page(Page.OPTIONS)
        window.choose(window.device_box, TABLET)
        caption = convert_caption("English", "iPad")
        wait_for(lambda: window.convert_button.get_name() == caption, caption)
        self.assertEqual(self.read_settings()["Optimize"], "2")

        self.close_window(window)
        window = self.open_window()
        self.assertEqual(window.device_box.get_name(), TABLET)
        self.assertEqual(window.convert_button.get_name(), caption)

    def assert_checked(self, window: Vantreo, overwrite: bool, how_to_move: bool) -> None:
        """The boxes and the settings file must both have that state, the file at once."""

        def checked() -> tuple[bool, ...]:
            boxes = window.overwrite_check, window.how_to_move_check
            return tuple(has_state(box, Atspi.StateType.CHECKED) for box in boxes)

        wait_for(lambda: checked() == (overwrite, how_to_move), f"{overwrite}, {how_to_move}")
        words = {True: "true", False: "false"}
        settings = self.read_settings()
        self.assertEqual(settings["Overwrite"], words[overwrite])
        self.assertEqual(settings["HowToMove"], words[how_to_move])

    def test_a_clicked_check_box_is_saved_at_once(self) -> None:
        self.write_settings(Overwrite="true", HowToMove="true")
        window = self.open_window()
        window.open_page(Page.OPTIONS)
        self.assert_checked(window, overwrite=True, how_to_move=True)

        click(window.overwrite_check)
        self.assert_checked(window, overwrite=False, how_to_move=True)
        click(window.how_to_move_check)
        self.assert_checked(window, overwrite=False, how_to_move=False)

        self.close_window(window)
        window = self.open_window()
        window.open_page(Page.OPTIONS)
        self.assert_checked(window, overwrite=False, how_to_move=False)

        click(window.overwrite_check)
        self.assert_checked(window, overwrite=True, how_to_move=False)


if __name__ == "__main__":
    unittest.main()
