"""Drives the program's real window from outside, as a user does.

It reads the window from the accessibility bus and acts on it with the pointer and the keyboard. Use
it inside tests/with_display.

The bus's client library caches what it reads, so the cache is cleared before each reading.
"""

import contextlib
import os
import random
import subprocess
import sys
import time
from collections.abc import Callable, Iterable, Iterator, Mapping
from enum import IntEnum
from functools import cached_property
from pathlib import Path
from typing import IO, Self, TypeVar

import gi

gi.require_version("Atspi", "2.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Atspi, Gdk, GdkPixbuf, GLib  # noqa: E402

BUILD = Path(os.environ["VANTREO_BUILD"])
# The command that starts the program: the launcher of the build, or an installed command.
LAUNCHER = os.environ.get("VANTREO_COMMAND", BUILD / "bin" / "vantreo")
DRAG_SOURCE = Path(__file__).with_name("drag_source.py")
POLL_SECONDS = 0.04
# Longer than the toolkit takes to fade a control from one state to another.
REST_SECONDS = 0.3
# Longer than the toolkit's double-click time.
DOUBLE_CLICK_SECONDS = 0.45
# From the right edge of a combo box to the middle of its arrow.
ARROW_PIXELS = 8

Value = TypeVar("Value")


class NotSeen(AssertionError):
    """Something did not appear before its deadline."""


def wait_for(condition: Callable[[], Value], what: str, seconds: float = 15) -> Value:
    """Returns the condition's first true value; raises NotSeen(what) at the deadline."""
    deadline = time.monotonic() + seconds
    while True:
        # A control may disappear while it is being read.
        with contextlib.suppress(GLib.Error):
            if value := condition():
                return value
        if time.monotonic() > deadline:
            raise NotSeen(f"not seen within {seconds} s: {what}")
        time.sleep(POLL_SECONDS)


def processes(name: str) -> list[int]:
    """The ids of the running processes of that name."""
    found = []
    for stat in Path("/proc").glob("[0-9]*/stat"):
        with contextlib.suppress(OSError):
            pid, rest = stat.read_text().split(" (", 1)
            command, state = rest.rsplit(") ", 1)
            if command == name and state[0] not in "ZX":
                found.append(int(pid))
    return found


# ---- pointer and keyboard ------------------------------------------------------------------------


def xdotool(*arguments: object) -> None:
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def press_key(name: str) -> None:
    xdotool("key", name)


@contextlib.contextmanager
def holding(key: str) -> Iterator[None]:
    """Keeps a key down."""
    xdotool("keydown", key)
    try:
        yield
    finally:
        xdotool("keyup", key)


def type_text(text: str) -> None:
    xdotool("type", "--delay", 5, text)


def place_on_screen(control: Atspi.Accessible) -> Atspi.Rect:
    """The control's place, once it is laid out: before, the bus reports a wrong one."""

    def place() -> Atspi.Rect | None:
        box = control.get_extents(Atspi.CoordType.SCREEN)
        return box if box.x >= 0 and box.y >= 0 and box.width > 0 else None

    return wait_for(place, "the place of a control")


def middle(control: Atspi.Accessible) -> tuple[int, int]:
    box = place_on_screen(control)
    return box.x + box.width // 2, box.y + box.height // 2


_last_click = 0.0


def click_at(x: int, y: int, times: int = 1) -> None:
    """Clicks, long enough after the last click not to make a double click."""
    time.sleep(max(0, _last_click + DOUBLE_CLICK_SECONDS - time.monotonic()))
    click_at_once(x, y, times)


def click_at_once(x: int, y: int, times: int = 1) -> None:
    """Clicks, which may be the second click of a double click."""
    global _last_click
    xdotool("mousemove", x, y, "click", "--repeat", times, "--delay", 50, 1)
    _last_click = time.monotonic()


def click(control: Atspi.Accessible, times: int = 1) -> None:
    click_at(*middle(control), times)


# ---- controls ------------------------------------------------------------------------------------


def descendants(control: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    for index in range(control.get_child_count()):
        if child := control.get_child_at_index(index):
            yield child
            yield from descendants(child)


def has_state(control: Atspi.Accessible, state: Atspi.StateType) -> bool:
    return control.get_state_set().contains(state)


def picture_of(x: int, y: int, width: int, height: int) -> GdkPixbuf.Pixbuf:
    """A screenshot of that part of the screen."""
    return Gdk.pixbuf_get_from_window(Gdk.get_default_root_window(), x, y, width, height)


class Program:
    """The program, started through its launcher, whatever it shows.

    A context manager: leaving it kills the program if that still runs.
    """

    def __init__(
        self,
        folder: Path | None = None,
        environment: Mapping[str, str] | None = None,
        console: IO[bytes] | None = None,
        *,
        launcher: Path = LAUNCHER,
        processors: int | None = 1,
    ) -> None:
        """Starts the program in `folder`, or the current one, with these additions to the
        environment. Its error stream goes to `console`, or to that of the test.

        It gets one processor, so that a conversion lasts about as long on every machine; with None
        it gets them all.
        """
        # At its first key the display changes its keyboard, and the window manager releases
        # its key grabs for a moment. It has them back before it manages the program's window.
        press_key("Shift_L")
        usable = list(os.sched_getaffinity(0))
        chosen = random.sample(usable, processors or len(usable))
        # The bus reports places in the program's units, each that many pixels wide and high.
        self.scale = int((environment or {}).get("GDK_SCALE", 1))
        self._clickable_dialog: Atspi.Accessible | None = None
        self.started = time.monotonic()
        self._process = subprocess.Popen(
            ["taskset", "--cpu-list", ",".join(map(str, chosen)), launcher],
            cwd=folder,
            env=os.environ | dict(environment or {}),
            stderr=console,
        )
        try:
            self._wait_until_usable()
        except BaseException:
            self._kill()
            raise

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *_: object) -> None:
        self._kill()

    def _wait_until_usable(self) -> None:
        """For windows that need more than a started program."""

    @property
    def pid(self) -> int:
        return self._process.pid

    def _kill(self) -> None:
        self._process.kill()
        self._process.wait()

    @cached_property
    def _application(self) -> Atspi.Accessible:
        return wait_for(self._find_application, "the program")

    def _find_application(self) -> Atspi.Accessible | None:
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self._process.pid:
                return application
        return None

    def _windows(self) -> list[Atspi.Accessible]:
        application = self._application
        application.clear_cache()
        windows = map(application.get_child_at_index, range(application.get_child_count()))
        return [window for window in windows if window]

    # ---- what is shown ---------------------------------------------------------------------------

    @property
    def frame(self) -> Atspi.Accessible:
        return next(w for w in self._windows() if w.get_role() == Atspi.Role.FRAME)

    @property
    def dialog(self) -> Atspi.Accessible | None:
        """The dialog or message box in front of the window, once it accepts input."""
        for window in self._windows():
            if window.get_role() != Atspi.Role.FRAME and has_state(window, Atspi.StateType.ACTIVE):
                return window
        return None

    @property
    def is_ready(self) -> bool:
        """Whether the window accepts input and is where the program moves it after it appears."""
        x, y = middle(self.frame)
        screen = Gdk.get_default_root_window()
        off = abs(x * self.scale - screen.get_width() // 2)
        down = abs(y * self.scale - screen.get_height() // 2)
        centred = max(off, down) <= self.scale
        return centred and has_state(self.frame, Atspi.StateType.ACTIVE)

    def controls(self, role: Atspi.Role) -> list[Atspi.Accessible]:
        self._application.clear_cache()
        return [c for c in descendants(self._application) if c.get_role() == role]

    @property
    def focused_control(self) -> Atspi.Accessible | None:
        """The control of the window that has the focus."""
        frame = self.frame
        frame.clear_cache()
        return next((c for c in descendants(frame) if has_state(c, Atspi.StateType.FOCUSED)), None)

    def picture_inside(self) -> GdkPixbuf.Pixbuf | None:
        """The window without its frame, as the screen shows it now; None before it appears.

        Works while the program does not answer, as long as there is no other window.
        """
        for window in Gdk.Screen.get_default().get_window_stack():
            _, x, y = window.get_origin()
            return picture_of(x, y, window.get_width(), window.get_height())
        return None

    def picture(self, control: Atspi.Accessible | None = None) -> GdkPixbuf.Pixbuf:
        """The control, or the window with its frame, as the screen shows it at rest."""
        box = place_on_screen(control or self.frame)
        picture, since = None, 0.0

        def at_rest() -> bool:
            nonlocal picture, since
            last = picture
            picture = picture_of(*(n * self.scale for n in (box.x, box.y, box.width, box.height)))
            if last is None or last.get_pixels() != picture.get_pixels():
                since = time.monotonic()
            return time.monotonic() - since > REST_SECONDS

        wait_for(at_rest, "a window at rest")
        return picture

    # ---- dialogs ---------------------------------------------------------------------------------

    def wait_for_keyboard_dialog(self) -> Atspi.Accessible:
        """The dialog once it accepts keys."""
        return wait_for(lambda: self.dialog, "a dialog")

    def wait_for_dialog(self) -> Atspi.Accessible:
        """The dialog once it also accepts clicks, which it ignores within the double-click time."""
        dialog = self.wait_for_keyboard_dialog()
        if dialog != self._clickable_dialog:
            time.sleep(DOUBLE_CLICK_SECONDS)
            self._clickable_dialog = dialog
        return dialog

    def leave_dialog(self) -> None:
        """Waits for a dialog and closes it with Escape."""
        self.wait_for_keyboard_dialog()
        press_key("Escape")
        self.wait_for_no_dialog()
        self.wait_for_active()

    def wait_for_no_dialog(self) -> None:
        wait_for(lambda: self.dialog is None, "the end of the dialog")

    def wait_for_active(self) -> None:
        """Waits until the window accepts input and no closed dialog covers it."""
        wait_for(lambda: has_state(self.frame, Atspi.StateType.ACTIVE), "an active window")

    def dialog_button(self, name: str) -> Atspi.Accessible:
        return next(
            control
            for control in descendants(self.wait_for_dialog())
            if control.get_role() == Atspi.Role.PUSH_BUTTON and control.get_name() == name
        )

    def answer(self, button: str) -> str:
        """Presses a button of the message box in front of the window; returns the box's text."""
        controls = descendants(self.wait_for_dialog())
        labels = [c.get_name() for c in controls if c.get_role() == Atspi.Role.LABEL]
        click(self.dialog_button(button))
        self.wait_for_no_dialog()
        return "\n".join(filter(None, labels))

    # ---- the end ---------------------------------------------------------------------------------

    def close(self) -> None:
        """Asks the window manager to close the window."""
        press_key("alt+F4")

    def wait_for_end(self, seconds: float = 15) -> int:
        """Returns the program's exit status."""
        return self._process.wait(seconds)


class Page(IntEnum):
    CONVERT = 0
    OPTIONS = 1
    ABOUT = 2


class Vantreo(Program):
    """The program once it shows its three pages."""

    def _wait_until_usable(self) -> None:
        wait_for(lambda: len(self._tabs()) == len(Page), "the pages")
        wait_for(lambda: self.is_ready, "an active window in the middle of the screen")
        self._pages = [tab.get_child_at_index(0) for tab in self._tabs()]

    def _tabs(self) -> list[Atspi.Accessible]:
        return self.controls(Atspi.Role.PAGE_TAB)

    def _control(
        self, role: Atspi.Role, index: int = 0, page: Page = Page.CONVERT
    ) -> Atspi.Accessible:
        """The page's control with that role and index."""
        panel = self._pages[page]
        panel.clear_cache()
        controls = map(panel.get_child_at_index, range(panel.get_child_count()))
        return [control for control in controls if control.get_role() == role][index]

    # ---- the controls ----------------------------------------------------------------------------

    @property
    def movie_list(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.SCROLL_PANE).get_child_at_index(0)

    def movie_entry(self, row: int) -> Atspi.Accessible:
        return Atspi.Table.get_accessible_at(self.movie_list, row, 0)

    @property
    def output_field(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.TEXT)

    @property
    def movies_button(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PUSH_BUTTON, 0)

    @property
    def output_button(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PUSH_BUTTON, 1)

    @property
    def convert_button(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PUSH_BUTTON, 2)

    @property
    def progress_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PANEL)

    @property
    def progress_bar(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PROGRESS_BAR)

    @property
    def language_label(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.LABEL, 0, Page.OPTIONS)

    @property
    def language_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.COMBO_BOX, 0, Page.OPTIONS)

    @property
    def translations_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.SCROLL_PANE, 0, Page.OPTIONS)

    @property
    def device_label(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.LABEL, 1, Page.OPTIONS)

    @property
    def device_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.COMBO_BOX, 1, Page.OPTIONS)

    @property
    def subtitle_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.SCROLL_PANE, 1, Page.OPTIONS)

    @property
    def overwrite_check(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.CHECK_BOX, 0, Page.OPTIONS)

    @property
    def how_to_move_check(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.CHECK_BOX, 1, Page.OPTIONS)

    @property
    def about_box(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.SCROLL_PANE, 0, Page.ABOUT)

    def links(self, box: Atspi.Accessible) -> list[Atspi.Accessible]:
        """The links of an HTML box, in reading order."""
        box.clear_cache()
        return [c for c in descendants(box) if c.get_role() == Atspi.Role.LINK]

    @property
    def donate_button(self) -> Atspi.Accessible:
        return self._control(Atspi.Role.PUSH_BUTTON, 0, Page.ABOUT)

    # ---- what the window shows -------------------------------------------------------------------

    @property
    def title(self) -> str:
        return self.frame.get_name()

    @property
    def page_titles(self) -> list[str]:
        return [tab.get_name() for tab in self._tabs()]

    @property
    def movie_count(self) -> int:
        return Atspi.Table.get_n_rows(self.movie_list)

    @property
    def movies(self) -> list[str]:
        return [self.movie_entry(row).get_name() for row in range(self.movie_count)]

    @property
    def output_folder(self) -> str:
        return Atspi.Text.get_text(self.output_field, 0, -1)

    @property
    def status(self) -> str:
        return self._control(Atspi.Role.LABEL, 0).get_name()

    @property
    def percent(self) -> str:
        return self._control(Atspi.Role.LABEL, 1).get_name()

    @property
    def elapsed_label(self) -> str:
        return self._control(Atspi.Role.LABEL, 2).get_name()

    @property
    def elapsed(self) -> str:
        return self._control(Atspi.Role.LABEL, 3).get_name()

    @property
    def remaining_label(self) -> str:
        return self._control(Atspi.Role.LABEL, 4).get_name()

    @property
    def remaining(self) -> str:
        return self._control(Atspi.Role.LABEL, 5).get_name()

    @property
    def gauge(self) -> float:
        """The filled share of the progress bar, from 0 to 1."""
        return Atspi.Value.get_current_value(self.progress_bar)

    @property
    def is_running(self) -> bool:
        return self.convert_button.get_name() == "Cancel"

    # ---- what a user does ------------------------------------------------------------------------

    def open_page(self, page: Page) -> None:
        click(self._tabs()[page])
        self._wait_for_page(page)

    def open_next_page(self, page: Page) -> None:
        """Switches with the keyboard to `page`, which must be the one after the current page."""
        press_key("ctrl+Next")
        self._wait_for_page(page)

    def open_previous_page(self, page: Page) -> None:
        """The same, to the page before."""
        press_key("ctrl+Prior")
        self._wait_for_page(page)

    def _wait_for_page(self, page: Page) -> None:
        panel = self._pages[page]

        def is_shown() -> bool:
            panel.clear_cache()
            return has_state(panel, Atspi.StateType.SHOWING)

        wait_for(is_shown, f"the {page.name} page")

    def entries(self, box: Atspi.Accessible) -> list[Atspi.Accessible]:
        """The entries of a combo box's list."""
        return [c for c in descendants(box) if c.get_role() == Atspi.Role.MENU_ITEM]

    def is_open(self, box: Atspi.Accessible) -> bool:
        """Whether a combo box shows its list."""
        entry = self.entries(box)[0]
        entry.clear_cache()
        return has_state(entry, Atspi.StateType.SHOWING)

    def choose(self, box: Atspi.Accessible, name: str) -> None:
        """Opens a combo box with its arrow and presses the entry of that name."""
        area = place_on_screen(box)
        click_at(area.x + area.width - ARROW_PIXELS, area.y + area.height // 2)
        wait_for(lambda: self.is_open(box), "the open list")
        click(next(entry for entry in self.entries(box) if entry.get_name() == name))
        wait_for(lambda: not self.is_open(box), "the end of the list")

    def wait_for_status(self, status: str, seconds: float = 15) -> None:
        wait_for(lambda: self.status == status, f'the status "{status}"', seconds)

    def press_convert(self) -> None:
        click(self.convert_button)

    def convert(self) -> None:
        """Converts the movies of the list; the run must succeed."""
        self.press_convert()
        self.wait_for_status("Conversion completed!", 60)

    def wait_for_files(self, names: Iterable[str]) -> list[Atspi.Accessible]:
        """Waits until the open file or folder dialog lists these names; returns their entries."""
        dialog = self.wait_for_dialog()

        def find_entries() -> list[Atspi.Accessible] | None:
            dialog.clear_cache()
            cells = [c for c in descendants(dialog) if c.get_role() == Atspi.Role.TABLE_CELL]
            found = {cell.get_name(): cell for cell in cells}
            return [found[name] for name in names] if found.keys() >= set(names) else None

        return wait_for(find_entries, f"{names} in the dialog")

    def enter_path(self, path: Path) -> None:
        """Types a path into the open file or folder dialog and accepts it."""
        dialog = self.wait_for_dialog()
        type_text(str(path))

        def is_entered(control: Atspi.Accessible) -> bool:
            # The dialog may add a slash to the name of a folder.
            return (
                control.get_role() == Atspi.Role.TEXT
                and Atspi.Text.get_text(control, 0, -1).rstrip("/") == str(path)
                and has_state(control, Atspi.StateType.FOCUSED)
            )

        wait_for(lambda: any(map(is_entered, descendants(dialog))), f"{path} in the dialog")
        press_key("Return")
        self.wait_for_no_dialog()

    def type_output_folder(self, folder: Path) -> None:
        click(self.output_field)
        press_key("ctrl+a")
        type_text(str(folder))
        wait_for(lambda: self.output_folder == str(folder), f"{folder} in the output field")

    def drop(self, paths: Iterable[Path], target: Atspi.Accessible) -> float:
        """Drags files from another window onto a control.

        Returns the reading of the monotonic clock just before the mouse button is released.
        """
        x, y = middle(target)
        with subprocess.Popen(
            [sys.executable, DRAG_SOURCE], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        ) as source:

            def expect(word: str) -> None:
                # After a timeout, the source ends with another word.
                if (seen := source.stdout.readline().strip()) != word:
                    raise NotSeen(f'not seen in the drag: "{word}", but "{seen}"')

            source.stdin.write("\0".join(map(str, paths)))
            source.stdin.close()
            try:
                expect("ready")
                xdotool("mousemove", 30, 30, "mousedown", 1)
                xdotool("mousemove", 50, 50)
                expect("begun")
                xdotool("mousemove", x, y)
                expect("accepted")
                released = time.monotonic()
                xdotool("mouseup", 1)
                expect("dropped")
            except BaseException:
                xdotool("mouseup", 1)
                source.kill()
                raise
        return released
