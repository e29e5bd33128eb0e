"""Audio stays in sync with the picture, and is broken only where some of it is missing."""

import struct

from movie_case import MovieCase, Path, frame_times, picture, video_of
from sound_measures import beeps, flashes, tears
from table import row

SECTION = "The movie"
IN_STEP = 0.04


def small_picture(seconds: float) -> list[str]:
    return picture(seconds, "64x48", 5)


def pure_tone(seconds: float, rate: int = 44100) -> list[str]:
    return ["-f", "lavfi", "-i", f"aevalsrc=sin(1000*2*PI*t)/4:s={rate}:d={seconds}"]


def count_bytes(movie: Path, rate: int) -> None:
    """Sets the byte rate by which an AVI file times its audio."""
    data = bytearray(movie.read_bytes())
    header = data.index(b"strhXXXXauds".replace(b"XXXX", struct.pack("<I", 56))) + 8
    struct.pack_into("<II", data, header + 20, 1, rate)
    struct.pack_into("<I", data, header + 44, 1)
    sound = data.index(b"strf", header) + 8
    struct.pack_into("<IH", data, sound + 8, rate, 1)
    movie.write_bytes(data)


class SoundTimes(MovieCase):
    def signals(self, name: str, seconds: int, *options: object) -> Path:
        """A black and silent movie with a flash and a beep every two seconds."""
        light = "drawbox=c=white:t=fill:enable='gte(t,1.9)*lt(mod(t+0.001,2),0.2)'"
        sound = "if(gte(t,1.9)*lt(mod(t,2),0.1),sin(1000*2*PI*t)/2,0)"
        return self.movie(
            name,
            *("-f", "lavfi", "-i", f"color=black:s=64x48:r=25:d={seconds},{light}"),
            *("-f", "lavfi", "-i", f"aevalsrc='{sound}':s=48000:d={seconds}"),
            *("-c:v", "mpeg4", *options),
        )

    def without_packets(self, movie: Path, name: str, lost: str) -> Path:
        """The movie without the audio packets for whose number n `lost` is true."""
        drop = f"noise=drop='{lost}'"
        return self.movie(name, "-i", movie, "-map", 0, "-c", "copy", "-bsf:a", drop)

    def check_step(self, case: str, movie: Path, count: int) -> None:
        self.convert(movie)
        seen, heard = flashes(self.out), beeps(self.out)
        self.assertEqual((len(seen), len(heard)), (count, count))
        for light, sound in zip(seen, heard):
            self.assertAlmostEqual(light, sound, delta=IN_STEP)
        row(SECTION, case, f"{count} flashes and beeps in sync within 40 ms")

    def test_each_small_gap_is_filled(self) -> None:
        for codec, container in (("aac", "ts"), ("libopus", "mkv")):
            movie = self.signals(f"movie.{container}", 7, "-c:a", codec)
            cut = self.without_packets(movie, f"cut.{container}", "eq(mod(n,25),12)")
            case = f"a packet of {codec.removeprefix('lib')} lost about every half second"
            self.check_step(f"{case}, {container.upper()}", cut, 3)

    def test_frames_out_of_order_in_avi(self) -> None:
        movie = self.signals(
            "movie.avi", 5, "-c:v", "libx264", "-preset", "ultrafast", "-bf", 3, "-c:a", "mp3"
        )
        self.assertEqual(video_of(movie)["has_b_frames"], 2)
        self.check_step("H.264 with B-frames in AVI", movie, 2)
        self.assertEqual(frame_times(self.out), [frame / 25 for frame in range(125)])

    def check_whole(self, case: str, movie: Path) -> None:
        self.convert(movie)
        self.assertEqual(tears(movie, 1000), 0)
        self.assertEqual(tears(self.out, 1000), 0)
        row(SECTION, case, "a pure tone stays unbroken")

    def test_rounded_timestamps_break_nothing(self) -> None:
        for name, video, audio in (
            ("movie.flv", "flv1", "aac"),
            ("movie.wmv", "wmv2", "wmav2"),
            ("movie.avi", "mpeg4", "libmp3lame"),
        ):
            movie = self.movie(name, *small_picture(5), *pure_tone(5), "-c:v", video, "-c:a", audio)
            kind = name.rpartition(".")[2].upper()
            codec = audio.removeprefix("lib").removesuffix("lame")
            self.check_whole(f"rounded timestamps of {codec} in {kind}", movie)

    def test_a_wrong_bit_rate_in_the_header_breaks_nothing(self) -> None:
        movie = self.movie(
            "movie.avi",
            *(*small_picture(5), *pure_tone(5), "-c:v", "mpeg4", "-c:a", "mp3", "-b:a", "64k"),
        )
        count_bytes(movie, 10000)
        self.check_whole("MP3 of 64 kbit/s that AVI reports as 80 kbit/s", movie)

    def test_jittery_timestamps_break_nothing(self) -> None:
        steady = self.movie(
            "steady.mkv", *small_picture(5), *pure_tone(5), "-c:v", "mpeg4", "-c:a", "aac"
        )
        jitter = "setts=ts='TS+15*(2*random(1)-1)'"
        movie = self.movie("movie.mkv", "-i", steady, "-map", 0, "-c", "copy", "-bsf:a", jitter)
        self.check_whole("audio packets up to 15 ms early or late", movie)

    def test_a_drifting_clock_breaks_nothing(self) -> None:
        steady = self.movie(
            "steady.mkv", *small_picture(20), *pure_tone(20, 48000), "-c:v", "mpeg4", "-c:a", "ac3"
        )
        drift = "setts=ts=TS*1.001"
        movie = self.movie("movie.mkv", "-i", steady, "-map", 0, "-c", "copy", "-bsf:a", drift)
        self.check_whole("20 s of audio that drifts by 20 ms", movie)


if __name__ == "__main__":
    import unittest

    unittest.main()
