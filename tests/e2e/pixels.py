"""Finds in screenshots of the window what the accessibility bus does not report."""

from collections import Counter
from itertools import groupby
from typing import NamedTuple

import gi

gi.require_version("Gtk", "3.0")
from driver import GdkPixbuf  # noqa: E402
from gi.repository import Gtk, Pango  # noqa: E402

Colour = tuple[int, int, int]

# The font of the program's texts.
FONT, DPI = "Sans 10", 85
# Longer than any stroke of a letter.
SHORTEST_UNDERLINE = 20
# From an underline up into its letters.
ABOVE_UNDERLINE = 3


class Drawing(NamedTuple):
    """What differs from a picture's background: where, and in which colours."""

    background: Colour
    left: int
    top: int
    right: int
    bottom: int
    colours: set[Colour]


def rows_of(picture: GdkPixbuf.Pixbuf) -> list[list[Colour]]:
    data, stride = picture.get_pixels(), picture.get_rowstride()
    step = picture.get_n_channels()
    rows = []
    for start in range(0, stride * picture.get_height(), stride):
        row = data[start : start + step * picture.get_width()]
        rows.append(list(zip(row[0::step], row[1::step], row[2::step])))
    return rows


def find_drawing(picture: GdkPixbuf.Pixbuf) -> Drawing | None:
    """What the picture shows on its background, its most common colour; None if nothing."""
    rows = rows_of(picture)
    counts = Counter()
    for row in rows:
        counts.update(row)
    background = counts.most_common(1)[0][0]
    blank = [background] * picture.get_width()
    places = [
        (x, y)
        for y, row in enumerate(rows)
        if row != blank
        for x, colour in enumerate(row)
        if colour != background
    ]
    if not places:
        return None
    columns, lines = zip(*places)
    return Drawing(
        background, min(columns), min(lines), max(columns), max(lines), set(counts) - {background}
    )


def width_of(words: str) -> int:
    """The width of a text in pixels, as the program draws it."""
    Gtk.Settings.get_default().set_property("gtk-xft-dpi", DPI * 1024)
    layout = Gtk.Label().create_pango_layout(words)
    layout.set_font_description(Pango.FontDescription(FONT))
    ink, _ = layout.get_pixel_extents()
    return ink.width


def is_blue(colour: Colour) -> bool:
    """Whether it is the blue of a link, which an underline shows blended with the background."""
    red, green, blue = colour
    return blue - max(red, green) > 25


def contrast(one: Colour, other: Colour) -> float:
    """The contrast ratio of two colours by the Web Content Accessibility Guidelines 2.1."""

    def linear(channel: int) -> float:
        value = channel / 255
        return value / 12.92 if value <= 0.03928 else ((value + 0.055) / 1.055) ** 2.4

    def luminance(colour: Colour) -> float:
        red, green, blue = map(linear, colour)
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue

    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def find_links(picture: GdkPixbuf.Pixbuf) -> list[tuple[int, int]]:
    """A place in each underlined line of link text, from the top."""
    places = []
    for y, row in enumerate(rows_of(picture)):
        groups = groupby(range(len(row)), lambda x: is_blue(row[x]))
        runs = (list(columns) for blue, columns in groups if blue)
        longest = max(runs, key=len, default=[])
        if len(longest) >= SHORTEST_UNDERLINE:
            places.append((longest[len(longest) // 2], y - ABOVE_UNDERLINE))
    return places
