"""Signals at many moments: to the tools, the system's ffmpeg that they run, and the program."""

import itertools
import os
import signal
import time
import unittest
from collections.abc import Callable, Iterator
from pathlib import Path

from movie_case import DEADLINE, streams
from output_case import OutputCase, Started, adding, eventually, names, note_of, transcoding
from table import row

SECTION = "The MP4 file"
STOPPING = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL)
WHOLE_SECONDS = 2
MOMENTS = 14


def is_held(pid: int) -> bool:
    """Whether the process is stopped by a signal."""
    try:
        return "\nState:\tT" in Path(f"/proc/{pid}/status").read_text(encoding="utf-8")
    except OSError:
        return False


class Stops(OutputCase):
    def setUp(self) -> None:
        super().setUp()
        self.make_source(WHOLE_SECONDS, "320x240")
        self.has_long_source = False
        self.old = self.make_mp4(self.out)
        self.temporary = self.folder / "temporary"
        self.temporary.mkdir()
        self.session = self.folder / "session"
        self.session.mkdir()
        self.words = transcoding(self.source, self.out, "320x240")

    def wait_for_work(self, started: Started) -> None:
        """Waits until the system's ffmpeg has started to write."""
        self.assertTrue(eventually(lambda: self.private_size() > 0))

    def private_size(self) -> int:
        return sum(path.stat().st_size for path in self.place.glob(".vantreo-*.part"))

    def stop_in_the_middle(
        self,
        words: list[str],
        whom: Callable[[Started], int | None],
        by: signal.Signals,
        **variables: str,
    ) -> int:
        """Stops a conversion that takes much longer than stopping it."""
        if not self.has_long_source:
            self.make_source(40, "320x240")
            self.has_long_source = True
        started = Started(words, **variables)
        self.wait_for_work(started)
        started.send(whom(started), by)
        status, _ = started.end()
        return status

    def assert_older_file_and_nothing_left_behind(self) -> None:
        self.assertEqual(self.out.read_bytes(), self.old)
        failing = transcoding(self.source, self.place / "next.mp4")
        failing[-3:-3] = ["-threads", "many"]
        self.run_words(failing)
        note_of(self.place / "next.mp4").unlink()
        self.assertEqual(
            [name for name in names(self.place) if not name.endswith(".failed.txt")], ["movie.mp4"]
        )

    def test_a_signal_to_the_tool_ends_everything_and_keeps_the_older_file(self) -> None:
        for by in STOPPING:
            with self.subTest(by.name):
                status = self.stop_in_the_middle(self.words, Started.tool, by)
                expected = -by if by == signal.SIGKILL else 128 + by
                self.assertEqual(status, expected)
                left = names(self.place)
                is_kill = by == signal.SIGKILL
                self.assertEqual(note_of(self.out).exists(), not is_kill)
                if not is_kill:
                    self.assertIn(f"stopped by signal {by.value}", note_of(self.out).read_text())
                    note_of(self.out).unlink()
                self.assertEqual(len(left), 2)
                outcome = (
                    "one private file until the next run, no failure note"
                    if is_kill
                    else "nothing left behind but a failure note"
                )
                self.assert_older_file_and_nothing_left_behind()
                row(
                    SECTION,
                    f"ffmpeg: {by.name} in the middle of a conversion",
                    f"the older MP4 file, nothing running, {outcome}",
                )

    def test_a_cancel_leaves_no_failure_note(self) -> None:
        session = self.folder / "session"
        mark = session / "vantreo" / f"cancel-{os.getpid()}"
        mark.parent.mkdir(parents=True)
        mark.touch()
        for whom in (Started.tool, lambda started: started.number_of("ffmpeg")):
            self.stop_in_the_middle(self.words, whom, signal.SIGTERM, XDG_RUNTIME_DIR=str(session))
            self.assertEqual(names(self.place), ["movie.mp4"])
            self.assertEqual(self.out.read_bytes(), self.old)
        row(
            SECTION,
            "ffmpeg: SIGTERM to it or to the system's ffmpeg, by Cancel in its own window",
            "the older MP4 file, nothing running, nothing left behind, no failure note",
        )

    def test_a_signal_to_the_systems_ffmpeg_is_a_failure(self) -> None:
        for by in STOPPING:
            with self.subTest(by.name):
                status = self.stop_in_the_middle(
                    self.words, lambda started: started.number_of("ffmpeg"), by
                )
                self.assertEqual(status, 1)
                self.assertEqual(names(self.place), ["movie.mp4", "movie.mp4.failed.txt"])
                self.assertEqual(self.out.read_bytes(), self.old)
                note_of(self.out).unlink()
        row(
            SECTION,
            "The system's ffmpeg is ended from outside, by SIGTERM, SIGINT, SIGHUP or SIGKILL",
            "the older MP4 file, nothing running, nothing left behind but a failure note",
        )

    def test_the_end_of_the_program_ends_a_conversion(self) -> None:
        for by in (signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
            with self.subTest(by.name):
                program = ["sh", "-c", '"$@"; exit', "program", *self.words]
                self.stop_in_the_middle(program, lambda started: started.process.pid, by)
                self.assertEqual(names(self.place), ["movie.mp4"])
                self.assertEqual(self.out.read_bytes(), self.old)
        row(
            SECTION,
            "The program (a shell in its place) is ended in the middle of a conversion, by SIGTERM, "
            "SIGHUP or SIGKILL",
            "the older MP4 file, nothing running, nothing left behind, no failure note",
        )

    def folders(self) -> dict[str, str]:
        return {"TMPDIR": str(self.temporary), "XDG_RUNTIME_DIR": str(self.session)}

    def held_adding(self) -> tuple[Started, int]:
        """MP4Box and the process id of its system ffmpeg, which SIGSTOP halts during its work."""
        for _ in range(20):
            started = Started(adding(self.text, self.out), **self.folders())
            self.assertTrue(eventually(lambda: started.number_of("mp4mux") or not started.all()))
            real = started.number_of("mp4mux")
            started.send(real, signal.SIGSTOP)
            if real is not None and eventually(lambda: is_held(real) or not started.all()):
                if is_held(real):
                    return started, real
            started.end()
            self.out.write_bytes(self.old)
        self.fail("it is always faster")

    def test_a_signal_to_mp4box_ends_everything_and_keeps_the_mp4_file(self) -> None:
        for by in (signal.SIGTERM, signal.SIGINT, signal.SIGKILL):
            with self.subTest(by.name):
                started, _ = self.held_adding()
                started.send(started.tool(), by)
                status, _ = started.end()
                is_kill = by == signal.SIGKILL
                self.assertEqual(status, -by if is_kill else 128 + by)
                self.assertEqual(self.out.read_bytes(), self.old)
                self.assertEqual(note_of(self.out).exists(), not is_kill)
                note_of(self.out).unlink(missing_ok=True)
                left = len(names(self.place)) - 1, len(names(self.temporary))
                self.assertEqual(left, (1, 0) if is_kill else (0, 0))
                outcome = (
                    "one private file until the next run, no failure note"
                    if is_kill
                    else "nothing left behind but a failure note"
                )
                self.add_subtitles_without_debris()
                self.out.write_bytes(self.old)
                row(
                    SECTION,
                    f"MP4Box: {by.name} during its work",
                    f"the MP4 file unchanged, nothing running, {outcome}",
                )

    def add_subtitles_without_debris(self) -> None:
        """Checks that the next run leaves nothing but the MP4 file."""
        words = adding(self.text, self.out)
        environment = os.environ | self.folders()
        self.assertEqual(self.run_words(words, env=environment)[0], 0)
        self.assertEqual((names(self.place), names(self.temporary)), (["movie.mp4"], []))

    def test_late_subtitles_leave_a_newer_file_unchanged(self) -> None:
        started, real = self.held_adding()
        newer = self.make_mp4(self.place / "newer.mp4")
        (self.place / "newer.mp4").rename(self.out)
        started.send(real, signal.SIGCONT)
        status, said = started.end()
        self.assertEqual(status, 1, said)
        self.assertEqual(self.out.read_bytes(), newer)
        self.assertIn("was replaced or removed meanwhile", note_of(self.out).read_text())
        self.add_subtitles_without_debris()
        row(
            SECTION,
            "MP4Box: the MP4 file is replaced by a newer one meanwhile",
            "the newer MP4 file, unchanged; a failure note until it has its subtitles",
        )

    def test_a_hangup_does_not_stop_mp4box(self) -> None:
        for whom in (Started.tool, lambda started: started.number_of("mp4mux")):
            started, real = self.held_adding()
            started.send(whom(started), signal.SIGHUP)
            started.send(real, signal.SIGCONT)
            status, said = started.end()
            self.assertEqual(status, 0, said)
            self.assertEqual(len(streams(self.out, "subtitle")), 1)
            self.assertEqual((names(self.place), names(self.temporary)), (["movie.mp4"], []))
        row(
            SECTION,
            "MP4Box: SIGHUP during its work, or to the system's ffmpeg below it",
            "the MP4 file with subtitles, nothing left behind, no failure note",
        )

    def test_a_signal_to_the_systems_ffmpeg_below_mp4box_is_a_failure(self) -> None:
        for by in (signal.SIGTERM, signal.SIGINT, signal.SIGKILL):
            with self.subTest(by.name):
                started, real = self.held_adding()
                started.send(real, by)
                started.send(real, signal.SIGCONT)
                status, said = started.end()
                self.assertEqual(status, 1, said)
                self.assertEqual(self.out.read_bytes(), self.old)
                self.assertEqual(names(self.place), ["movie.mp4", "movie.mp4.failed.txt"])
                self.assertEqual(names(self.temporary), [])
                note_of(self.out).unlink()
        row(
            SECTION,
            "The system's ffmpeg below MP4Box is ended from outside, by SIGTERM, SIGINT or SIGKILL",
            "the MP4 file unchanged, nothing running, nothing left behind but a failure note",
        )

    def moments(self, words: list[str]) -> Iterator[float]:
        """Seconds after the start: spread over slightly more than a run, then later and later ones
        until the deadline."""
        start = time.monotonic()
        self.assertEqual(self.run_words(words)[0], 0)
        end = time.monotonic()
        step = 1.2 * (end - start) / MOMENTS
        moments = itertools.count(0, step)
        return itertools.takewhile(lambda _: time.monotonic() < end + DEADLINE, moments)

    def stop_at(self, moment: float, words: list[str], by: signal.Signals) -> str:
        """Sends the signal after so many seconds; returns which MP4 file is at the output then."""
        self.out.write_bytes(self.old)
        started = Started(words)
        time.sleep(moment)
        started.send(started.tool(), by)
        started.end()
        if self.out.read_bytes() == self.old:
            return "old"
        self.assert_whole_mp4(self.out, WHOLE_SECONDS)
        return "new"

    def sweep(self, words: list[str], by: signal.Signals) -> None:
        """Stops runs at many moments, until there were enough of them and one came too late."""
        seen = []
        for moment in self.moments(words):
            seen.append(self.stop_at(moment, words, by))
            if len(seen) >= MOMENTS and seen[-1] == "new":
                break
        self.assertEqual(set(seen), {"old", "new"}, seen)
        note_of(self.out).unlink(missing_ok=True)
        self.assertLessEqual(len(list(self.place.glob(".vantreo-*.part"))), 1)
        self.out.write_bytes(self.old)
        self.assert_older_file_and_nothing_left_behind()

    def test_at_every_moment_there_is_the_older_movie_or_the_whole_new_one(self) -> None:
        tools = (
            ("ffmpeg", transcoding(self.source, self.out)),
            ("MP4Box", adding(self.text, self.out)),
        )
        for tool, words in tools:
            for by in (signal.SIGTERM, signal.SIGKILL):
                with self.subTest(tool=tool, signal=by.name):
                    self.sweep(words, by)
                    note_of(self.out).unlink(missing_ok=True)
                    row(
                        SECTION,
                        f"{tool}: {by.name} at {MOMENTS} or more moments of a run",
                        "the older MP4 file unchanged or the whole new one, nothing running, "
                        "nothing left behind after the next run; both occurred",
                    )


if __name__ == "__main__":
    unittest.main()
