"""The film itself is reported and converted: not covers, thumbnails, stills or damaged sound."""

from film_case import (
    SMALL,
    FilmCase,
    Path,
    damage_sound,
    ffmpeg,
    picture,
    pitch_of,
    probe,
    size_of,
    streams,
    tone,
)
from table import row

SECTION = "The film that comes in"


class Streams(FilmCase):
    def cover(self, name: str = "cover.png") -> Path:
        return self.film(name, *picture(0.04, "480x480"), "-frames:v", 1)

    def check_picture(self, case: str, film: Path, size: str = "160x120") -> None:
        report = self.convert(film)
        self.assertEqual(report.size, size)
        self.assertEqual(size_of(self.out), size)
        row(SECTION, case, f"reported and converted: the film of {size_of(self.out)}")

    def check_sound(self, case: str, film: Path, pitch: int, after: float = 0) -> None:
        self.convert(film)
        heard = pitch_of(self.out, after=after)
        self.assertEqual(heard, pitch)
        row(SECTION, case, f"the sound of {heard} Hz")

    def test_a_cover_picture_first(self) -> None:
        film = self.film("film.mp4", *picture(1), *SMALL)
        covered = self.film(
            "covered.mp4",
            *("-i", self.cover(), "-i", film, "-map", 0, "-map", 1, "-c", "copy"),
            *("-disposition:v:0", "attached_pic"),
        )
        self.check_picture("a cover picture of 480x480 first, film of 160x120", covered)

    def test_a_cover_that_is_attached_to_matroska(self) -> None:
        film = self.film(
            "film.mkv",
            *picture(1),
            *("-attach", self.cover("cover.jpg"), "-metadata:s:t", "mimetype=image/jpeg"),
            *("-c:v", "libx264"),
        )
        self.check_picture("a JPEG attached to a Matroska film of 160x120", film)

    def test_a_still_that_is_not_marked(self) -> None:
        film = self.film("film.mkv", *picture(1), *SMALL)
        with_still = self.film(
            "still.mkv",
            *("-i", self.cover(), "-i", film, "-map", 0, "-map", 1, "-c", "copy"),
            *("-disposition:v:0", "default", "-disposition:v:1", 0),
        )
        case = "a stream of one 480x480 picture marked default, film of 160x120"
        self.check_picture(case, with_still)

    def test_a_small_moving_thumbnail_first(self) -> None:
        film = self.film(
            "film.mkv",
            *picture(1, "64x48", 1),
            *picture(1),
            *("-map", 0, "-map", 1, "-c:v", "mpeg4"),
            *("-disposition:v", 0),
        )
        self.check_picture("a moving thumbnail of 64x48 first, film of 160x120, none default", film)

    def test_sound_with_a_picture_is_no_film(self) -> None:
        song = self.film("song.mp3", *tone(2), "-c:a", "libmp3lame")
        covered = self.film(
            "song.mkv", *("-i", song, "-i", self.cover(), "-map", 0, "-map", 1, "-c", "copy")
        )
        ended = self.ask(covered)
        self.assertEqual(ended.status, 1)
        self.assertIsNone(self.read(ended))
        row(SECTION, "a song with one picture", ended.messages[0].split("' ")[1])

    def test_the_default_sound_is_taken(self) -> None:
        second = ("-disposition:a:0", 0, "-disposition:a:1", "default")
        film = self.sounds("film.mkv", 440, 880, more=(*SMALL, *second))
        self.check_sound("sound of 440 Hz, default sound of 880 Hz", film, 880)

    def test_the_first_sound_is_taken_when_none_is_default(self) -> None:
        film = self.sounds("film.mkv", 440, 880, more=(*SMALL, "-disposition:a", 0))
        self.check_sound("sounds of 440 and 880 Hz, none default", film, 440)

    def test_sound_without_a_decoder_is_passed_over(self) -> None:
        film = self.sounds("film.mp4", 440, 880, more=("-c:v", "mpeg4", "-c:a", "ac3"))
        data = film.read_bytes()
        at = data.index(b"ac-3", data.index(b"moov"))
        film.write_bytes(data[:at] + b"ac-4" + data[at + 4 :])
        self.check_sound("default sound in AC-4, sound of 880 Hz", film, 880)

    def test_sound_that_cannot_be_decoded_is_passed_over(self) -> None:
        film = self.sounds("film.mp4", 440, 880)
        damage_sound(film)
        self.check_sound("default sound all damaged, sound of 880 Hz", film, 880)

    def test_only_damaged_sound_leaves_a_silent_film(self) -> None:
        film = self.sounds("film.mp4", 440, more=("-c:v", "mpeg4", "-c:a", "ac3"))
        film.write_bytes(film.read_bytes().replace(b"ac-3", b"ac-4"))
        self.convert(film)
        self.assertEqual(streams(self.out, "audio"), [])
        note = self.out.with_name("out.mp4.failed.txt").read_text(encoding="utf-8")
        self.assertIn("was made, without sound.", note)
        case = "the only sound in AC-4"
        row(SECTION, case, "a film without sound; the failure note says that it was lost")

    def test_a_cut_film_keeps_the_sound_behind_its_start(self) -> None:
        whole = self.film(
            "whole.mp4", *picture(5), *tone(5), *("-c:v", "libx264", "-g", 200, "-c:a", "aac")
        )
        film = self.film("cut.mp4", "-ss", 3, "-i", whole, "-c", "copy")
        packets = probe(film, "-show_packets", "-select_streams", "a")["packets"]
        self.assertGreater(sum("D" in packet["flags"] for packet in packets), 40)
        self.check_sound("an MP4 cut without coding, its first seconds not shown", film, 440)

    def test_sound_that_is_damaged_at_its_start_only(self) -> None:
        film = self.film("film.mp4", *picture(3), *tone(3), *SMALL)
        damage_sound(film, count=50)
        self.check_sound("the first 50 packets of the sound damaged", film, 440, after=1.5)

    def test_data_stays_out_and_chapters_title_and_subtitles_stay_in(self) -> None:
        text = self.folder / "text.srt"
        text.write_text("1\n00:00:00,100 --> 00:00:00,900\nText\n")
        facts = self.folder / "facts.txt"
        facts.write_text(
            ";FFMETADATA1\ntitle=The Gęś\n[CHAPTER]\nTIMEBASE=1/10\nSTART=0\nEND=4\n"
            "title=One\n[CHAPTER]\nTIMEBASE=1/10\nSTART=4\nEND=10\ntitle=Zwei ü\n"
        )
        film = self.film(
            "film.mov",
            *(*picture(1), *tone(1), "-i", text, "-i", facts),
            *("-map", 0, "-map", 1, "-map", 2, "-map_metadata", 3, "-map_chapters", 3),
            *("-timecode", "01:00:00:00", "-c:s", "mov_text", *SMALL),
        )
        self.assertGreaterEqual(len(streams(film, "data")), 1)
        self.assertEqual(len(streams(film, "subtitle")), 1)
        self.convert(film)
        facts = probe(self.out)
        kinds = [stream["codec_type"] for stream in facts["streams"]]
        # Chapters are kept twice, as players want them: one form shows up as a text track.
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
            f"picture, sound, title “{title}”, chapters {', '.join(chapters)}, "
            "subtitles; nothing else",
        )
