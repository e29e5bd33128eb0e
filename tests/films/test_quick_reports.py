"""A report reads only as much of a movie as it needs."""

import subprocess
import time
from pathlib import Path

from film_case import DEADLINE, FFMPEG, FilmCase
from table import row

SECTION = "The film that comes in"
BIG = 2_000_000_000
# Uncompressed 1920x1080 in 4:2:0.
FRAME = 1920 * 1080 * 3 // 2
HEADER = b"YUV4MPEG2 W1920 H1080 F25:1 Ip A1:1 C420jpeg\n"

COUNTED = """
import subprocess, sys
done = subprocess.run(sys.argv[1:], capture_output=True)
with open("/proc/self/io") as file:
    print(next(line.split()[1] for line in file if line.startswith("rchar")))
sys.stderr.buffer.write(done.stderr)
"""


def bytes_read(movie: Path) -> tuple[int, bytes]:
    """What a report and all processes that it starts read, and what it says."""
    done = subprocess.run(
        ["python3", "-c", COUNTED, FFMPEG, "-i", movie], capture_output=True, timeout=DEADLINE
    )
    return int(done.stdout), done.stderr


class QuickReports(FilmCase):
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
        self.assertLess(read, movie.stat().st_size // 2)
        row(SECTION, "600 MB of uncompressed pictures", "reported as 00:00:08; less than half is read")

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
