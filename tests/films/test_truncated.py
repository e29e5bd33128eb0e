"""Truncated and damaged movies are converted as far as possible, and reported."""

from movie_case import MovieCase, frame_times, picture, probe, tone
from table import row

SECTION = "The movie"
SECONDS = 6
CODECS = {
    "avi": ("mpeg4", "libmp3lame"),
    "wmv": ("wmv2", "wmav2"),
    "flv": ("flv", "libmp3lame"),
    "mkv": ("mpeg4", "aac"),
    "ts": ("mpeg2video", "mp2"),
    "mpg": ("mpeg2video", "mp2"),
    "mp4": ("mpeg4", "aac"),
}


class Truncated(MovieCase):
    def whole_movie(self, container: str, *more: object):
        video, audio = CODECS[container]
        coding = ("-c:v", video, "-b:v", "400k", "-g", 5, "-c:a", audio, *more)
        return self.movie(f"movie.{container}", *picture(SECONDS), *tone(SECONDS), *coding)

    def note(self) -> str:
        path = self.out.with_name("out.mp4.failed.txt")
        return path.read_text(encoding="utf-8") if path.exists() else ""

    def check_reported(self, case: str) -> None:
        end = frame_times(self.out)[-1]
        self.assertTrue(1 < end < SECONDS - 1, end)
        self.assertIn("are missing", self.note())
        row(SECTION, case, "what can be read is converted; the failure note says what is missing")

    def test_half_a_movie(self) -> None:
        for container in ("avi", "wmv", "flv", "mkv"):
            movie = self.whole_movie(container)
            if container in ("avi", "wmv"):
                self.convert(movie)
                self.assertEqual(self.note(), "")
            with movie.open("r+b") as file:
                file.truncate(movie.stat().st_size // 2)
            self.convert(movie)
            self.check_reported(f"half of a movie in {container.upper()}")

    def test_half_a_movie_padded_with_zeros(self) -> None:
        for container in ("ts", "mpg", "flv", "avi", "wmv", "mkv"):
            movie = self.whole_movie(container)
            size = movie.stat().st_size
            with movie.open("r+b") as file:
                file.truncate(size // 2)
                file.truncate(size)
            self.convert(movie)
            self.check_reported(f"half of a movie in {container.upper()}, then zeros")

    def test_whole_movies_that_end_in_zeros(self) -> None:
        pad = 600_000
        tail = {
            "mp4": (pad + 8).to_bytes(4, "big") + b"free",
            "mkv": b"\xec" + (pad | 1 << 56).to_bytes(8, "big"),
        }
        for container, head in tail.items():
            movie = self.whole_movie(container)
            with movie.open("ab") as file:
                file.write(head + bytes(pad))
            self.check_whole(movie, f"a whole {container.upper()} file, padded with zeros")
        black = "drawbox=t=fill:c=black:enable='gte(t,3)'"
        raw = ("-c:v", "rawvideo", "-pix_fmt", "rgb24", "-movflags", "faststart")
        small = picture(SECONDS, "64x48", more=f"format=rgb24,{black}")
        self.check_whole(self.movie("raw.mov", *small, *raw), "raw RGB in MOV that ends in black")

    def check_whole(self, movie, case: str) -> None:
        self.convert(movie)
        self.assertGreater(frame_times(self.out)[-1], SECONDS - 0.5)
        self.assertEqual(self.note(), "")
        row(SECTION, case, "converted to its end; no failure note")

    def damage_picture(self, movie, first: int, end: int | None = None) -> None:
        data = bytearray(movie.read_bytes())
        packets = probe(movie, "-show_packets", "-select_streams", "v")["packets"]
        for packet in packets[first:end]:
            start, size = int(packet["pos"]), int(packet["size"])
            data[start : start + size] = b"\xff" * size
        movie.write_bytes(data)

    def test_a_picture_that_is_damaged_after_its_first_fifth(self) -> None:
        movie = self.whole_movie("mp4")
        self.damage_picture(movie, 30)
        self.convert(movie)
        self.check_reported("four fifths of the picture damaged")

    def test_a_damaged_middle(self) -> None:
        kinds = (("mpeg4", 25), ("libx264", 25), ("mpeg4", 10))
        for codec, rate in kinds:
            count = SECONDS * rate
            movie = self.movie(
                "middle.mkv",
                *(*picture(SECONDS, rate=rate), *tone(SECONDS), "-c:v", codec, "-g", 5),
            )
            self.convert(movie)
            self.assertEqual(self.note(), "")
            self.damage_picture(movie, count // 20, count * 9 // 10)
            self.convert(movie)
            self.assertGreater(frame_times(self.out)[-1], SECONDS - 0.5)
            self.assertIn("the picture stands still there", self.note())
            case = f"17 of 20 frames damaged in the middle, {codec} at {rate} a second in MKV"
            row(SECTION, case, "converted to its end; the failure note reports the damage")

    def test_repeated_frames_beside_an_error_in_the_audio(self) -> None:
        uneven = "select='not(mod(n,4))+lt(n,75)'"
        movie = self.movie(
            "uneven.mkv",
            *(*picture(SECONDS, more=uneven), *tone(SECONDS), "-fps_mode", "vfr"),
            *("-c:v", "mpeg4", "-c:a", "aac"),
        )
        data = movie.read_bytes()
        for packet in probe(movie, "-show_packets", "-select_streams", "a")["packets"][50:60]:
            # After the block header, which the demuxer reads.
            start, size = int(packet["pos"]) + 12, int(packet["size"]) - 24
            data = data[:start] + b"\xff" * size + data[start + size :]
        movie.write_bytes(data)
        self.convert(movie)
        self.assertIn("aac", self.ended.text)
        self.assertEqual(self.note(), "")
        row(SECTION, "frames dropped in MKV, some audio damaged", "converted; no failure note")

    def test_a_picture_that_is_completely_damaged(self) -> None:
        movie = self.whole_movie("mp4")
        self.damage_picture(movie, 1)
        self.out.write_text("old")
        ended = self.transcode(movie, 160, 120)
        self.assertEqual(ended.status, 1, ended.text)
        self.assertEqual(self.out.read_text(), "old")
        self.assertNotEqual(self.note(), "")
        row(SECTION, "all of the picture but one frame damaged", "refused; the older file stays")

    def test_chapters_of_a_longer_movie(self) -> None:
        # Titles of equal length are stored differently.
        for titles in (("One", "Two", "Three"), ("Part 1", "Part 2", "Part 3")):
            self.check_chapters(*titles)

    def check_chapters(self, *titles: str) -> None:
        chapters = self.folder / "chapters"
        text = ";FFMETADATA1\n"
        for at, title in zip((0, 1, 600), titles):
            text += f"[CHAPTER]\nTIMEBASE=1/1\nSTART={at}\nEND={at + 2100}\ntitle={title}\n"
        chapters.write_text(text)
        movie = self.movie(
            "chapters.mkv",
            *(*picture(2), *tone(2), "-i", chapters, "-map_chapters", 2),
            *("-c:v", "mpeg4", "-c:a", "aac"),
        )
        self.convert(movie)
        made = probe(self.out)
        self.assertAlmostEqual(float(made["format"]["duration"]), 2, delta=0.1)
        found = [
            (chapter["tags"]["title"], round(float(chapter["end_time"])))
            for chapter in made["chapters"]
        ]
        self.assertEqual(found, [(titles[0], 1), (titles[1], 2)])
        case = f"2 s with chapters {titles[0]}, {titles[1]} and {titles[2]} up to 45 minutes"
        row(SECTION, case, f"2 s long; the chapters {found[0][0]} and {found[1][0]}")
