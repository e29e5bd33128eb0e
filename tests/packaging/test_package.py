"""The Debian package: its files, its dependencies, and the result of Debian's checker."""

import os
import re
import shutil
import tempfile
import unittest
from pathlib import Path

from repository import BUILD, ROOT, VERSION, output_of

FILES = {
    "usr/bin/vantreo",
    "usr/lib/vantreo/Vantreo.app/Contents/Resources/MP4Box",
    "usr/lib/vantreo/Vantreo.app/Contents/Resources/ffmpeg",
    "usr/lib/vantreo/Vantreo.app/Contents/Resources/notify",
    "usr/lib/vantreo/bin/vantreo",
    "usr/lib/vantreo/vantreo",
    "usr/share/applications/vantreo.desktop",
    "usr/share/doc/vantreo/changelog.Debian.gz",
    "usr/share/doc/vantreo/changelog.gz",
    "usr/share/doc/vantreo/copyright",
    "usr/share/icons/hicolor/scalable/apps/vantreo.svg",
    "usr/share/lintian/overrides/vantreo",
    "usr/share/man/man1/vantreo.1.gz",
    "usr/share/metainfo/example.vantreo.Vantreo.metainfo.xml",
    *(
        f"usr/share/icons/hicolor/{side}x{side}/apps/vantreo.png"
        for side in (16, 24, 32, 48, 64, 128, 256, 512)
    ),
}
PROGRAMS = {name for name in FILES if name.startswith("usr/lib/")}
LINKED = {
    "libc6",
    "libcurl3-gnutls",
    "libglib2.0-0",
    "libgtk-3-0",
    "libicu72",
    "libstdc++6",
    "libwxbase3.2-1",
    "libwxgtk3.2-1",
}


def names(field: str) -> set[str]:
    """The packages of a field, without their versions."""
    return {entry.split()[0] for entry in field.split(", ")}


def group(name: str) -> set[str]:
    """The packages of a group of packaging/packages."""
    lines = (ROOT / "packaging" / "packages").read_text().splitlines()
    return {package for line in lines if line.split()[:1] == [name] for package in line.split()[1:]}


def make_package(folder: Path) -> Path:
    output_of("cpack", "-B", folder, cwd=BUILD)
    [package] = folder.glob("*.deb")
    return package


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.package = make_package(cls.folder / "first")
        cls.tree = cls.folder / "tree"
        output_of("dpkg-deb", "--extract", cls.package, cls.tree)

    def field(self, name: str) -> str:
        return output_of("dpkg-deb", "--field", self.package, name).strip()

    def test_contains_exactly_these_files(self) -> None:
        found = [path for path in self.tree.rglob("*") if path.is_symlink() or path.is_file()]
        self.assertEqual({str(path.relative_to(self.tree)) for path in found}, FILES)

    def test_belongs_to_root_and_only_programs_are_executable(self) -> None:
        for line in output_of("dpkg-deb", "--contents", self.package).splitlines():
            mode, owner, *_, name = re.sub(" -> .*", "", line).split()
            with self.subTest(name):
                self.assertEqual(owner, "root/root")
                if mode.startswith("-"):
                    runs = name.removeprefix("./") in PROGRAMS
                    self.assertEqual(mode, "-rwxr-xr-x" if runs else "-rw-r--r--")

    def test_command_leads_to_the_launcher(self) -> None:
        command = self.tree / "usr/bin/vantreo"
        self.assertTrue(command.samefile(self.tree / "usr/lib/vantreo/bin/vantreo"))

    def test_has_the_version_of_the_build(self) -> None:
        self.assertEqual(self.field("Version"), f"{VERSION}-1")

    def test_depends_on_the_programs_that_it_runs_and_its_libraries(self) -> None:
        depends = names(self.field("Depends"))
        self.assertLessEqual(group("run"), depends)
        self.assertLessEqual(LINKED, depends)

    def test_does_not_contain_the_path_of_the_build(self) -> None:
        for name in PROGRAMS:
            with self.subTest(name):
                self.assertNotIn(os.fsencode(ROOT), (self.tree / name).read_bytes())

    def test_is_identical_when_made_again(self) -> None:
        again = make_package(self.folder / "second")
        self.assertEqual(again.read_bytes(), self.package.read_bytes())

    def test_passes_the_checker(self) -> None:
        self.assertEqual(
            output_of("lintian", "--allow-root", "--fail-on=warning", self.package), ""
        )


if __name__ == "__main__":
    unittest.main()
