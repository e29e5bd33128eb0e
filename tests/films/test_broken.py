"""Sources that are not movies fail soon and with a clear message."""

import os
import random
import subprocess
import sys
import time

from movie_case import FFMPEG, MovieCase, frame_times, picture, tone
from table import row, unmeasured

SECTION = "The movie"
LIMIT = 10
CENC = ["-c:v", "libx264", "-encryption_scheme", "cenc-aes-ctr"]
CENC += ["-encryption_key", "76a6c65c5ea762046bd749a2e632ccbb"]
CENC += ["-encryption_kid", "a7e61c373e219033c21091fa607bf3b8"]

DEAD_DRIVE = """
import ctypes, os, subprocess, sys
libc = ctypes.CDLL(None)
drive = os.open("/dev/fuse", os.O_RDWR)
options = f"fd={drive},rootmode=40000,user_id={os.getuid()},group_id={os.getgid()}"
if libc.mount(b"dead", sys.argv[1].encode(), b"fuse", 0, options.encode()) != 0:
    sys.exit(77)
sys.exit(subprocess.run(sys.argv[2:]).returncode)
"""


class Broken(MovieCase):
    def ends(self, path: object, name: str = "", **more: object) -> str:
        """Report and conversion fail in time with one message that names the file; returns it."""
        said = set()
        self.out.write_text("old")
        for run in (self.ask, lambda path, **more: self.transcode(path, 160, 120, **more)):
            start = time.monotonic()
            ended = run(path, **more)
            self.assertLess(time.monotonic() - start, LIMIT)
            self.assertEqual(ended.status, 1, ended.text)
            self.assertIsNone(self.read(ended))
            (message,) = ended.messages
            self.assertIn(name or os.path.basename(path)[-40:], message)
            step = f"cannot convert '{path}' to '{self.out}': "
            said.add(message.removeprefix("ffmpeg: ").removeprefix(step))
        self.assertEqual(self.out.read_text(), "old")
        (message,) = said
        return message.replace(str(path), "FILE")

    def check(self, case: str, path: object, **more: object) -> None:
        row(SECTION, case, self.ends(path, **more))

    def test_files_that_are_not_movies(self) -> None:
        folder = self.folder / "folder.avi"
        folder.mkdir()
        fifo = self.folder / "fifo.avi"
        os.mkfifo(fifo)
        empty = self.folder / "empty.avi"
        empty.touch()
        noise = self.folder / "noise.avi"
        noise.write_bytes(random.Random(1).randbytes(200_000))
        zeros = self.folder / "zeros.avi"
        zeros.write_bytes(bytes(100_000))
        text = self.folder / "text.avi"
        text.write_text("All happy families are alike.\n" * 500)
        loop = self.folder / "loop.avi"
        loop.symlink_to(loop)
        self.check("missing", self.folder / "missing.avi")
        self.check("a folder", folder)
        self.check("a FIFO without a writer", fifo)
        self.check("a device", "/dev/zero")
        self.check("zero bytes", empty)
        self.check("random bytes", noise)
        self.check("only zeros", zeros)
        self.check("text called .avi", text)
        self.check("a link to itself", loop)
        self.check("audio only", self.movie("song.avi", *tone(0.2)))
        self.check("encrypted packets (CENC)", self.movie("cenc.mp4", *picture(0.2), *CENC))
        bought = self.movie("bought.mp4", *picture(0.2), "-c:v", "libx264")
        bought.write_bytes(bought.read_bytes().replace(b"avc1", b"drmi"))
        self.check("encrypted as a bought movie (FairPlay)", bought)
        everything = {self.ends(path) for path in (folder, fifo, empty, noise, loop, bought)}
        self.assertEqual(len(everything), 6)

    def test_a_movie_of_less_than_a_second(self) -> None:
        movie = self.movie("short.avi", *picture(0.6), "-c:v", "mpeg4")
        said = self.ask(movie).messages[-1]
        reason = "it is shorter than a second"
        self.assertEqual(said, f"ffmpeg: '{movie}' cannot be converted: {reason}")
        row(SECTION, "a movie of 0.6 seconds", said.replace(str(movie), "FILE"))

    def test_a_system_without_ffprobe(self) -> None:
        movie = self.movie("movie.avi", *picture(0.2), "-c:v", "mpeg4")
        said = self.ends(movie, environment={"PATH": "/nowhere"}, name="ffprobe")
        row(SECTION, "the system has no ffprobe", said)

    def test_a_file_without_permission(self) -> None:
        secret = self.movie("secret.avi", *picture(0.2), "-c:v", "mpeg4")
        secret.chmod(0)
        self.folder.chmod(0o777)
        # Root may read everything.
        anybody = {"user": 65534, "extra_groups": []} if os.geteuid() == 0 else {}
        try:
            self.check("no permission", secret, **anybody)
        except PermissionError as error:
            unmeasured(SECTION, "no permission")
            self.skipTest(f"another user cannot reach the tools: {error}")

    def test_truncated_movies(self) -> None:
        for name, more in (
            ("movie.avi", ("-c:v", "mpeg4")),
            ("movie.mkv", ("-c:v", "libx264")),
            ("movie.ts", ("-c:v", "mpeg2video")),
            ("movie.mp4", ("-c:v", "libx264", "-movflags", "faststart")),
        ):
            movie = self.movie(name, *(*picture(3), *tone(3)), *more, "-g", 5)
            with movie.open("r+b") as file:
                file.truncate(movie.stat().st_size // 2)
            self.convert(movie)
            seconds = frame_times(self.out)[-1]
            self.assertTrue(0.8 < seconds < 2.6, seconds)
            container = movie.suffix[1:].upper()
            case = f"the first half of a movie in {container}"
            row(SECTION, case, "what can be read is converted")
        movie = self.movie("tail.mp4", *picture(3), "-c:v", "libx264")
        with movie.open("r+b") as file:
            file.truncate(movie.stat().st_size // 2)
        self.check("the first half of an MP4 with its index at the end", movie)

    def test_a_damaged_middle(self) -> None:
        movie = self.movie("movie.avi", *(*picture(3), *tone(3)), "-c:v", "mpeg4", "-g", 5)
        data = bytearray(movie.read_bytes())
        middle = len(data) // 2
        data[middle : middle + 20_000] = random.Random(2).randbytes(20_000)
        movie.write_bytes(data)
        self.convert(movie)
        self.assertGreater(frame_times(self.out)[-1], 2.5)
        row(SECTION, "20 kB of noise in the middle", "converted to its end")

    def test_a_drive_that_does_not_answer(self) -> None:
        drive = self.folder / "drive"
        drive.mkdir()
        alone = ["unshare", "--mount", "--pid", "--fork", "--kill-child"]
        if os.geteuid() != 0:
            alone[1:1] = ["--user", "--map-root-user"]
        start = time.monotonic()
        done = subprocess.run(
            [*alone, sys.executable, "-c", DEAD_DRIVE, drive, FFMPEG, "-i", drive / "movie.avi"],
            capture_output=True,
            timeout=60,
        )
        if done.returncode not in (0, 1):
            unmeasured(SECTION, "a drive that does not answer")
            self.skipTest(f"a dead drive cannot be made here: {done.stderr.decode()}")
        self.assertLess(time.monotonic() - start, LIMIT)
        message = done.stderr.decode().replace(str(drive / "movie.avi"), "FILE")
        self.assertTrue(message.startswith("ffmpeg: 'FILE' "), message)
        row(SECTION, "a drive that does not answer", message.strip().removeprefix("ffmpeg: "))

    def test_hanging_system_tools(self) -> None:
        movie = self.movie("movie.avi", *picture(0.2), "-c:v", "mpeg4")
        tools = {name: self.folder / "hanging" / name for name in ("ffprobe", "ffmpeg")}
        (self.folder / "hanging").mkdir()
        for tool in tools.values():
            tool.write_text("#!/bin/sh\nexec sleep 60\n")
            tool.chmod(0o755)
        message = self.ends(movie, environment={"VANTREO_FFPROBE": str(tools["ffprobe"])})
        row(SECTION, "a movie that becomes unreadable", message)
        start = time.monotonic()
        held = {"VANTREO_FFMPEG": str(tools["ffmpeg"])}
        ended = self.transcode(movie, 160, 120, environment=held)
        self.assertLess(time.monotonic() - start, LIMIT)
        self.assertEqual(ended.status, 1)
        self.assertIn("movie.avi", ended.messages[-1])
        self.assertEqual(self.out.read_text(), "old")
        message = ended.messages[-1].replace(str(movie), "FILE").replace(str(self.out), "OUT")
        row(
            SECTION,
            "a movie that becomes unreadable during the conversion",
            f"{message.removeprefix('ffmpeg: ')}; the older MP4 file stays",
        )
