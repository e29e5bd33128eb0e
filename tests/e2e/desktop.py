"""Watches and drives the program's window in a desktop session from outside.

To be used inside tests/with_session. Places are those of the display in which the session is nested,
in its pixels. On a Wayland session the accessibility bus counts places from the corner of a window's
surface; where that is, only a picture shows. What is brighter than the empty desktop is the window:
its shadow is darker.
"""

import contextlib
import os
import subprocess
import time
from collections.abc import Callable, Iterator
from functools import cache
from pathlib import Path
from typing import NamedTuple, Self

from driver import (
    REST_SECONDS,
    Atspi,
    Gdk,
    NotSeen,
    Page,
    Vantreo,
    click_at,
    descendants,
    has_state,
    picture_of,
    wait_for,
    xdotool,
)

SESSION = os.environ["VANTREO_SESSION"]
BACKEND = os.environ["VANTREO_BACKEND"]
SCALE = float(os.environ.get("VANTREO_SCALE", "1"))
SIZE = 770, 385
# Whether the session adds its own title bar to the size that a program asks for.
DRAWS_TITLE_BARS = SESSION in ("sway", "kwin")
# The rows at the top where a desktop has a panel, which may show the program's name.
PANEL = round(40 * SCALE) if SESSION in ("gnome", "gnome-x11", "xfce") else 0
# The delay between two parts of a desktop with a panel while it starts.
BUILD_UP_SECONDS = 2
# The program's environment in the session. On X11 a session's scale is that of its programs.
ENVIRONMENT = {"GDK_BACKEND": BACKEND}
if BACKEND == "x11":
    ENVIRONMENT["GDK_SCALE"] = str(round(SCALE))
# Channels of the toolkit's default theme: the background, and the text of a window that need not be
# the active one.
LIGHT, DARK = 230, 170
# Higher than any session's own title bar, with its borders.
DISPLAY_TITLE_BAR = 60 * SCALE
# A pixel's channels in a picture of the display.
CHANNELS = 3
# How often, and for how long each, a click is tried.
CLICKS, CLICK_SECONDS = 3, 4
# How much brighter than the desktop a window's pixel must be, of 255.
FAINT = 8


class Box(NamedTuple):
    """Columns left to right and rows top to bottom, excluding the last ones."""

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


def display_rows() -> list[bytes]:
    """The current bytes of the display's pixels."""
    screen = Gdk.get_default_root_window()
    picture = picture_of(0, 0, screen.get_width(), screen.get_height())
    data, stride = picture.get_pixels(), picture.get_rowstride()
    width = picture.get_width() * picture.get_n_channels()
    return [
        data[start : start + width] for start in range(0, stride * picture.get_height(), stride)
    ]


def move_pointer_to_middle() -> None:
    """Moves through the corner, where every compositor agrees with the display.

    weston adds up pointer motions and may have missed the initial position.
    """
    screen = Gdk.get_default_root_window()
    xdotool("mousemove", 0, 0)
    xdotool("mousemove", screen.get_width() // 2, screen.get_height() // 2)


@cache
def empty_desktop() -> list[bytes]:
    """Records the display without a window. Call before the first window is opened."""
    move_pointer_to_middle()
    rows, since = [], 0.0

    def is_painted() -> bool:
        nonlocal rows, since
        last, rows = rows, display_rows()
        if last != rows:
            since = time.monotonic()
        # Most nested sessions start with a black window.
        has_begun = BACKEND == "x11" or SESSION == "kwin" or any(map(any, rows))
        return has_begun and time.monotonic() - since > (
            BUILD_UP_SECONDS if PANEL else REST_SECONDS
        )

    wait_for(is_painted, "an empty desktop", 30)
    return rows


def window_box() -> Box | None:
    """The place of the window on the display, without its shadow; None if there is none."""
    tops, lefts, rights = [], [], []
    for y, (empty, row) in enumerate(zip(empty_desktop(), display_rows())):
        if row == empty or y < PANEL:
            continue
        bright = [
            i // CHANNELS for i, (old, new) in enumerate(zip(empty, row)) if new > old + FAINT
        ]
        if bright:
            tops.append(y)
            lefts.append(bright[0])
            rights.append(bright[-1])
    return Box(min(lefts), tops[0], max(rights) + 1, tops[-1] + 1) if tops else None


def wait_for_empty_desktop() -> None:
    """Waits until no window of an earlier program is visible; some fade out."""
    empty_desktop()
    move_pointer_to_middle()
    wait_for(lambda: window_box() is None, "a desktop without a window")


def find_window() -> Box | None:
    """The place of a window of the right size; None if there is none."""
    box = window_box()
    if box is None:
        return None
    more = [side - round(wanted * SCALE) for side, wanted in zip(box.size, SIZE)]
    most = DISPLAY_TITLE_BAR if DRAWS_TITLE_BARS else SCALE - 1
    return box if all(1 - SCALE <= n <= most for n in more) else None


def label_pixels(box: Box) -> bytes:
    """The middle of a window there, where the check screen has its label."""
    rows, middle = round(80 * SCALE), (box.top + box.bottom) // 2
    edge = round(10 * SCALE)
    width = box.size[0] - 2 * edge
    return picture_of(box.left + edge, middle - rows, width, 2 * rows).get_pixels()


def sees_text() -> bool:
    """Whether a window of the right size shows dark text on something light in its middle."""
    box = find_window()
    if box is None:
        return False
    pixels = label_pixels(box)
    return pixels[0] > LIGHT and min(pixels) < DARK


def boxes(control: Atspi.Accessible) -> Iterator[tuple[str, Box]]:
    """The visible children of the control: name or role, and place in the window's surface."""
    for child in descendants(control):
        if has_state(child, Atspi.StateType.SHOWING):
            box = Box.of(child.get_extents(Atspi.CoordType.WINDOW))
            yield child.get_name() or child.get_role_name(), box


class DesktopWindow(Vantreo):
    """The program in the session that the test runs in."""

    def __init__(self, **environment: str) -> None:
        wait_for_empty_desktop()
        super().__init__(environment=ENVIRONMENT | environment)

    def _wait_until_usable(self) -> None:
        super()._wait_until_usable()
        # A click before it is painted goes elsewhere.
        wait_for(lambda: self._is_at_rest(), "a window that stays where it is")

    @property
    def is_ready(self) -> bool:
        return has_state(self.frame, Atspi.StateType.ACTIVE)

    def _is_at_rest(self) -> bool:
        before, self.box = getattr(self, "box", None), window_box()
        time.sleep(REST_SECONDS)
        return before is not None and before == self.box

    @property
    def parts(self) -> Box:
        """The title bar, if GTK draws one, and the rest, in the window's surface."""
        children = [self.frame.get_child_at_index(i) for i in range(self.frame.get_child_count())]
        found = [Box.of(child.get_extents(Atspi.CoordType.WINDOW)) for child in children]
        lefts, tops, rights, bottoms = zip(*found)
        return Box(min(lefts), min(tops), max(rights), max(bottoms))

    @property
    def size(self) -> tuple[int, int]:
        """Its size in its own pixels, with the title bar.

        If a Wayland session draws it, without: a program cannot know its height there.
        """
        if DRAWS_TITLE_BARS:
            return self.parts.size
        # At scale 2 a window manager's title bar may have an odd number of the display's pixels.
        if all(abs(side - n * SCALE) < SCALE for side, n in zip(self.box.size, SIZE)):
            return SIZE
        return round(self.box.size[0] / SCALE), round(self.box.size[1] / SCALE)

    @property
    def off_centre(self) -> tuple[float, float]:
        """The distance of its centre from the display's."""
        screen = Gdk.get_default_root_window()
        x, y = (self.box.left + self.box.right) / 2, (self.box.top + self.box.bottom) / 2
        return abs(x - screen.get_width() / 2), abs(y - screen.get_height() / 2)

    def press(
        self, control: Atspi.Accessible, has_worked: Callable[[], object], clicks: int = CLICKS
    ) -> None:
        """Clicks the control where the session shows it, until that is seen, so often at most.

        A nested compositor takes the pointer for entering a window only at one of its next
        pictures, and loses a click before. It looks again whenever the pointer moves.
        """
        parts, place = self.parts, Box.of(control.get_extents(Atspi.CoordType.WINDOW))
        # Borders and a title bar that GTK does not draw are not part of it.
        border = (self.box.size[0] - round(parts.size[0] * SCALE)) / 2
        x = self.box.left + border + ((place.left + place.right) / 2 - parts.left) * SCALE
        y = self.box.bottom - border - (parts.bottom - (place.top + place.bottom) / 2) * SCALE
        for _ in range(clicks):
            xdotool("mousemove", round(x) - 5, round(y))
            click_at(round(x), round(y))
            with contextlib.suppress(NotSeen):
                wait_for(has_worked, f"the effect of {control.get_name()}", CLICK_SECONDS)
                return
        raise NotSeen(f"a click on {control.get_name()} at {round(x)}, {round(y)} has no effect")

    def press_convert(self) -> None:
        self.press(self.convert_button, lambda: self.is_running or self.status)

    def show_page(self, page: Page) -> None:
        Atspi.Selection.select_child(self._tabs()[page].get_parent(), page)
        self._wait_for_page(page)

    def enter_path(self, path: Path) -> None:
        if SESSION == "none":
            # The newest window; nothing else gives it the keyboard focus.
            self.wait_for_dialog()
            search = ("xdotool", "search", "--onlyvisible", "--maxdepth", "1", "--name", ".*")
            windows = subprocess.run(search, check=True, stdout=subprocess.PIPE, text=True).stdout
            xdotool("windowfocus", windows.split()[-1])
        super().enter_path(path)

    def outside(self) -> list[str]:
        """All controls of its pages that are not inside the window."""
        found = []
        for page in (Page.OPTIONS, Page.ABOUT, Page.CONVERT):
            self.show_page(page)
            area = Box.of(self._pages[page].get_extents(Atspi.CoordType.WINDOW))
            if not self.parts.contains(area):
                found.append(f"{page.name} page: {area} in {self.parts}")
            shown = list(boxes(self._pages[page]))
            if not shown:
                found.append(f"nothing on the {page.name} page")
            found += [f"{name}: {box} in {area}" for name, box in shown if not area.contains(box)]
        return found
