"""The window without a pointer: with the keyboard, and as a screen reader tells it."""

import os
import unittest
from collections import Counter

from driver import (
    Atspi,
    Page,
    Vantreo,
    descendants,
    has_state,
    place_on_screen,
    press_key,
    wait_for,
)
from pixels import Colour, contrast, is_blue, rows_of
from samples import make_film
from texts import text
from window_case import WindowCase

CONVERT_PAGE = ("buttonMovies", "buttonMovies", "buttonOutput", "buttonOutput", "buttonConvert")
OPTIONS_PAGE = (
    "labelLanguage",
    "htmlTranslations",
    "labelOptimize",
    "htmlSubtitle",
    "checkboxOverwrite",
    "checkboxHowToMove",
)
SITE = os.environ["VANTREO_SITE"]
# By the Web Content Accessibility Guidelines: what a mark of the focus needs to be seen.
VISIBLE = 3


def html_words(key: str, language: str = "English") -> str:
    return text(key, language).strip().replace("\u00a0", " ")


Place = tuple[int, int]
Rows = list[list[Colour]]


def reached_around(walls: set[Place], width: int, height: int) -> set[Place]:
    """The places of a picture that are reached from around it, not across the walls."""
    reached, next_places = set(), [(-1, -1)]
    while next_places:
        x, y = place = next_places.pop()
        if -1 <= x <= width and -1 <= y <= height and place not in walls and place not in reached:
            reached.add(place)
            next_places += [(x + 1, y), (x - 1, y), (x, y + 1), (x, y - 1)]
    return reached


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
    """How a screen reader names the control: by its label, or else by its own name."""
    return labels(control) or control.get_name()


def focused_control(window: Vantreo) -> Atspi.Accessible | None:
    window.frame.clear_cache()
    focus = (c for c in descendants(window.frame) if has_state(c, Atspi.StateType.FOCUSED))
    return next(focus, None)


def focused(window: Vantreo) -> str:
    """How the control that has the keyboard is named; "" while none has."""
    control = focused_control(window)
    return spoken(control) if control else ""


class ScreenReader(WindowCase):
    def test_every_control_says_what_it_is_for(self) -> None:
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
        self.assertEqual(window.translations_box.get_name(), html_words("htmlTranslations", language))
        self.assertEqual(window.subtitle_box.get_name(), html_words("htmlSubtitle", language))
        self.assertIn(html_words("htmlAboutYouLike", language), window.about_box.get_name())

    def test_the_bar_tells_what_is_going_on(self) -> None:
        film = make_film(self.movies / "film.mkv", 60, size="640x480", grain=20)
        window = self.open_window()
        window.drop([film], window.movie_list)
        window.press_convert()
        wait_for(lambda: 0 < window.gauge < 1, "a conversion under way")
        self.assertRegex(labels(window.progress_bar), r"^Conversion in progress\.\.\. \d+%$")


class Keyboard(WindowCase):
    def assert_tab_goes_through(self, window: Vantreo, names: list[str]) -> None:
        for name in names:
            wait_for(lambda: focused(window) == name, f'the focus on "{name}"')
            press_key("Tab")

    def test_tab_goes_through_the_controls_in_reading_order(self) -> None:
        window = self.open_window()
        self.assert_tab_goes_through(window, [text(key) for key in CONVERT_PAGE])
        self.close_window(window)

        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        self.assert_tab_goes_through(window, [text(key).strip() for key in OPTIONS_PAGE])

    def test_the_list_has_the_keyboard_at_the_start(self) -> None:
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

    def test_delete_removes_a_movie_and_the_arrows_choose_it(self) -> None:
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
        film = make_film(self.movies / "film.mkv", 2)
        (self.output / "film.mp4").write_text("kept")
        window = self.open_window()
        window.drop([film], window.movie_list)
        window.press_convert()
        window.wait_for_dialog()
        press_key("Escape")
        window.wait_for_no_dialog()
        window.wait_for_status("Conversion canceled")
        self.assertEqual((self.output / "film.mp4").read_text(), "kept")

    def test_a_language_is_chosen_with_the_arrow_keys(self) -> None:
        window = self.open_window()
        window.open_next_page(Page.OPTIONS)
        wait_for(lambda: focused(window) == text("labelLanguage"), "the focused language box")
        press_key("Down")
        wait_for(lambda: window.language_box.get_name() == "Español", "the next language")
        self.assertEqual(window.page_titles[0], "Convertir")


class Links(WindowCase):
    def all_links(self, window: Vantreo) -> list[Atspi.Accessible]:
        boxes = (window.translations_box, window.subtitle_box, window.about_box)
        return [link for box in boxes for link in window.links(box)]

    def go_to(self, window: Vantreo, link: Atspi.Accessible) -> None:
        self.open_page_of(window, link)
        self.tab_to(window, link)

    def open_page_of(self, window: Vantreo, link: Atspi.Accessible) -> None:
        page = Page.ABOUT if link in window.links(window.about_box) else Page.OPTIONS
        window.open_page(page)
        wait_for(lambda: focused_control(window), "the focus on the page")

    def tab_to(self, window: Vantreo, link: Atspi.Accessible) -> None:
        for _ in range(8):
            focus = focused_control(window)
            if focus == link:
                return
            press_key("Tab")
            wait_for(lambda: focused_control(window) not in (None, focus), "the focus elsewhere")
        self.fail(f"no focus on {link.get_name()}")

    def test_screen_readers_are_given_each_link_with_its_text_and_address(self) -> None:
        for language, prefix in (("English", ""), ("Français", "FR/"), ("русский язык", "")):
            with self.subTest(language):
                self.write_settings(Language=language)
                window = self.open_window()
                contact = SITE + prefix + "Contact"
                links = wait_for(lambda: self.all_links(window), "links")
                self.assertEqual(
                    [link.get_name() for link in links],
                    [
                        html_words("htmlTranslations", language),
                        html_words("htmlSubtitle", language),
                        html_words("htmlAboutTranslations_2", language),
                        contact,
                    ],
                )
                addresses = [link.get_hyperlink().get_uri(0) for link in links]
                self.assertEqual(addresses[3], contact)
                self.assertTrue(all(a.startswith(SITE + prefix) for a in addresses), addresses)
                self.close_window(window)

    def test_a_screen_reader_follows_a_link(self) -> None:
        window = self.open_window()
        links = wait_for(lambda: self.all_links(window), "links")
        for count, link in enumerate(links, 1):
            Atspi.Action.do_action(link, 0)
            self.wait_for_pages(count)
        self.close_window(window)
        paths = ("Translations", "How_to_add_subtitles_to_the_iPhone_video", "Greetings", "Contact")
        self.assertEqual(self.opened_pages(), [SITE + path for path in paths])

    def test_enter_and_space_follow_the_focused_link_once(self) -> None:
        window = self.open_window()
        followed = []
        for link in wait_for(lambda: self.all_links(window), "links"):
            for key in ("Return", "KP_Enter", "space"):
                self.go_to(window, link)
                press_key(key)
                followed.append(link.get_hyperlink().get_uri(0))
                self.assertEqual(self.wait_for_pages(len(followed)), followed)
        self.close_window(window)
        self.assertEqual(self.opened_pages(), followed)

    def test_the_pages_are_changed_from_a_focused_link(self) -> None:
        window = self.open_window()
        self.go_to(window, wait_for(lambda: self.all_links(window), "links")[0])
        window.open_next_page(Page.ABOUT)

    def test_the_focused_link_is_marked(self) -> None:
        for theme in ("Adwaita", "Adwaita:dark", "HighContrast", "HighContrastInverse"):
            for language in ("English", "Deutsch", "русский язык"):
                with self.subTest(theme=theme, language=language):
                    self.write_settings(Language=language)
                    window = self.open_window(GTK_THEME=theme)
                    for link in wait_for(lambda: self.all_links(window), "links"):
                        self.assert_marked_by_focus(window, link)
                    self.close_window(window)

    def assert_marked_by_focus(self, window: Vantreo, link: Atspi.Accessible) -> None:
        self.open_page_of(window, link)
        press_key("shift+Tab")
        wait_for(lambda: focused(window) in window.page_titles, "the focus on the title")
        plain = window.picture(link)
        self.tab_to(window, link)

        def is_marked() -> bool:
            return window.picture(link).get_pixels() != plain.get_pixels()

        wait_for(is_marked, "a mark of the focus")
        self.assert_mark(rows_of(plain), rows_of(window.picture(link)))

    def assert_mark(self, plain: Rows, marked: Rows) -> None:
        """The mark can be seen, and goes all around the words of the link."""
        (background, _), *_ = Counter(colour for row in plain for colour in row).most_common(1)
        mark = {
            (x, y)
            for y, row in enumerate(plain)
            for x, colour in enumerate(row)
            if marked[y][x] != colour
        }
        self.assertGreaterEqual(min(contrast(marked[y][x], background) for x, y in mark), VISIBLE)
        words = {(x, y) for y, row in enumerate(plain) for x, c in enumerate(row) if is_blue(c)}
        self.assertEqual(words & reached_around(mark, len(plain[0]), len(plain)), set())


if __name__ == "__main__":
    unittest.main()
