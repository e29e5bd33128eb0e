"""Metadata of the movie is kept in the MP4 file."""

import struct
import time
import unittest

from movie_case import SMALL, MovieCase, Path, picture, probe, streams, tone
from table import row

SECTION = "The movie"
DATE = "2021-05-06T07:08:09"


class Metadata(MovieCase):
    def tagged(self, name: str, *tags: str, more: tuple = ()) -> Path:
        words = [word for tag in tags for word in ("-metadata", tag)]
        return self.movie(name, *picture(0.4), *tone(0.4), *SMALL, *words, *more)

    def tags(self) -> dict[str, str]:
        return probe(self.out)["format"]["tags"]

    def check_date(self, case: str, movie: Path, date: str = DATE) -> None:
        before = time.time()
        self.convert(movie, environment={"TZ": "UTC"})
        self.assertEqual(self.tags()["creation_time"], f"{date}.000000Z")
        self.assertGreater(self.out.stat().st_mtime, before - 2)
        outcome = "the same in the MP4 file; the file on disk has the time of the conversion"
        row(SECTION, case, outcome)

    def test_the_recording_date(self) -> None:
        for name in ("movie.mov", "movie.mkv"):
            movie = self.tagged(name, f"creation_time={DATE}Z")
            self.check_date(f"a recording date in {movie.suffix[1:].upper()}", movie)
        camera = self.tagged("movie.avi", f"comment={'x' * 40}")
        content = camera.read_bytes()
        at = content.index(b"INFO") - 8
        room = int.from_bytes(content[at + 4 : at + 8], "little") + 8
        date = b"IDIT" + struct.pack("<I", 26) + b"Thu May 06 07:08:09 2021\n\0"
        date += b"JUNK" + struct.pack("<I", room - len(date) - 8)
        camera.write_bytes(content[:at] + date.ljust(room) + content[at + room :])
        self.check_date("a recording date in AVI, as cameras write it (IDIT)", camera)

    def test_the_date_and_the_place_of_a_phone(self) -> None:
        movie = self.tagged(
            "movie.mov",
            "creation_time=2023-01-02T03:04:05Z",
            "com.apple.quicktime.creationdate=2021-05-06T09:08:09+0200",
            "com.apple.quicktime.location.ISO6709=+48.8577+002.2950+035.000/",
            more=("-movflags", "use_metadata_tags"),
        )
        self.convert(movie)
        tags = self.tags()
        self.assertEqual(tags["creation_time"], f"{DATE}.000000Z")
        self.assertEqual(tags["date"], "2021-05-06T09:08:09+0200")
        self.assertTrue(tags["location"].startswith("+48.857"), tags)
        row(
            SECTION,
            "a phone's date 2021-05-06T09:08:09+0200 in a MOV file that was trimmed later, and its "
            "place",
            f"{tags['creation_time'][:19]}Z, as day {tags['date']}; place {tags['location']}",
        )

    def test_bad_dates_and_places_are_left_out(self) -> None:
        movie = self.tagged("movie.mkv", f"creation_time={DATE}Z", "location=nowhere")
        content = movie.read_bytes()
        at = content.index(b"\x44\x61\x88") + 3  # DateUTC, nanoseconds from 2001 on
        for name, nanoseconds in (("1904", -97 * 365), ("2190", 69_000)):
            date = (nanoseconds * 86_400 * 10**9).to_bytes(8, "big", signed=True)
            movie.write_bytes(content[:at] + date + content[at + 8 :])
            found = probe(movie)["format"]["tags"]["creation_time"]
            self.assertIn(found[:4], (name, "1903", "1969", "2189"))
            self.convert(movie)
            self.assertEqual(self.ended.messages, [])
            self.assertNotIn("creation_time", self.tags())
        row(SECTION, "dates of 1904 and 2190, a place “nowhere”", "converted, without a date")

    def test_other_tags_are_kept(self) -> None:
        said = {
            "title": "Garten",
            "artist": "Zofia",
            "album": "Ferien",
            "genre": "Familie",
            "comment": "Erster Schnee",
            "description": "Im Garten",
            "copyright": "Zofia",
            "date": "2019-12-24",
        }
        more = ("-metadata:s:a", "language=ger")
        self.convert(self.tagged("movie.mkv", *(f"{k}={v}" for k, v in said.items()), more=more))
        tags = self.tags()
        kept = {name: tags.get(name) for name in said}
        self.assertEqual(kept, said)
        (sound,) = streams(self.out, "audio")
        self.assertEqual(sound["tags"]["language"], "deu")
        row(SECTION, "a movie with " + ", ".join(kept), "all of them")
        row(SECTION, "audio in German (ger)", f"audio in {sound['tags']['language']}")


if __name__ == "__main__":
    unittest.main()
