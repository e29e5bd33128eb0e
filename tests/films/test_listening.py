"""The audio of an ordinary movie is not decoded in advance; after an error it is, once."""

import re
import shutil
import signal
import time
import unittest
from pathlib import Path

from movie_case import SMALL, Ended, damage_sound, picture, pitch_of, streams, tone
from output_case import OutputCase, Started, eventually, names, note_of, transcoding
from table import row

SECTION = "The movie"
SILENT = "was made, without sound."

# Logs its arguments and passes them on to the system's tool. "$listens" is set when ffprobe is to
# decode audio, "$hears" when ffmpeg is to encode some.
RECORDER = """#!/bin/sh
echo "$*" >> {log}
case "$*" in *"-select_streams a"*) listens=1;; esac
case "$*" in *" -af "*) hears=1;; esac
{before}
exec {tool} "$@" {after}
"""


class Listening(OutputCase):
    def setUp(self) -> None:
        super().setUp()
        self.tools = self.folder / "tools"
        self.tools.mkdir()
        self.environment = {"XDG_RUNTIME_DIR": str(self.tools)}
        self.record("ffprobe")
        self.record("ffmpeg")

    def record(self, tool: str, before: str = "", after: str = "") -> None:
        recorder = self.tools / tool
        words = {"log": f"'{recorder}.log'", "tool": shutil.which(tool)}
        recorder.write_text(RECORDER.format(**words, before=before, after=after))
        recorder.chmod(0o755)
        self.environment[f"VANTREO_{tool.upper()}"] = str(recorder)

    def starts(self, tool: str) -> int:
        """How often the tool was started since the last call."""
        log = self.tools / f"{tool}.log"
        count = len(log.read_text().splitlines()) if log.exists() else 0
        log.unlink(missing_ok=True)
        return count

    def encode(self, movie: Path) -> Ended:
        """A conversion without a report before it."""
        ended = self.transcode(movie, 160, 120, environment=self.environment)
        self.assertEqual(ended.status, 0, ended.text)
        return ended

    def assert_starts(self, ffprobe: int, ffmpeg: int) -> None:
        self.assertEqual((self.starts("ffprobe"), self.starts("ffmpeg")), (ffprobe, ffmpeg))

    def note(self) -> str:
        return note_of(self.out).read_text(encoding="utf-8")

    def damaged(self, *pitches: int, codec: str = "aac") -> Path:
        """A movie whose first audio stream cannot be decoded."""
        movie = self.sounds("movie.mp4", *pitches, more=("-c:v", "mpeg4", "-c:a", codec))
        damage_sound(movie)
        return movie

    def test_the_audio_of_ordinary_movies_is_not_decoded_in_advance(self) -> None:
        movies = [self.sounds("one.mp4", 440), self.sounds("two.mp4", 440, 880)]
        for movie in movies:
            self.encode(movie)
            self.assert_starts(ffprobe=1, ffmpeg=1)
        # The report's answer is kept for a movie that has not changed in the last seconds.
        self.assertTrue(eventually(lambda: time.time() > movies[-1].stat().st_ctime + 3))
        for movie in movies:
            self.assertEqual(self.ask(movie, environment=self.environment).status, 0)
            self.assert_starts(ffprobe=1, ffmpeg=0)
            self.encode(movie)
            self.assert_starts(ffprobe=0, ffmpeg=1)

    def test_damaged_audio_leaves_the_picture_and_a_failure_note(self) -> None:
        for codec in ("aac", "ac3"):
            with self.subTest(codec):
                ended = self.encode(self.damaged(440, codec=codec))
                self.assertEqual(self.starts("ffmpeg"), 2)
                self.assertEqual(streams(self.out, "audio"), [])
                self.assertIn(SILENT, self.note())
                self.assertIn("none that can be decoded", ended.messages[-1])
                self.assertNotIn("Error while decoding", ended.text)
        row(
            SECTION,
            "the only audio, all of it damaged",
            "an MP4 file without audio; the failure note says so",
        )

    def test_several_damaged_audio_streams_leave_the_picture_and_a_failure_note(self) -> None:
        self.record("ffmpeg", after="2> /dev/null")
        for codec in ("aac", "ac3"):
            with self.subTest(codec):
                movie = self.damaged(440, 880, 1320, codec=codec)
                damage_sound(movie, sound=1)
                damage_sound(movie, sound=2)
                self.encode(movie)
                self.assertEqual(streams(self.out, "audio"), [])
                self.assertIn(SILENT, self.note())
                self.assertEqual(names(self.place), [self.out.name, note_of(self.out).name])

    def test_another_audio_stream_replaces_one_that_cannot_be_decoded(self) -> None:
        ended = self.encode(self.damaged(440, 880))
        self.assert_starts(ffprobe=3, ffmpeg=2)
        self.assertEqual(pitch_of(self.out), 880)
        self.assertNotIn("Error while decoding", ended.text)
        self.assertEqual(names(self.place), [self.out.name])

    def test_damage_in_the_middle_of_the_audio_does_not_restart_the_conversion(self) -> None:
        movie = self.movie("movie.mp4", *picture(3), *tone(3), *SMALL)
        damage_sound(movie, 60, 5)
        ended = self.encode(movie)
        self.assert_starts(ffprobe=2, ffmpeg=1)
        self.assertNotEqual(ended.messages, [])
        self.assertEqual((pitch_of(self.out), pitch_of(self.out, after=2)), (440, 440))
        self.assertEqual(names(self.place), [self.out.name])
        row(SECTION, "five packets in the middle of the audio damaged", "the audio of 440 Hz")

    def test_silently_lost_audio_is_noticed_in_the_mp4_file(self) -> None:
        self.record("ffmpeg", after="2> /dev/null")
        for codec in ("aac", "ac3"):
            with self.subTest(codec):
                ended = self.encode(self.damaged(440, 880, codec=codec))
                self.assertEqual(self.starts("ffmpeg"), 2)
                self.assertEqual(pitch_of(self.out), 880)
                times = [float(time) for time in re.findall(r"time=([0-9.]+)", ended.text)]
                self.assertGreater(len(times), 1)
                self.assertEqual(times, sorted(times))

    def test_an_encoder_that_fails_silently_on_the_audio_is_restarted_without_it(self) -> None:
        self.record("ffmpeg", before='[ -z "$hears" ] || exit 1')
        self.encode(self.damaged(440))
        self.assert_starts(ffprobe=3, ffmpeg=2)
        self.assertIn(SILENT, self.note())

    def test_an_encoder_that_fails_on_good_audio_is_not_restarted(self) -> None:
        self.record("ffmpeg", before='[ -z "$hears" ] || exit 1')
        movie = self.sounds("movie.mp4", 440)
        ended = self.transcode(movie, 160, 120, environment=self.environment)
        self.assertEqual(ended.status, 1)
        self.assert_starts(ffprobe=2, ffmpeg=1)

    def check_stops(self, movie: Path) -> None:
        """Stops conversions while one of the system's tools sleeps."""
        for by in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(by.name):
                started = Started(transcoding(movie, self.out), **self.environment)
                self.assertTrue(eventually(lambda: "sleep" in started.all().values()))
                started.send(started.tool(), by)
                status, _ = started.end()
                self.assertEqual(status, 128 + by)
                self.assertEqual(names(self.place), ["movie.mp4.failed.txt"])
                note_of(self.out).unlink()

    def test_a_stop_during_the_audio_check_ends_everything(self) -> None:
        self.record("ffprobe", before='[ -z "$listens" ] || exec sleep 60')
        self.check_stops(self.damaged(440))

    def test_a_stop_during_a_later_audio_check_ends_everything(self) -> None:
        self.record("ffprobe", before='[ -z "$listens" ] || exec sleep 60')
        self.record("ffmpeg", after="2> /dev/null")
        self.check_stops(self.damaged(440))

    def test_a_stop_during_a_second_encoding_ends_everything(self) -> None:
        self.record("ffmpeg", before='[ -n "$hears" ] || exec sleep 60')
        self.check_stops(self.damaged(440))


if __name__ == "__main__":
    unittest.main()
