"""Frame rates, lengths, and picture and sound in step."""

import re
import subprocess
from fractions import Fraction

from film_case import (
    DEADLINE,
    FilmCase,
    Path,
    ffmpeg,
    frame_times,
    picture,
    rate_of,
    tone,
    video_of,
)
from table import row

SECTION = "The film that comes in"
X264 = ("-c:v", "libx264", "-preset", "ultrafast", "-bf", 0)
NTSC = Fraction(30000, 1001)


def first_light(path: Path) -> float:
    """When the black picture turns white, in seconds."""
    lines = heard(path, "-vf", "signalstats,metadata=print:key=lavfi.signalstats.YAVG:file=-")
    time = 0.0
    for line in lines:
        if found := re.search(r"pts_time:([0-9.]+)", line):
            time = float(found[1])
        if (found := re.search(r"YAVG=([0-9.]+)", line)) and float(found[1]) > 128:
            return time
    raise AssertionError("the picture stays black")


def first_sound(path: Path) -> float:
    """When the silence ends, in seconds."""
    for line in heard(path, "-af", "silencedetect=n=-30dB:d=0.2"):
        if found := re.search(r"silence_end: ([0-9.]+)", line):
            return float(found[1])
    raise AssertionError("there is silence to the end")


def heard(path: Path, *filters: str) -> list[str]:
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-hide_banner", "-i", path, *filters, "-f", "null", "-"],
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        check=True,
        timeout=DEADLINE,
    )
    return done.stdout.decode().splitlines()


class Rates(FilmCase):
    def test_rates_and_lengths(self) -> None:
        for rate, expected in (
            ("12", Fraction(12)),
            ("24000/1001", Fraction(24000, 1001)),
            ("24", Fraction(24)),
            ("25", Fraction(25)),
            ("30000/1001", NTSC),
            ("30", NTSC),
            ("50", NTSC),
            ("60000/1001", NTSC),
            ("120", NTSC),
        ):
            film = self.film("film.mp4", *picture(3, rate=rate), "-c:v", "mpeg4")
            self.convert(film)
            self.assertEqual(rate_of(self.out), expected)
            before = len(frame_times(film)) / Fraction(rate)
            after = len(frame_times(self.out)) / expected
            self.assertLessEqual(abs(before - after), 1 / min(expected, Fraction(rate)))
            row(SECTION, f"{rate} frames a second", f"{expected}, the length within one frame")

    def test_a_slow_uneven_film_keeps_every_frame_time(self) -> None:
        film = self.film(
            "film.mp4",
            *picture(8, rate=30, more="select='not(mod(n,7))+not(mod(n,5))'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:90000", "-c:v", "libx264", "-bf", 0),
        )
        report = self.convert(film)
        self.assertLess(report.rate, 29.97)
        before, after = frame_times(film), frame_times(self.out)
        self.assertEqual(len(before), len(after))
        farthest = max(abs(a - b) for a, b in zip(before, after))
        self.assertLess(farthest, 0.002)
        row(
            SECTION,
            "uneven frames, fewer than 29.97 a second",
            "every frame, each shown when it was, within 2 ms",
        )

    def test_bursts_of_a_screen_recording(self) -> None:
        film = self.film(
            "film.mp4",
            *picture(6, rate=60, more="select='between(t,1.99,3.99)+not(mod(n,6))'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:90000", *X264),
        )
        report = self.convert(film)
        self.assertLess(report.rate, 29.97)
        before, after = frame_times(film), frame_times(self.out)
        seconds = [sum(n <= time < n + 1 for time in after) for n in range(6)]
        self.assertEqual(seconds, [10, 10, 31, 30, 10, 10])
        self.assertLess(max(min(abs(a - b) for b in before) for a in after), 0.002)
        row(
            SECTION,
            f"10 frames a second with 2 s of 60, {report.rate} on average",
            f"in each second {', '.join(map(str, seconds))} frames, each shown when it was",
        )

    def test_a_rhythm_of_uneven_steps(self) -> None:
        film = self.film(
            "film.mkv",
            *picture(3, rate="30000/1001", more="setpts='floor(N*2.5)*1001/60000/TB'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:1000", *X264, "-t", 3),
        )
        stream = video_of(film)
        self.assertEqual(stream["avg_frame_rate"], stream["r_frame_rate"])
        self.convert(film)
        before, after = frame_times(film), frame_times(self.out)
        self.assertEqual(len(before), len(after))
        self.assertLess(max(abs(a - b) for a, b in zip(before, after)), 0.002)
        case = "24 frames a second in the rhythm of 30 (3:2 pulldown), MKV"
        row(SECTION, case, "every frame once, shown when it was, within 2 ms")

    def test_fields_that_are_counted_as_frames(self) -> None:
        film = self.film(
            "film.gxf",
            *("-f", "lavfi", "-i", "color=s=720x576:r=25:d=1.2", *tone(1.2, rate=48000)),
            *("-c:v", "mpeg2video", "-c:a", "pcm_s16le", "-ac", 1),
        )
        self.assertEqual(video_of(film)["avg_frame_rate"], "50/1")
        report = self.convert(film)
        self.assertEqual(report.rate, 25)
        after = frame_times(self.out)
        self.assertEqual(after[:29], [frame / 25 for frame in range(29)])
        self.assertEqual(len(after), 30)
        row(SECTION, "25 frames a second, which GXF calls 50", "25, every frame once")

    def test_slow_pictures_that_begin_late(self) -> None:
        for rate, late in (("1", 0.45), ("5", 0.09)):
            film = self.film(
                "film.mkv",
                *("-itsoffset", late, *picture(4, rate=rate, more="settb=1/1000"), *tone(5)),
                *("-map", "0:v", "-map", "1:a", *X264, "-fps_mode", "passthrough"),
                *("-enc_time_base", "1:90000", "-c:a", "pcm_s16le"),
            )
            before = frame_times(film)
            self.assertAlmostEqual(before[0], late, delta=0.002)
            self.convert(film)
            after = frame_times(self.out)
            self.assertEqual(len(before), len(after))
            farthest = max(abs(a - b) for a, b in zip(before, after))
            self.assertLess(farthest, 0.005)
            self.assertEqual(rate_of(self.out), Fraction(rate))
            row(
                SECTION,
                f"{rate} frames a second that begin {late} s after the sound",
                "every frame within 5 ms of its time; the rate as before",
            )

    def flash(self, rate: str, late: float) -> Path:
        """The picture, which begins late, turns white when the sound begins."""
        white = "settb=1/1000,drawbox=c=white:t=fill:enable='gte(t,4)'"
        return self.film(
            "film.mkv",
            *("-itsoffset", late, "-f", "lavfi", "-i", f"color=black:s=64x48:r={rate}:d=8,{white}"),
            *("-f", "lavfi", "-i", f"sine=f=1000:r=44100:d=8,volume=0:enable='lt(t,{4 + late})'"),
            *("-map", "0:v", "-map", "1:a", "-fps_mode", "passthrough", "-c:v", "mpeg4"),
            *("-enc_time_base", "1:1000", "-c:a", "pcm_s16le"),
        )

    def test_slow_pictures_stay_in_step_with_the_sound(self) -> None:
        for rate, late in (("1", 0.45),):
            film = self.flash(rate, late)
            self.assertLess(abs(first_light(film) - first_sound(film)), 0.03)
            self.convert(film)
            self.assertLess(abs(first_light(self.out) - first_sound(self.out)), 0.04)
            row(
                SECTION,
                f"a flash and a beep in {rate} frames a second that begin {late} s late",
                "in step within 40 ms",
            )

    def phone_film(self, rate: int) -> Path:
        """Four minutes in which frames come late or not at all; light and sound begin at 235 s."""
        return self.film(
            "phone.mp4",
            "-f",
            "lavfi",
            "-i",
            f"color=black:s=64x48:r={rate}:d=240,settb=1/90000,"
            "drawbox=c=white:t=fill:enable='gte(t,235)',"
            "select='gt(random(1),0.1)+lt(t,1)+between(t,234.9,235.1)',"
            "setpts='PTS+900*random(2)*gt(T,1)'",
            "-f",
            "lavfi",
            "-i",
            "sine=f=1000:r=44100:d=240,volume=0:enable='lt(t,235)'",
            *("-fps_mode", "passthrough", "-enc_time_base", "1:90000"),
            *("-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac", "-b:a", "32k"),
        )

    def check_four_minutes(self, rate: int) -> None:
        film = self.phone_film(rate)
        report = self.convert(film)
        self.assertIn(report.duration, ("00:03:59", "00:04:00"))
        self.assertLess(abs(first_light(film) - first_sound(film)), 0.03)
        self.assertLess(abs(first_light(self.out) - first_sound(self.out)), 0.04)
        before, after = frame_times(film)[-1], frame_times(self.out)[-1]
        self.assertLess(abs(before - after), 1 / 29)
        made = f"exactly {rate_of(self.out)}" if report.rate > 29.97 else "its own frame times"
        row(
            SECTION,
            f"four minutes of a phone's uneven frames, up to {rate} a second",
            f"{made}; picture and sound in step within 40 ms at the end, the length within a frame",
        )

    def test_four_minutes_of_uneven_frames(self) -> None:
        self.check_four_minutes(30)
        self.check_four_minutes(60)

    def test_a_gap_in_the_sound_stays_a_gap(self) -> None:
        film = self.film(
            "film.mkv",
            *picture(4),
            "-f",
            "lavfi",
            "-i",
            "sine=f=1000:r=44100:d=4,aselect='lt(t,0.5)+gte(t,2.5)'",
            *("-c:v", "mpeg4", "-c:a", "pcm_s16le"),
        )
        self.convert(film)
        sound = first_sound(self.out)
        self.assertAlmostEqual(sound, 2.5, delta=0.04)
        row(SECTION, "two seconds without sound packets", "silence there, then in step")

    def test_sound_that_begins_late(self) -> None:
        sound = self.film("sound.wav", *tone(2))
        film = self.film(
            "film.mkv",
            *(*picture(4), "-itsoffset", 1.5, "-i", sound),
            *("-c:v", "mpeg4", "-c:a", "copy"),
        )
        self.convert(film)
        start = self.sound_start()
        self.assertAlmostEqual(start, 1.5, delta=0.04)
        row(SECTION, "sound that begins 1.5 s late", "begins as late, within 40 ms")

    def sound_start(self) -> float:
        padded = self.folder / "padded.wav"
        ffmpeg("-i", self.out, "-af", "aresample=async=1:first_pts=0", padded)
        return first_sound(padded)
