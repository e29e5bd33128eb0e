"""Matroska files by mkvmerge and others."""

from judge import Wanted
from kinds import FF, GST, IN, WAV, Y4M, Kind
from pattern import Pattern

X264 = "-c:v libx264 -preset veryfast -bf 2"
MADE = f"{IN} {X264} -c:a libmp3lame $D/a.mkv"
MERGE = "mkvmerge -q -o $O"
COPY = f"{MADE}; {MERGE}"
CHAPTERS = (
    '<?xml version=\\"1.0\\"?><Chapters><EditionEntry><EditionFlagOrdered>1</EditionFlagOrdered>'
    "<ChapterAtom><ChapterTimeStart>00:00:02</ChapterTimeStart><ChapterTimeEnd>00:00:03"
    "</ChapterTimeEnd></ChapterAtom><ChapterAtom><ChapterTimeStart>00:00:00</ChapterTimeStart>"
    "<ChapterTimeEnd>00:00:01</ChapterTimeEnd></ChapterAtom></EditionEntry></Chapters>"
)

KINDS = [
    Kind("merged.mkv", "mkvmerge", f"{COPY} $D/a.mkv"),
    Kind(
        "compressed by zlib.mkv",
        "mkvmerge",
        f"{COPY} --compression 0:zlib --compression 1:zlib $D/a.mkv",
    ),
    Kind(
        "fonts and a cover.mkv",
        "mkvmerge",
        f"{MADE}; {FF} -i $Y -vf scale=300:300 -frames:v 1 $D/cover.jpg; "
        "cp $(fc-list -f '%{file}\\n' | head -1) $D/font.ttf; "
        f"{MERGE} --attach-file $D/cover.jpg --attach-file $D/font.ttf $D/a.mkv",
    ),
    Kind(
        "without a cue sheet or track names.mkv",
        "mkvmerge",
        f"{COPY} --no-cues --clusters-in-meta-seek --cluster-length 3 $D/a.mkv",
    ),
    Kind(
        "ordered chapters.mkv",
        "mkvmerge",
        f'{MADE}; echo "{CHAPTERS}" > $D/c.xml; {MERGE} --chapters $D/c.xml $D/a.mkv',
    ),
    Kind(
        "second of two linked parts.mkv",
        "mkvmerge",
        f"{IN} {X264} -g 10 -c:a libmp3lame $D/a.mkv; cd $D; mkvmerge -q -o part.mkv --split 1s "
        "--link "
        "a.mkv; cp part-002.mkv $O",
        wanted=Wanted(even=False, length=1),
    ),
    Kind(
        "audio 200 ms earlier.mkv",
        "mkvmerge",
        f"{IN} {X264} -c:a libmp3lame $D/a.mkv; {FF} -itsoffset 0.2 -i $W -c:a libmp3lame "
        "$D/b.mka; "
        f"{MERGE} -A $D/a.mkv --sync 0:-200 $D/b.mka",
    ),
    Kind(
        "picture 1 s late.mkv",
        "mkvmerge",
        f"{COPY} --sync 0:1000 --sync 1:1000 $D/a.mkv",
        wanted=Wanted(starts=None),
    ),
    Kind(
        "shape by display size.mkv",
        "mkvmerge",
        f"{COPY} --display-dimensions 0:240x120 $D/a.mkv",
        Pattern(120, 120, aspect="2:1"),
    ),
    Kind(
        "shape by aspect ratio.mkv",
        "mkvmerge",
        f"{COPY} --aspect-ratio 0:16/9 $D/a.mkv",
        Pattern(120, 90, aspect="4:3"),
    ),
    Kind(
        "cropped by the header.mkv",
        "mkvmerge",
        f"{COPY} --cropping 0:0,8,0,0 $D/a.mkv",
        wanted=Wanted(shown=160 / 112),
    ),
    Kind(
        "stereo first, then 5.1.mkv",
        "mkvmerge",
        f"{IN} {X264} -c:a ac3 -f mpegts $D/a.ts; {IN} {X264} -c:a ac3 -af 'pan=5.1|FL=c0|FR=c1' "
        "-output_ts_offset 3 -f mpegts $D/b.ts; cat $D/a.ts $D/b.ts > $D/c.ts; "
        f"{FF} -i $D/c.ts -c copy $O",
        wanted=Wanted(length=6, even=False, jumps=True, sound="any"),
    ),
    Kind(
        "stereo first, then 5.1.ts",
        "ffmpeg",
        f"{IN} {X264} -c:a ac3 -f mpegts $D/a.ts; {IN} {X264} -c:a ac3 -af 'pan=5.1|FL=c0|FR=c1' "
        "-output_ts_offset 3 -f mpegts $D/b.ts; cat $D/a.ts $D/b.ts > $O",
        wanted=Wanted(length=6, even=False, jumps=True, sound="any"),
    ),
    Kind(
        "5.1 first, then stereo.ts",
        "ffmpeg",
        f"{IN} {X264} -c:a ac3 -f mpegts -output_ts_offset 3 $D/b.ts; {IN} {X264} -c:a ac3 -af "
        "'pan=5.1|FL=c0|FR=c1' -f mpegts $D/a.ts; cat $D/a.ts $D/b.ts > $O",
        wanted=Wanted(length=6, even=False, jumps=True, sound="any"),
    ),
    Kind(
        "48 kHz first, then 44.1 kHz.ts",
        "ffmpeg",
        f"{IN} {X264} -c:a mp2 -f mpegts $D/a.ts; {IN} {X264} -c:a mp2 -ar 44100 "
        "-output_ts_offset 3 -f mpegts $D/b.ts; cat $D/a.ts $D/b.ts > $O",
        wanted=Wanted(length=6, even=False, jumps=True),
    ),
    Kind(
        "picture late, five frames a second.mkv",
        "ffmpeg",
        f"{IN} {X264} -vf settb=1/1000,setpts=PTS+300 -fps_mode passthrough -enc_time_base 1:1000 "
        "-c:a flac $O",
        Pattern(rate="5", seconds=6, period=2),
        Wanted(late=-0.3, starts=None, length=6.3),
    ),
    Kind(
        "3D label.mkv",
        "mkvmerge",
        f"{COPY} --stereo-mode 0:1 --display-dimensions 0:160x120 $D/a.mkv",
        Pattern(320, 120),
    ),
    Kind(
        "another rate forced.mkv",
        "mkvmerge",
        f"{FF} -i $Y {X264} $D/v.h264; {MERGE} --default-duration 0:12.5fps $D/v.h264",
        Pattern(),
        Wanted(sound="none", length=6, starts=None, even=False),
    ),
    Kind(
        "two movies appended.mkv",
        "mkvmerge",
        f"{MADE}; {MERGE} $D/a.mkv + $D/a.mkv",
        wanted=Wanted(length=6, even=False, jumps=True),
    ),
    Kind(
        "times from a file.mkv",
        "mkvmerge",
        f"{MADE}; (echo '# timestamp format v2'; for n in $(seq 0 74); do echo $((n * 40)); done) "
        "> "
        f"$D/t.txt; {MERGE} --timestamps 0:$D/t.txt $D/a.mkv",
    ),
    Kind(
        "copied from AVI with packed B-frames.mkv",
        "mkvmerge",
        "mencoder -really-quiet -noskip -mc 0 $Y -audiofile $W -ovc xvid -xvidencopts "
        "fixed_quant=3:max_bframes=2:"
        f"packed -oac mp3lame -o $D/a.avi; {MERGE} $D/a.avi",
        Pattern(sample_rate=44100),
    ),
    Kind(
        "copied from a DVD.mkv",
        "mkvmerge",
        f"{IN} -target pal-dvd -aspect 16:9 $D/a.vob; {MERGE} $D/a.vob",
        Pattern(720, 576, aspect="64:45", seconds=2),
    ),
    Kind(
        "VFW MPEG-4.mkv",
        "mkvmerge",
        f"{IN} -c:v msmpeg4 -q:v 3 -c:a libmp3lame $D/a.avi; {MERGE} $D/a.avi",
    ),
    Kind(
        "RealVideo in Matroska.mkv",
        "mkvmerge",
        f"{IN} -c:v rv20 -q:v 3 -c:a ac3 -ar 44100 -f rm $D/a.rm; {MERGE} $D/a.rm",
        Pattern(176, 144),
        Wanted(sound="any"),
    ),
    Kind(
        "WebM made strict.webm",
        "mkvmerge",
        f"{IN} -c:v libvpx -deadline realtime -b:v 1M -c:a libvorbis $D/a.webm; {MERGE} -w "
        "$D/a.webm",
    ),
    Kind("live, sizes unknown.mkv", "ffmpeg", f"{IN} {X264} -c:a aac -f matroska -live 1 - > $O"),
    Kind(
        "GStreamer's stream.mkv",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc ! matroskamux streamable=true name=m ! filesink "
        f"location=$O {WAV} ! flacenc ! m.",
    ),
    Kind(
        "PCM high byte first 24 bits 96 kHz.mkv",
        "ffmpeg",
        f"{IN} {X264} -c:a pcm_s24be -ar 96000 -f matroska $O",
    ),
    Kind("PCM float.mkv", "ffmpeg", f"{IN} {X264} -c:a pcm_f64le $O"),
    Kind("E-AC-3.mkv", "ffmpeg", f"{IN} {X264} -c:a eac3 -b:a 96k $O"),
    Kind(
        "karaoke subtitles.mkv",
        "ffmpeg",
        "printf '1\\n00:00:00,000 --> 00:00:01,000\\nla\\n\\n' > $D/t.srt; "
        f"{IN} -i $D/t.srt -map 0 -map 1 -map 2 {X264} -c:a aac -c:s ass $O",
    ),
    Kind(
        "interlaced, bottom field first.mkv",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -flags +ilme+ildct -top 0 -c:a mp2 $O",
        Pattern(720, 480, aspect="8:9", interlace="b", rate="30000/1001", seconds=1),
    ),
    Kind(
        "leading audio, picture later.mkv",
        "ffmpeg",
        f"{FF} -itsoffset 1 -i $Y -i $W {X264} -c:a aac $O",
        wanted=Wanted(starts=1, length=4),
    ),
    Kind(
        "times before zero.mkv",
        "ffmpeg",
        f"{IN} {X264} -c:a libopus $D/a.mkv; {FF} -ss 1.1 -i $D/a.mkv -c copy -avoid_negative_ts "
        "disabled $O",
    ),
]
