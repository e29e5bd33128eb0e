"""The links of the HTML boxes without a pointer: with the keyboard, and as a screen reader sees
them."""

import unittest
from collections import Counter

from driver import Atspi, GdkPixbuf, Page, Vantreo, press_key, wait_for
from pixels import Colour, contrast, is_blue, rows_of
from texts import html_words
from window_case import SITE, WindowCase

# The contrast that the Web Content Accessibility Guidelines require of a focus mark.
VISIBLE = 3

Place = tuple[int, int]
Rows = list[list[Colour]]


def reached_around(walls: set[Place], width: int, height: int) -> set[Place]:
    """The places of a picture that can be reached from its edges without crossing the walls."""
    reached, next_places = set(), [(-1, -1)]
    while next_places:
        x, y = place = next_places.pop()
        if -1 <= x <= width and -1 <= y <= height and place not in walls and place not in reached:
            reached.add(place)
            next_places += [(x + 1, y), (x - 1, y), (x, y + 1), (x, y - 1)]
    return reached


class LinkKeys(WindowCase):
    def all_links(self, window: Vantreo) -> list[Atspi.Accessible]:
        boxes = (window.translations_box, window.subtitle_box, window.about_box)
        return [link for box in boxes for link in window.links(box)]

    def go_to(self, window: Vantreo, link: Atspi.Accessible) -> None:
        self.open_page_of(window, link)
        self.tab_to(window, link)

    def open_page_of(self, window: Vantreo, link: Atspi.Accessible) -> None:
        page = Page.ABOUT if link in window.links(window.about_box) else Page.OPTIONS
        window.open_page(page)
        wait_for(lambda: window.focused_control, "the focus on the page")

    def tab_to(self, window: Vantreo, control: Atspi.Accessible) -> None:
        for _ in range(8):
            focus = window.focused_control
            if focus == control:
                return
            press_key("Tab")
            wait_for(lambda: window.focused_control not in (None, focus), "the focus elsewhere")
        self.fail(f"no focus on {control.get_name()}")

    def test_screen_readers_get_each_link_with_its_text_and_address(self) -> None:
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

    def test_the_pages_can_be_changed_from_a_focused_link(self) -> None:
        window = self.open_window()
        self.go_to(window, wait_for(lambda: self.all_links(window), "links")[0])
        window.open_next_page(Page.ABOUT)

    def test_the_focused_link_is_marked(self) -> None:
        for theme, language in (
            ("Adwaita", "English"),
            ("Adwaita:dark", "Deutsch"),
            ("HighContrast", "русский язык"),
            ("HighContrastInverse", "English"),
        ):
            with self.subTest(theme=theme, language=language):
                self.write_settings(Language=language)
                window = self.open_window(GTK_THEME=theme)
                for link in wait_for(lambda: self.all_links(window), "links"):
                    self.assert_marked_by_focus(window, link)
                self.close_window(window)

    def assert_marked_by_focus(self, window: Vantreo, link: Atspi.Accessible) -> None:
        self.open_page_of(window, link)
        about = link in window.links(window.about_box)
        self.tab_to(window, window.donate_button if about else window.overwrite_check)
        plain = window.picture(link)
        self.tab_to(window, link)

        def marked() -> GdkPixbuf.Pixbuf | None:
            picture = window.picture(link)
            return picture if picture.get_pixels() != plain.get_pixels() else None

        self.assert_mark(rows_of(plain), rows_of(wait_for(marked, "a mark of the focus")))

    def assert_mark(self, plain: Rows, marked: Rows) -> None:
        """The mark must be visible and surround the link's text."""
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
