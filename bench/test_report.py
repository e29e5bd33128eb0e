"""Tests of the table that the benchmark writes."""

import tempfile
import unittest
from pathlib import Path

from figures import ratio_figure
from report import MARKERS, rewrite


def results(**start: object) -> dict:
    machine = {"processors": 2, "processor": "some", "tools": "ffmpeg 5"}
    return {"machine": machine, "parts": {"start": start}}


class Report(unittest.TestCase):
    def written(self, content: dict) -> str:
        with tempfile.TemporaryDirectory() as folder:
            document = Path(folder) / "document.md"
            document.write_text(f"before\n{MARKERS[0]}\nold\n{MARKERS[1]}\nafter\n")
            rewrite(document, content)
            rewrite(document, content)
            return document.read_text()

    def test_the_table_replaces_the_old_one_and_nothing_else(self) -> None:
        figure = ratio_figure("start", "to a usable window", [2, 4], [1, 1], limit=1.3)
        text = self.written(results(figures=[figure.to_json()]))
        self.assertTrue(text.startswith(f"before\n{MARKERS[0]}\n"))
        self.assertTrue(text.endswith(f"{MARKERS[1]}\nafter\n"))
        self.assertNotIn("old", text)
        self.assertIn("| to a usable window | 3 | 1.3 | **no** | 2 to 4 in 2 |  |", text)

    def test_a_failed_part_is_reported(self) -> None:
        self.assertIn("`start` failed: no display", self.written(results(failed="no display")))

    def test_a_quick_part_is_reported(self) -> None:
        self.assertIn("with `--quick`", self.written(results(quick=True, figures=[])))


if __name__ == "__main__":
    unittest.main()
