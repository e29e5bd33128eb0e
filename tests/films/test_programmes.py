"""The audio is that of the picture's program and of the right kind, wherever it starts."""

from movie_case import SMALL, MovieCase, Path, picture, pitch_of, size_of, streams, tone
from sound_measures import levels
from table import row

SECTION = "The movie"
TS = ("-c:v", "mpeg2video", "-c:a", "mp2")


class Programmes(MovieCase):
    def check_sound(self, case: str, movie: Path, pitch: int, after: float = 0) -> None:
        self.convert(movie)
        heard = pitch_of(self.out, after=after)
        self.assertEqual(heard, pitch)
        row(SECTION, case, f"the audio of {heard} Hz")

    def two_programs(self, first: str, second: str) -> Path:
        """A transport stream with a picture of 64x48 and one of 160x120 and tones of 440 and 880
        Hz, which belong to two programs by their numbers."""
        programs = [f"st={':st='.join(numbers)}" for numbers in (first, second)]
        return self.movie(
            "movie.ts",
            *(*picture(1, "64x48"), *picture(1), *tone(1, 440), *tone(1, 880)),
            *("-map", 0, "-map", 1, "-map", 2, "-map", 3, *TS),
            *("-program", f"title=one:{programs[0]}", "-program", f"title=two:{programs[1]}"),
        )

    def test_picture_and_audio_are_from_one_program(self) -> None:
        movie = self.two_programs("02", "13")
        self.check_sound("two programs, the larger picture in the one of 880 Hz", movie, 880)
        self.assertEqual(size_of(self.out), "160x120")
        movie = self.two_programs("03", "12")
        self.check_sound("two programs, the larger picture in the one of 440 Hz", movie, 440)
        self.assertEqual(size_of(self.out), "160x120")

    def test_audio_may_belong_to_both_programs(self) -> None:
        movie = self.two_programs("023", "12")
        self.check_sound("two programs that share the audio of 440 Hz", movie, 440)

    def test_the_sound_of_another_programme_is_none_of_the_movies(self) -> None:
        self.convert(self.two_programs("023", "1"))
        self.assertEqual(streams(self.out, "audio"), [])
        self.assertEqual([path.name for path in self.folder.glob("*.failed.txt")], [])
        case = "two programs, no audio in the one with the larger picture"
        row(SECTION, case, "an MP4 file without audio")

    def check_mark(self, mark: str, name: str = "movie.mkv", more: tuple = SMALL) -> None:
        """The first audio stream has the mark; both are default ones."""
        marks = ("-disposition:a:0", f"default+{mark}", "-disposition:a:1", "default")
        movie = self.sounds(name, 440, 880, more=(*more, *marks))
        (first, _) = streams(movie, "audio")
        self.assertEqual(first["disposition"][mark], 1)
        container = name.rpartition(".")[2].upper()
        case = f"audio of 440 Hz marked “{mark}”, audio of 880 Hz, {container}"
        self.check_sound(case, movie, 880)

    def test_audio_marked_as_other_than_dialogue_comes_last(self) -> None:
        for mark in ("comment", "dub"):
            self.check_mark(mark)
        self.check_mark("visual_impaired", "movie.ts", TS)

    def test_the_default_of_two_plain_audio_streams_is_used(self) -> None:
        marks = ("-disposition:a:0", "original", "-disposition:a:1", "default")
        movie = self.sounds("movie.mkv", 440, 880, more=(*SMALL, *marks))
        self.check_sound("original audio of 440 Hz, default audio of 880 Hz", movie, 880)

    def test_a_commentary_is_better_than_silence(self) -> None:
        movie = self.sounds("movie.mkv", 440, more=(*SMALL, "-disposition:a:0", "comment"))
        self.check_sound("a commentary of 440 Hz as the only audio", movie, 440)

    def test_two_mono_tracks_of_a_camera_become_stereo(self) -> None:
        for name, video in (("movie.mov", "mpeg4"), ("movie.mxf", "mpeg2video")):
            more = ("-c:v", video, "-c:a", "pcm_s16le", "-ar", 48000, "-disposition:a", "default")
            self.convert(self.sounds(name, 500, 900, more=more))
            (left, right) = levels(self.out, 500, 900)
            for heard, silent in (left, reversed(right)):
                self.assertAlmostEqual(heard, 0.125, delta=0.01)
                self.assertLess(silent, 0.005)
            case = f"two mono tracks of PCM, otherwise alike, {name.rpartition('.')[2].upper()}"
            row(SECTION, case, "the first on the left, the second on the right")

    def test_mono_tracks_in_two_languages_do_not_become_stereo(self) -> None:
        marks = ("-disposition:a", "default", "-metadata:s:a:1", "language=ger")
        more = ("-c:v", "mpeg4", "-c:a", "pcm_s16le", *marks)
        movie = self.sounds("movie.mov", 440, 880, more=more)
        self.check_sound("two mono tracks of PCM in two languages, MOV", movie, 440)

    def test_audio_that_starts_late_is_found(self) -> None:
        sound = self.movie("sound.ac3", *tone(2, rate=48000))
        for kind, muxer in (("vob", "vob"), ("ts", "mpegts")):
            movie = self.movie(
                f"movie.{kind}",
                *(*picture(12, "64x48"), "-itsoffset", 10, "-i", sound, "-map", 0, "-map", 1),
                *("-c:v", "mpeg2video", "-c:a", "copy", "-muxdelay", 0.5, "-f", muxer),
            )
            case = f"AC-3 audio that starts after 10 s, {kind.upper()}"
            self.check_sound(case, movie, 440, after=10.5)
            (heard,) = streams(self.out, "audio")
            self.assertAlmostEqual(float(heard["start_time"]), 10, delta=0.04)

    def test_parts_with_other_stream_numbers_are_joined(self) -> None:
        parts = [
            self.movie(f"{first}.ts", *picture(2), *tone(2, pitch), *TS, "-mpegts_start_pid", first)
            for first, pitch in ((256, 440), (512, 880))
        ]
        movie = self.folder / "movie.ts"
        movie.write_bytes(b"".join(part.read_bytes() for part in parts))
        report = self.convert(movie)
        self.assertIn(report.duration, ("00:00:03", "00:00:04"))
        self.assertEqual((pitch_of(self.out), pitch_of(self.out, after=2.5)), (440, 880))
        (video,) = streams(self.out, "video")
        self.assertAlmostEqual(float(video["duration"]), 4, delta=0.1)
        case = "two joined transport streams, with other stream numbers (PIDs) in the second"
        parts = "both parts of 2 s, the tones of 440 and 880 Hz"
        row(SECTION, case, f"reported as about 4 s; {parts}")


if __name__ == "__main__":
    import unittest

    unittest.main()
