"""The demo itself."""

import subprocess
import sys
import unittest

import demo
from driver import GdkPixbuf
from window_case import SETTINGS, WindowCase


class Demo(WindowCase):
    def setUp(self) -> None:
        super().setUp()
        SETTINGS.unlink()  # like a user's first start

    def test_writes_its_files_and_changes_no_other(self) -> None:
        other = self.output / "other.mp4"
        other.write_text("kept")
        (self.output / "movie.mp4").write_text("from an earlier run")
        subprocess.run([sys.executable, demo.__file__, self.output], check=True)

        expected = sorted([*demo.MOVIES, *demo.PICTURES, other.name])
        self.assertEqual(self.output_names(), expected)
        self.assertEqual(demo.find_faults(self.output), [])
        self.assertEqual(other.read_text(), "kept")
        for name in demo.PICTURES:
            picture = GdkPixbuf.Pixbuf.new_from_file(str(self.output / name))
            self.assertEqual((picture.get_width(), picture.get_height()), (770, 385))

    def test_reports_everything_that_is_missing(self) -> None:
        faults = "\n".join(demo.find_faults(self.output))
        for name in (*demo.MOVIES, *demo.PICTURES):
            self.assertIn(name, faults)


if __name__ == "__main__":
    unittest.main()
