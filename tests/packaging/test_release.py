"""When packaging/release fails; packaging/check-reproducible tests what it makes."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from repository import ROOT, VERSION, output_of

OWN_FILES = (
    "CMakeLists.txt",
    "CHANGELOG.md",
    *(f"packaging/{name}" for name in ("packages", "release", "setup")),
)


class Release(unittest.TestCase):
    """Each test has a repository with only the files that are read before the build."""

    def setUp(self) -> None:
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.repository = self.folder / "repository"
        for name in OWN_FILES:
            (self.repository / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, self.repository / name)
        self.git("init", "--quiet")
        self.commit()

    def git(self, *arguments: str) -> None:
        identity = ("-c", "user.name=Somebody", "-c", "user.email=somebody@vantreo.example")
        output_of("git", *identity, *arguments, cwd=self.repository)

    def commit(self) -> None:
        self.git("add", "--all")
        self.git("commit", "--quiet", "--message=Change something")

    def replace(self, name: str, old: str, new: str) -> None:
        text = (self.repository / name).read_text()
        self.assertIn(old, text)
        (self.repository / name).write_text(text.replace(old, new))

    def assert_refused(self, reason: str) -> None:
        out = self.folder / "out"
        run = subprocess.run(
            [self.repository / "packaging" / "release", out],
            env=os.environ | {"PATH": f"{self.make_no_build_tools()}:{os.environ['PATH']}"},
            stderr=subprocess.PIPE,
            text=True,
        )
        self.assertNotEqual(run.returncode, 0)
        self.assertIn(reason, run.stderr)
        self.assertFalse(out.exists())

    def make_no_build_tools(self) -> Path:
        """A folder with a cmake that exits at once, to make a release that is not rejected quick."""
        tools = self.folder / "tools"
        tools.mkdir()
        (tools / "cmake").write_text("#!/bin/sh\necho it is being built >&2\nexit 1\n")
        (tools / "cmake").chmod(0o755)
        return tools

    def test_continues_to_the_build_if_everything_is_consistent(self) -> None:
        self.assert_refused("it is being built")

    def test_rejects_uncommitted_changes(self) -> None:
        (self.repository / "left-over").touch()
        self.assert_refused("left-over")

    def test_rejects_a_version_without_an_entry(self) -> None:
        self.replace("CMakeLists.txt", f"VERSION {VERSION} ", "VERSION 97.31 ")
        self.commit()
        self.assert_refused("no entry for version 97.31")

    def test_rejects_an_entry_without_a_date(self) -> None:
        self.replace("CHANGELOG.md", f"## [{VERSION}] - ", f"## [{VERSION}] ")
        self.commit()
        self.assert_refused(f"no entry for version {VERSION}")


if __name__ == "__main__":
    unittest.main()
