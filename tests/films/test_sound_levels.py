"""Every channel is mixed into stereo at its level."""

import math

from movie_case import MovieCase, Path, picture
from sound_measures import levels
from table import row

SECTION = "The movie"
PITCHES = (300, 500, 700, 900, 1100, 1300, 1500, 1700)
HEARD = 0.02


def numbers(amplitudes: list[float]) -> str:
    """The numbers of the audible channels."""
    return ", ".join(str(at + 1) for at, value in enumerate(amplitudes) if value > HEARD)


class SoundLevels(MovieCase):
    def tones(self, channels: int, loudness: float = 0.1) -> Path:
        """A second of raw samples, with a different tone in each channel."""
        waves = "|".join(f"{loudness}*sin({pitch}*2*PI*t)" for pitch in PITCHES[:channels])
        source = ("-f", "lavfi", "-i", f"aevalsrc={waves}:s=48000:d=1")
        return self.movie("tones.raw", *source, "-f", "s16le")

    def convert_tones(self, name: str, channels: int, *codec: object, **more: float) -> None:
        """Converts a movie with so many channels, unnamed unless `codec` names them."""
        raw = self.tones(channels, **more)
        options = codec or ("-c:a", "pcm_s16le")
        movie = self.movie(
            name,
            *(*picture(1, "64x48", 5), "-guess_layout_max", len(codec) * 8),
            *("-f", "s16le", "-ar", 48000, "-ac", channels, "-i", raw),
            *("-c:v", "mpeg4", *options),
        )
        self.convert(movie)

    def check_unnamed(self, name: str, channels: int, left: str, right: str) -> None:
        self.convert_tones(name, channels)
        heard = [numbers(side) for side in levels(self.out, *PITCHES[:channels])]
        self.assertEqual(heard, [left, right])
        kind = name.rpartition(".")[2].upper()
        case = f"{channels} unnamed channels in {kind}"
        row(SECTION, case, f"left: {heard[0]}; right: {heard[1]}")

    def test_unnamed_channels_are_mixed_in_the_usual_order(self) -> None:
        self.check_unnamed("movie.mkv", 3, "1", "2")
        self.check_unnamed("movie.mkv", 4, "1, 3, 4", "2, 3, 4")
        self.check_unnamed("movie.mkv", 6, "1, 3, 5", "2, 3, 6")
        self.check_unnamed("movie.mov", 6, "1, 3, 5", "2, 3, 6")
        self.check_unnamed("movie.mkv", 8, "1, 3, 5, 7", "2, 3, 6, 8")

    def check_level(self, case: str, name: str, channels: int, *codec: object) -> None:
        self.convert_tones(name, channels, *codec, loudness=0.4)
        found = [max(side) for side in levels(self.out, *PITCHES[:channels])]
        for side in found:
            self.assertLess(abs(20 * math.log10(side / 0.4)), 0.5)
        row(SECTION, f"loudness: {case}", "as in the source on both sides, within 0.5 dB")

    def test_mono_and_stereo_keep_their_loudness(self) -> None:
        for case, name, channels, codec in (
            ("mono PCM in MOV", "movie.mov", 1, "pcm_s16le"),
            ("mono AAC in MP4", "movie.mp4", 1, "aac"),
            ("stereo PCM in MOV", "movie.mov", 2, "pcm_s16le"),
        ):
            self.check_level(case, name, channels, "-c:a", codec, "-b:a", "128k")

    def test_surround_keeps_its_front_level_and_the_rest_is_3_db_lower(self) -> None:
        self.convert_tones("movie.mkv", 6, "-c:a", "ac3", "-b:a", "448k", loudness=0.2)
        left, right = levels(self.out, *PITCHES[:6])
        for found, expected in (
            (left, [0.2, 0, 0.1414, 0, 0.1414, 0]),
            (right, [0, 0.2, 0.1414, 0, 0, 0.1414]),
        ):
            for value, wanted in zip(found, expected):
                self.assertAlmostEqual(value, wanted, delta=0.005)
        outcome = "front as in the source; centre and surround 3 dB lower; no LFE channel"
        row(SECTION, "loudness: 5.1 in AC-3", outcome)

    def test_channels_may_change_midway(self) -> None:
        movie = self.folder / "movie.ts"
        parts = []
        for channels in (1, 2):
            raw = self.tones(channels, 0.25)
            sound = ("-f", "s16le", "-ar", 48000, "-ac", channels, "-i", raw)
            codecs = ("-c:v", "mpeg2video", "-c:a", "mp2", "-b:a", "192k")
            parts.append(self.movie("part.ts", *picture(1, "64x48"), *sound, *codecs).read_bytes())
        movie.write_bytes(b"".join(parts))
        self.convert(movie)
        for after, expected in ((0, [[0.25, 0], [0.25, 0]]), (1, [[0.25, 0], [0, 0.25]])):
            for side, wanted in zip(levels(self.out, 300, 500, after=after), expected):
                for value, right in zip(side, wanted):
                    self.assertAlmostEqual(value, right, delta=0.01)
        row(SECTION, "mono, then stereo in one stream", "mono on both sides, then stereo")


if __name__ == "__main__":
    import unittest

    unittest.main()
