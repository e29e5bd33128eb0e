"""Any audio becomes stereo AAC-LC at 44.1 kHz; a movie without audio stays without."""

from movie_case import MovieCase, Path, picture, pitch_of, streams, tone
from table import row

SECTION = "The movie"


class Sound(MovieCase):
    def check(self, case: str, movie: Path, pitch: int = 440) -> None:
        self.convert(movie)
        (sound,) = streams(self.out, "audio")
        form = (
            f"{sound['codec_name']} {sound['profile']}, {sound['channels']} channels, "
            f"{sound['sample_rate']} Hz"
        )
        self.assertEqual(form, "aac LC, 2 channels, 44100 Hz")
        heard = pitch_of(self.out)
        self.assertAlmostEqual(heard, pitch, delta=10)
        self.assertAlmostEqual(float(sound["duration"]), 1, delta=0.1)
        row(SECTION, f"audio: {case}", f"{form}, the same tone")

    def test_no_audio(self) -> None:
        self.convert(self.movie("movie.avi", *picture(1), "-c:v", "mpeg4"))
        self.assertEqual(streams(self.out, "audio"), [])
        row(SECTION, "audio: none", "an MP4 file without audio")

    def test_channels_and_rates(self) -> None:
        for case, channels, rate in (
            ("mono, 8 kHz", 1, 8000),
            ("5.1, 48 kHz", 6, 48000),
            ("7.1, 96 kHz", 8, 96000),
            ("stereo, 96 kHz", 2, 96000),
            ("stereo, 192 kHz", 2, 192000),
        ):
            movie = self.movie(
                "movie.mov",
                *(*picture(1), *tone(1, rate=rate)),
                *("-ac", channels, "-c:v", "mpeg4", "-c:a", "pcm_s24le"),
            )
            self.check(case, movie)

    def test_nine_unnamed_channels(self) -> None:
        tones = "|".join(["sin(440*2*PI*t)/4"] * 9)
        raw = self.movie("raw.s16", "-f", "lavfi", "-i", f"aevalsrc={tones}:d=1", "-f", "s16le")
        movie = self.movie(
            "movie.mov",
            *(*picture(1), "-f", "s16le", "-ar", 44100, "-ac", 9, "-i", raw),
            *("-c:v", "mpeg4", "-c:a", "pcm_s16le"),
        )
        self.check("nine unnamed channels", movie)

    def test_codecs(self) -> None:
        for codec, container in (
            ("ac3", "mkv"),
            ("eac3", "mkv"),
            ("dca", "mkv"),
            ("truehd", "mkv"),
            ("flac", "mkv"),
            ("alac", "mov"),
            ("libopus", "webm"),
            ("libvorbis", "ogg"),
            ("libmp3lame", "avi"),
            ("mp2", "mpg"),
            ("wmav2", "wmv"),
            ("adpcm_ima_wav", "avi"),
            ("pcm_alaw", "mov"),
            ("pcm_u8", "avi"),
            ("libspeex", "flv"),
        ):
            pictures = {"webm": "libvpx", "ogg": "libtheora", "wmv": "wmv2", "mpg": "mpeg1video"}
            rate = 16000 if codec == "libspeex" else 48000
            movie = self.movie(
                f"movie.{container}",
                *(*picture(1), *tone(1, rate=rate)),
                *("-c:v", pictures.get(container, "flv1"), "-strict", -2),
                *("-c:a", codec, "-ac", 1 if codec == "libspeex" else 2),
            )
            self.check(f"{codec.removeprefix('lib').removesuffix('lame')} in {container}", movie)
