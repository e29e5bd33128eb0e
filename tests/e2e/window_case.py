"""The base class of the tests that drive the window."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from driver import Program, Vantreo, wait_for
from samples import unhurried_ffmpeg

SETTINGS = Path(os.environ["XDG_CONFIG_HOME"]) / "Vantreo.ini"
BROWSER_LOG = Path(os.environ["BROWSER_LOG"])
BROWSER_ENVIRONMENT = BROWSER_LOG.with_name(f"{BROWSER_LOG.name}.environment")
# The product web site for programs whose test sets no other.
SITE = os.environ["VANTREO_SITE"]


def make_locales(test_case: type[unittest.TestCase], *locales: tuple[str, str]) -> Path:
    """Makes these locales, each a name (de_DE) and an encoding; returns the folder for LOCPATH.

    It is removed after the tests of the class.
    """
    folder = test_case.enterClassContext(tempfile.TemporaryDirectory())
    for name, encoding in locales:
        target = Path(folder, f"{name}.{encoding}")
        subprocess.run(["localedef", "-i", name, "-f", encoding, target], check=True)
    return Path(folder)


class WindowCase(unittest.TestCase):
    """Each test has its own movie folder, output folder and settings."""

    def setUp(self) -> None:
        folder = Path(tempfile.mkdtemp(dir=Path.home()))
        self.addCleanup(shutil.rmtree, folder)
        self.movies = folder / "movies"
        self.movies.mkdir()
        self.output = folder / "output"
        self.output.mkdir()
        self.write_settings()
        BROWSER_LOG.write_text("")

    def write_settings(self, **settings: str) -> None:
        """Stores these settings beside the output folder; nothing opens the browser."""
        settings = {"Output": str(self.output), "HowToMove": "false"} | settings
        SETTINGS.write_text("".join(f"{key}={value}\n" for key, value in settings.items()))

    def read_settings(self) -> dict[str, str]:
        return dict(line.split("=", 1) for line in SETTINGS.read_text().splitlines())

    def open_window(self, folder: Path | None = None, **environment: str) -> Vantreo:
        """Starts the program in `folder`, or the current one; it ends with the test."""
        return self.enterContext(Vantreo(folder, environment))

    def unhurried(self) -> dict[str, str]:
        """An environment in which a long movie is converted slowly, with little processor time."""
        return {"VANTREO_FFMPEG": str(unhurried_ffmpeg(self.movies.parent))}

    def close_window(self, window: Program) -> None:
        window.close()
        self.assertEqual(window.wait_for_end(), 0)

    def opened_pages(self) -> list[str]:
        """The addresses that the browser was given in this test."""
        return BROWSER_LOG.read_text().splitlines()

    def seen_by_browser(self, variable: str) -> str | None:
        """That variable of the environment in which the browser was last started; None if unset."""
        variables = BROWSER_ENVIRONMENT.read_text().split("\0")
        return dict(entry.split("=", 1) for entry in variables if entry).get(variable)

    def wait_for_pages(self, count: int) -> list[str]:
        """Waits until the browser was given that many addresses; returns all."""
        wait_for(lambda: len(self.opened_pages()) >= count, f"{count} pages in the browser")
        return self.opened_pages()

    def output_names(self) -> list[str]:
        return sorted(entry.name for entry in self.output.iterdir())
