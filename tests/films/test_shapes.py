"""Movies whose picture changes its shape get black bars and are never distorted."""

import subprocess
from itertools import groupby

from movie_case import DEADLINE, MovieCase, Path, ffmpeg, frame_times, size_of
from table import row

SECTION = "The movie"
VP8 = ("-c:v", "libvpx", "-deadline", "realtime", "-g", 10)
X264 = ("-c:v", "libx264", "-preset", "ultrafast", "-g", 10)
# From dark to bright: bars, the picture's background, the circle.
BAR, CIRCLE = 45, 160


def luma(path: Path) -> list[bytes]:
    """The frames in gray, in order."""
    width, height = map(int, size_of(path).split("x"))
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-pix_fmt", "gray"]
        + ["-fps_mode", "passthrough", "-f", "rawvideo", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    size = width * height
    return [done.stdout[at : at + size] for at in range(0, len(done.stdout), size)]


def roundness(frame: bytes, width: int) -> float:
    """The width of the circle divided by its height."""
    rows = [frame[at : at + width] for at in range(0, len(frame), width)]
    high = sum(max(row) > CIRCLE for row in rows)
    wide = sum(max(frame[x::width]) > CIRCLE for x in range(width))
    return wide / high


def bars(frame: bytes, width: int) -> str:
    height = len(frame) // width
    middle, upright = frame[height // 2 * width :][:width], frame[width // 2 :: width]
    sides, ends = (sum(value < BAR for value in line) for line in (middle, upright))
    return "at the sides" if sides > 8 else "above and below" if ends > 8 else "none"


class Shapes(MovieCase):
    def part(self, name: str, shape: str, size: str, seconds: float, *coding: object) -> Path:
        """A circle in a picture with this display aspect ratio, stored at this size."""
        wide, high = map(int, shape.split(":"))
        width = round(96 * wide / high / 2) * 2
        circle = "geq=lum='if(lt(hypot(X-W/2,Y-H/2),36),235,90)':cb=128:cr=128"
        return self.movie(
            name,
            *("-f", "lavfi", "-i", f"color=gray:s={width}x96:r=25:d={seconds},{circle}"),
            *("-vf", f"scale={size},setdar={wide}/{high}", *coding),
        )

    def joined(self, name: str, *parts: Path, more: tuple = ()) -> Path:
        listed = self.folder / "list.txt"
        listed.write_text("".join(f"file {part.name}\n" for part in parts))
        movie = self.folder / name
        ffmpeg("-f", "concat", "-i", listed, "-c", "copy", *more, movie)
        return movie

    def check(self, case: str, movie: Path, reported: str, shown: str) -> None:
        """Converts the movie; `shown` lists the bars that its parts get and their frames."""
        report = self.convert(movie)
        self.assertEqual(report.size, reported)
        self.assertEqual(self.ended.messages, [])
        width = int(size_of(self.out).split("x")[0])
        frames = luma(self.out)
        for frame in frames:
            self.assertAlmostEqual(roundness(frame, width), 1, delta=0.07)
        runs = groupby(bars(frame, width) for frame in frames)
        found = ", ".join(f"{len(list(run))} frames: {kind}" for kind, run in runs)
        self.assertEqual(found, shown)
        self.assertEqual(len(frame_times(self.out)), len(frame_times(movie)))
        row(
            SECTION,
            case,
            f"reported as {report.size}; circles stay round, every frame is there; bars in {found}",
        )

    def test_a_broadcast_that_becomes_widescreen(self) -> None:
        ad = self.part("ad.ts", "4:3", "180x144", 0.4, *X264)
        show = self.part("show.ts", "16:9", "180x144", 1.2, *X264)
        self.check(
            "a transport stream of 180x144, 10 frames at 4:3, then 30 at 16:9",
            self.joined("movie.ts", ad, show),
            "256x144",
            "10 frames: at the sides, 30 frames: none",
        )

    def test_a_broadcast_whose_size_grows(self) -> None:
        lace = (*X264, "-flags", "+ildct+ilme")
        small = self.part("small.ts", "4:3", "128x96", 0.4, *lace)
        large = self.part("large.ts", "16:9", "256x144", 1.2, *lace)
        self.check(
            "an interlaced transport stream, 10 frames of 128x96, then 30 of 256x144",
            self.joined("movie.ts", small, large),
            "256x144",
            "10 frames: at the sides, 30 frames: none",
        )

    def test_a_video_call_that_is_rotated(self) -> None:
        wide = self.part("wide.webm", "4:3", "160x120", 0.8, *VP8)
        high = self.part("high.webm", "3:4", "120x160", 1.6, *VP8)
        self.check(
            "a video call in WebM, 20 frames of 160x120, then 40 of 120x160",
            self.joined("movie.webm", wide, high),
            "120x160",
            "20 frames: above and below, 40 frames: none",
        )

    def test_the_first_shape_counts_in_formats_that_do_not_change(self) -> None:
        wide = self.part("wide.h264", "4:3", "160x120", 0.4, *X264)
        high = self.part("high.h264", "3:4", "120x160", 0.8, *X264)
        raw = self.folder / "both.h264"
        raw.write_bytes(wide.read_bytes() + high.read_bytes())
        movie = self.folder / "movie.mp4"
        ffmpeg("-r", 25, "-i", raw, "-c", "copy", movie)
        self.check(
            "an MP4 movie, 10 frames of 160x120, then 20 of 120x160",
            movie,
            "160x120",
            "10 frames: none, 20 frames: at the sides",
        )
