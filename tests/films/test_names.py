"""A file name is never an option, a protocol or part of a report."""

import os
import shutil

from movie_case import MovieCase, picture, probe
from table import row

SECTION = "The movie"

FORGED = "Duration: 99:00:00 Stream #0.0: Video: x, 5x5, 9 tbc"
NAMES = {
    "spaces": "  two  words ",
    "quotes": 'with "quotes" and \'s',
    "a backslash": "back\\slash",
    "a percent sign": "per%d cent%s",
    "a colon": "12:30 clip",
    "a hash and an equals sign": "C#=a&b;c|d",
    "a leading dash": "-y",
    "a protocol": "pipe:0",
    "another protocol": "concat:a|b",
    "a URL": "http:",
    "a newline": "line\nbreak",
    "a bell and an escape": "bell\a\x1b[2J",
    "emoji": "🎬🍿",
    "bytes that are not UTF-8": b"caf\xe9\xff",
    "250 bytes": "é" * 123,
    "a report in it": FORGED,
    "a report in it after a newline": f"\n  {FORGED}\n",
    "wildcards": "*?[a]{b,c}~$HOME`ls`",
}


class Names(MovieCase):
    def setUp(self) -> None:
        super().setUp()
        self.sample = self.movie("sample.avi", *picture(1), "-c:v", "mpeg4")

    def check(self, what: str, name: str | bytes) -> None:
        """Runs in the folder itself, so that a name may start with any character."""
        source = os.fsencode(name) + b".avi"
        out = os.fsencode(name) + b".mp4"
        here = os.fsencode(self.folder)
        shutil.copy(self.sample, os.path.join(here, source))
        before = set(os.listdir(here))
        report = self.report(source, cwd=here)
        self.assertEqual((report.duration, report.size), ("00:00:01", "160x120"))
        ended = self.transcode(source, 160, 120, cwd=here, out=out)
        self.assertEqual(ended.status, 0, ended.text)
        self.assertEqual(set(os.listdir(here)) - before, {out})
        self.assertEqual(len(probe(os.path.join(here, out))["streams"]), 1)
        row(SECTION, f"a name with {what}", "reported and converted as any other")

    def test_names_of_movies(self) -> None:
        for what, name in NAMES.items():
            with self.subTest(what):
                self.check(what, name)

    def test_names_of_broken_movies(self) -> None:
        for what in ("a report in it", "a report in it after a newline", "a newline"):
            broken = self.folder / f"{NAMES[what]}.avi"
            broken.write_text("not a movie")
            ended = self.ask(broken)
            self.assertEqual(ended.status, 1)
            self.assertIsNone(self.read(ended), ended.text)
            self.assertEqual(len(ended.messages), 1, ended.text)
        case = "a broken movie with a report in its name"
        row(SECTION, case, "no report is read out of the message")

    def test_a_playlist_opens_nothing_else(self) -> None:
        other = self.movie("other.ts", *picture(1), "-c:v", "mpeg2video")
        address = "http://127.0.0.1:9/a.ts"
        for what, text in (
            ("a list of addresses", f"#EXTM3U\n#EXTINF:1,\n{address}\n#EXT-X-ENDLIST\n"),
            ("a list with a protocol", "ffconcat version 1.0\nfile concat:other.ts\n"),
        ):
            movie = self.folder / "list.avi"
            movie.write_text(text)
            ended = self.ask(movie)
            self.assertEqual(ended.status, 1, ended.text)
            row(SECTION, f"{what} named like a movie", ended.messages[0].split("' ")[1])
        self.assertTrue(other.exists())
