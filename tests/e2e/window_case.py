"""The common ground of the tests that drive the window."""

import os
import shutil
import tempfile
import unittest
from pathlib import Path

from driver import Vantreo

SETTINGS = Path(os.environ["XDG_CONFIG_HOME"]) / "Vantreo.ini"


class WindowCase(unittest.TestCase):
    """Each test has a folder for its movies, an output folder and settings of its own."""

    def setUp(self) -> None:
        folder = Path(tempfile.mkdtemp(dir=Path.home()))
        self.addCleanup(shutil.rmtree, folder)
        self.movies = folder / "movies"
        self.movies.mkdir()
        self.output = folder / "output"
        self.output.mkdir()
        self.write_settings()

    def write_settings(self, **settings: str) -> None:
        """Stores these settings beside the output folder; nothing opens the browser."""
        settings = {"Output": str(self.output), "HowToMove": "false"} | settings
        SETTINGS.write_text("".join(f"{key}={value}\n" for key, value in settings.items()))

    def open_window(self, folder: Path | None = None) -> Vantreo:
        """Starts the program in `folder`, or the current one; it ends with the test."""
        return self.enterContext(Vantreo(folder))

    def output_names(self) -> list[str]:
        return sorted(entry.name for entry in self.output.iterdir())
