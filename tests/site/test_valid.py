"""The pages, the style sheet and the mark against the Nu HTML checker."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

import pages

CHECKER = pathlib.Path(os.environ["VANTREO_VALIDATOR"]) / "node_modules/vnu-jar/build/dist/vnu.jar"


def complaints(*arguments):
    """The checker's errors and warnings."""
    run = subprocess.run(
        [
            "java",
            "-Xss2m",
            "-XX:TieredStopAtLevel=1",
            "-jar",
            CHECKER,
            "--stdout",
            "--exit-zero-always",
            "--format",
            "json",
            *arguments,
        ],
        capture_output=True,
        text=True,
        check=True,
        timeout=120,
    )
    return [
        f"{message['url'].rpartition('/')[2]}:{message.get('lastLine')}: {message['message']}"
        for message in json.loads(run.stdout)["messages"]
    ]


class Valid(unittest.TestCase):
    def test_every_page_is_valid_html(self):
        files = [pages.file_of(path) for path in pages.PAGES] + [pages.WWW / "404.html"]
        self.assertEqual(complaints("--html", *files), [])

    def test_the_style_sheet_is_valid_css(self):
        self.assertEqual(complaints("--css", pages.WWW / "style.css"), [])

    def test_the_mark_is_valid_svg(self):
        self.assertEqual(complaints("--svg", pages.WWW / "mark.svg"), [])

    def test_the_checker_finds_faults(self):
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder, "Download")
            page.write_text(
                pages.file_of("Download").read_text().replace("<main", "<p id=text><main")
            )
            self.assertNotEqual(complaints("--html", page), [])
            sheet = pathlib.Path(folder, "style.css")
            sheet.write_text("a { colour: red; }")
            self.assertNotEqual(complaints("--css", sheet), [])


if __name__ == "__main__":
    unittest.main()
