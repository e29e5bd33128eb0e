"""The picture is reported and converted as a player shows it."""

from movie_case import MovieCase, Path, asked_size, ffmpeg, picture, size_of, ssim, video_of
from table import row

ALIKE = 0.95


class Shown(MovieCase):
    def turned(self, degrees: int) -> Path:
        movie = self.movie("flat.mp4", *picture(0.4, "320x160"), "-c:v", "libx264", "-crf", 10)
        turned = self.folder / "turned.mp4"
        ffmpeg("-i", movie, "-c", "copy", "-metadata:s:v", f"rotate={degrees}", turned)
        return turned

    def check(self, case: str, movie: Path) -> None:
        report = self.convert(movie)
        width, height = asked_size(report)
        self.assertEqual(video_of(self.out)["sample_aspect_ratio"], "1:1")
        self.assertNotIn("rotation", str(video_of(self.out)))
        to_movie = f"scale={width // 2 * 2}:{height // 2 * 2},setsar=1"
        self.assertGreater(ssim(self.out, movie, to_other=to_movie), ALIKE)
        row(
            "The movie",
            case,
            f"reported as {report.size}; {size_of(self.out)} in square pixels, the same picture as "
            "a direct conversion",
        )

    def test_a_quarter_turn_to_either_side(self) -> None:
        for degrees in (90, 270):
            self.check(f"320x160 turned by {degrees} degrees", self.turned(degrees))

    def test_upside_down(self) -> None:
        self.check("320x160 turned by 180 degrees", self.turned(180))

    def test_anamorphic_pictures(self) -> None:
        for name, size, aspect, coding in (
            ("PAL", "720x576", "16/9", ("mpeg2video", "-q:v", 2)),
            ("NTSC", "720x480", "4/3", ("mpeg2video", "-q:v", 2)),
            ("narrow", "360x480", "1/2", ("libx264", "-crf", 10)),
        ):
            movie = self.movie(
                f"{name}.mkv", *picture(0.4, size, more=f"setdar={aspect}"), "-c:v", *coding
            )
            self.check(f"{name} {size} shown at {aspect.replace('/', ':')}", movie)

    def test_a_rotated_anamorphic_picture(self) -> None:
        movie = self.movie(
            "flat.mp4",
            *picture(0.4, "320x240", more="setsar=2/1"),
            *("-c:v", "libx264", "-crf", 10),
        )
        turned = self.folder / "turned.mp4"
        ffmpeg("-i", movie, "-c", "copy", "-metadata:s:v", "rotate=90", turned)
        self.check("320x240 in pixels of 2:1, turned by 90 degrees", turned)

    def test_odd_sizes(self) -> None:
        for width, height in ((161, 121), (160, 121), (641, 361)):
            movie = self.movie(
                f"{width}.mkv",
                *picture(0.4, "642x362", more=f"format=yuv444p,crop={width}:{height}:exact=1"),
                "-c:v",
                "ffv1",
            )
            self.check(f"odd size {width}x{height}", movie)

    def test_an_absurd_pixel_shape(self) -> None:
        movie = self.movie(
            "movie.mkv", *picture(0.4, more="setsar=1/4000"), *("-c:v", "libx264", "-crf", 10)
        )
        self.check("160x120 in pixels of 1:4000", movie)

    def test_pictures_of_one_line(self) -> None:
        for size, expected in (("160x1", "160x2"), ("1x160", "2x160"), ("1000x1", "480x2")):
            source = picture(0.2, size, more="format=yuv444p")
            movie = self.movie("movie.mkv", *source, "-c:v", "ffv1")
            report = self.convert(movie)
            self.assertEqual((report.size, size_of(self.out)), (size, expected))
            row("The movie", f"a picture of {size}", f"{expected}, the minimum")
