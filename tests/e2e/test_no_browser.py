"""The pages that the window opens, if no browser can be started."""

import shutil
import tempfile
import unittest
from pathlib import Path
from typing import IO

from driver import Atspi, Page, Program, Vantreo, click, click_at, place_on_screen, wait_for
from pixels import find_links
from samples import make_movie
from site_server import SiteServer, http_reply, send
from window_case import WindowCase

# A closed port: the addresses are shown, and nothing is requested.
SITE = "http://127.0.0.1:9/"
PROGRAMS = ("sh", "taskset", "killall", "ffmpeg", "ffprobe")


class NoBrowser(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        folder = Path(tempfile.mkdtemp(dir=Path.home()))
        self.addCleanup(shutil.rmtree, folder)
        self.programs = folder / "bin"
        self.programs.mkdir()
        for name in PROGRAMS:
            (self.programs / name).symlink_to(str(shutil.which(name)))
        # Everything that the toolkit needs, and no program that opens pages.
        share = folder / "share"
        share.mkdir()
        for entry in Path("/usr/share").iterdir():
            if entry.name != "applications":
                (share / entry.name).symlink_to(entry)
        self.environment = {
            "PATH": str(self.programs),
            "XDG_DATA_DIRS": str(share),
            "XDG_DATA_HOME": str(folder),
            "VANTREO_SITE": SITE,
        }
        self.console: IO[bytes] = self.enterContext(tempfile.TemporaryFile())

    def open_without_browser(self, **environment: str) -> Vantreo:
        return self.enterContext(
            Vantreo(environment=self.environment | environment, console=self.console)
        )

    def assert_shows(self, program: Program, path: str, site: str = SITE) -> None:
        self.assertEqual(program.answer("OK"), site + path)

    def assert_console_names(self, *paths: str) -> None:
        """The console holds one line for each of these pages, and nothing else."""
        self.console.seek(0)
        lines = self.console.read().decode().splitlines()
        self.assertEqual(len(lines), len(paths), lines)
        for line, path in zip(lines, paths):
            self.assertTrue(line.endswith(f"No browser could be started for {SITE}{path}"), line)

    def click_link(self, window: Vantreo, box: Atspi.Accessible, index: int = 0) -> None:
        corner = place_on_screen(box)
        x, y = find_links(window.picture(box))[index]
        click_at(corner.x + x, corner.y + y)

    def test_a_message_shows_the_address_of_each_link(self) -> None:
        window = self.open_without_browser()
        window.open_page(Page.OPTIONS)
        self.click_link(window, window.translations_box)
        self.assert_shows(window, "Translations")
        self.click_link(window, window.subtitle_box)
        self.assert_shows(window, "How_to_add_subtitles_to_the_iPhone_video")
        window.open_page(Page.ABOUT)
        self.click_link(window, window.about_box)
        self.assert_shows(window, "Greetings")
        self.click_link(window, window.about_box, -1)
        self.assert_shows(window, "Contact")
        click(window.donate_button)
        self.assert_shows(window, "Donate")
        self.close_window(window)
        self.assert_console_names(
            "Translations",
            "How_to_add_subtitles_to_the_iPhone_video",
            "Greetings",
            "Contact",
            "Donate",
        )

    def test_a_message_shows_the_address_of_the_page_after_a_conversion(self) -> None:
        self.write_settings(HowToMove="true")
        movie = make_movie(self.movies / "movie.mkv", 1)
        window = self.open_without_browser()
        window.drop([movie], window.movie_list)
        window.press_convert()
        self.assert_shows(window, "How_to_put_a_video_on_your_iPhone")
        window.wait_for_status("Conversion completed!")
        self.assertEqual(window.movies, [])
        self.close_window(window)
        self.assert_console_names("How_to_put_a_video_on_your_iPhone")

    def test_a_message_shows_the_address_of_the_newer_version(self) -> None:
        reply = http_reply("CURRENT_VERSION=>1.25<=CURRENT_VERSION")
        server = self.enterContext(SiteServer(send(reply)))
        environment = self.environment | {"VANTREO_SITE": server.address}
        program = self.enterContext(Program(environment=environment, console=self.console))
        button = wait_for(lambda: program.controls(Atspi.Role.PUSH_BUTTON), "the button")[0]
        wait_for(lambda: program.is_ready, "a usable window")
        click(button)
        self.assert_shows(program, "Download", server.address)
        self.assertEqual(program.wait_for_end(), 0)

    def test_a_desktop_without_helpers_behaves_the_same(self) -> None:
        for desktop in ("GNOME", "KDE"):
            with self.subTest(desktop):
                window = self.open_without_browser(XDG_CURRENT_DESKTOP=desktop)
                window.open_page(Page.ABOUT)
                click(window.donate_button)
                self.assert_shows(window, "Donate")
                self.close_window(window)


if __name__ == "__main__":
    unittest.main()
