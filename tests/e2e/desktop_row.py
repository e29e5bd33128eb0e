"""Prints a row of the table of docs/desktops.md, about the session that it runs in.

Leaves the pictures of the check screen and the window as $VANTREO_PICTURES-check.png and
$VANTREO_PICTURES.png. Fails where one of its columns does. To be used inside tests/with_session.
"""

import os
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

from desktop import (
    BACKEND,
    DRAWS_TITLE_BARS,
    ENVIRONMENT,
    SCALE,
    SESSION,
    SIZE,
    DesktopWindow,
    empty_desktop,
    sees_text,
)
from driver import Gdk, GLib, NotSeen, Program, picture_of, wait_for
from samples import describe, make_movie
from site_server import SiteServer, http_reply, send_after

PICTURES = os.environ["VANTREO_PICTURES"]
RESULT = "h264 Constrained Baseline level 30 yuv420p, 320x240, 25.00 fps, 2 s"
YES, NO = "yes", "**no**"


def write_settings(output: Path) -> None:
    settings = Path(os.environ["XDG_CONFIG_HOME"]) / "Vantreo.ini"
    settings.write_text(f"Output={output}\nHowToMove=false\n")


def save_picture(suffix: str) -> None:
    screen = Gdk.get_default_root_window()
    picture = picture_of(0, 0, screen.get_width(), screen.get_height())
    picture.savev(f"{PICTURES}{suffix}.png", "png", [], [])


def shows_check_screen() -> bool:
    """Whether the check screen is visible while a site keeps the program waiting."""
    may_answer = threading.Event()
    with SiteServer(send_after(may_answer, http_reply())) as server:
        environment = ENVIRONMENT | {"VANTREO_SITE": server.address}
        with Program(environment=environment):
            wait_for(lambda: server.request_lines, "the request")
            try:
                wait_for(sees_text, "the check screen", 4)
            except NotSeen as fault:
                print(fault, file=sys.stderr)
                return False
            finally:
                save_picture("-check")
                may_answer.set()
    return True


def converts(window: DesktopWindow, folder: Path) -> bool:
    movie = make_movie(folder / "movie.mkv", 2)
    try:
        window.press(window.movies_button, lambda: window.dialog)
        window.enter_path(movie)
        window.convert()
        return describe(folder / "movie.mp4").startswith(RESULT)
    except (NotSeen, GLib.Error, subprocess.CalledProcessError) as fault:
        print(fault, file=sys.stderr)
        return False


def main() -> None:
    folder = Path(tempfile.mkdtemp(dir=Path.home()))
    write_settings(Path("/media"))  # keep the temporary folder's name out of the picture
    empty_desktop()
    check = shows_check_screen()
    with DesktopWindow() as window:
        save_picture("")
        size, outside = window.size, window.outside()
        print("\n".join(outside), file=sys.stderr)
    write_settings(folder)
    with DesktopWindow() as window:
        conversion = converts(window, folder)
    title_bar = "the desktop's, not counted" if DRAWS_TITLE_BARS else "counted"
    if SESSION == "none":
        title_bar = "none"
    columns = (
        f"{SESSION} ({'Wayland' if BACKEND == 'wayland' else 'X11'})",
        f"{SCALE:g}",
        "{}x{}".format(*size) if size == SIZE else "**{}x{}**".format(*size),
        title_bar,
        YES if not outside else NO,
        YES if check else NO,
        YES if conversion else NO,
    )
    print("|", " | ".join(columns), "|")
    sys.exit(0 if size == SIZE and not outside and check and conversion else 1)


if __name__ == "__main__":
    main()
