"""Where an output goes, what is checked first, and the failure note on what went wrong."""

import os
import unittest
from pathlib import Path

from movie_case import picture, probe, tone
from output_case import OutputCase, adding, names, note_of, transcoding
from table import row

SECTION = "The MP4 file"
FIRST_LINE = "Vantreo: there was a problem with this movie."


class Links(OutputCase):
    def check_refused(self, case: str, out: Path) -> None:
        before = self.source.read_bytes()
        status, said = self.run_words(transcoding(self.source, out))
        self.assertEqual(status, 1)
        self.assertIn("is the input file itself", said)
        self.assertEqual(self.source.read_bytes(), before)
        self.assertTrue(out.samefile(self.source))
        row(SECTION, case, "refused; the source is unchanged")

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
            "OUT is the source through a linked folder", self.place / "loop" / "movie.avi"
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
                    before = self.make_mp4(other)
                    link(other, self.out)
                    status, said = self.run_words(words)
                    self.assertEqual(status, 0, said)
                    self.assertEqual(other.read_bytes(), before)
                    self.assertFalse(self.out.is_symlink())
                    self.assertFalse(self.out.samefile(other))
                    row(
                        SECTION,
                        f"{tool}: OUT is a {kind} link to another MP4 file",
                        "the new MP4 file replaces the link; the other file is unchanged",
                    )
                    self.out.unlink()
                    other.unlink()

    def test_a_link_to_the_source_gets_no_subtitles_after_the_refusal(self) -> None:
        movie = self.folder / "source.mp4"
        before = self.make_mp4(movie)
        self.out.symlink_to(movie)
        self.assertEqual(self.run_words(transcoding(movie, self.out))[0], 1)
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 1)
        self.assertEqual(movie.read_bytes(), before)
        row(
            SECTION,
            "MP4Box: OUT is a link to the source, whose conversion was refused",
            "refused; the source is unchanged",
        )


class FailureNotes(OutputCase):
    def note(self) -> str:
        return note_of(self.out).read_text(encoding="utf-8")

    def test_a_failed_conversion_leaves_a_failure_note_that_a_later_success_removes(self) -> None:
        self.source.write_text("not a movie file")
        status, _ = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        self.assertEqual(names(self.place), ["movie.mp4.failed.txt"])
        text = self.note()
        self.assertTrue(text.startswith(FIRST_LINE), text)
        expected = ("movie.avi", "movie.mp4", "not a movie", "was only read", "is no MP4 file")
        for words in expected:
            self.assertIn(words, text)
        self.assertEqual(text.splitlines()[3], "What you can do:")
        self.assertIn("Check that the file plays.", text.splitlines()[4])
        self.make_source()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), ["movie.mp4"])
        row(SECTION, "A conversion fails", "`movie.mp4.failed.txt` in the output folder")
        row(SECTION, "The next conversion succeeds", "the MP4 file; the failure note is removed")

    def test_an_invalid_command_line_leaves_a_failure_note(self) -> None:
        before = self.make_mp4(self.out)
        words = transcoding(self.source, self.out, "big")
        self.assertEqual(self.run_words(words)[0], 2)
        self.assertIn("not a picture size: 'big'", self.note())
        self.assertIn("The older MP4 file", self.note())
        self.assertEqual(self.out.read_bytes(), before)
        row(SECTION, "An invalid command line", "the older MP4 file; a failure note")

    def test_the_failure_note_has_the_last_lines_of_the_tool(self) -> None:
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
            "a failure note with its last lines, which the console shows too",
        )

    def test_a_file_of_the_same_name_that_is_not_a_failure_note_stays(self) -> None:
        note_of(self.out).write_text("my notes")
        self.source.write_text("not a movie file")
        status, said = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        (away,) = self.folder.glob("movie.mp4~*.failed.txt")
        self.assertIn(f"what happened is written in '{away}'", said)
        self.assertIn("is a file of your own, which is kept", said)
        self.make_source()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(note_of(self.out).read_text(), "my notes")
        self.assertFalse(away.exists())
        row(
            SECTION,
            "A user's own file has the failure note's name",
            "it stays; the failure note goes beside the movie, as the console says",
        )

    def test_no_subtitles_are_added_to_an_older_file_after_a_failed_conversion(self) -> None:
        before = self.make_mp4(self.out)
        self.source.write_text("not a movie file")
        status, said = self.run_words(transcoding(self.source, self.out))
        self.assertEqual(status, 1)
        self.assertTrue(all(line.startswith("ffmpeg: ") for line in said.splitlines()), said)
        self.assertEqual(self.run_words(adding(self.text, self.out))[0], 1)
        self.assertEqual(self.out.read_bytes(), before)
        text = self.note()
        self.assertLess(text.index("== The conversion =="), text.index("== The subtitles =="))
        row(
            SECTION,
            "Both steps with an older MP4 file, and the first one fails",
            "the older MP4 file, unchanged; one failure note on both steps",
        )

    def test_a_truncated_movie_is_converted_with_a_failure_note(self) -> None:
        whole = self.movie(
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
        self.assertEqual(names(self.place), ["movie.mp4", "movie.mp4.failed.txt"])
        row(
            SECTION,
            "A movie truncated after 60 %",
            "the MP4 file up to the truncation, with subtitles; the failure note says how much is "
            "missing",
        )

    def test_a_slightly_shorter_mp4_file_leaves_no_failure_note(self) -> None:
        self.movie("movie.avi", *picture(8.5), *tone(10), "-c:v", "mpeg4", "-c:a", "pcm_s16le")
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), ["movie.mp4"])
        case = "The picture ends 1.5 seconds before the audio"
        row(SECTION, case, "the MP4 file; no failure note")

    def test_a_long_name_gives_a_failure_note_with_a_shortened_name(self) -> None:
        out = self.place / ("n" * 251 + ".mp4")
        self.source.write_text("not a movie file")
        self.assertEqual(self.run_words(transcoding(self.source, out))[0], 1)
        (name,) = names(self.place)
        self.assertRegex(name, "^n{235}~[0-9a-f]{8}.failed.txt$")
        self.make_source()
        out = self.place / ("n" * 251 + ".mp4")
        self.assertEqual(self.run_words(transcoding(self.source, out))[0], 0)
        self.assertEqual(names(self.place), [out.name])
        outcome = "a failure note named by its first 235 bytes and a unique suffix, until a success"
        row(SECTION, "A name of 255 bytes", outcome)


class Sweep(OutputCase):
    def test_only_our_own_stale_files_are_removed(self) -> None:
        self.make_source()
        strange = [".vantreo-notes.txt", ".vantreo-abcdefg.part", "movie.part", ".part"]
        for name in strange:
            (self.place / name).write_text("mine")
        (self.place / ".vantreo-abcdef.part").write_text("stale")
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertEqual(names(self.place), sorted([*strange, "movie.mp4"]))
        row(
            SECTION,
            "Stale private files of an earlier run, and other files with similar names",
            "only the stale ones are removed",
        )


if __name__ == "__main__":
    unittest.main()
