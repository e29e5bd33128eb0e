"""Movies whose clocks do not start at zero are as long as what is shown."""

from film_case import FilmCase, frame_times, picture, tone
from table import row

SECTION = "The film that comes in"


class Clocks(FilmCase):
    def test_a_clock_that_starts_at_one_hour(self) -> None:
        for name, video, audio in (
            ("movie.ts", "mpeg2video", "mp2"),
            ("movie.mkv", "mpeg4", "aac"),
            ("movie.flv", "flv", "libmp3lame"),
            ("movie.wmv", "wmv2", "wmav2"),
        ):
            coding = ("-c:v", video, "-c:a", audio, "-output_ts_offset", 3600)
            movie = self.film(name, *picture(4), *tone(4), *coding)
            report = self.convert(movie)
            self.assertEqual(report.duration, "00:00:04")
            self.assertAlmostEqual(frame_times(self.out)[-1], 4, delta=0.2)
            self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
            case = f"4 s in {movie.suffix[1:].upper()} whose clock starts at one hour"
            row(SECTION, case, f"reported as {report.duration}, all of it converted; no trace")

    def test_joined_parts(self) -> None:
        for name, more in (("part.ts", ()), ("later.ts", ("-output_ts_offset", 3600)), ("part.mpg", ())):
            coding = ("-c:v", "mpeg2video", "-c:a", "mp2", *more)
            first = self.film(f"first{name}", *picture(4), *tone(4), *coding[:4])
            second = self.film(name, *picture(4), *tone(4), *coding)
            joined = self.folder / f"joined-{name}"
            joined.write_bytes(first.read_bytes() + second.read_bytes())
            report = self.convert(joined)
            hours, minutes, seconds = report.duration.split(":")
            self.assertEqual((hours, minutes), ("00", "00"))
            self.assertAlmostEqual(int(seconds), 8, delta=1)
            self.assertAlmostEqual(frame_times(self.out)[-1], 8, delta=0.2)
            self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
            gap = "an hour later" if more else "from zero"
            case = f"two parts of 4 s joined in {name[-3:].strip('.').upper()}, the second one's clock {gap}"
            row(SECTION, case, "about 8 s, all of it converted; no trace")
