"""Interlaced films are deinterlaced at their own rate; progressive ones stay untouched."""

from film_case import FilmCase, Path, frame_sums, frame_times, picture, rate_of, ssim, video_of
from table import row

SECTION = "The film that comes in"
LACE = "interlace=scan=tff:lowpass=off"


class Interlaced(FilmCase):
    def fields(self, name: str, *coding: object, size: str = "320x240") -> Path:
        return self.film(name, *picture(0.8, size, 50, LACE), *coding)

    def check(self, case: str, film: Path) -> None:
        self.convert(film)
        self.assertEqual(rate_of(self.out), 25)
        self.assertEqual(len(frame_times(self.out)), len(frame_times(film)))
        width, height = video_of(self.out)["width"], video_of(self.out)["height"]
        scale = f"scale={width}:{height},setsar=1"
        straight = ssim(self.out, film, to_other=f"bwdif=mode=send_frame,{scale}")
        combed = ssim(self.out, film, to_other=scale)
        self.assertGreater(straight, 0.93)
        self.assertGreater(straight, combed + 0.01)
        row(SECTION, case, "deinterlaced, 25 frames a second as before, every frame")

    def test_interlaced_films(self) -> None:
        lace = ("-flags", "+ildct+ilme")
        self.check(
            "interlaced MPEG-2", self.fields("film.mpg", "-c:v", "mpeg2video", "-q:v", 2, *lace)
        )
        self.check(
            "interlaced H.264", self.fields("film.mkv", "-c:v", "libx264", "-crf", 12, *lace)
        )
        self.check(
            "interlaced MPEG-4, of which AVI does not tell",
            self.fields("film.avi", "-c:v", "mpeg4", "-q:v", 2, *lace),
        )
        self.check(
            "interlaced DV that calls itself progressive",
            self.fields("film.mov", "-pix_fmt", "yuv420p", "-c:v", "dvvideo", size="720x576"),
        )

    def test_interlaced_captures(self) -> None:
        fields = ("-field_order", "tt", "-top", 1)
        for case, name, coding in (
            ("packed 4:2:2 (uyvy422) in MOV", "film.mov", ("rawvideo", "-pix_fmt", "uyvy422")),
            ("HuffYUV in MOV, which marks no frames", "film.mov", ("huffyuv",)),
        ):
            self.check(
                f"an interlaced capture: {case}", self.fields(name, "-c:v", *coding, *fields)
            )

    def filters_used_on(self, film: Path) -> str:
        """Converts the film; what the tool has the system's ffmpeg do with its pictures."""
        recorder = self.folder / "ffmpeg"
        words = self.folder / "words"
        recorder.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$@\" > '{words}'\nexec ffmpeg \"$@\"\n")
        recorder.chmod(0o755)
        self.convert(film, environment={"VANTREO_FFMPEG": str(recorder)})
        used = words.read_text(encoding="utf-8").splitlines()
        return used[used.index("-vf") + 1]

    def test_a_progressive_film(self) -> None:
        film = self.film("film.mkv", *picture(0.8), "-c:v", "libx264", "-crf", 12)
        self.assertEqual(frame_sums(film, self.filters_used_on(film)), frame_sums(film))
        self.assertEqual(len(frame_times(self.out)), 20)
        self.assertGreater(ssim(self.out, film), 0.95)
        row(
            SECTION,
            "a progressive film",
            "untouched by the deinterlacer: its pictures have the same checksums",
        )

    def test_the_same_filters_change_an_interlaced_film(self) -> None:
        lace = ("-flags", "+ildct+ilme")
        film = self.fields("film.mkv", "-c:v", "libx264", *lace, size="160x120")
        filters = self.filters_used_on(film)
        changed = zip(frame_sums(film, filters), frame_sums(film), strict=True)
        self.assertTrue(all(one != other for one, other in changed))
        progressive = self.film("other.mkv", *picture(0.2), "-c:v", "libx264")
        self.assertEqual(self.filters_used_on(progressive), filters)
        row(
            SECTION,
            "an interlaced film, by the very filters of the progressive one",
            "every picture is changed",
        )
