"""Colours: 8-bit 4:2:0 with correct tags, HDR tone-mapped to BT.709."""

import re
import stat
import subprocess
from collections.abc import Iterable
from multiprocessing.pool import ThreadPool

from movie_case import DEADLINE, MovieCase, Path, picture, ssim, video_of
from table import row

SECTION = "The movie"
ALIKE = 0.95
# The values that H.264 defines for each, and one that is undefined.
NUMBERS = {
    "colour_primaries": [*range(14), 22],
    "transfer_characteristics": range(19),
    "matrix_coefficients": range(15),
}
PQ = {"colour_primaries": 9, "transfer_characteristics": 16}
BT709 = "setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709"


def names(path: Path) -> str:
    video = video_of(path)
    keys = ("pix_fmt", "color_range", "color_space", "color_transfer", "color_primaries")
    return " ".join(video.get(key, "?") for key in keys)


def brightness(path: Path) -> float:
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path]
        + ["-vf", "signalstats,metadata=print:key=lavfi.signalstats.YAVG:file=-"]
        + ["-f", "null", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    return float(re.findall(rb"YAVG=([0-9.]+)", done.stdout)[-1])


def rgb_of(path: Path, at: tuple[int, int]) -> tuple[int, ...]:
    """The colour that a player shows at a point of the first picture, by the file's tags."""
    video = video_of(path)
    matrix = {"smpte170m": "bt601", "bt470bg": "bt601"}.get(video["color_space"], "bt709")
    chain = (
        f"crop=8:8:{at[0]}:{at[1]},scale=8:8:in_color_matrix={matrix}:in_range=tv,"
        "format=rgb24,scale=1:1:flags=area"
    )
    done = subprocess.run(
        ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-vf", chain, "-frames:v", "1"]
        + ["-f", "rawvideo", "-"],
        stdout=subprocess.PIPE,
        check=True,
        timeout=DEADLINE,
    )
    return tuple(done.stdout)


class Colours(MovieCase):
    def check_alike(self, case: str, movie: Path, expected: str) -> None:
        self.convert(movie)
        self.assertEqual(names(self.out), expected)
        self.assertGreater(
            ssim(self.out, movie, to_other="scale=out_range=tv,format=yuv420p"), ALIKE
        )
        row(SECTION, case, f"{expected}, the same picture as a direct conversion")

    def test_depths_and_samplings(self) -> None:
        for pixels, codec in (
            ("yuv420p10le", "libx265"),
            ("yuv422p", "libx264"),
            ("yuv444p", "libx264"),
            ("yuv422p10le", "prores_ks"),
            ("yuv444p12le", "ffv1"),
            ("yuv411p", "ffv1"),
            ("gray", "ffv1"),
        ):
            movie = self.movie(
                "movie.mov" if codec == "prores_ks" else "movie.mkv",
                *picture(0.2, "320x240"),
                *("-vf", f"format={pixels},{BT709}", "-c:v", codec),
                *(("-x265-params", "log-level=none") if codec == "libx265" else ()),
            )
            self.check_alike(
                f"{pixels} in {codec.removeprefix('lib')}", movie, "yuv420p tv bt709 bt709 bt709"
            )

    def test_unspecified_colours_are_inferred_from_the_size(self) -> None:
        for size, expected in (
            ("320x240", "smpte170m smpte170m smpte170m"),
            ("720x576", "bt470bg smpte170m bt470bg"),
            ("1280x720", "bt709 bt709 bt709"),
        ):
            movie = self.movie("movie.avi", *picture(0.2, size), "-c:v", "mpeg4", "-q:v", 2)
            self.convert(movie)
            self.assertEqual(names(self.out), f"yuv420p tv {expected}")
            row(SECTION, f"unspecified colours at {size}", names(self.out))

    def test_displayed_colours_are_kept(self) -> None:
        for case, setting, arguments in (
            ("BT.709", "bt709", ("-color_range", "tv")),
            ("BT.601", "smpte170m", ("-color_range", "tv")),
            ("BT.709 in full range", "bt709", ("-color_range", "pc")),
            ("RGB", "rgb", ()),
        ):
            limit = "full" if "full" in case else "limited"
            matrix = {"bt709": "bt709", "smpte170m": "bt601"}.get(setting)
            form = (
                f"scale=out_color_matrix={matrix}:out_range={limit},format=yuv444p"
                if matrix
                else "format=gbrp"
            )
            tags = (
                ("-colorspace", setting, "-color_primaries", setting, "-color_trc", setting)
                if matrix
                else ()
            )
            movie = self.movie(
                "movie.mkv",
                *("-f", "lavfi", "-i", "color=0xE04020:s=160x120:r=25:d=0.2,format=gbrp"),
                *("-vf", form, *tags, *arguments, "-c:v", "ffv1"),
            )
            self.convert(movie)
            shown = rgb_of(self.out, (40, 40))
            for is_value, expected in zip(shown, (0xE0, 0x40, 0x20)):
                self.assertAlmostEqual(is_value, expected, delta=6)
            row(
                SECTION,
                f"an orange picture in {case}",
                f"{names(self.out)}; the same orange in a player",
            )

    def test_colours_that_only_the_container_specifies(self) -> None:
        silent = "colorprim=undef:transfer=undef:colormatrix=undef:fullrange=off"
        for name, bare, coding in (
            ("movie.mov", "raw.h264", ("libx264", "-x264-params", silent)),
            ("movie.mkv", "raw.h264", ("libx264", "-x264-params", silent)),
            ("movie.mov", "raw.m4v", ("mpeg4", "-q:v", 1)),
        ):
            movie = self.movie(
                name,
                *("-f", "lavfi", "-i", "color=0xE04020:s=160x120:r=25:d=0.2,format=gbrp"),
                *("-vf", f"scale=out_color_matrix=bt709:out_range=tv,format=yuv420p,{BT709}"),
                *("-c:v", *coding),
            )
            raw = self.movie(bare, "-i", movie, "-c", "copy")
            self.assertNotIn("bt709", names(raw))
            self.convert(movie)
            for is_value, expected in zip(rgb_of(self.out, (40, 40)), (0xE0, 0x40, 0x20)):
                self.assertAlmostEqual(is_value, expected, delta=6)
            row(
                SECTION,
                f"{coding[0].removeprefix('lib')} of 160x120 in BT.709 by {name[-3:].upper()} only",
                f"{names(self.out)}; the same orange in a player",
            )

    def hdr_movie(self, transfer: str) -> tuple[Path, Path]:
        """An HDR movie, and the SDR movie that it was made from."""
        plain = self.movie(
            "plain.mkv",
            *picture(0.2, "320x240"),
            *("-vf", f"scale=out_color_matrix=bt709,format=yuv420p,{BT709}", "-c:v", "ffv1"),
        )
        mapped = (
            "zscale=t=linear:npl=203,format=gbrpf32le,"
            f"zscale=p=bt2020:t={transfer}:m=bt2020nc:r=tv:npl=203,format=yuv420p10le"
        )
        return plain, self.movie("hdr.mkv", "-i", plain, "-vf", mapped, "-c:v", "ffv1")

    def test_hdr_is_tone_mapped(self) -> None:
        for name, transfer in (("PQ", "smpte2084"), ("HLG", "arib-std-b67")):
            plain, movie = self.hdr_movie(transfer)
            self.assertIn(transfer, names(movie))
            self.convert(movie)
            self.assertEqual(names(self.out), "yuv420p tv bt709 bt709 bt709")
            self.assertEqual(self.ended.messages, [])
            flat = self.movie("flat.mkv", "-i", movie, "-vf", "format=yuv420p", "-c:v", "ffv1")
            self.assertGreater(ssim(self.out, plain), 0.85)
            self.assertGreater(ssim(self.out, plain), ssim(flat, plain))
            self.assertAlmostEqual(brightness(self.out), brightness(plain), delta=15)
            row(
                SECTION,
                f"{name} in BT.2020, 10 bits",
                f"{names(self.out)}; close to the SDR movie that it was made from",
            )

    def test_a_system_without_tone_mapping_reports_it(self) -> None:
        _, movie = self.hdr_movie("smpte2084")
        poor = self.folder / "ffmpeg"
        poor.write_text('#!/bin/sh\nffmpeg "$@" | grep -v -e " zscale " -e " tonemap "\n')
        poor.chmod(poor.stat().st_mode | stat.S_IXUSR)
        self.convert(movie, environment={"VANTREO_FFMPEG": str(poor)})
        self.assertEqual(names(self.out), "yuv420p tv bt2020nc smpte2084 bt2020")
        (message,) = self.ended.messages
        self.assertIn("hdr.mkv' is HDR", message)
        said = message.split("hdr.mkv' ")[1].split(",")[0]
        row(
            SECTION,
            "PQ where the system's ffmpeg has no tone mapping",
            f"{names(self.out)}; the console says: “{said}”",
        )

    def test_a_wide_gamut_becomes_bt709(self) -> None:
        ordinary = f"format=yuv420p,{BT709}"
        movie = self.movie(
            "movie.mkv",
            *picture(0.2, "320x240"),
            *("-vf", f"{ordinary},zscale=p=bt2020:m=bt2020nc:t=bt2020-10,format=yuv420p10le"),
            *("-c:v", "ffv1"),
        )
        plain = self.movie("plain.mkv", *picture(0.2, "320x240"), "-vf", ordinary, "-c:v", "ffv1")
        self.convert(movie)
        self.assertEqual(names(self.out), "yuv420p tv bt709 bt709 bt709")
        self.assertGreater(ssim(self.out, plain), 0.93)
        case = "BT.2020 in standard dynamic range"
        row(SECTION, case, f"{names(self.out)}; the picture of the BT.709 movie")

    def marked(self, plain: Path, name: str, numbers: dict[str, int]) -> Path:
        settings = ":".join(f"{field}={number}" for field, number in numbers.items())
        return self.movie(name, "-i", plain, "-c", "copy", "-bsf:v", f"h264_metadata={settings}")

    def outcomes(self, plain: Path, numbers: Iterable[dict[str, int]]) -> list[str]:
        """Converts the movie with each of these colours; returns the resulting tags."""

        def outcome(job: tuple[int, dict[str, int]]) -> str:
            movie = self.marked(plain, f"{job[0]}.mkv", job[1])
            out = self.folder / f"{job[0]}.mp4"
            ended = self.transcode(movie, 64, 48, out=out)
            self.assertEqual(ended.status, 0, f"{job[1]}: {ended.text}")
            return names(out)

        with ThreadPool(2) as pool:
            return pool.map(outcome, enumerate(numbers), chunksize=1)

    def test_every_value_of_every_colour_field(self) -> None:
        movie = (*picture(0.08, "64x48"), "-c:v", "libx264")
        plain = self.movie("plain.mkv", *movie)
        deep = self.movie("deep.mkv", *movie, "-pix_fmt", "yuv420p10le")
        for field, numbers in NUMBERS.items():
            found = self.outcomes(plain, [{field: number} for number in numbers])
            mapped = self.outcomes(deep, [PQ | {field: number} for number in numbers])
            for colours in (*found, *mapped):
                self.assertNotRegex(colours, r"\?|unknown|reserved|bt2020(n?c)?( |$)|gbr")
            kept = sum("smpte170m" in colours for colours in found)
            row(
                SECTION,
                f"H.264 with {len(numbers)} values of {field}, including all known ones",
                f"converted; {kept} keep their colours or get the usual ones, "
                f"{len(found) - kept} become BT.709",
            )
            row(
                SECTION,
                f"10-bit H.264 in BT.2020 and PQ except for {field}, with these values",
                f"converted; {sum(colours.count('bt709') == 3 for colours in mapped)} of "
                f"{len(mapped)} are BT.709",
            )
