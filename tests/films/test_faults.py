"""Full disks, unwritable and disappearing folders, file size limits."""

import os
import shutil
import socket
import unittest
from pathlib import Path

from movie_case import DEADLINE
from output_case import (
    OutputCase,
    Started,
    adding,
    can_mount,
    eventually,
    names,
    note_of,
    small_files,
    transcoding,
)
from table import row, unmeasured

SECTION = "The MP4 file"

# Only the home folder is writable.
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
                before = self.make_mp4(self.out)
                status, said, after = self.run_in(size, words, **more)
                self.assertEqual(status, 1, said)
                self.assertIn(cause, said)
                self.assertEqual((after / "movie.mp4").read_bytes(), before)
                left = [name for name in names(after) if name != "filler"]
                note = note_of(after / "movie.mp4")
                where = "beside it"
                if not note.exists():
                    (note,) = self.folder.glob("movie.mp4~*.failed.txt")
                    self.assertIn(f"what happened is written in '{note}'", said)
                    where = "beside the movie"
                self.assertIn(cause, note.read_text(encoding="utf-8"))
                note.unlink()
                self.tell(
                    case,
                    words,
                    f"the older MP4 file, unchanged; the failure note {where} and the console say: "
                    f"{cause}",
                )
                self.assertLessEqual(len(left), 2, left)
            shutil.rmtree(self.folder / "after", ignore_errors=True)
            shutil.rmtree(self.folder / "seed", ignore_errors=True)

    def test_a_disk_that_fills_up_keeps_the_older_file(self) -> None:
        room = len(self.make_mp4(self.out)) + 24_000
        self.check_small_place(
            "the disk fills up during the conversion", str(room), "No space left on device"
        )

    def test_a_completely_full_disk_keeps_the_older_file(self) -> None:
        self.check_small_place(
            "the disk is full to the last byte", "1m", "No space left on device", FULL="1"
        )

    def test_an_unwritable_folder_is_reported(self) -> None:
        self.check_small_place(
            "the folder is not writable", "1m", "Read-only file system", READ_ONLY="1"
        )

    def test_a_limit_on_files_keeps_the_older_file(self) -> None:
        for tool, words in self.both_steps().items():
            with self.subTest(tool):
                before = self.make_mp4(self.out)
                status, said = self.run_words(words, preexec_fn=small_files)
                self.assertEqual(status, 1, said)
                self.assertEqual(self.out.read_bytes(), before)
                self.assertEqual(names(self.place), ["movie.mp4", "movie.mp4.failed.txt"])
                note = note_of(self.out).read_text(encoding="utf-8")
                self.assertIn("File too large", note)
                note_of(self.out).unlink()
                self.tell(
                    "a file size limit (such as a quota)",
                    words,
                    "the older MP4 file, unchanged; the failure note and the console say: "
                    "File too large",
                )

    def test_the_failure_note_goes_to_the_home_folder_if_nothing_else_is_writable(self) -> None:
        case = "neither the output folder nor the movie's is writable"
        home = self.folder / "home"
        for tool, words in self.both_steps().items():
            if not can_mount():
                unmeasured(SECTION, f"{tool}: {case}")
                continue
            with self.subTest(tool):
                self.make_mp4(self.out)
                home.mkdir()
                within = ["unshare", "-Ur", "--mount", "sh", "-c", SEALED, "sh", *words]
                places = {"HOME": str(home), "SEALED": str(self.folder)}
                status, said = self.run_words(within, env=os.environ | places)
                self.assertEqual(status, 1, said)
                (note,) = home.iterdir()
                self.assertIn(f"what happened is written in '{note}'", said)
                self.assertIn(str(self.out), note.read_text(encoding="utf-8"))
                shutil.rmtree(home)
                self.tell(case, words, "a failure note in the home folder, as the console says")

    def test_an_unresponsive_message_bus_does_not_delay_the_tool(self) -> None:
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
            "it exits at once; the notification helper exits by itself",
        )

    def test_a_removed_folder_is_not_created_again(self) -> None:
        self.make_source(8, "320x240")
        started = Started(transcoding(self.source, self.out, "320x240"))
        self.assertTrue(eventually(lambda: names(self.place)))
        shutil.rmtree(self.place)
        status, said = started.end()
        self.assertEqual(status, 1, said)
        self.assertIn("was removed or moved away", said)
        self.assertFalse(self.place.exists())
        (note,) = self.folder.glob("movie.mp4~*.failed.txt")
        self.assertIn("Connect its drive again", note.read_text(encoding="utf-8"))
        row(
            SECTION,
            "ffmpeg: the folder is removed during the conversion",
            "the failure note beside the movie and the console say so",
        )

    def test_a_missing_folder_is_reported(self) -> None:
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
        outcome = "a failure note beside the movie, until a success"
        row(SECTION, "ffmpeg: the folder is missing", outcome)


if __name__ == "__main__":
    unittest.main()
