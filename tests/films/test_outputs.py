"""Where an output goes, what is checked before it does, and the failure note of what went wrong."""

import os
import unittest
from pathlib import Path

from film_case import picture, probe, tone
from output_case import OutputCase, adding, names, note_of, transcoding
from table import row

SECTION = "The file that goes out"
FIRST_LINE = "Vantreo: there was a problem with this movie."


class Links(OutputCase):
    def check_refused(self, case: str, out: Path) -> None:
        before = self.source.read_bytes()
        status, said = self.run_words(transcoding(self.source, out))
        self.assertEqual(status, 1)
        self.assertIn("is the input file itself", said)
        self.assertEqual(self.source.read_bytes(), before)
        self.assertTrue(out.samefile(self.source))
        row(SECTION, case, "refused; the source byte for byte")

    def test_an_output_that_is_a_symbolic_link_to_the_source_is_refused(self) -> None:
        self.make_source()
        self.out.symlink_to(self.source)
        self.check_refused("OUT is a symbolic link to the source", self.out)

    def test_an_output_that_is_a_hard_link_to_the_source_is_refused(self) -> None:
        self.make_source()
        self.out.hardlink_to(self.source)
        self.check_refused("OUT is a hard link to the source", self.out)

    def test_an_output_that_leads_to_the_source_through_folders_is_refused(self) -> None:
        self.make_source()
        (self.place / "loop").symlink_to(self.folder)
        self.check_refused(
            "OUT is the source through a linked folder", self.place / "loop" / "film.avi"
        )

    def test_no_step_writes_through_a_link_to_another_file(self) -> None:
        self.make_source()
        other = self.folder / "other.mp4"
        for tool, words in (
            ("ffmpeg", transcoding(self.source, self.out)),
            ("MP4Box", adding(self.text, self.out)),
        ):
            for kind, link in (
                ("symbolic", os.symlink),
                ("hard", os.link),
            ):
                with self.subTest(tool=tool, kind=kind):
                    before = self.make_film(other)
                    link(other, self.out)
                    status, said = self.run_words(words)
                    self.assertEqual(status, 0, said)
                    self.assertEqual(other.read_bytes(), before)
                    self.assertFalse(self.out.is_symlink())
                    self.assertFalse(self.out.samefile(other))
                    row(
                        SECTION,
                        f"{tool}: OUT is a {kind} link to another film",
                        "the new film in the link's place; the other film byte for byte",
                    )
                    self.out.unlink()
                    other.unlink()

    def test_a_film_linked_to_the_source_gets_no_subtitles_after_the_refusal(self) -> None:
        film = self.folder / "source.mp4"
        before = self.make_film(film)
        self.out.symlink_to(film)
        self.assertEqual(self.run_words(transcoding(film, self.out))[0], 1)
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 1)
        self.assertEqual(film.read_bytes(), before)
        row(
            SECTION,
            "MP4Box: OUT is a link to the source, whose conversion was refused",
            "refused; the source byte for byte",
        )


class FailureNotes(OutputCase):
    def note(self) -> str:
        return note_of(self.out).read_text(encoding="utf-8")

    def test_a_failed_conversion_leaves_a_note_that_a_later_success_removes(self) -> None:
        self.source.write_text("no film at all")
        status, _ = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        self.assertEqual(names(self.place), ["film.mp4.failed.txt"])
        text = self.note()
        self.assertTrue(text.startswith(FIRST_LINE), text)
        expected = ("film.avi", "film.mp4", "not a movie", "was only read", "There is no MP4 file")
        for words in expected:
            self.assertIn(words, text)
        self.assertEqual(text.splitlines()[3], "What you can do:")
        self.assertIn("Check that the file plays.", text.splitlines()[4])
        self.make_source()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), ["film.mp4"])
        row(SECTION, "A conversion fails", "`film.mp4.failed.txt` beside where the film would be")
        row(SECTION, "The next conversion succeeds", "the film; the failure note is gone")

    def test_a_line_that_is_not_understood_leaves_a_note(self) -> None:
        before = self.make_film(self.out)
        words = transcoding(self.source, self.out, "big")
        self.assertEqual(self.run_words(words)[0], 2)
        self.assertIn("not a picture size: 'big'", self.note())
        self.assertIn("The older MP4 file", self.note())
        self.assertEqual(self.out.read_bytes(), before)
        row(SECTION, "A command line that is not understood", "the older film; the failure note says why")

    def test_the_note_holds_the_last_lines_of_the_tool(self) -> None:
        self.make_source()
        words = transcoding(self.source, self.out)
        words[-3:-3] = ["-threads", "many"]
        status, said = self.run_words(words)
        self.assertEqual(status, 1)
        last_lines = self.note().split("The last lines of the tool:")[1]
        self.assertIn("many", last_lines)
        for line in last_lines.splitlines()[1:-1]:
            self.assertIn(f"\nffmpeg: {line.strip()}\n", said)
        row(
            SECTION,
            "The system's ffmpeg fails",
            "a failure note with its last lines, which the console has too",
        )

    def test_a_file_of_the_same_name_that_is_not_a_note_stays(self) -> None:
        note_of(self.out).write_text("my notes")
        self.source.write_text("no film at all")
        status, said = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        (away,) = self.folder.glob("film.mp4~*.failed.txt")
        self.assertIn(f"what happened is written in '{away}'", said)
        self.assertIn("is a file of your own, which is kept", said)
        self.make_source()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(note_of(self.out).read_text(), "my notes")
        self.assertFalse(away.exists())
        row(
            SECTION,
            "A person's own file has the failure note's name",
            "stays, after a failure and after a success; the failure note goes beside the movie, as the "
            "console says",
        )

    def test_subtitles_do_not_go_into_an_older_film_after_a_failed_conversion(self) -> None:
        before = self.make_film(self.out)
        self.source.write_text("no film at all")
        status, said = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        self.assertTrue(all(line.startswith("ffmpeg: ") for line in said.splitlines()), said)
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 1)
        self.assertEqual(self.out.read_bytes(), before)
        text = self.note()
        self.assertLess(text.index("== The conversion =="), text.index("== The subtitles =="))
        row(
            SECTION,
            "Both steps over an older film, and the first one fails",
            "the older film, byte for byte; one failure note about both steps",
        )

    def test_a_film_that_its_source_cuts_short_is_delivered_with_a_note(self) -> None:
        whole = self.film(
            "whole.mp4", *picture(10), *tone(10), "-c:v", "libx264", "-movflags", "+faststart"
        )
        content = whole.read_bytes()
        whole.write_bytes(content[: len(content) * 6 // 10])
        status, said = self.run_words(transcoding(whole, self.out))
        self.assertEqual(status, 0, said)
        duration = float(probe(self.out)["format"]["duration"])
        self.assertTrue(3 < duration < 8, duration)
        self.assertIn(f"the MP4 file has {duration:.1f} of 10.0 seconds", self.note())
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 0)
        self.assertIn("are missing", self.note())
        self.assertIn("was made, with what there is", self.note())
        self.assertTrue(self.note().endswith("The MP4 file was made.\n"))
        self.assertEqual(names(self.place), ["film.mp4", "film.mp4.failed.txt"])
        row(
            SECTION,
            "A movie truncated after six tenths",
            "the MP4 file up to the truncation, with subtitles; the failure note says how much is missing",
        )

    def test_a_film_that_is_shorter_by_little_leaves_no_note(self) -> None:
        self.film(
            "film.avi", *picture(8.5), *tone(10), "-c:v", "mpeg4", "-c:a", "pcm_s16le"
        )
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), ["film.mp4"])
        row(SECTION, "The picture ends 1.5 seconds before the sound", "the film; no failure note")

    def test_a_name_that_leaves_no_room_gives_a_shortened_note(self) -> None:
        out = self.place / ("n" * 251 + ".mp4")
        self.source.write_text("no film at all")
        self.assertEqual(self.run_words(transcoding(self.source, out))[0], 1)
        (name,) = names(self.place)
        self.assertRegex(name, "^n{235}~[0-9a-f]{8}.failed.txt$")
        self.make_source()
        out = self.place / ("n" * 251 + ".mp4")
        self.assertEqual(self.run_words(transcoding(self.source, out))[0], 0)
        self.assertEqual(names(self.place), [out.name])
        row(SECTION, "A name of 255 bytes", "the failure note under its first 235 and a mark of its own, until a success")


class Sweep(OutputCase):
    def test_only_stale_files_of_ours_are_swept(self) -> None:
        self.make_source()
        strange = [".vantreo-notes.txt", ".vantreo-abcdefg.part", "film.part", ".part"]
        for name in strange:
            (self.place / name).write_text("mine")
        (self.place / ".vantreo-abcdef.part").write_text("stale")
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), sorted([*strange, "film.mp4"]))
        row(
            SECTION,
            "Stale private files of an earlier run, and others with names like theirs",
            "the stale ones are swept, nothing else",
        )


if __name__ == "__main__":
    unittest.main()
