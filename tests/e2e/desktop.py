"""The program's window in a desktop session, seen and driven from outside.

To be used inside tests/with_session. Places are those of the display in which the session is nested,
in its pixels. On a Wayland session the accessibility bus counts places from the corner of a window's
surface, and nothing but a picture shows where that is: the session is black where no window is.
"""

import os
from collections.abc import Iterator
from typing import NamedTuple, Self

from driver import (
    Atspi,
    Gdk,
    Page,
    Vantreo,
    descendants,
    has_state,
    picture_of,
    press_key,
    wait_for,
    xdotool,
)

SESSION = os.environ["VANTREO_SESSION"]
SCALE = float(os.environ.get("VANTREO_SCALE", "1"))
SIZE = 770, 385
# A channel of a pixel that is brighter than this belongs to a window, not to its shadow.
DARK = 5


class Box(NamedTuple):
    """Columns left to right and rows top to bottom, without the last ones."""

    left: int
    top: int
    right: int
    bottom: int

    @classmethod
    def of(cls, extents: Atspi.Rect) -> Self:
        return cls(extents.x, extents.y, extents.x + extents.width, extents.y + extents.height)

    @property
    def size(self) -> tuple[int, int]:
        return self.right - self.left, self.bottom - self.top

    def contains(self, other: "Box") -> bool:
        return (
            self.left <= other.left
            and self.top <= other.top
            and other.right <= self.right
            and other.bottom <= self.bottom
        )


def lit_box() -> Box | None:
    """The part of the display that is not black; None where all of it is."""
    screen = Gdk.get_default_root_window()
    picture = picture_of(0, 0, screen.get_width(), screen.get_height())
    width, stride = picture.get_width() * picture.get_n_channels(), picture.get_rowstride()
    data, step = picture.get_pixels(), picture.get_n_channels()
    is_lit = bytes(n > DARK for n in range(256))
    lines = [data[y * stride :][:width].translate(is_lit) for y in range(picture.get_height())]
    rows = [y for y, line in enumerate(lines) if 1 in line]
    if not rows:
        return None
    left = min(lines[y].index(1) for y in rows) // step
    right = max(lines[y].rindex(1) for y in rows) // step
    return Box(left, rows[0], right + 1, rows[-1] + 1)
