"""Subtitles inside a movie stay in sync with the picture."""

import re
import subprocess
import unittest
from pathlib import Path

from inner_case import InnerCase, srt
from movie_case import DEADLINE, SMALL, picture, probe, streams, tone
from table import row
from teletext import add_teletext

SECTION = "Subtitles inside the movie"


class InnerTimes(InnerCase):
    def check_step(self, case: str, movie: Path) -> None:
        """Checks that the picture turns white when the cue starts."""
        self.convert(movie)
        answer = subprocess.run(
            ["ffmpeg", "-nostdin", "-hide_banner", "-i", self.out, "-vf", "blackdetect=d=0.1"]
            + ["-f", "null", "-"],
            stderr=subprocess.PIPE,
            check=True,
            timeout=DEADLINE,
        )
        white = float(re.findall(rb"black_end:([0-9.]+)", answer.stderr)[0])
        self.assertGreater(white, 0.3)
        start = self.arrived()[0][0]
        self.assertAlmostEqual(start, white, delta=0.045)
        row(SECTION, case, "in sync with the picture, within a frame")

    def flash(self, name: str, at: float, *more: object, seconds: float = 3) -> Path:
        """A black picture that turns white at this time, when a cue starts."""
        text = self.text("text.srt", srt((at, at + 0.5, "White")))
        black = f"color=black:s=160x120:r=25:d={seconds},format=yuv420p"
        white = f"drawbox=c=white:t=fill:enable='gte(t,{at - 0.01})'"
        return self.movie(
            name,
            *("-f", "lavfi", "-i", f"{black},{white}", *tone(seconds), "-i", text),
            *("-map", 0, "-map", 1, "-map", 2, *more),
        )

    def test_cues_stay_in_sync(self) -> None:
        movie = self.flash("late.mkv", 1, *SMALL, "-c:s", "srt", "-output_ts_offset", 3600)
        self.assertAlmostEqual(float(probe(movie)["format"]["start_time"]), 3600, delta=0.1)
        self.check_step("a movie whose clock starts at an hour", movie)
        whole = self.flash(
            "whole.mp4", 2, *("-c:v", "libx264", "-g", 200, "-c:a", "aac", "-c:s", "mov_text")
        )
        cut = self.movie("cut.mp4", "-ss", 1, "-i", whole, "-map", 0, "-c", "copy")
        self.check_step("an MP4 trimmed without re-encoding, its first second hidden", cut)

    def test_teletext(self) -> None:
        movie = self.movie(
            "movie.ts",
            *(*picture(2.5), *tone(2.5), "-c:v", "mpeg2video", "-bf", 0, "-c:a", "mp2"),
            *("-muxdelay", 0, "-muxpreload", 0, "-output_ts_offset", 3600),
        )
        texts = [(0.4, ""), (0.8, "Hallo Welt"), (1.4, ""), (1.6, "Bis morgen"), (2, "")]
        add_teletext(movie, 3600, texts)
        self.assertEqual(streams(movie, "subtitle")[0]["codec_name"], "dvb_teletext")
        self.convert(movie)
        self.assert_cues([(0.8, 1.4, "Hallo Welt"), (1.6, 2, "Bis morgen")])
        language = streams(self.out, "subtitle")[0]["tags"]["language"]
        self.assertEqual(language, "deu")
        row(
            SECTION,
            "teletext in a transport stream whose clock starts at an hour",
            f"the cues of its subtitle page at their times, in {language}",
        )

    def test_cues_beyond_the_end_do_not_lengthen_the_movie(self) -> None:
        cues = [(0.5, 90.0, "Long"), (60.0, 61.0, "Far")]
        movie = self.with_texts("movie.mkv", [self.text("text.srt", srt(*cues))])
        self.convert(movie)
        self.assertFalse(self.note().exists())
        self.assertAlmostEqual(float(probe(self.out)["format"]["duration"]), 2, delta=0.1)
        self.assert_cues([(0.5, 2.02, "Long")])
        times = [float(time) for time in re.findall(r"time=([0-9.]+)", self.ended.text)]
        self.assertLess(max(times), 2.1)
        row(
            SECTION,
            "2 s with a cue from 0.5 to 90 s and one at 60 s",
            "2 s, the first cue up to the end; the progress goes to 2 s",
        )


if __name__ == "__main__":
    unittest.main()
