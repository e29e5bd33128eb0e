"""Which versions the build accepts, and why."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from repository import ROOT, VERSION

CHECK = ROOT / "packaging" / "check_version.cmake"
# From the oldest to the newest.
ACCEPTED = ("0.90", "1.05", "1.10", "1.24", "1.25", "1.30", "2.00", "10.05", "100.00")
REFUSED = (
    *("", "1", "24", "1.", ".24"),
    *("1.3", "2.0", "1.100", "1.240", "1.24.1", "1.2.3.4"),
    *("01.24", "00.90", "-1.24", "+1.24", "1,24", "1.24a", "v1.24", "1.2\n4", "1e-2"),
)


def run_cmake(*arguments: object) -> subprocess.CompletedProcess[str]:
    return subprocess.run(["cmake", *map(str, arguments)], capture_output=True, text=True)


def is_newer_for_debian(version: str, older: str) -> bool:
    return subprocess.run(["dpkg", "--compare-versions", version, "gt", older]).returncode == 0


class Version(unittest.TestCase):
    def test_two_digits_after_the_point_are_accepted(self) -> None:
        for version in ACCEPTED:
            with self.subTest(version):
                run = run_cmake(f"-DPROJECT_VERSION={version}", "-P", CHECK)
                self.assertEqual(run.returncode, 0, run.stderr)

    def test_anything_else_is_rejected_with_an_example(self) -> None:
        for version in REFUSED:
            with self.subTest(version):
                run = run_cmake(f"-DPROJECT_VERSION={version}", "-P", CHECK)
                self.assertNotEqual(run.returncode, 0)
                reason = " ".join(run.stderr.split())
                self.assertIn("two digits after the point, such as 1.25", reason)

    def test_the_program_and_debian_agree_on_what_is_newer(self) -> None:
        for older, newer in zip(ACCEPTED, ACCEPTED[1:]):
            with self.subTest(newer):
                self.assertGreater(float(newer), float(older))
                self.assertTrue(is_newer_for_debian(newer, older))
                self.assertEqual(f"{float(newer):.2f}", newer)
        self.assertGreater(float("1.3"), float("1.24"))
        self.assertFalse(is_newer_for_debian("1.3", "1.24"))

    def test_the_build_rejects_such_a_version(self) -> None:
        folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        (folder / "packaging").mkdir()
        shutil.copy(CHECK, folder / "packaging")
        project = (ROOT / "CMakeLists.txt").read_text()
        self.assertIn(f"VERSION {VERSION} ", project)
        project = project.replace(f"VERSION {VERSION} ", "VERSION 1.3 ")
        (folder / "CMakeLists.txt").write_text(project)
        run = run_cmake("-S", folder, "-B", folder / "build")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn('The version "1.3" does not work', run.stderr)


if __name__ == "__main__":
    unittest.main()
