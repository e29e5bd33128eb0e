"""WebM, Ogg and other free formats."""

from judge import Wanted
from kinds import FF, GST, IN, WAV, Y4M, Kind

VP9 = "-c:v libvpx-vp9 -deadline realtime -cpu-used 8"
FIFTY_ONE = "-af 'pan=5.1|FL=c0|FR=c1|FC=0*c0|LFE=0*c0|BL=0*c0|BR=0*c0'"
SILENT = Wanted(sound="none")
ANY = Wanted(sound="any")

KINDS = [
    Kind(
        "VP8 and Vorbis.webm",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! vp8enc deadline=1 ! webmmux name=m ! filesink location=$O "
        f"{WAV} ! vorbisenc ! m.",
    ),
    Kind(
        "VP8 with alpha.webm",
        "ffmpeg",
        f"{IN} -vf format=yuva420p -c:v libvpx -auto-alt-ref 0 -b:v 1M -c:a libvorbis $O",
    ),
    Kind(
        "VP9 with alpha, Opus 5.1.webm",
        "ffmpeg",
        f"{IN} -vf format=yuva420p {VP9} -b:v 1M {FIFTY_ONE} -c:a libopus -b:a 256k $O",
        wanted=ANY,
    ),
    Kind(
        "VP9 4:4:4 12 bits.webm",
        "ffmpeg",
        f"{IN} -pix_fmt yuv444p12le {VP9} -b:v 1M -c:a libopus $O",
    ),
    Kind(
        "AV1 10 bits, Opus.webm",
        "ffmpeg",
        f"{IN} -pix_fmt yuv420p10le -c:v libaom-av1 -cpu-used 8 -usage realtime -b:v 500k "
        "-c:a libopus $O",
    ),
    Kind(
        "vpxenc's.webm",
        "vpx-tools",
        "vpxenc --quiet --rt --cpu-used=8 --codec=vp9 -o $O $Y",
        wanted=SILENT,
    ),
    Kind(
        "vpxenc's.ivf", "vpx-tools", "vpxenc --quiet --rt --ivf --codec=vp8 -o $O $Y", wanted=SILENT
    ),
    Kind(
        "aomenc's.obu",
        "aom-tools",
        "aomenc --quiet --rt --cpu-used=9 --obu -o $O $Y",
        wanted=SILENT,
    ),
    Kind(
        "aomenc's.webm",
        "aom-tools",
        "aomenc --quiet --rt --cpu-used=9 --webm -o $O $Y",
        wanted=SILENT,
    ),
    Kind(
        "Theora and Vorbis.ogv",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! theoraenc ! oggmux name=m ! filesink location=$O {WAV} ! "
        "vorbisenc ! m.",
    ),
    Kind(
        "Theora, Speex and captions.ogv",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! theoraenc ! oggmux name=m skeleton=true ! filesink "
        f"location=$O {WAV} ! audio/x-raw,rate=16000,channels=1 ! speexenc ! m.",
        wanted=Wanted(sound="mono"),
    ),
    Kind("Theora and FLAC.ogv", "ffmpeg", f"{IN} -c:v libtheora -q:v 7 -c:a flac -f ogg $O"),
    Kind("Theora with Opus.ogv", "ffmpeg", f"{IN} -c:v libtheora -q:v 7 -c:a libopus -f ogg $O"),
    Kind(
        "two Ogg movies joined.ogv",
        "ffmpeg",
        f"{IN} -c:v libtheora -q:v 7 -c:a libvorbis -f ogg $D/a.ogv; cat $D/a.ogv $D/a.ogv > $O",
        wanted=Wanted(length=6.1, even=False, jumps=True),
    ),
    Kind(
        "example encoder's.ogv",
        "libtheora",
        "examples=$(ls /usr/bin/theora_encode* 2>/dev/null | head -1); $examples -o $O $Y",
        wanted=SILENT,
    ),
    Kind(
        "Xvid and Vorbis.ogm",
        "ogmtools",
        f"{FF} -i $Y -c:v libxvid -q:v 3 $D/a.avi; {FF} -i $W -c:a libvorbis $D/a.ogg; ogmmerge "
        "-o $O "
        "$D/a.avi $D/a.ogg",
    ),
    Kind(
        "VC-2.mkv",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p -c:v vc2 -c:a pcm_s16le -f matroska $O",
    ),
    Kind("VC-2.mov", "ffmpeg", f"{IN} -pix_fmt yuv422p -c:v vc2 -strict -1 -c:a pcm_s16le $O"),
    Kind("Snow.avi", "ffmpeg", f"{IN} -c:v snow -strict -2 -q:v 3 -c:a pcm_s16le $O"),
    Kind("السفر 旅行 यात्रा สวัสดี.webm", "ffmpeg", f"{IN} {VP9} -c:a libopus $O"),
    Kind("Ελλάδα Հայաստան 한국 שלום.mkv", "ffmpeg", f"{IN} {VP9} -c:a libopus $O"),
    Kind(
        "e\u0301te\u0301 ﷺ \u202etxet\u202c 👩‍👩‍👧.ogv",
        "ffmpeg",
        f"{IN} -c:v libtheora -q:v 7 -c:a libvorbis -f ogg $O",
    ),
]
