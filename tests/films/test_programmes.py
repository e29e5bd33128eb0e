"""The sound is that of the picture's programme and of the right kind, wherever it begins."""

from film_case import SMALL, FilmCase, Path, picture, pitch_of, size_of, streams, tone
from sound_measures import levels
from table import row

SECTION = "The film that comes in"
TS = ("-c:v", "mpeg2video", "-c:a", "mp2")


class Programmes(FilmCase):
    def check_sound(self, case: str, film: Path, pitch: int, after: float = 0) -> None:
        self.convert(film)
        heard = pitch_of(self.out, after=after)
        self.assertEqual(heard, pitch)
        row(SECTION, case, f"the sound of {heard} Hz")

    def two_programmes(self, first: str, second: str) -> Path:
        """A transport stream with a picture of 64x48 and one of 160x120 and tones of 440 and 880
        Hz, which belong to two programmes by their numbers."""
        programmes = [f"st={':st='.join(numbers)}" for numbers in (first, second)]
        return self.film(
            "film.ts",
            *(*picture(1, "64x48"), *picture(1), *tone(1, 440), *tone(1, 880)),
            *("-map", 0, "-map", 1, "-map", 2, "-map", 3, *TS),
            *("-program", f"title=one:{programmes[0]}", "-program", f"title=two:{programmes[1]}"),
        )

    def test_picture_and_sound_are_of_one_programme(self) -> None:
        film = self.two_programmes("02", "13")
        self.check_sound("two programmes, the larger picture in that of 880 Hz", film, 880)
        self.assertEqual(size_of(self.out), "160x120")
        film = self.two_programmes("03", "12")
        self.check_sound("two programmes, the larger picture in that of 440 Hz", film, 440)
        self.assertEqual(size_of(self.out), "160x120")

    def test_a_sound_may_belong_to_both_programmes(self) -> None:
        film = self.two_programmes("023", "12")
        self.check_sound("two programmes that share the sound of 440 Hz", film, 440)

    def test_the_sound_of_another_programme_is_none_of_the_films(self) -> None:
        self.convert(self.two_programmes("023", "1"))
        self.assertEqual(streams(self.out, "audio"), [])
        self.assertEqual([path.name for path in self.folder.glob("*.failed.txt")], [])
        case = "two programmes, no sound in that of the larger picture"
        row(SECTION, case, "a film without sound")

    def check_mark(self, mark: str, name: str = "film.mkv", more: tuple = SMALL) -> None:
        """The first sound is marked; both are default ones."""
        marks = ("-disposition:a:0", f"default+{mark}", "-disposition:a:1", "default")
        film = self.sounds(name, 440, 880, more=(*more, *marks))
        (first, _) = streams(film, "audio")
        self.assertEqual(first["disposition"][mark], 1)
        container = name.rpartition(".")[2].upper()
        case = f"sound of 440 Hz marked “{mark}”, sound of 880 Hz, {container}"
        self.check_sound(case, film, 880)

    def test_sounds_that_are_marked_as_no_plain_dialogue_come_last(self) -> None:
        for mark in ("comment", "dub"):
            self.check_mark(mark)
        self.check_mark("visual_impaired", "film.ts", TS)

    def test_the_default_sound_of_two_plain_ones_is_taken(self) -> None:
        marks = ("-disposition:a:0", "original", "-disposition:a:1", "default")
        film = self.sounds("film.mkv", 440, 880, more=(*SMALL, *marks))
        self.check_sound("original sound of 440 Hz, default sound of 880 Hz", film, 880)

    def test_a_commentary_is_better_than_silence(self) -> None:
        film = self.sounds("film.mkv", 440, more=(*SMALL, "-disposition:a:0", "comment"))
        self.check_sound("a commentary of 440 Hz as the only sound", film, 440)

    def test_two_mono_tracks_of_a_camera_are_the_two_sides(self) -> None:
        for name, video in (("film.mov", "mpeg4"), ("film.mxf", "mpeg2video")):
            more = ("-c:v", video, "-c:a", "pcm_s16le", "-ar", 48000, "-disposition:a", "default")
            self.convert(self.sounds(name, 500, 900, more=more))
            (left, right) = levels(self.out, 500, 900)
            for heard, silent in (left, reversed(right)):
                self.assertAlmostEqual(heard, 0.125, delta=0.01)
                self.assertLess(silent, 0.005)
            case = f"two mono tracks of PCM, all else alike, {name.rpartition('.')[2].upper()}"
            row(SECTION, case, "the first one left, the second one right")

    def test_mono_tracks_in_two_languages_are_no_stereo(self) -> None:
        marks = ("-disposition:a", "default", "-metadata:s:a:1", "language=ger")
        more = ("-c:v", "mpeg4", "-c:a", "pcm_s16le", *marks)
        film = self.sounds("film.mov", 440, 880, more=more)
        self.check_sound("two mono tracks of PCM in two languages, MOV", film, 440)

    def test_sound_that_begins_late_is_found(self) -> None:
        sound = self.film("sound.ac3", *tone(2, rate=48000))
        for kind, muxer in (("vob", "vob"), ("ts", "mpegts")):
            film = self.film(
                f"film.{kind}",
                *(*picture(12, "64x48"), "-itsoffset", 10, "-i", sound, "-map", 0, "-map", 1),
                *("-c:v", "mpeg2video", "-c:a", "copy", "-muxdelay", 0.5, "-f", muxer),
            )
            case = f"AC-3 sound that begins after 10 s, {kind.upper()}"
            self.check_sound(case, film, 440, after=10.5)
            (heard,) = streams(self.out, "audio")
            self.assertAlmostEqual(float(heard["start_time"]), 10, delta=0.04)

    def test_parts_with_other_stream_numbers_are_joined(self) -> None:
        parts = [
            self.film(f"{first}.ts", *picture(2), *tone(2, pitch), *TS, "-mpegts_start_pid", first)
            for first, pitch in ((256, 440), (512, 880))
        ]
        film = self.folder / "film.ts"
        film.write_bytes(b"".join(part.read_bytes() for part in parts))
        report = self.convert(film)
        self.assertIn(report.duration, ("00:00:03", "00:00:04"))
        self.assertEqual((pitch_of(self.out), pitch_of(self.out, after=2.5)), (440, 880))
        (video,) = streams(self.out, "video")
        self.assertAlmostEqual(float(video["duration"]), 4, delta=0.1)
        case = "a transport stream joined of two, with other stream numbers (PIDs) in the second"
        parts = "both parts of 2 s, the tones of 440 and 880 Hz"
        row(SECTION, case, f"reported as about 4 s; {parts}")


if __name__ == "__main__":
    import unittest

    unittest.main()
