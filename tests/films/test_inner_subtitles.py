"""How subtitles inside a movie are converted."""

import struct
import subprocess
import unittest

from inner_case import InnerCase, boxes, srt
from movie_case import DEADLINE, SMALL, picture, probe, streams, tone
from output_case import adding
from table import row

SECTION = "Subtitles inside the movie"

SCRIPT = """\
[Script Info]
ScriptType: v4.00+
PlayResX: 1920
PlayResY: 1080

[V4+ Styles]
Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, BackColour, Bold, \
Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, \
Alignment, MarginL, MarginR, MarginV, Encoding
Style: Default,Trebuchet MS,72,&H00FFFFFF,&H0,&H0,&H0,0,0,0,0,100,100,0,0,1,2,0,2,10,10,10,1
Style: Sign,Arial,40,&H0000FFFF,&H0,&H0,&H0,0,-1,0,0,100,100,0,0,1,2,0,8,10,10,10,1

[Events]
Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text
Dialogue: 0,0:00:00.20,0:00:00.60,Default,,0,0,0,,{\\pos(10,20)\\blur3}Hello {\\i1}you{\\i0}
Dialogue: 0,0:00:00.40,0:00:01.00,Sign,,0,0,0,,EXIT {not shown}
Dialogue: 0,0:00:01.20,0:00:01.40,Default,,0,0,0,,{\\p1}m 0 0 l 100 0 100 100{\\p0}
Dialogue: 0,0:00:01.40,0:00:01.80,Default,,0,0,0,,Zażółć\\Ngęślą
"""
WEB = """\
WEBVTT

00:00.200 --> 00:00.600 line:0 position:20%
<v Ann>Hello</v> <i>you</i> <c.red>there</c> &amp; &lt;here&gt;

00:01.000 --> 00:01.400
Bye
"""


class InnerSubtitles(InnerCase):
    def test_text_of_every_kind(self) -> None:
        texts = [self.text("a.ass", SCRIPT), self.text("b.srt", srt((0.2, 0.8, "<b>Only</b> one")))]
        movie = self.with_texts(
            "movie.mkv",
            [*texts, self.text("c.vtt", WEB)],
            *("-metadata:s:s:0", "language=ger", "-metadata:s:s:1", "language=eng"),
            *("-metadata:s:s:1", "title=Signs", "-disposition:s:0", "default"),
            *("-disposition:s:1", "forced", "-disposition:s:2", 0),
        )
        self.convert(movie)
        self.assertEqual(self.ended.messages, [])
        found = streams(self.out, "subtitle")
        self.assertEqual([s["codec_tag_string"] for s in found], ["tx3g"] * 3)
        self.assertEqual([s["tags"]["language"] for s in found], ["deu", "eng", "und"])
        self.assertEqual(found[1]["tags"]["handler_name"], "Signs")
        self.assertEqual(self.heads(), [(True, 0), (False, 0xC0000000), (False, 0)])
        sign = '<i><font color="#ffff00">EXIT</font></i>'
        self.assert_cues(
            [
                (0.2, 0.4, "Hello <i>you</i>"),
                (0.4, 0.6, f"Hello <i>you</i>\n{sign}"),
                (0.6, 1.0, sign),
                (1.4, 1.8, "Zażółć\ngęślą"),
            ]
        )
        row(
            SECTION,
            "ASS with styles, positions, a comment, a drawing and two lines at a time",
            "4 cues: bold, italic, underlined and coloured letters, both lines together while both "
            "are shown; nothing else",
        )
        self.assert_cues([(0.2, 0.8, "<b>Only</b> one")], 1)
        self.assert_cues([(0.2, 0.6, "Hello <i>you</i> there & <here>"), (1.0, 1.4, "Bye")], 2)
        row(SECTION, "SubRip and WebVTT", "each cue at its time, with italic and bold letters")
        row(
            SECTION,
            "German by default, English forced and named “Signs”, one without a language",
            "deu and enabled; eng, all of it forced, handler “Signs”; und",
        )

    def test_text_of_an_mp4_file_keeps_its_position(self) -> None:
        text = self.text("text.srt", srt((0.2, 0.8, "One <i>two</i>"), (1, 1.5, "Three")))
        movie = self.movie(
            "movie.mp4",
            *(*picture(2, "320x240"), *tone(2), "-i", text, "-map", 0, "-map", 1, "-map", 2),
            *(*SMALL, "-c:s", "mov_text", "-metadata:s:s", "language=fra"),
        )
        self.convert(movie)
        self.assert_cues([(0.2, 0.8, "One <i>two</i>"), (1, 1.5, "Three")])
        (track,) = streams(self.out, "subtitle")
        self.assertEqual((track["width"], track["height"]), (320, 36))
        self.assertEqual(track["tags"]["language"], "fra")
        row(
            SECTION,
            "the text track of an MP4 file of 320x240",
            f"the same cues, {track['width']}x{track['height']} at the lower edge",
        )

    def test_streams_without_cues_and_many_streams(self) -> None:
        empty = self.text("empty.vtt", "WEBVTT\n\n")
        blank = self.text("blank.srt", srt((0.2, 0.8, "{\\an8} ")))
        late = self.text("late.srt", srt((11.0, 11.5, "Late")))
        texts = [self.text(f"{n}.srt", srt((n / 50, 1, f"Text {n}"))) for n in range(1, 38)]
        marks = [word for at in (5, 7) for word in (f"-disposition:s:{at}", "default")]
        movie = [empty, blank, late, *texts]
        movie = self.with_texts("movie.mkv", movie, "-disposition:s", 0, *marks, seconds=12, rate=2)
        self.assertEqual(len(streams(movie, "subtitle")), 40)
        self.convert(movie)
        self.assertEqual(self.ended.messages, [])
        self.assertEqual(len(streams(self.out, "subtitle")), 38)
        self.assertEqual([at for at, (on, _) in enumerate(self.heads()) if on], [3])
        self.assert_cues([(11.0, 11.5, "Late")])
        self.assert_cues([(37 / 50, 1, "Text 37")], 37)
        row(
            SECTION,
            "40 streams: one without any packet, one without text, one that begins after 11 s",
            "38 tracks; of two that are marked as default the first one is enabled",
        )

    def test_text_that_is_not_utf8(self) -> None:
        polish = ["Dzień dobry, pani Zofio.", "Źle zrozumiałeś moje słowa.", "ZAŻÓŁĆ GĘŚLĄ JAŹŃ."]
        cues = [(at * 0.5, at * 0.5 + 0.3, text) for at, text in enumerate(polish, 1)]
        movie = self.with_texts("movie.mkv", [self.text("text.srt", srt(*cues))])
        content = movie.read_bytes()
        for text in polish:
            # The same length as before, padded with blanks.
            old = text.encode("cp1250").ljust(len(text.encode()))
            self.assertIn(text.encode(), content)
            content = content.replace(text.encode(), old)
        movie.write_bytes(content)
        self.convert(movie)
        self.assert_cues(cues)
        row(SECTION, "Polish in cp1250 inside Matroska", "all letters correct")

    def test_damaged_text_is_left_out_and_reported(self) -> None:
        cues = [(0.2, 0.5, "Źle"), (0.7, 1.0, "damaged"), (1.2, 1.5, "Gęś")]
        movie = self.with_texts("movie.mkv", [self.text("text.srt", srt(*cues))])
        content = movie.read_bytes()
        self.assertIn(b"damaged", content)
        movie.write_bytes(content.replace(b"damaged", b"d\xff\x01\xc0ged"))
        self.convert(movie)
        said = [said for said in self.ended.messages if "subtitle stream 2 is damaged" in said]
        self.assertEqual(len(said), 1, self.ended.text)
        self.assertFalse(self.note().exists())
        self.assert_cues([cues[0], cues[2]])
        row(
            SECTION,
            "three cues in UTF-8, one of them damaged",
            "the movie with the other two; the console says that one is left out",
        )

    def test_text_that_makes_ffmpeg_fail_is_left_out(self) -> None:
        # ffmpeg fails on such a long cue, after it has encoded the first pictures.
        long = self.text("long.srt", srt((0.1, 0.5, "short"), (2, 2.5, "long " * 300_000)))
        self.convert(self.with_texts("movie.mkv", [long], seconds=3))
        (video,) = streams(self.out, "video")
        self.assertAlmostEqual(float(video["duration"]), 3, delta=0.1)
        self.assertEqual(streams(self.out, "subtitle"), [])
        self.assertIn("the subtitles inside it are left out", self.ended.text)
        row(
            SECTION,
            "a cue of 1.5 MB after 2 s, which the system's ffmpeg can't write",
            "the whole movie without subtitles; the console says so",
        )

    def test_picture_subtitles_are_left_out(self) -> None:
        segment = b"PG" + struct.pack(">II", 45_000, 0)
        shown = struct.pack(">HHBHBBBB", 160, 120, 0x10, 0, 0x80, 0, 0, 0)
        sup = segment + b"\x16" + struct.pack(">H", len(shown)) + shown
        sup += segment + b"\x80" + struct.pack(">H", 0)
        movie = self.with_texts("movie.mkv", [self.text("text.sup", sup)])
        self.assertEqual(streams(movie, "subtitle")[0]["codec_name"], "hdmv_pgs_subtitle")
        self.convert(movie)
        self.assertEqual(streams(self.out, "subtitle"), [])
        row(SECTION, "picture subtitles of a Blu-ray", "left out")

    def test_the_file_beside_the_movie_comes_first(self) -> None:
        inner = self.text("inner.srt", srt((0.2, 0.8, "Inner")))
        beside = self.text("beside.srt", srt((0.3, 0.9, "Beside")))
        options = (
            "-metadata:s:s",
            "language=ger",
            "-metadata",
            "creation_time=2021-05-06T07:08:09Z",
        )
        self.convert(self.with_texts("movie.mkv", [inner], *options, "-disposition:s", "default"))
        self.assertEqual(self.heads(), [(True, 0)])
        places = boxes(self.out.read_bytes(), "moov", "trak", "tkhd")[2][32:34]
        for _ in range(2):
            subprocess.run(
                adding(beside, self.out), check=True, timeout=DEADLINE, stdout=subprocess.DEVNULL
            )
        self.assertEqual(self.heads(), [(False, 0), (True, 0)])
        heads = boxes(self.out.read_bytes(), "moov", "trak", "tkhd")
        self.assertEqual(heads[2][32:34], places)
        self.assertEqual(heads[2][34:36], heads[3][34:36])
        self.assertEqual(heads[2][40:84], heads[3][40:84])
        self.assert_cues([(0.2, 0.8, "Inner")], 0)
        self.assert_cues([(0.3, 0.9, "Beside")], 1)
        self.assertEqual(streams(self.out, "subtitle")[0]["tags"]["language"], "deu")
        date = probe(self.out)["format"]["tags"]["creation_time"]
        self.assertTrue(date.startswith("2021-05-06T07:08:09"))
        row(
            SECTION,
            "German inside, an .srt file beside the movie, added twice",
            "2 tracks in one group and place, the .srt file's enabled, the other one in deu",
        )


if __name__ == "__main__":
    unittest.main()
