"""The launcher starts the program in its own folder, however it is called."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from repository import ROOT

# Prints its current folder and its arguments.
PROGRAM = """\
#!/bin/sh
pwd -P
printf '%s\\n' "$@"
"""


class Launcher(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        self.home = self.folder / "a home"
        self.launcher = self.home / "bin" / "vantreo"
        self.launcher.parent.mkdir(parents=True)
        self.launcher.write_bytes((ROOT / "packaging" / "launcher.sh").read_bytes())
        program = self.home / "vantreo"
        program.write_text(PROGRAM)
        for made in (self.launcher, program):
            made.chmod(0o755)

    def start(self, *command: object, **options: object) -> list[str]:
        return subprocess.run(
            list(map(str, command)), check=True, stdout=subprocess.PIPE, text=True, **options
        ).stdout.splitlines()

    def assert_starts(self, *command: object, **options: object) -> None:
        printed = self.start(*command, "a word", "-x", **options)
        self.assertEqual(printed, [str(self.home), "a word", "-x"])

    def test_is_called_by_its_path(self) -> None:
        self.assert_starts(self.launcher)
        self.assert_starts("./vantreo", cwd=self.launcher.parent)
        self.assert_starts("bin/vantreo", cwd=self.home)

    def test_ignores_cdpath(self) -> None:
        (self.folder / "bin").mkdir()
        self.assert_starts(
            "bin/vantreo", cwd=self.home, env=os.environ | {"CDPATH": str(self.folder)}
        )

    def test_is_found_by_its_name(self) -> None:
        path = f"{self.launcher.parent}:{os.environ['PATH']}"
        self.assert_starts("sh", "-c", 'exec vantreo "$@"', "sh", env=os.environ | {"PATH": path})

    def test_is_read_by_a_shell(self) -> None:
        self.assert_starts("sh", "vantreo", cwd=self.launcher.parent)

    def test_is_called_through_links(self) -> None:
        commands = self.folder / "commands"
        commands.mkdir()
        (commands / "vantreo").symlink_to("../a home/bin/vantreo")
        (commands / "again").symlink_to("vantreo")
        (self.folder / "programs").symlink_to(self.launcher.parent)
        self.assert_starts(commands / "vantreo")
        self.assert_starts("./again", cwd=commands)
        self.assert_starts(self.folder / "programs" / "vantreo")


if __name__ == "__main__":
    unittest.main()
