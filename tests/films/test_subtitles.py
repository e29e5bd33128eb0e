"""What is kept of a subtitle file: letters, cues, times, markup, and the track itself."""

import os
import re
import struct
import subprocess
import unittest
from pathlib import Path

from movie_case import DEADLINE, ffmpeg, probe, streams
from output_case import CUES, MP4BOX, OutputCase, adding, names, note_of, transcoding
from table import row
from test_names import NAMES

SECTION = "Subtitles"

# What the program reads from the progress lines.
PROGRESS = re.compile(rb"ISO File Writing: .*\(([0-9]+)/", re.DOTALL)

SAMPLES = {
    "Polish": "Dzień dobry, pani Zofio.|Nie wiedziałem, że przyjdziesz tak wcześnie.|Musimy "
    "porozmawiać o tym, co się stało.|- Gdzie jest mój płaszcz?|- Wisi tam, koło drzwi.|Książę nie "
    "wróci już do zamku.|Źle zrozumiałeś moje słowa.|Łódź odpływa za pięć minut.|ZAŻÓŁĆ GĘŚLĄ JAŹŃ.",
    "Russian": "Здравствуйте, Анна Петровна.|Я не знал, что ты придёшь так рано.|Нам нужно "
    "поговорить о том, что случилось.|- Где моё пальто?|- Висит там, у двери.|Подъезд был закрыт, и "
    "мы ждали.|ЭТО БЫЛА САМАЯ ДЛИННАЯ НОЧЬ.|Хорошо. Увидимся завтра.",
    "French": "Bonjour, madame Lefèvre.|Je ne savais pas que tu viendrais si tôt.|Il faut que nous "
    "parlions de ce qui est arrivé.|- Où est mon manteau ?|- Il est accroché là, près de la porte."
    "|Ç'a été la plus longue nuit de ma vie.|Vous avez mal compris mes paroles, mon garçon.|À "
    "demain, peut-être. Naïf, aigüe, âge, île, août.",
    "German": "Guten Tag, Frau Müller.|Ich wusste nicht, dass du so früh kommst.|- Wo ist mein "
    "Mantel?|- Er hängt dort, neben der Tür.|Das war die längste Nacht meines Lebens.|Die Straße "
    "war weiß, und wir hörten nichts.|ÄRGER ÜBER ÖL.|Schön. Bis morgen, Jürgen.",
    "Romanian": "Bună ziua, doamnă Popescu.|Nu ştiam că vei veni atât de devreme.|Trebuie să vorbim "
    "despre ce s-a întâmplat.|- Unde este haina mea?|- E acolo, lângă uşă.|Toţi soldaţii au plecat "
    "în zori.|Ai înţeles greşit cuvintele mele.|ŢARA ŞI CÂMPUL, ÎNSĂ ÎNCET.|Ne vedem mâine.",
    "Croatian": "Dobar dan, gospođo Horvat.|Nisam znao da ćeš doći tako rano.|Moramo razgovarati o "
    "onome što se dogodilo.|- Gdje je moj kaput?|- Visi ondje, pokraj vrata.|Sljedeći vlak kreće za "
    "pet minuta.|Čekali smo cijelu noć, a nitko nije došao.|ŽELIŠ LI ČAŠU VODE?|Vidimo se sutra, "
    "Đurđice.",
    "Slovenian": "Dober dan, gospa Žagar.|Nisem vedel, da boš prišla tako zgodaj.|Morava se "
    "pogovoriti o tem, kar se je zgodilo.|- Kje je moj plašč?|- Visi tam, zraven vrat.|Čakali smo "
    "vso noč, a nikogar ni bilo.|Narobe si razumel moje besede.|VSE JE ŠLO ČEZ ŽIVO MEJO.|Vidiva se "
    "jutri, draži moj.",
    "Lithuanian": "Laba diena, ponia Žukauskiene.|Nežinojau, kad ateisi taip anksti.|Turime "
    "pasikalbėti apie tai, kas įvyko.|- Kur mano paltas?|- Kabo ten, šalia durų.|Traukinys išvyksta "
    "už penkių minučių.|Jūs blogai supratote mano žodžius.|ŠĮ VAKARĄ ČIA BUS ŠALTA.|Iki rytojaus, "
    "brangusis mano drauge, ačiū.",
}
LATIN_9 = "Un vœu sincère vient du cœur.|Où est l'œuvre de M. Lœwe ?|À bientôt, ma sœur."
SETS = {
    "Polish": ["cp1250", "iso8859-2"],
    "Russian": ["cp1251", "iso8859-5", "koi8-r"],
    "French": ["cp1252", "iso8859-1"],
    "German": ["cp1252", "iso8859-1", "iso8859-15"],
    "Romanian": ["cp1250", "iso8859-2"],
    "Croatian": ["cp1250", "iso8859-2"],
    "Slovenian": ["cp1250", "iso8859-2"],
    "Lithuanian": ["cp1257", "iso8859-13"],
}
UNICODE = {
    "UTF-8": lambda text: text.encode("utf-8"),
    "UTF-8 with a byte order mark": lambda text: text.encode("utf-8-sig"),
    "UTF-16, little-endian": lambda text: b"\xff\xfe" + text.encode("utf-16-le"),
    "UTF-16, big-endian": lambda text: b"\xfe\xff" + text.encode("utf-16-be"),
    "UTF-16, little-endian, without a byte order mark": lambda text: text.encode("utf-16-le"),
    "UTF-16, big-endian, without a byte order mark": lambda text: text.encode("utf-16-be"),
}


def stamp(milliseconds: int) -> str:
    seconds, rest = divmod(milliseconds, 1000)
    return f"{seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02},{rest:03}"


def srt(cues: list[tuple[int, int, str]], end: str = "\n") -> str:
    blocks = (
        f"{number}\n{stamp(start)} --> {stamp(stop)}\n{text}\n"
        for number, (start, stop, text) in enumerate(cues, 1)
    )
    return "\n".join(blocks).replace("\n", end)


def cues_of(texts: list[str]) -> list[tuple[int, int, str]]:
    return [(1000 * at + 120, 1000 * at + 900, text) for at, text in enumerate(texts)]


class SubtitleCase(OutputCase):
    """Most tests run the tool repeatedly on one MP4 file: it replaces its own subtitles."""

    def setUp(self) -> None:
        super().setUp()
        self.mp4_before = self.make_mp4(self.out)

    def add(self, content: bytes | str) -> None:
        self.text.write_bytes(content if isinstance(content, bytes) else content.encode())
        status, said = self.run_words(adding(self.text, self.out))
        self.assertEqual(status, 0, said)
        self.assertEqual(names(self.place), ["movie.mp4"])

    def arrived(self) -> list[tuple[int, int, str]]:
        """The cues in the MP4 file, as the system's ffmpeg writes them."""
        back = self.folder / "back.srt"
        ffmpeg("-i", self.out, "-map", "0:s:0", back)
        text = back.read_bytes().decode("utf-8").replace("\r", "")
        times = r"(\d+):(\d+):(\d+),(\d+)"
        found = re.findall(rf"^\d+\n{times} --> {times}\n(.*?)\n\n", text, re.M | re.S)
        cues = []
        for *numbers, body in found:
            h, m, s, f, h2, m2, s2, f2 = map(int, numbers)
            start = ((h * 60 + m) * 60 + s) * 1000 + f
            cues.append((start, ((h2 * 60 + m2) * 60 + s2) * 1000 + f2, body))
        return cues

    def assert_arrive(self, cues: list[tuple[int, int, str]]) -> int:
        """Expects these cues; returns the largest time error in milliseconds."""
        arrived = self.arrived()
        self.assertEqual([text for *_, text in arrived], [text for *_, text in cues])
        worst = max(
            abs(time - wanted)
            for cue, wanted_cue in zip(arrived, cues)
            for time, wanted in zip(cue[:2], wanted_cue[:2])
        )
        self.assertLessEqual(worst, 10)
        return worst


class Letters(SubtitleCase):
    def test_every_letter_arrives_from_every_usual_encoding(self) -> None:
        for language, sample in SAMPLES.items():
            cues = cues_of(sample.split("|"))
            for encoding in SETS[language]:
                with self.subTest(language=language, encoding=encoding):
                    self.add(srt(cues, "\r\n").encode(encoding))
                    self.assert_arrive(cues)
                    row(
                        SECTION,
                        f"{language} in {encoding}",
                        f"{len(cues)} of {len(self.arrived())} cues, all letters correct",
                    )

    def test_few_cues_are_enough(self) -> None:
        for language, sample in SAMPLES.items():
            texts = sample.split("|")
            for encoding in SETS[language]:
                for at in (0, len(texts) - 3):
                    with self.subTest(language=language, encoding=encoding, at=at):
                        cues = cues_of(texts[at : at + 3])
                        self.add(srt(cues).encode(encoding))
                        self.assert_arrive(cues)
        row(SECTION, "The first and the last three cues of each of these", "all letters correct")

    def test_ligatures_of_latin_9_arrive(self) -> None:
        cues = cues_of(LATIN_9.split("|"))
        for encoding in ("cp1252", "iso8859-15"):
            self.add(srt(cues).encode(encoding))
            self.assert_arrive(cues)
        row(SECTION, "French ligatures in cp1252 and iso8859-15", "all letters correct")

    def test_unicode_arrives_with_and_without_mark(self) -> None:
        texts = [sample.split("|")[0] for sample in SAMPLES.values()]
        cues = cues_of([*texts, "日本語 😀 עברית ♪ …"])
        for form, encode in UNICODE.items():
            with self.subTest(form):
                self.add(encode(srt(cues, "\r\n")))
                self.assert_arrive(cues)
                row(SECTION, f"Six scripts in {form}", "all letters correct")

    def test_any_line_ending_works(self) -> None:
        cues = cues_of(["One", "Two\nlines", "Three"])
        for name, end in (("CR", "\r"), ("LF", "\n"), ("CRLF", "\r\n")):
            self.add(srt(cues, end))
            self.assert_arrive(cues)
            row(SECTION, f"Lines that end in {name}", "3 of 3 cues")


class Cues(SubtitleCase):
    def test_all_cues_arrive_at_their_times(self) -> None:
        cues = [(at * 7013, at * 7013 + 2999, f"Cue {at}") for at in range(1, 1001)]
        self.add(srt(cues))
        worst = self.assert_arrive(cues)
        count = len(self.arrived())
        row(SECTION, "1,000 cues over two hours", f"{count} cues, times within {worst} ms")

    def test_late_cues_and_long_breaks_keep_their_times(self) -> None:
        hour = 3_600_000
        cues = [
            (503, 1507, "early"),
            (59 * 60_000 + 58_001, 59 * 60_000 + 59_999, "before the hour"),
            (hour, hour + 1000, "at the hour"),
            (3 * hour + 1, 3 * hour + 2503, "behind a break of two hours"),
            (9 * hour, 9 * hour + 1000, "behind a break of six hours"),
        ]
        self.add(srt(cues))
        worst = self.assert_arrive(cues)
        row(
            SECTION,
            "Cues around and beyond an hour, after breaks of hours",
            f"times within {worst} ms",
        )

    def test_odd_cues_do_not_disturb_the_others(self) -> None:
        self.add(
            "00:00:01,000 --> 00:00:02,000\nno number\n\nmore\n\n"
            "7\n00:00:09,000 --> 00:00:08,000\nbackwards\n\n"
            "3\n00:00:04.5 --> 00:00:07,000 X1:10 Y1:20\nlong\n\n"
            "4\n00:00:06,000 --> 00:00:06,500\n42\n\n"
            "5\n00:00:20,000 --> 00:00:21,000\n\n"
            "6\n00:00:30,000 --> 00:00:31,000\nlast"
        )
        self.assert_arrive(
            [
                (1000, 2000, "no number\nmore"),
                (4500, 6000, "long"),
                (6000, 6500, "long\n42"),
                (6500, 7000, "long"),
                (9000, 11000, "backwards"),
                (30000, 31000, "last"),
            ]
        )
        row(
            SECTION,
            "Cues without number, out of order, overlapping, backwards, without text",
            "each at its time; a short one within a long one together with it; one without text is "
            "left out",
        )

    def test_cues_that_begin_together_are_shown_together(self) -> None:
        self.add(srt([(1000, 2000, "above"), (1000, 3000, "below")]))
        self.assert_arrive([(1000, 2000, "above\nbelow"), (2000, 3000, "below")])
        row(SECTION, "Two cues that begin together", "both together until the first one ends")

    def test_cues_that_overlap_are_shown_together(self) -> None:
        self.add(srt([(1000, 10_000, "long"), (2000, 3000, "inner"), (9000, 12_000, "next")]))
        self.assert_arrive(
            [
                (1000, 2000, "long"),
                (2000, 3000, "long\ninner"),
                (3000, 9000, "long"),
                (9000, 10_000, "long\nnext"),
                (10_000, 12_000, "next"),
            ]
        )
        row(
            SECTION,
            "A cue of 9 s with a short one in it and another one over its end",
            f"{len(self.arrived())} cues: the long one alone, with the others below it, and the rest",
        )

    def test_cues_that_hardly_overlap_are_shown_one_after_the_other(self) -> None:
        self.add(srt([(1000, 2080, "first"), (2000, 3000, "second")]))
        self.assert_arrive([(1000, 2000, "first"), (2000, 3000, "second")])
        row(SECTION, "Two cues that overlap for 80 ms", "one ends where the other begins")

    def test_thousands_of_cues_may_overlap(self) -> None:
        cues = [(at * 20, 7_200_000 - at * 20, f"Cue {at}") for at in range(5000)]
        self.add(srt(cues))
        arrived = self.arrived()
        self.assertEqual(len(arrived), 2 * len(cues) - 1)
        self.assertEqual(arrived[4999][2].split("\n"), [f"Cue {at}" for at in range(4992, 5000)])
        row(
            SECTION,
            "5,000 cues within each other",
            f"{len(arrived):,} cues, in each the eight that began last",
        )

    def test_numbers_and_marks_in_mangled_files_are_not_text(self) -> None:
        cues = cues_of(["One\ntwo", "42", "Three"])
        mangled = {
            "An empty line after every line": srt(cues, "\n\n").encode(),
            "Lines that end in CR CR LF": srt(cues, "\r\r\n").encode(),
            "A byte order mark before every cue, as in joined files": srt(cues)
            .replace("\n\n", "\n\n\ufeff")
            .encode("utf-8-sig"),
            "NUL at the end": srt(cues).encode() + b"\0",
            "SUB (Ctrl+Z) at the end": srt(cues).encode() + b"\x1a",
        }
        for name, content in mangled.items():
            with self.subTest(name):
                self.add(content)
                self.assert_arrive(cues)
                row(SECTION, name, f"{len(self.arrived())} of 3 cues, nothing else")


class Markup(SubtitleCase):
    def check(self, text: str, arrives: str) -> None:
        self.add(srt([(0, 900, "-"), (1000, 2000, text)]))
        self.assertEqual(self.arrived()[1][2], arrives)
        row(SECTION, f"`{text}`", f"`{arrives}`")

    def test_markup_that_the_track_supports_is_kept(self) -> None:
        simple = "<i>one</i> <b>two</b> <u>three</u>"
        self.check(simple, simple)
        self.check("a <i>b <b>c</b></i>", "a <i>b </i><b><i>c</i></b>")
        self.check(
            "<i>a <font color=red>b</font></i>", '<i>a </i><i><font color="#ff0000">b</font></i>'
        )
        self.check('<font color="#ff8000">x</font> y', '<font color="#ff8000">x</font> y')
        self.check("<FONT COLOR=Yellow>x</FONT>", '<font color="#ffff00">x</font>')
        self.check('<font size="24">x</font> y', '<font size="24">x</font> y')

    def test_a_break_begins_a_new_line(self) -> None:
        self.add(srt([(1000, 2000, "one<br>two<br/>\nthree")]))
        self.assertEqual(self.arrived(), [(1000, 2000, "one\ntwo\nthree")])
        row(SECTION, "`one<br>two<br/>` and a line below", "three lines")

    def test_other_tags_are_left_out(self) -> None:
        self.check("{\\an8}<c.x>top</c> <v Ann>voice", "top voice")

    def test_what_only_looks_like_markup_stays(self) -> None:
        self.check("a < b > c, <3, {x} & &amp; 100 %", "a < b > c, <3, {x} & &amp; 100 %")


class Track(SubtitleCase):
    def box(self, *path: str) -> bytes:
        """The content of a box in the index, of the last track if there are several."""
        content = self.out.read_bytes()
        for name in ("moov", *path):
            at, found = 0, b""
            while at + 8 <= len(content):
                (size,) = struct.unpack_from(">I", content, at)
                if content[at + 4 : at + 8] == name.encode():
                    found = content[at + 8 : at + size]
                at += max(size, 8)
            content = found
        return content

    def test_the_track_is_as_players_expect_it(self) -> None:
        self.add(srt([(100, 900, "Text")]))
        (stream,) = [s for s in probe(self.out)["streams"] if s["codec_type"] == "subtitle"]
        self.assertEqual(stream["codec_tag_string"], "tx3g")
        self.assertEqual(stream["tags"]["language"], "und")
        head = self.box("trak", "tkhd")
        (flags,) = struct.unpack_from(">I", head)
        layer, group = struct.unpack_from(">hh", head, 32)
        (top,) = struct.unpack_from(">I", head, 68)
        width, height = struct.unpack_from(">II", head, 76)
        self.assertEqual(flags & 1, 1)
        self.assertEqual(self.box("trak", "mdia", "hdlr")[8:12], b"sbtl")
        groups = self.groups()
        self.assertEqual(groups.count(group), 1)
        self.assertEqual((width >> 16, (top + height) >> 16), (160, 120))
        entry = self.box("trak", "mdia", "minf", "stbl", "stsd")
        box = struct.unpack_from(">4h", entry, 8 + 26)
        self.assertEqual(box, (0, 0, height >> 16, 160))
        row(
            SECTION,
            "The track in an MP4 file of 160x120",
            f"tx3g, handler sbtl, enabled, und, groups of the tracks {groups}, layer {layer}, "
            f"{width >> 16}x{height >> 16} at the lower edge",
        )

    def groups(self) -> list[int]:
        """The alternate groups of all tracks."""
        content = self.out.read_bytes()
        heads = re.finditer(re.escape(b"\0\0\0\x5ctkhd"), content)
        return [struct.unpack_from(">h", content, head.end() + 34)[0] for head in heads]

    def test_a_second_run_replaces_it(self) -> None:
        self.add(srt([(100, 900, "First")]))
        self.add(srt([(100, 900, "Second")]))
        self.assert_arrive([(100, 900, "Second")])
        count = sum(s["codec_type"] == "subtitle" for s in probe(self.out)["streams"])
        self.assertEqual(count, 1)
        row(SECTION, "The tool runs twice on an MP4 file", "1 subtitle track, from the second run")


class Refusals(SubtitleCase):
    def check_untouched(self, case: str, content: bytes | None, mp4: Path | None = None) -> None:
        mp4 = mp4 or self.out
        before = mp4.read_bytes()
        if content is None:
            self.text.unlink()
        else:
            self.text.write_bytes(content)
        status, said = self.run_words(adding(self.text, mp4))
        self.assertEqual(status, 1, said)
        self.assertEqual(mp4.read_bytes(), before)
        self.assertIn(mp4.name, said)
        note = note_of(mp4).read_text(encoding="utf-8")
        self.assertIn("is there, without these subtitles", note)
        note_of(mp4).unlink()
        reason = said.strip().splitlines()[0].rsplit(": ", 1)[1]
        row(SECTION, case, f"the MP4 file unchanged; the failure note says: {reason}")

    def test_a_broken_file_leaves_the_mp4_file_unchanged(self) -> None:
        self.check_untouched("An empty file", b"")
        self.check_untouched("Prose", b"Nothing but prose.\n")
        self.check_untouched("Bytes that are not text", bytes(range(256)) * 8)
        self.check_untouched("No file", None)

    def test_files_that_are_not_mp4_are_left_unchanged(self) -> None:
        text = srt([(100, 900, "Text")]).encode()
        for name in ("movie.mkv", "movie.mov"):
            other = self.place / name
            ffmpeg("-i", self.out, "-c", "copy", other)
            self.check_untouched(f"A movie in another container, {name}", text, other)
        (self.place / "text.mp4").write_text("not an MP4 file")
        self.check_untouched("Text instead of an MP4 file", text, self.place / "text.mp4")

    def test_a_later_success_removes_the_failure_note(self) -> None:
        self.text.write_bytes(b"")
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 1)
        self.assertTrue(note_of(self.out).exists())
        self.add(srt([(100, 900, "Text")]))
        outcome = "the MP4 file with subtitles; the failure note is removed"
        row(SECTION, "A good file after a broken one", outcome)


class AfterAConversion(SubtitleCase):
    def test_picture_and_audio_stay_bit_identical(self) -> None:
        self.make_source(2)
        self.out.unlink()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        before = self.sums()
        self.add(srt([(100, 900, "Text")]))
        self.assertEqual(self.sums(), before)
        row(SECTION, "Picture and audio of an MP4 file", "the same packets before and after")

    def sums(self) -> bytes:
        sums = self.folder / "sums"
        ffmpeg("-i", self.out, "-map", "0:v", "-map", "0:a", "-c", "copy", "-f", "streamhash", sums)
        return sums.read_bytes()


class Names(SubtitleCase):
    def run_in(self, folder: Path, text: bytes, mp4: bytes) -> tuple[int, bytes]:
        """Runs the tool in the folder itself, so that a name may start with any character;
        returns its exit status and its output on both streams."""
        done = subprocess.run(
            [os.fsencode(MP4BOX), b"-add", text + b":hdlr=sbtl", mp4],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            timeout=DEADLINE,
            check=False,
            cwd=folder,
        )
        return done.returncode, done.stdout

    def test_a_name_is_only_a_name(self) -> None:
        for what, name in NAMES.items():
            with self.subTest(what):
                text, mp4 = os.fsencode(name) + b".srt", os.fsencode(name) + b".mp4"
                here = os.fsencode(self.place)
                Path(os.fsdecode(os.path.join(here, text))).write_bytes(CUES.encode())
                Path(os.fsdecode(os.path.join(here, mp4))).write_bytes(self.mp4_before)
                before = set(os.listdir(here))
                status, said = self.run_in(self.place, text, mp4)
                self.assertEqual(status, 0, said)
                self.assertEqual(set(os.listdir(here)), before)
                self.assertEqual(len(streams(os.path.join(here, mp4), "subtitle")), 1)
                row(SECTION, f"a name with {what}", "the MP4 file with subtitles")

    def test_a_name_forges_no_progress(self) -> None:
        folder = self.place / "ISO File Writing: (99"
        folder.mkdir()
        broken, mp4 = folder / "100).srt", folder / "100).mp4"
        broken.write_text("no cues")
        mp4.write_bytes(self.mp4_before)
        status, said = self.run_in(self.place, os.fsencode(broken), os.fsencode(mp4))
        self.assertEqual(status, 1)
        self.assertIn(b"(99/100).mp4", said)
        self.assertIsNone(PROGRESS.search(said), said)
        self.assertEqual(mp4.read_bytes(), self.mp4_before)
        row(SECTION, "a broken file with progress in its name", "no progress is read out of it")


if __name__ == "__main__":
    unittest.main()
