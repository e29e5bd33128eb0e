"""The sound of an ordinary film is not listened to; where there is trouble it is, once."""

import re
import shutil
import signal
import time
import unittest
from pathlib import Path

from film_case import SMALL, Ended, damage_sound, picture, pitch_of, streams, tone
from output_case import OutputCase, Started, eventually, names, note_of, transcoding
from table import row

SECTION = "The film that comes in"
SILENT = "was made, without sound."

# Passes its words on to the system's tool and writes them down; "$listens" tells of ffprobe whether
# it is to decode sound, "$hears" of ffmpeg whether it is to encode some.
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
        """How often the tool has been started since this was asked last."""
        log = self.tools / f"{tool}.log"
        count = len(log.read_text().splitlines()) if log.exists() else 0
        log.unlink(missing_ok=True)
        return count

    def encode(self, film: Path) -> Ended:
        """A conversion without the report before it."""
        ended = self.transcode(film, 160, 120, environment=self.environment)
        self.assertEqual(ended.status, 0, ended.text)
        return ended

    def assert_starts(self, ffprobe: int, ffmpeg: int) -> None:
        self.assertEqual((self.starts("ffprobe"), self.starts("ffmpeg")), (ffprobe, ffmpeg))

    def note(self) -> str:
        return note_of(self.out).read_text(encoding="utf-8")

    def damaged(self, *pitches: int, codec: str = "aac") -> Path:
        """A film of whose first sound nothing can be decoded."""
        film = self.sounds("film.mp4", *pitches, more=("-c:v", "mpeg4", "-c:a", codec))
        damage_sound(film)
        return film

    def test_ordinary_films_are_not_listened_to(self) -> None:
        films = [self.sounds("one.mp4", 440), self.sounds("two.mp4", 440, 880)]
        for film in films:
            self.encode(film)
            self.assert_starts(ffprobe=1, ffmpeg=1)
        # The answer to the report is kept of a film that has not changed in the last seconds.
        self.assertTrue(eventually(lambda: time.time() > films[-1].stat().st_ctime + 3))
        for film in films:
            self.assertEqual(self.ask(film, environment=self.environment).status, 0)
            self.assert_starts(ffprobe=1, ffmpeg=0)
            self.encode(film)
            self.assert_starts(ffprobe=0, ffmpeg=1)

    def test_only_damaged_sound_leaves_the_picture_and_a_note(self) -> None:
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
            "the only sound all damaged",
            "a film without sound; the failure note says that it was lost",
        )

    def test_every_sound_damaged_leaves_the_picture_and_a_note(self) -> None:
        self.record("ffmpeg", after="2> /dev/null")
        for codec in ("aac", "ac3"):
            with self.subTest(codec):
                film = self.damaged(440, 880, 1320, codec=codec)
                damage_sound(film, sound=1)
                damage_sound(film, sound=2)
                self.encode(film)
                self.assertEqual(streams(self.out, "audio"), [])
                self.assertIn(SILENT, self.note())
                self.assertEqual(names(self.place), [self.out.name, note_of(self.out).name])

    def test_another_sound_takes_the_place_of_one_that_is_silent(self) -> None:
        ended = self.encode(self.damaged(440, 880))
        self.assert_starts(ffprobe=3, ffmpeg=2)
        self.assertEqual(pitch_of(self.out), 880)
        self.assertNotIn("Error while decoding", ended.text)
        self.assertEqual(names(self.place), [self.out.name])

    def test_damage_in_the_middle_of_the_sound_does_not_disturb_the_work(self) -> None:
        film = self.film("film.mp4", *picture(3), *tone(3), *SMALL)
        damage_sound(film, 60, 5)
        ended = self.encode(film)
        self.assert_starts(ffprobe=2, ffmpeg=1)
        self.assertNotEqual(ended.messages, [])
        self.assertEqual((pitch_of(self.out), pitch_of(self.out, after=2)), (440, 440))
        self.assertEqual(names(self.place), [self.out.name])
        row(SECTION, "five packets in the middle of the sound damaged", "the sound of 440 Hz")

    def test_sound_that_is_lost_without_a_word_is_missed_in_the_new_film(self) -> None:
        self.record("ffmpeg", after="2> /dev/null")
        for codec in ("aac", "ac3"):
            with self.subTest(codec):
                ended = self.encode(self.damaged(440, 880, codec=codec))
                self.assertEqual(self.starts("ffmpeg"), 2)
                self.assertEqual(pitch_of(self.out), 880)
                times = [float(time) for time in re.findall(r"time=([0-9.]+)", ended.text)]
                self.assertGreater(len(times), 1)
                self.assertEqual(times, sorted(times))

    def test_an_encoder_that_fails_without_a_word_on_the_sound_is_started_without_it(self) -> None:
        self.record("ffmpeg", before='[ -z "$hears" ] || exit 1')
        self.encode(self.damaged(440))
        self.assert_starts(ffprobe=3, ffmpeg=2)
        self.assertIn(SILENT, self.note())

    def test_an_encoder_that_fails_on_good_sound_is_not_started_again(self) -> None:
        self.record("ffmpeg", before='[ -z "$hears" ] || exit 1')
        film = self.sounds("film.mp4", 440)
        ended = self.transcode(film, 160, 120, environment=self.environment)
        self.assertEqual(ended.status, 1)
        self.assert_starts(ffprobe=2, ffmpeg=1)

    def check_stops(self, film: Path) -> None:
        """Stops conversions while one of the system's tools sleeps."""
        for by in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(by.name):
                started = Started(transcoding(film, self.out), **self.environment)
                self.assertTrue(eventually(lambda: "sleep" in started.all().values()))
                started.send(started.tool(), by)
                status, _ = started.end()
                self.assertEqual(status, 128 + by)
                self.assertEqual(names(self.place), ["film.mp4.failed.txt"])
                note_of(self.out).unlink()

    def test_a_stop_while_it_is_listened_ends_all(self) -> None:
        self.record("ffprobe", before='[ -z "$listens" ] || exec sleep 60')
        self.check_stops(self.damaged(440))

    def test_a_stop_while_it_is_listened_afterwards_ends_all(self) -> None:
        self.record("ffprobe", before='[ -z "$listens" ] || exec sleep 60')
        self.record("ffmpeg", after="2> /dev/null")
        self.check_stops(self.damaged(440))

    def test_a_stop_while_it_is_encoded_anew_ends_all(self) -> None:
        self.record("ffmpeg", before='[ -n "$hears" ] || exec sleep 60')
        self.check_stops(self.damaged(440))


if __name__ == "__main__":
    unittest.main()
