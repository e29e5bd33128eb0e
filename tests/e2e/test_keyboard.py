"""The window without a pointer: with the keyboard, and as a screen reader sees it."""

import unittest

from driver import Atspi, Page, Vantreo, has_state, press_key, wait_for
from samples import make_movie
from texts import html_words, text
from window_case import SITE, WindowCase

CONVERT_PAGE = ("buttonMovies", "buttonMovies", "buttonOutput", "buttonOutput", "buttonConvert")
OPTIONS_PAGE = (
    "labelLanguage",
    "htmlTranslations",
    "labelOptimize",
    "htmlSubtitle",
    "checkboxOverwrite",
    "checkboxHowToMove",
)


def labels(control: Atspi.Accessible) -> str:
    """The texts of the controls that label this one."""
    relations = [
        relation
        for relation in control.get_relation_set()
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
    ]
    targets = [r.get_target(i) for r in relations for i in range(r.get_n_targets())]
    return " ".join(filter(None, (target.get_name() for target in targets)))


def spoken(control: Atspi.Accessible) -> str:
    """The control's name for a screen reader: its label, or else its own name."""
    return labels(control) or control.get_name()


def focused(window: Vantreo) -> str:
    """The name of the focused control; "" if none has the focus."""
    control = window.focused_control
    return spoken(control) if control else ""


class ScreenReader(WindowCase):
    def test_every_control_has_a_meaningful_name(self) -> None:
        for language in ("English", "Français", "русский язык"):
            with self.subTest(language):
                self.write_settings(Language=language)
                window = self.open_window()
                self.assert_names(window, language)
                self.close_window(window)

    def test_the_names_follow_the_language(self) -> None:
        window = self.open_window()
        window.open_page(Page.OPTIONS)
        window.choose(window.language_box, "Deutsch")
        wait_for(lambda: window.page_titles[0] == "Konvertieren", "a German window")
        self.assert_names(window, "Deutsch")

    def assert_names(self, window: Vantreo, language: str) -> None:
        def words(key: str) -> str:
            return text(key, language)

        names = {
            window.movie_list: words("buttonMovies"),
            window.output_field: words("buttonOutput"),
            window.movies_button: words("buttonMovies"),
            window.output_button: words("buttonOutput"),
            window.convert_button: words("buttonConvert"),
            window.progress_box: words("panelConvert"),
            window.progress_bar: "0%",
            window.language_box: words("labelLanguage"),
            window.device_box: words("labelOptimize"),
            window.overwrite_check: words("checkboxOverwrite"),
            window.how_to_move_check: words("checkboxHowToMove"),
            window.donate_button: words("buttonDonate"),
        }
        self.assertEqual([spoken(c) for c in names], list(names.values()))
        self.assertEqual(
            window.translations_box.get_name(), html_words("htmlTranslations", language)
        )
        self.assertEqual(window.subtitle_box.get_name(), html_words("htmlSubtitle", language))
        self.assertIn(html_words("htmlAboutYouLike", language), window.about_box.get_name())

    def test_the_bar_describes_the_progress(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 60, size="640x480", grain=20)
        window = self.open_window()
        window.drop([movie], window.movie_list)
        window.press_convert()
        wait_for(lambda: 0 < window.gauge < 1, "a conversion under way")
        self.assertRegex(labels(window.progress_bar), r"^Conversion in progress\.\.\. \d+%$")


class Keyboard(WindowCase):
    def assert_tab_goes_through(self, window: Vantreo, names: list[str]) -> None:
        for name in names:
            wait_for(lambda: focused(window) == name, f'the focus on "{name}"')
            press_key("Tab")

    def test_tab_visits_the_controls_in_reading_order(self) -> None:
        window = self.open_window()
        self.assert_tab_goes_through(window, [text(key) for key in CONVERT_PAGE])
        self.close_window(window)

        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        self.assert_tab_goes_through(window, [text(key).strip() for key in OPTIONS_PAGE])
        self.close_window(window)

        window = self.open_window()
        window.open_page(Page.ABOUT)
        links = [text("htmlAboutTranslations_2").strip(), SITE + "Contact"]
        self.assert_tab_goes_through(window, [*links, text("buttonDonate")])

    def test_the_list_has_the_initial_focus(self) -> None:
        window = self.open_window()
        wait_for(lambda: has_state(window.movie_list, Atspi.StateType.FOCUSED), "the focused list")

    def test_space_and_enter_press_the_focused_button(self) -> None:
        for key in ("space", "Return"):
            with self.subTest(key):
                window = self.open_window()
                press_key("Tab")
                wait_for(lambda: has_state(window.movies_button, Atspi.StateType.FOCUSED), "focus")
                press_key(key)
                window.wait_for_dialog()
                press_key("Escape")
                window.wait_for_no_dialog()
                self.close_window(window)

    def test_the_arrows_select_a_movie_and_delete_removes_it(self) -> None:
        paths = [self.movies / name for name in ("a.avi", "b.avi", "c.avi")]
        for path in paths:
            path.touch()
        window = self.open_window()
        window.drop(paths, window.movie_list)
        press_key("Home")
        press_key("Down")
        wait_for(
            lambda: has_state(window.movie_entry(1), Atspi.StateType.SELECTED), "the second movie"
        )
        press_key("Delete")
        remaining = [str(paths[0]), str(paths[2])]
        wait_for(lambda: window.movies == remaining, "the list without the second movie")

    def test_escape_answers_a_question_with_no(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 2)
        (self.output / "movie.mp4").write_text("kept")
        window = self.open_window()
        window.drop([movie], window.movie_list)
        window.press_convert()
        window.wait_for_dialog()
        press_key("Escape")
        window.wait_for_no_dialog()
        window.wait_for_status("Conversion canceled")
        self.assertEqual((self.output / "movie.mp4").read_text(), "kept")

    def test_a_language_is_chosen_with_the_arrow_keys(self) -> None:
        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        wait_for(lambda: focused(window) == text("labelLanguage"), "the focused language box")
        press_key("Down")
        wait_for(lambda: window.language_box.get_name() == "Español", "the next language")
        self.assertEqual(window.page_titles[0], "Convertir")


if __name__ == "__main__":
    unittest.main()
