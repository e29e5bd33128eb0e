"""The links and the button that lead to the product web site."""

import unittest

from driver import Atspi, Page, Vantreo, click, click_at, place_on_screen, wait_for
from pixels import find_links
from window_case import SITE, WindowCase


class Links(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        self.pages_seen = 0

    def addresses_of_links(self, window: Vantreo, box: Atspi.Accessible) -> list[str]:
        """Clicks each line of the box's links; returns what that opens, a link of two lines once.

        The box must show the same as before.
        """
        before = window.picture(box)
        corner = place_on_screen(box)
        addresses = []
        for x, y in find_links(before):
            click_at(corner.x + x, corner.y + y)
            addresses.append(self.next_page())
        self.assertEqual(window.picture(box).get_pixels(), before.get_pixels())
        return list(dict.fromkeys(addresses))

    def next_page(self) -> str:
        """The only address that the browser was given since the last call."""
        pages = self.wait_for_pages(self.pages_seen + 1)[self.pages_seen :]
        self.assertEqual(len(pages), 1, pages)
        self.pages_seen += 1
        return pages[0]

    def assert_leads_to(self, window: Vantreo, *paths: str) -> None:
        """The links and the button must open exactly these pages, in the order of their places."""
        window.open_page(Page.OPTIONS)
        addresses = self.addresses_of_links(window, window.translations_box)
        addresses += self.addresses_of_links(window, window.subtitle_box)
        window.open_page(Page.ABOUT)
        addresses += self.addresses_of_links(window, window.about_box)
        click(window.donate_button)
        addresses.append(self.next_page())
        self.assertEqual(addresses, [SITE + path for path in paths])

    def assert_leads_to_french_pages(self, window: Vantreo) -> None:
        self.assert_leads_to(
            window,
            "FR/Traductions",
            "FR/Comment_ajouter_les_sous-titres_a_la_video_iPhone",
            "FR/Remerciements",
            "FR/Contact",
            "FR/Faire_un_Don",
        )

    def assert_leads_to_english_pages(self, window: Vantreo) -> None:
        self.assert_leads_to(
            window,
            "Translations",
            "How_to_add_subtitles_to_the_iPhone_video",
            "Greetings",
            "Contact",
            "Donate",
        )

    def switch(self, window: Vantreo, language: str) -> None:
        window.open_page(Page.OPTIONS)
        window.choose(window.language_box, language)
        wait_for(lambda: window.language_box.get_name() == language, language)

    def test_links_of_a_french_system_and_after_a_switch(self) -> None:
        window = self.open_window(LANG="fr_FR.UTF-8")
        self.assert_leads_to_french_pages(window)
        self.switch(window, "Deutsch")
        self.assert_leads_to_english_pages(window)
        self.close_window(window)
        self.assertEqual(len(self.opened_pages()), self.pages_seen)

    def test_links_of_another_language_and_after_a_switch(self) -> None:
        self.write_settings(Language="Español")
        window = self.open_window()
        self.assert_leads_to_english_pages(window)
        self.switch(window, "Français")
        self.assert_leads_to_french_pages(window)
        self.close_window(window)
        self.assertEqual(len(self.opened_pages()), self.pages_seen)

    def assert_browser_gets(self, variable: str, value: str) -> None:
        """The browser of a German window gets the variable as the window was started with it."""
        self.write_settings(Language="Deutsch")
        for environment in ({}, {variable: value}):
            with self.subTest(**environment):
                window = self.open_window(**environment)
                window.open_page(Page.ABOUT)
                click(window.donate_button)
                self.next_page()
                self.assertEqual(self.seen_by_browser(variable), environment.get(variable))
                self.close_window(window)

    def test_the_browser_gets_the_users_languages(self) -> None:
        self.assert_browser_gets("LANGUAGE", "fr")

    def test_the_browser_gets_the_users_encoding_of_file_names(self) -> None:
        self.assert_browser_gets("G_FILENAME_ENCODING", "KOI8-R")


if __name__ == "__main__":
    unittest.main()
