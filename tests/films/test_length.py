"""Lengths that are missing in the header are found in the packets, quickly."""

import resource
import struct
import subprocess
import time
from pathlib import Path

from movie_case import DEADLINE, SMALL, MovieCase, frame_times, picture, probe, tone
from table import row

SECTION = "The movie"
BIG = 2_000_000_000


CUES = "1\n00:00:01,000 --> 00:00:02,000\nOne\n\n2\n00:01:00,000 --> 00:01:01,000\nTwo\n"


def no_files() -> None:
    """No file can be written, as if all disks were full."""
    resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))


def header_length(path: Path) -> str:
    return probe(path)["format"].get("duration", "none")


class Length(MovieCase):
    def recording(self, seconds: float) -> Path:
        """What a browser writes: WebM without a length, an index or the sizes of its elements."""
        return self.movie(
            "recording.webm",
            *(*picture(seconds), *tone(seconds, rate=48000)),
            *("-c:v", "libvpx", "-deadline", "realtime", "-cpu-used", 8, "-c:a", "libopus"),
            *("-cluster_time_limit", 1000, "-f", "webm", "-live", 1),
        )

    def check(self, case: str, movie: Path, seconds: float) -> None:
        report = self.convert(movie)
        self.assertEqual(report.duration, f"00:00:{int(seconds):02d}")
        self.assertAlmostEqual(frame_times(self.out)[-1], seconds, delta=0.2)
        row(SECTION, case, f"reported as {report.duration}, all of it converted")

    def test_a_browsers_recording(self) -> None:
        movie = self.recording(6)
        self.assertEqual(header_length(movie), "none")
        self.check("a browser's WebM of 6 s without a length", movie, 6)

    def test_a_truncated_recording(self) -> None:
        movie = self.recording(6)
        with movie.open("r+b") as file:
            file.truncate(movie.stat().st_size * 2 // 3)
        report = self.convert(movie)
        end = frame_times(self.out)[-1]
        self.assertAlmostEqual(int(report.duration[-2:]), end, delta=1)
        case = "a browser's WebM, truncated after two thirds"
        row(SECTION, case, "reported with the length that is left")

    def test_a_cut_transport_stream(self) -> None:
        movie = self.movie(
            "whole.ts", *(*picture(9), *tone(9)), *("-c:v", "mpeg2video", "-g", 5, "-c:a", "mp2")
        )
        data = movie.read_bytes()
        cut = self.folder / "cut.ts"
        cut.write_bytes(data[len(data) // 3 + 77 : len(data) - 50])
        report = self.convert(cut)
        # The reference frames of the first frames are missing.
        self.assertIn(report.duration, ("00:00:05", "00:00:06"))
        self.assertAlmostEqual(len(frame_times(self.out)) / 25, 6, delta=0.5)
        case = "the last two thirds of a transport stream of 9 s"
        row(SECTION, case, "about 6 s, all converted")

    def test_other_movies_without_a_length(self) -> None:
        for name, muxing in (
            ("fragments.mp4", ("-f", "mp4", "-movflags", "frag_keyframe+empty_moov")),
            ("stream.flv", ("-f", "flv", "-flvflags", "no_duration_filesize")),
        ):
            movie = self.folder / name
            with movie.open("wb") as out:
                piped = ("ffmpeg", "-nostdin", "-v", "error", *picture(4.4), *muxing, "-")
                subprocess.run(piped, stdout=out, check=True, timeout=DEADLINE)
            self.check(f"{name} of 4.4 s, written through a pipe", movie, 4.4)

    def test_a_movie_of_two_gigabytes_is_reported_within_a_second(self) -> None:
        # The middle is a hole in the file, but reading it takes seconds, as in a real one.
        movie = self.recording(14)
        data = movie.read_bytes()
        cluster = b"\x1f\x43\xb6\x75"
        half = data.rindex(cluster, 0, len(data) // 2)
        with movie.open("wb") as file:
            file.write(data[:half])
            file.seek(BIG - (len(data) - half))
            file.write(data[half:])
        self.assertEqual(movie.stat().st_size, BIG)
        took = []
        for _ in range(3):
            start = time.monotonic()
            report = self.report(movie)
            took.append(time.monotonic() - start)
            self.assertEqual(report.duration, "00:00:14")
        self.assertLess(min(took), 1)
        row(SECTION, "a browser's WebM stretched to 2 GB", f"{report.duration}, within a second")

    def with_late_subtitle(self, name: str, *more: object) -> Path:
        text = self.folder / "text.srt"
        text.write_text(CUES, encoding="utf-8")
        return self.movie(
            name, *picture(5), *tone(5), "-i", text, *("-c:v", "mpeg4", "-c:s", "srt", *more)
        )

    def check_whole(self, case: str, movie: Path) -> None:
        self.assertGreater(float(header_length(movie)), 20)
        report = self.convert(movie)
        self.assertEqual(report.duration, "00:00:05")
        self.assertFalse(self.out.with_name("out.mp4.failed.txt").exists())
        self.assertAlmostEqual(frame_times(self.out)[-1], 5, delta=0.2)
        row(SECTION, case, f"reported as {report.duration}, all of it converted; no failure note")

    def test_a_movie_whose_subtitles_outlast_it(self) -> None:
        movie = self.with_late_subtitle("movie.mkv")
        self.check_whole("5 s in Matroska with a subtitle at 60 s", movie)
        movie.write_bytes(movie.read_bytes().replace(b"DURATION", b"DURATIOX"))
        case = "5 s in Matroska with a subtitle at 60 s, without the streams' lengths"
        self.check_whole(case, movie)

    def test_a_movie_whose_second_audio_track_outlasts_it(self) -> None:
        for name in ("movie.mp4", "movie.mpg"):
            movie = self.movie(
                name,
                *(*picture(5), *tone(5), *tone(30, 880), "-map", 0, "-map", 1, "-map", 2),
                *("-c:v", "mpeg2video", "-c:a", "mp2"),
            )
            self.check_whole(f"{name} of 5 s with a second audio track of 30 s", movie)

    def test_a_truncated_movie_whose_subtitles_outlast_it(self) -> None:
        movie = self.with_late_subtitle("movie.mkv")
        data = movie.read_bytes().replace(b"DURATION", b"DURATIOX")
        movie.write_bytes(data[: len(data) // 2])
        self.convert(movie)
        note = self.out.with_name("out.mp4.failed.txt").read_text(encoding="utf-8")
        self.assertIn("The movie is truncated or damaged", note)
        case = "the first half of that file"
        row(
            SECTION,
            case,
            "what can be read is converted; the failure note says that the movie is truncated or "
            "damaged",
        )

    def test_a_length_is_found_if_no_file_can_be_written(self) -> None:
        movie = self.recording(6)
        report = self.report(movie, preexec_fn=no_files)
        self.assertEqual(report.duration, "00:00:06")
        case = "a browser's WebM of 6 s, with all disks full"
        row(SECTION, case, f"reported as {report.duration}")

    def test_formats_without_a_clock(self) -> None:
        for name, codec in (
            ("raw H.264.h264", "libx264"),
            ("raw MPEG-1.m1v", "mpeg1video"),
            ("raw MPEG-2.m2v", "mpeg2video"),
            ("animated PNG.apng", "apng"),
        ):
            movie = self.movie(name, *picture(2), "-c:v", codec)
            self.assertNotIn("start_time", probe(movie)["format"])
            self.check(f"{name.rpartition('.')[0]} of 2 s, without a length", movie, 2)

    def test_a_header_that_gives_too_short_a_length(self) -> None:
        movie = self.movie(
            "movie.mkv",
            *(*picture(4), *tone(4), "-metadata:s", "language=pol", *SMALL),
            *("-cluster_time_limit", 500),
        )
        data = bytearray(movie.read_bytes())
        header = data.index(b"\x44\x89\x88") + 3
        struct.pack_into(">d", data, header, 1900)
        movie.write_bytes(data)
        self.assertEqual(float(header_length(movie)), 1.9)
        self.check("Matroska of 4 s whose header says 1.9 s", movie, 4)

    def test_joined_ogg_movies(self) -> None:
        one = self.movie("one.ogv", *picture(2), *tone(2), "-c:v", "libtheora", "-c:a", "libvorbis")
        movie = self.folder / "both.ogv"
        movie.write_bytes(one.read_bytes() * 2)
        self.check("two Ogg movies of 2 s, joined", movie, 4)
