"""Movies whose clocks do not start at zero are as long as what is shown."""

from movie_case import MovieCase, Path, frame_sums, frame_times, picture, tone
from sound_measures import beeps, flashes
from table import row

SECTION = "The movie"


class Clocks(MovieCase):
    def test_a_clock_that_starts_at_one_hour(self) -> None:
        for name, video, audio in (
            ("movie.ts", "mpeg2video", "mp2"),
            ("movie.mkv", "mpeg4", "aac"),
            ("movie.flv", "flv", "libmp3lame"),
            ("movie.wmv", "wmv2", "wmav2"),
        ):
            coding = ("-c:v", video, "-c:a", audio, "-output_ts_offset", 3600)
            movie = self.movie(name, *picture(4), *tone(4), *coding)
            report = self.convert(movie)
            self.assertEqual(report.duration, "00:00:04")
            self.assertAlmostEqual(frame_times(self.out)[-1], 4, delta=0.2)
            self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
            case = f"4 s in {movie.suffix[1:].upper()} whose clock starts at one hour"
            row(
                SECTION,
                case,
                f"reported as {report.duration}, all of it converted; no failure note",
            )

    def test_joined_parts(self) -> None:
        for name, more in (
            ("part.ts", ()),
            ("later.ts", ("-output_ts_offset", 3600)),
            ("part.mpg", ()),
        ):
            coding = ("-c:v", "mpeg2video", "-c:a", "mp2", *more)
            first = self.movie(f"first{name}", *picture(4), *tone(4), *coding[:4])
            second = self.movie(name, *picture(4), *tone(4), *coding)
            joined = self.folder / f"joined-{name}"
            joined.write_bytes(first.read_bytes() + second.read_bytes())
            report = self.convert(joined)
            hours, minutes, seconds = report.duration.split(":")
            self.assertEqual((hours, minutes), ("00", "00"))
            self.assertAlmostEqual(int(seconds), 8, delta=1)
            self.assertAlmostEqual(frame_times(self.out)[-1], 8, delta=0.2)
            self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
            gap = "an hour later" if more else "from zero"
            kind = name[-3:].strip(".").upper()
            case = f"two parts of 4 s joined in {kind}, the second one's clock {gap}"
            row(SECTION, case, "about 8 s, all of it converted; no failure note")

    def signals(self, name: str, *options: object) -> Path:
        """4 s with a flash and a beep at 1 s and at 3 s."""
        light = "drawbox=c=white:t=fill:enable='gte(mod(t+0.001,2),1)*lt(mod(t+0.001,2),1.2)'"
        codecs = {"flv": ("flv1", "aac"), "mkv": ("mpeg4", "aac"), "wmv": ("wmv2", "wmav2")}
        video, audio = codecs[name[-3:]]
        sound = "if(gte(mod(t,2),1)*lt(mod(t,2),1.1),sin(1000*2*PI*t)/2,0)"
        return self.movie(
            name,
            *("-f", "lavfi", "-i", f"color=black:s=64x48:r=25:d=4,{light}"),
            *("-f", "lavfi", "-i", f"aevalsrc='{sound}':s=44100:d=4"),
            *("-c:v", video, "-c:a", audio, *options),
        )

    def test_parts_of_recordings(self) -> None:
        for kind in ("flv", "mkv", "wmv"):
            early = self.signals(f"early.{kind}").read_bytes()
            late = self.signals(f"late.{kind}", "-output_ts_offset", 3600).read_bytes()
            for clocks, parts in (
                ("the second one's clock an hour later", early + late),
                ("the second one's clock an hour earlier", late + early),
                ("both from zero", early + early),
            ):
                joined = self.folder / f"joined.{kind}"
                joined.write_bytes(parts)
                case = f"two parts of 4 s joined in {kind.upper()}, {clocks}"
                with self.subTest(case):
                    self.check_whole(joined)
                row(SECTION, case, "about 8 s, all of it in sync within 40 ms; no failure note")

    def test_joined_transport_streams_with_other_stream_numbers(self) -> None:
        coding = ("-c:v", "mpeg2video", "-b:v", "1M", "-c:a", "mp2", "-mpegts_start_pid")
        first = self.movie("first.ts", *picture(3), *tone(3), *coding, 256)
        for clock, offset in (("from zero", 0), ("going on", 3), ("an hour later", 3600)):
            more = (512, "-output_ts_offset", offset)
            size = "160x120" if offset > 3 else "256x144"
            second = self.movie("second.ts", *picture(6, size), *tone(6), *coding, *more)
            joined = self.folder / "joined.ts"
            joined.write_bytes(first.read_bytes() + second.read_bytes())
            report = self.convert(joined)
            self.assertIn(report.duration, ("00:00:08", "00:00:09"))
            self.assertEqual(report.size, size)
            times = frame_times(self.out)
            self.assertAlmostEqual(len(times), 9 * 25, delta=1)
            self.assertAlmostEqual(times[-1], 9, delta=0.1)
            self.assertLess(max(b - a for a, b in zip(times, times[1:])), 0.1)
            self.assertGreater(len(set(frame_sums(self.out, "trim=start=8"))), 20)
            self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
            case = (
                f"3 s of 160x120 and 6 s of {size} with other PIDs joined in TS, the clock {clock}"
            )
            row(SECTION, case, f"reported as {size}, about 9 s; the picture moves up to the end")

    def test_joined_wmv_of_two_kinds(self) -> None:
        coding = ("-c:v", "wmv2", "-c:a", "wmav2")
        first = self.movie("first.wmv", *picture(2), *tone(2), *coding)
        second = self.movie("second.wmv", *picture(3, "320x240"), *tone(3), *coding)
        joined = self.folder / "joined.wmv"
        joined.write_bytes(first.read_bytes() + second.read_bytes())
        self.convert(joined)
        self.assertAlmostEqual(frame_times(self.out)[-1], 2, delta=0.2)
        note = self.out.with_name("out.mp4.failed.txt").read_text(encoding="utf-8")
        self.assertRegex(note, "has 2[.]. of 5[.]. seconds")
        case = "parts of 160x120 and 320x240 joined in WMV, 2 and 3 s"
        row(SECTION, case, "the first part is converted; the failure note says what is missing")

    def check_whole(self, joined: Path) -> None:
        report = self.convert(joined)
        self.assertIn(report.duration, ("00:00:07", "00:00:08"))
        for light, sound, time in zip(
            flashes(self.out), beeps(self.out), (1, 3, 5, 7), strict=True
        ):
            self.assertAlmostEqual(light, sound, delta=0.04)
            self.assertAlmostEqual(light, time, delta=0.2)
        self.assertAlmostEqual(frame_times(self.out)[-1], 8, delta=0.2)
        self.assertRegex(self.ended.text, "time=8[.]")
        self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
