"""Frame rates, lengths, and sync of picture and audio."""

from fractions import Fraction

from movie_case import (
    MovieCase,
    Path,
    ffmpeg,
    frame_times,
    picture,
    rate_of,
    tone,
    video_of,
)
from sound_measures import flashes, silence_ends
from table import row

SECTION = "The movie"
X264 = ("-c:v", "libx264", "-preset", "ultrafast", "-bf", 0)
NTSC = Fraction(30000, 1001)


class Rates(MovieCase):
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
            movie = self.movie("movie.mp4", *picture(3, rate=rate), "-c:v", "mpeg4")
            self.convert(movie)
            self.assertEqual(rate_of(self.out), expected)
            before = len(frame_times(movie)) / Fraction(rate)
            after = len(frame_times(self.out)) / expected
            self.assertLessEqual(abs(before - after), 1 / min(expected, Fraction(rate)))
            row(SECTION, f"{rate} frames a second", f"{expected}, the length exact to a frame")

    def test_a_movie_with_slow_uneven_frames_keeps_every_frame_time(self) -> None:
        movie = self.movie(
            "movie.mp4",
            *picture(8, rate=30, more="select='not(mod(n,7))+not(mod(n,5))'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:90000", "-c:v", "libx264", "-bf", 0),
        )
        report = self.convert(movie)
        self.assertLess(report.rate, 29.97)
        before, after = frame_times(movie), frame_times(self.out)
        self.assertEqual(len(before), len(after))
        farthest = max(abs(a - b) for a, b in zip(before, after))
        self.assertLess(farthest, 0.002)
        row(
            SECTION,
            "uneven frames, fewer than 29.97 a second",
            "every frame at its time, within 2 ms",
        )

    def test_bursts_of_a_screen_recording(self) -> None:
        movie = self.movie(
            "movie.mp4",
            *picture(6, rate=60, more="select='between(t,1.99,3.99)+not(mod(n,6))'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:90000", *X264),
        )
        report = self.convert(movie)
        self.assertLess(report.rate, 29.97)
        before, after = frame_times(movie), frame_times(self.out)
        seconds = [sum(n <= time < n + 1 for time in after) for n in range(6)]
        self.assertEqual(seconds, [10, 10, 31, 30, 10, 10])
        self.assertLess(max(min(abs(a - b) for b in before) for a in after), 0.002)
        row(
            SECTION,
            f"10 frames a second with 2 s of 60, {report.rate} on average",
            f"in each second {', '.join(map(str, seconds))} frames, each at its time",
        )

    def test_3_2_pulldown(self) -> None:
        movie = self.movie(
            "movie.mkv",
            *picture(3, rate="30000/1001", more="setpts='floor(N*2.5)*1001/60000/TB'"),
            *("-fps_mode", "passthrough", "-enc_time_base", "1:1000", *X264, "-t", 3),
        )
        stream = video_of(movie)
        self.assertEqual(stream["avg_frame_rate"], stream["r_frame_rate"])
        self.convert(movie)
        before, after = frame_times(movie), frame_times(self.out)
        self.assertEqual(len(before), len(after))
        self.assertLess(max(abs(a - b) for a, b in zip(before, after)), 0.002)
        case = "24 frames a second with 3:2 pulldown to 30, MKV"
        row(SECTION, case, "every frame once, at its time within 2 ms")

    def test_fields_that_are_counted_as_frames(self) -> None:
        movie = self.movie(
            "movie.gxf",
            *("-f", "lavfi", "-i", "color=s=720x576:r=25:d=1.2", *tone(1.2, rate=48000)),
            *("-c:v", "mpeg2video", "-c:a", "pcm_s16le", "-ac", 1),
        )
        self.assertEqual(video_of(movie)["avg_frame_rate"], "50/1")
        report = self.convert(movie)
        self.assertEqual(report.rate, 25)
        after = frame_times(self.out)
        self.assertEqual(after[:29], [frame / 25 for frame in range(29)])
        self.assertEqual(len(after), 30)
        row(SECTION, "25 frames a second, which GXF reports as 50", "25, every frame once")

    def test_slow_pictures_that_start_late(self) -> None:
        for rate, late in (("1", 0.45), ("5", 0.09)):
            movie = self.movie(
                "movie.mkv",
                *("-itsoffset", late, *picture(4, rate=rate, more="settb=1/1000"), *tone(5)),
                *("-map", "0:v", "-map", "1:a", *X264, "-fps_mode", "passthrough"),
                *("-enc_time_base", "1:90000", "-c:a", "pcm_s16le"),
            )
            before = frame_times(movie)
            self.assertAlmostEqual(before[0], late, delta=0.002)
            self.convert(movie)
            after = frame_times(self.out)
            self.assertEqual(len(before), len(after))
            farthest = max(abs(a - b) for a, b in zip(before, after))
            self.assertLess(farthest, 0.005)
            self.assertEqual(rate_of(self.out), Fraction(rate))
            row(
                SECTION,
                f"{rate} frames a second, starting {late} s after the audio",
                "every frame within 5 ms of its time; the rate as before",
            )

    def flash(self, rate: str, late: float) -> Path:
        """The picture starts late and turns white when the audio starts."""
        white = "settb=1/1000,drawbox=c=white:t=fill:enable='gte(t,4)'"
        return self.movie(
            "movie.mkv",
            *("-itsoffset", late, "-f", "lavfi", "-i", f"color=black:s=64x48:r={rate}:d=8,{white}"),
            *("-f", "lavfi", "-i", f"sine=f=1000:r=44100:d=8,volume=0:enable='lt(t,{4 + late})'"),
            *("-map", "0:v", "-map", "1:a", "-fps_mode", "passthrough", "-c:v", "mpeg4"),
            *("-enc_time_base", "1:1000", "-c:a", "pcm_s16le"),
        )

    def test_slow_pictures_stay_in_sync_with_the_audio(self) -> None:
        for rate, late in (("1", 0.45),):
            movie = self.flash(rate, late)
            self.assertLess(abs(flashes(movie)[0] - silence_ends(movie)[0]), 0.03)
            self.convert(movie)
            self.assertLess(abs(flashes(self.out)[0] - silence_ends(self.out)[0]), 0.04)
            row(
                SECTION,
                f"a flash and a beep at {rate} frames a second, starting {late} s late",
                "in sync within 40 ms",
            )

    def phone_movie(self, rate: int) -> Path:
        """Four minutes with late and missing frames; the flash and the tone start at 235 s."""
        return self.movie(
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
        movie = self.phone_movie(rate)
        report = self.convert(movie)
        self.assertIn(report.duration, ("00:03:59", "00:04:00"))
        self.assertLess(abs(flashes(movie)[0] - silence_ends(movie)[0]), 0.03)
        self.assertLess(abs(flashes(self.out)[0] - silence_ends(self.out)[0]), 0.04)
        before, after = frame_times(movie)[-1], frame_times(self.out)[-1]
        self.assertLess(abs(before - after), 1 / 29)
        made = f"exactly {rate_of(self.out)}" if report.rate > 29.97 else "its own frame times"
        row(
            SECTION,
            f"four minutes of a phone's uneven frames, up to {rate} a second",
            f"{made}; picture and audio in sync within 40 ms at the end, the length exact to a "
            "frame",
        )

    def test_four_minutes_of_uneven_frames(self) -> None:
        self.check_four_minutes(30)
        self.check_four_minutes(60)

    def test_a_gap_in_the_audio_stays_a_gap(self) -> None:
        movie = self.movie(
            "movie.mkv",
            *picture(4),
            "-f",
            "lavfi",
            "-i",
            "sine=f=1000:r=44100:d=4,aselect='lt(t,0.5)+gte(t,2.5)'",
            *("-c:v", "mpeg4", "-c:a", "pcm_s16le"),
        )
        self.convert(movie)
        sound = silence_ends(self.out)[0]
        self.assertAlmostEqual(sound, 2.5, delta=0.04)
        row(SECTION, "two seconds without audio packets", "silence there, then in sync")

    def test_audio_that_starts_late(self) -> None:
        sound = self.movie("sound.wav", *tone(2))
        movie = self.movie(
            "movie.mkv",
            *(*picture(4), "-itsoffset", 1.5, "-i", sound),
            *("-c:v", "mpeg4", "-c:a", "copy"),
        )
        self.convert(movie)
        start = self.sound_start()
        self.assertAlmostEqual(start, 1.5, delta=0.04)
        row(SECTION, "audio that starts 1.5 s late", "starts equally late, within 40 ms")

    def sound_start(self) -> float:
        padded = self.folder / "padded.wav"
        ffmpeg("-i", self.out, "-af", "aresample=async=1:first_pts=0", padded)
        return silence_ends(padded)[0]
