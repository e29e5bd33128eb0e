"""Disks that are full, folders that can't be written or go away, limits on files."""

import os
import shutil
import socket
import unittest
from pathlib import Path

from film_case import DEADLINE
from output_case import (
    OutputCase,
    Started,
    adding,
    can_mount,
    eventually,
    names,
    small_files,
    note_of,
    transcoding,
)
from table import row, unmeasured

SECTION = "The file that goes out"

# All but the home folder takes nothing.
SEALED = """
mount --bind "$SEALED" "$SEALED" && mount --bind "$HOME" "$HOME" || exit 99
mount -o remount,bind,ro "$SEALED" || exit 99
exec "$@"
"""


class Faults(OutputCase):
    def tell(self, case: str, words: list[str], outcome: str) -> None:
        tool = "ffmpeg" if words[0].endswith("ffmpeg") else "MP4Box"
        row(SECTION, f"{tool}: {case}", outcome)

    def both_steps(self) -> dict[str, list[str]]:
        self.make_source(2, "320x240")
        return {
            "ffmpeg": transcoding(self.source, self.out, "320x240"),
            "MP4Box": adding(self.text, self.out),
        }

    def check_small_place(self, case: str, size: str, cause: str, **more: str) -> None:
        for tool, words in self.both_steps().items():
            if not can_mount():
                unmeasured(SECTION, f"{tool}: {case}")
                continue
            with self.subTest(tool):
                before = self.make_film(self.out)
                status, said, after = self.run_in(size, words, **more)
                self.assertEqual(status, 1, said)
                self.assertIn(cause, said)
                self.assertEqual((after / "film.mp4").read_bytes(), before)
                left = [name for name in names(after) if name != "filler"]
                note = note_of(after / "film.mp4")
                where = "beside it"
                if not note.exists():
                    (note,) = self.folder.glob("film.mp4~*.failed.txt")
                    self.assertIn(f"what happened is written in '{note}'", said)
                    where = "beside the movie"
                self.assertIn(cause, note.read_text(encoding="utf-8"))
                note.unlink()
                self.tell(
                    case,
                    words,
                    f"the older MP4 file, byte for byte; the failure note {where} and the console say: "
                    f"{cause}",
                )
                self.assertLessEqual(len(left), 2, left)
            shutil.rmtree(self.folder / "after", ignore_errors=True)
            shutil.rmtree(self.folder / "seed", ignore_errors=True)

    def test_a_disk_that_gets_full_keeps_the_older_film(self) -> None:
        room = len(self.make_film(self.out)) + 24_000
        self.check_small_place(
            "the disk gets full during the work", str(room), "No space left on device"
        )

    def test_a_disk_without_a_byte_left_keeps_the_older_film(self) -> None:
        self.check_small_place(
            "the disk is full to the last byte", "1m", "No space left on device", FULL="1"
        )

    def test_a_folder_that_cannot_be_written_is_told(self) -> None:
        self.check_small_place(
            "the folder can't be written", "1m", "Read-only file system", READ_ONLY="1"
        )

    def test_a_limit_on_files_keeps_the_older_film(self) -> None:
        for tool, words in self.both_steps().items():
            with self.subTest(tool):
                before = self.make_film(self.out)
                status, said = self.run_words(words, preexec_fn=small_files)
                self.assertEqual(status, 1, said)
                self.assertEqual(self.out.read_bytes(), before)
                self.assertEqual(names(self.place), ["film.mp4", "film.mp4.failed.txt"])
                note = note_of(self.out).read_text(encoding="utf-8")
                self.assertIn("File too large", note)
                note_of(self.out).unlink()
                self.tell(
                    "a limit on the size of files (as a quota)",
                    words,
                    "the older film, byte for byte; the failure note and the console say: File too large",
                )

    def test_the_note_goes_home_where_nothing_else_can_be_written(self) -> None:
        case = "neither the output folder nor the movie's can be written"
        home = self.folder / "home"
        for tool, words in self.both_steps().items():
            if not can_mount():
                unmeasured(SECTION, f"{tool}: {case}")
                continue
            with self.subTest(tool):
                self.make_film(self.out)
                home.mkdir()
                within = ["unshare", "-Ur", "--mount", "sh", "-c", SEALED, "sh", *words]
                places = {"HOME": str(home), "SEALED": str(self.folder)}
                status, said = self.run_words(within, env=os.environ | places)
                self.assertEqual(status, 1, said)
                (note,) = home.iterdir()
                self.assertIn(f"what happened is written in '{note}'", said)
                self.assertIn(str(self.out), note.read_text(encoding="utf-8"))
                shutil.rmtree(home)
                self.tell(case, words, "the failure note in the home folder, as the console says")

    def test_a_message_bus_that_does_not_answer_holds_nothing_up(self) -> None:
        mute = socket.socket(socket.AF_UNIX)
        self.addCleanup(mute.close)
        mute.bind(str(self.folder / "bus"))
        mute.listen()
        mute.settimeout(DEADLINE)
        words = transcoding(self.folder / "missing.avi", self.out)
        started = Started(words, DBUS_SESSION_BUS_ADDRESS=f"unix:path={self.folder / 'bus'}")
        _, said = started.process.communicate(timeout=DEADLINE)
        connection, _ = mute.accept()
        self.addCleanup(connection.close)
        self.assertIn(b"missing.avi", said)
        self.assertEqual([Path(word).name for word in started.all().values()], ["notify"])
        self.assertTrue(eventually(lambda: not started.all()))
        row(
            SECTION,
            "ffmpeg: a failure where the session's message bus does not answer",
            "it ends at once; the helper for notifications ends by itself",
        )

    def test_a_folder_that_is_removed_is_not_made_again(self) -> None:
        self.make_source(8, "320x240")
        started = Started(transcoding(self.source, self.out, "320x240"))
        self.assertTrue(eventually(lambda: names(self.place)))
        shutil.rmtree(self.place)
        status, said = started.end()
        self.assertEqual(status, 1, said)
        self.assertIn("was removed or moved away", said)
        self.assertFalse(self.place.exists())
        (note,) = self.folder.glob("film.mp4~*.failed.txt")
        self.assertIn("Connect its drive again", note.read_text(encoding="utf-8"))
        row(
            SECTION,
            "ffmpeg: the folder is removed during the work",
            "the failure note beside the movie and the console say that it was removed",
        )

    def test_a_folder_that_is_not_there_is_told(self) -> None:
        self.make_source()
        status, said = self.run_words(transcoding(self.source, Path(self.folder / "no" / "a.mp4")))
        self.assertEqual(status, 1)
        self.assertIn("No such file or directory", said)
        (note,) = self.folder.glob("a.mp4~*.failed.txt")
        self.assertIn(str(note), said)
        self.out = self.folder / "no" / "a.mp4"
        self.out.parent.mkdir()
        self.assertEqual(self.run_words(transcoding(self.source, self.out))[0], 0)
        self.assertFalse(note.exists())
        row(SECTION, "ffmpeg: the folder is missing", "a failure note beside the movie until a success")


if __name__ == "__main__":
    unittest.main()
