"""The movie itself is reported and converted, not covers, thumbnails, stills or damaged audio."""

from movie_case import (
    SMALL,
    MovieCase,
    Path,
    damage_sound,
    picture,
    pitch_of,
    probe,
    size_of,
    streams,
    tone,
)
from table import row

SECTION = "The movie"


class Streams(MovieCase):
    def cover(self, name: str = "cover.png") -> Path:
        return self.movie(name, *picture(0.04, "480x480"), "-frames:v", 1)

    def check_picture(self, case: str, movie: Path, size: str = "160x120") -> None:
        report = self.convert(movie)
        self.assertEqual(report.size, size)
        self.assertEqual(size_of(self.out), size)
        row(SECTION, case, f"reported and converted: the movie of {size_of(self.out)}")

    def check_sound(self, case: str, movie: Path, pitch: int, after: float = 0) -> None:
        self.convert(movie)
        heard = pitch_of(self.out, after=after)
        self.assertEqual(heard, pitch)
        row(SECTION, case, f"the audio of {heard} Hz")

    def test_a_cover_picture_first(self) -> None:
        movie = self.movie("movie.mp4", *picture(1), *SMALL)
        covered = self.movie(
            "covered.mp4",
            *("-i", self.cover(), "-i", movie, "-map", 0, "-map", 1, "-c", "copy"),
            *("-disposition:v:0", "attached_pic"),
        )
        self.check_picture("a cover picture of 480x480 first, movie of 160x120", covered)

    def test_a_cover_that_is_attached_to_matroska(self) -> None:
        movie = self.movie(
            "movie.mkv",
            *picture(1),
            *("-attach", self.cover("cover.jpg"), "-metadata:s:t", "mimetype=image/jpeg"),
            *("-c:v", "libx264"),
        )
        self.check_picture("a JPEG attached to a Matroska movie of 160x120", movie)

    def test_a_still_that_is_not_marked(self) -> None:
        movie = self.movie("movie.mkv", *picture(1), *SMALL)
        with_still = self.movie(
            "still.mkv",
            *("-i", self.cover(), "-i", movie, "-map", 0, "-map", 1, "-c", "copy"),
            *("-disposition:v:0", "default", "-disposition:v:1", 0),
        )
        case = "a stream of one 480x480 picture marked default, movie of 160x120"
        self.check_picture(case, with_still)

    def test_a_small_moving_thumbnail_first(self) -> None:
        movie = self.movie(
            "movie.mkv",
            *picture(1, "64x48", 1),
            *picture(1),
            *("-map", 0, "-map", 1, "-c:v", "mpeg4"),
            *("-disposition:v", 0),
        )
        case = "a moving thumbnail of 64x48 first, movie of 160x120, none default"
        self.check_picture(case, movie)

    def test_a_song_with_a_cover_is_rejected(self) -> None:
        song = self.movie("song.mp3", *tone(2), "-c:a", "libmp3lame")
        covered = self.movie(
            "song.mkv", *("-i", song, "-i", self.cover(), "-map", 0, "-map", 1, "-c", "copy")
        )
        ended = self.ask(covered)
        self.assertEqual(ended.status, 1)
        self.assertIsNone(self.read(ended))
        row(SECTION, "a song with one picture", ended.messages[0].split("' ")[1])

    def test_the_default_audio_is_used(self) -> None:
        second = ("-disposition:a:0", 0, "-disposition:a:1", "default")
        movie = self.sounds("movie.mkv", 440, 880, more=(*SMALL, *second))
        self.check_sound("audio of 440 Hz, default audio of 880 Hz", movie, 880)

    def test_the_first_audio_is_used_if_none_is_default(self) -> None:
        movie = self.sounds("movie.mkv", 440, 880, more=(*SMALL, "-disposition:a", 0))
        self.check_sound("audio of 440 and 880 Hz, none default", movie, 440)

    def test_audio_without_a_decoder_is_skipped(self) -> None:
        movie = self.sounds("movie.mp4", 440, 880, more=("-c:v", "mpeg4", "-c:a", "ac3"))
        data = movie.read_bytes()
        at = data.index(b"ac-3", data.index(b"moov"))
        movie.write_bytes(data[:at] + b"ac-4" + data[at + 4 :])
        self.check_sound("default audio in AC-4, audio of 880 Hz", movie, 880)

    def test_audio_that_cannot_be_decoded_is_skipped(self) -> None:
        movie = self.sounds("movie.mp4", 440, 880)
        damage_sound(movie)
        self.check_sound("default audio, all of it damaged, audio of 880 Hz", movie, 880)

    def test_a_movie_with_only_damaged_audio_is_converted_without_audio(self) -> None:
        movie = self.sounds("movie.mp4", 440, more=("-c:v", "mpeg4", "-c:a", "ac3"))
        movie.write_bytes(movie.read_bytes().replace(b"ac-3", b"ac-4"))
        self.convert(movie)
        self.assertEqual(streams(self.out, "audio"), [])
        note = self.out.with_name("out.mp4.failed.txt").read_text(encoding="utf-8")
        self.assertIn("was made, without sound.", note)
        case = "the only audio in AC-4"
        row(SECTION, case, "an MP4 file without audio; the failure note says so")

    def test_a_trimmed_movie_keeps_the_audio_after_its_start(self) -> None:
        whole = self.movie(
            "whole.mp4", *picture(5), *tone(5), *("-c:v", "libx264", "-g", 200, "-c:a", "aac")
        )
        movie = self.movie("cut.mp4", "-ss", 3, "-i", whole, "-c", "copy")
        packets = probe(movie, "-show_packets", "-select_streams", "a")["packets"]
        self.assertGreater(sum("D" in packet["flags"] for packet in packets), 40)
        self.check_sound("an MP4 trimmed without re-encoding, its first seconds hidden", movie, 440)

    def test_audio_that_is_damaged_only_at_its_start(self) -> None:
        movie = self.movie("movie.mp4", *picture(3), *tone(3), *SMALL)
        damage_sound(movie, count=50)
        self.check_sound("the first 50 packets of the audio damaged", movie, 440, after=1.5)

    def test_data_is_dropped_and_chapters_title_and_subtitles_are_kept(self) -> None:
        text = self.folder / "text.srt"
        text.write_text("1\n00:00:00,100 --> 00:00:00,900\nText\n")
        facts = self.folder / "facts.txt"
        facts.write_text(
            ";FFMETADATA1\ntitle=The Gęś\n[CHAPTER]\nTIMEBASE=1/10\nSTART=0\nEND=4\n"
            "title=One\n[CHAPTER]\nTIMEBASE=1/10\nSTART=4\nEND=10\ntitle=Zwei ü\n"
        )
        movie = self.movie(
            "movie.mov",
            *(*picture(1), *tone(1), "-i", text, "-i", facts),
            *("-map", 0, "-map", 1, "-map", 2, "-map_metadata", 3, "-map_chapters", 3),
            *("-timecode", "01:00:00:00", "-c:s", "mov_text", *SMALL),
        )
        self.assertGreaterEqual(len(streams(movie, "data")), 1)
        self.assertEqual(len(streams(movie, "subtitle")), 1)
        self.convert(movie)
        facts = probe(self.out)
        kinds = [stream["codec_type"] for stream in facts["streams"]]
        # Chapters are written in both forms that players read; one of them is a text track.
        self.assertEqual(kinds, ["video", "audio", "data", "subtitle"])
        self.assertEqual(facts["streams"][2]["codec_tag_string"], "text")
        chapters = [
            f"{chapter['tags']['title']} at {float(chapter['start_time']):.1f} s"
            for chapter in facts["chapters"]
        ]
        self.assertEqual(chapters, ["One at 0.0 s", "Zwei ü at 0.4 s"])
        title = facts["format"]["tags"]["title"]
        self.assertEqual(title, "The Gęś")
        row(
            SECTION,
            "timecode track, subtitles, title, two chapters",
            f"picture, audio, title “{title}”, chapters {', '.join(chapters)}, "
            "subtitles; nothing else",
        )
