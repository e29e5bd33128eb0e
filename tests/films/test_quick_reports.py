"""A report reads only as much of a movie as it needs."""

import subprocess
import time
from pathlib import Path

from movie_case import DEADLINE, FFMPEG, MovieCase, picture
from table import row

SECTION = "The movie"
BIG = 2_000_000_000
# Uncompressed 1920x1080 in 4:2:0.
FRAME = 1920 * 1080 * 3 // 2
HEADER = b"YUV4MPEG2 W1920 H1080 F25:1 Ip A1:1 C420jpeg\n"

# The first sample and eight frames.
MOST_FOR_PICTURES = 64 << 20
# The first sample, a look for late audio, and pieces for the shape and the length.
MOST_FOR_SILENCE = 112 << 20

COUNTED = """
import subprocess, sys
done = subprocess.run(sys.argv[1:], capture_output=True)
with open("/proc/self/io") as file:
    print(next(line.split()[1] for line in file if line.startswith("rchar")))
sys.stderr.buffer.write(done.stderr)
"""


def bytes_read(movie: Path) -> tuple[int, bytes]:
    """The bytes that a report and all its processes read, and its output."""
    done = subprocess.run(
        ["python3", "-c", COUNTED, FFMPEG, "-i", movie], capture_output=True, timeout=DEADLINE
    )
    return int(done.stdout), done.stderr


class QuickReports(MovieCase):
    def test_uncompressed_pictures(self) -> None:
        movie = self.folder / "movie.y4m"
        frames = 200
        with movie.open("wb") as file:
            file.write(HEADER)
            for _ in range(frames):
                file.write(b"FRAME\n")
                file.seek(FRAME, 1)
            file.truncate(file.tell())
        read, said = bytes_read(movie)
        self.assertIn(b"Duration: 00:00:08.00", said)
        self.assertLess(read, MOST_FOR_PICTURES)
        most = f"at most {MOST_FOR_PICTURES >> 20} MiB are read"
        row(SECTION, "600 MB of uncompressed pictures", f"reported as 00:00:08; {most}")

    def test_transport_stream_without_audio(self) -> None:
        second = self.movie(
            "second.ts",
            *(*picture(1, "640x480"), "-vf", "noise=alls=100:allf=t"),
            *("-c:v", "mpeg2video", "-q:v", 1),
        )
        more = ("-map", 0, "-c", "copy", "-muxrate", "100M")
        movie = self.movie("movie.ts", "-stream_loop", 13, "-i", second, *more)
        self.assertGreater(movie.stat().st_size, 150_000_000)
        read, said = bytes_read(movie)
        self.assertIn(b"640x480", said)
        self.assertLess(read, MOST_FOR_SILENCE)
        case = "a transport stream of more than 150 MB without audio"
        row(SECTION, case, f"reported; at most {MOST_FOR_SILENCE >> 20} MiB are read")

    def test_zeros(self) -> None:
        for name in ("zeros.avi", "zeros.mkv", "zeros.h264"):
            movie = self.folder / name
            movie.touch()
            with movie.open("r+b") as file:
                file.truncate(BIG)
            start = time.monotonic()
            ended = self.ask(movie)
            self.assertLess(time.monotonic() - start, 5)
            self.assertEqual(ended.status, 1)
            self.assertIn("is not a movie", ended.text)
            row(SECTION, f"2 GB of zeros called {movie.suffix}", "is not a movie, within 5 seconds")
