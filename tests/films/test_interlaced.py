"""Interlaced movies are deinterlaced at their own rate; progressive ones are not filtered."""

from movie_case import MovieCase, Path, frame_sums, frame_times, picture, rate_of, ssim, video_of
from table import row

SECTION = "The movie"
LACE = "interlace=scan=tff:lowpass=off"


class Interlaced(MovieCase):
    def fields(self, name: str, *coding: object, size: str = "320x240") -> Path:
        return self.movie(name, *picture(0.8, size, 50, LACE), *coding)

    def check(self, case: str, movie: Path) -> None:
        self.convert(movie)
        self.assertEqual(rate_of(self.out), 25)
        self.assertEqual(len(frame_times(self.out)), len(frame_times(movie)))
        width, height = video_of(self.out)["width"], video_of(self.out)["height"]
        scale = f"scale={width}:{height},setsar=1"
        straight = ssim(self.out, movie, to_other=f"bwdif=mode=send_frame,{scale}")
        combed = ssim(self.out, movie, to_other=scale)
        self.assertGreater(straight, 0.93)
        self.assertGreater(straight, combed + 0.01)
        row(SECTION, case, "deinterlaced, 25 frames a second as before, every frame")

    def test_interlaced_movies(self) -> None:
        lace = ("-flags", "+ildct+ilme")
        self.check(
            "interlaced MPEG-2", self.fields("movie.mpg", "-c:v", "mpeg2video", "-q:v", 2, *lace)
        )
        self.check(
            "interlaced H.264", self.fields("movie.mkv", "-c:v", "libx264", "-crf", 12, *lace)
        )
        self.check(
            "interlaced MPEG-4 in AVI, which has no flag for it",
            self.fields("movie.avi", "-c:v", "mpeg4", "-q:v", 2, *lace),
        )
        self.check(
            "interlaced DV flagged as progressive",
            self.fields("movie.mov", "-pix_fmt", "yuv420p", "-c:v", "dvvideo", size="720x576"),
        )

    def test_interlaced_captures(self) -> None:
        fields = ("-field_order", "tt", "-top", 1)
        for case, name, coding in (
            ("packed 4:2:2 (uyvy422) in MOV", "movie.mov", ("rawvideo", "-pix_fmt", "uyvy422")),
            ("HuffYUV in MOV, without flags", "movie.mov", ("huffyuv",)),
        ):
            self.check(
                f"an interlaced capture: {case}", self.fields(name, "-c:v", *coding, *fields)
            )

    def filters_used_on(self, movie: Path) -> str:
        """Converts the movie; returns the filters that the tool passes to the system's ffmpeg."""
        recorder = self.folder / "ffmpeg"
        words = self.folder / "words"
        recorder.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$@\" > '{words}'\nexec ffmpeg \"$@\"\n")
        recorder.chmod(0o755)
        self.convert(movie, environment={"VANTREO_FFMPEG": str(recorder)})
        used = words.read_text(encoding="utf-8").splitlines()
        return used[used.index("-vf") + 1]

    def test_a_progressive_movie(self) -> None:
        movie = self.movie("movie.mkv", *picture(0.8), "-c:v", "libx264", "-crf", 12)
        self.assertEqual(frame_sums(movie, self.filters_used_on(movie)), frame_sums(movie))
        self.assertEqual(len(frame_times(self.out)), 20)
        self.assertGreater(ssim(self.out, movie), 0.95)
        row(
            SECTION,
            "a progressive movie",
            "not deinterlaced: its pictures have the same checksums",
        )

    def test_the_same_filters_change_an_interlaced_movie(self) -> None:
        lace = ("-flags", "+ildct+ilme")
        movie = self.fields("movie.mkv", "-c:v", "libx264", *lace, size="160x120")
        filters = self.filters_used_on(movie)
        changed = zip(frame_sums(movie, filters), frame_sums(movie), strict=True)
        self.assertTrue(all(one != other for one, other in changed))
        progressive = self.movie("other.mkv", *picture(0.2), "-c:v", "libx264")
        self.assertEqual(self.filters_used_on(progressive), filters)
        row(
            SECTION,
            "an interlaced movie, through the same filters as the progressive one",
            "every picture is changed",
        )
