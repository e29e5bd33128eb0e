"""What only screenshots show: HTML boxes blend into their pages, and their texts are readable."""

import os
import unittest
from collections import Counter

from driver import Atspi, GdkPixbuf, Page, Vantreo, place_on_screen, press_key
from pixels import Colour, contrast, rows_of
from window_case import WindowCase

THEMES = ("Adwaita", "Adwaita:dark", "HighContrast")
SCALE = int(os.environ.get("SCALE", 1))
# The contrast that the Web Content Accessibility Guidelines (AA) require of text.
READABLE = 4.5
# So many pixels around a box must have its background colour; beyond, the next control starts.
MARGIN = SCALE


def outline(picture: GdkPixbuf.Pixbuf) -> set[Colour]:
    """The colours of the picture's upper, lower and right edges, `MARGIN` deep."""
    rows = rows_of(picture)
    edges = rows[:MARGIN] + rows[-MARGIN:] + [row[-MARGIN:] for row in rows]
    return {colour for row in edges for colour in row}


class Look(WindowCase):
    def picture_around(
        self, window: Vantreo, page: GdkPixbuf.Pixbuf, box: Atspi.Accessible
    ) -> GdkPixbuf.Pixbuf:
        """The box in the picture of its page, with some of the page around it, except on its left,
        where the window may end."""
        area, place = place_on_screen(window.frame), place_on_screen(box)
        return page.new_subpixbuf(
            (place.x - area.x) * SCALE + MARGIN,
            (place.y - area.y) * SCALE - MARGIN,
            place.width * SCALE,
            place.height * SCALE + 2 * MARGIN,
        )

    def assert_blends(self, picture: GdkPixbuf.Pixbuf, page_colour: Colour) -> None:
        self.assertEqual(outline(picture), {page_colour})
        (background, _), *_ = Counter(
            colour for row in rows_of(picture) for colour in row
        ).most_common(1)
        self.assertEqual(background, page_colour)

    def assert_readable(self, picture: GdkPixbuf.Pixbuf, background: Colour, texts: bool) -> None:
        """Letters are blended with the background, but somewhere each ink is full: the link's, which
        has a hue, and the text's, if there are `texts`."""
        colours = {colour for row in rows_of(picture) for colour in row} - {background}
        links = {colour for colour in colours if max(colour) - min(colour) > 60}
        for inks in (links, colours - links) if texts else (links,):
            best = max((contrast(ink, background) for ink in inks), default=0)
            self.assertGreaterEqual(best, READABLE)

    def test_html_boxes_blend_into_their_page_and_can_be_read(self) -> None:
        for theme in THEMES:
            for language in ("English", "Deutsch"):
                with self.subTest(theme=theme, language=language):
                    self.write_settings(Language=language)
                    self.look_at_boxes(theme)

    def look_at_boxes(self, theme: str) -> None:
        window = self.open_window(GTK_THEME=theme, GDK_SCALE=str(SCALE))
        window.open_next_page(Page.OPTIONS)
        self.look_at_page(window, [window.translations_box, window.subtitle_box], texts=False)
        window.open_next_page(Page.ABOUT)
        # Focus the title: the mark of a focused link has the colour of the texts.
        press_key("shift+Tab")
        self.look_at_page(window, [window.about_box], texts=True)
        self.close_window(window)

    def look_at_page(self, window: Vantreo, boxes: list[Atspi.Accessible], texts: bool) -> None:
        picture = window.picture()
        # The lower right corner is empty on each page.
        page_colour = rows_of(picture)[-20 * SCALE][-20 * SCALE]
        for box in boxes:
            part = self.picture_around(window, picture, box)
            self.assert_blends(part, page_colour)
            self.assert_readable(part, page_colour, texts)


if __name__ == "__main__":
    unittest.main()
