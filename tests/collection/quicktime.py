"""QuickTime and MP4: codecs, edit lists, protection and odd boxes."""

import surgery
from judge import Wanted
from kinds import FF, GST, IN, WAV, Y4M, Kind
from pattern import Pattern

X264 = "-c:v libx264 -preset ultrafast"
AAC = "-c:a aac -b:a 128k"
SILENT = Wanted(sound="none")
SPEECH = Pattern(sample_rate=8000, channels=1)

KINDS = [
    Kind(
        "Sorenson Video 1.mov",
        "ffmpeg",
        f"{IN} -c:v svq1 -q:v 3 -c:a adpcm_ima_qt $O",
        wanted=Wanted(colour=45),
    ),
    Kind("Animation.mov", "ffmpeg", f"{IN} -c:v qtrle -pix_fmt rgb24 -c:a pcm_s16be $O"),
    Kind(
        "Animation with alpha.mov",
        "ffmpeg",
        f"{IN} -c:v qtrle -pix_fmt argb -vf format=rgba,colorchannelmixer=aa=1 -c:a pcm_s24be $O",
    ),
    Kind(
        "half transparent.mov",
        "ffmpeg",
        f"{IN} -vf format=rgba,colorchannelmixer=aa=0.5 -c:v png -c:a pcm_s16le $O",
    ),
    Kind(
        "Road Pizza.mov",
        "ffmpeg",
        f"{IN} -c:v rpza -c:a pcm_u8 -ar 22050 $O",
        wanted=Wanted(colour=50),
    ),
    Kind(
        "Graphics in 256 colours.mov",
        "ffmpeg",
        f"{FF} -i $Y -filter_complex 'split[a][b];[a]palettegen[p];[b][p]paletteuse' -c:v smc $O",
        wanted=Wanted(sound="none", colour=60),
    ),
    Kind("Photo JPEG with float audio.mov", "ffmpeg", f"{IN} -c:v mjpeg -q:v 3 -c:a pcm_f32be $O"),
    Kind(
        "ProRes 4444 with alpha.mov",
        "ffmpeg",
        f"{IN} -c:v prores_ks -profile:v 4444 -pix_fmt yuva444p10le -c:a pcm_s24le -ar 96000 $O",
    ),
    Kind(
        "ProRes interlaced.mov",
        "ffmpeg",
        f"{IN} -c:v prores_ks -flags +ildct -pix_fmt yuv422p10le -c:a pcm_s16le $O",
        Pattern(720, 576, aspect="64:45", interlace="t", seconds=1),
    ),
    Kind("CineForm.mov", "ffmpeg", f"{IN} -c:v cfhd -pix_fmt yuv422p10le -c:a pcm_s16le $O"),
    Kind("CineForm RGB.mov", "ffmpeg", f"{IN} -c:v cfhd -pix_fmt gbrp12le -c:a pcm_s16le $O"),
    Kind(
        "Hap with alpha.mov",
        "ffmpeg",
        f"{IN} -c:v hap -format hap_alpha -c:a pcm_s16le $O",
        wanted=Wanted(colour=45),
    ),
    Kind(
        "uncompressed 10 bits.mov", "ffmpeg", f"{IN} -c:v v210 -c:a pcm_s24le $O", Pattern(192, 144)
    ),
    Kind("uncompressed RGB 10 bits.mov", "ffmpeg", f"{IN} -c:v r210 -c:a pcm_s32le $O"),
    Kind(
        "uncompressed 4:4:4:4.mov", "ffmpeg", f"{IN} -c:v v408 -pix_fmt yuva444p -c:a pcm_s16be $O"
    ),
    Kind(
        "MPEG-4 with mono mu-law.mov",
        "ffmpeg",
        f"{IN} -c:v mpeg4 -q:v 3 -ac 1 -c:a pcm_mulaw $O",
        wanted=Wanted(sound="mono"),
    ),
    Kind(
        "index deflated.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} -f mov $O",
        surgery=surgery.compress_index,
    ),
    Kind(
        "two edits out of order.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} -g 1 {AAC} -video_track_timescale 12800 -f mov $O",
        wanted=Wanted(length=2, even=False, jumps=True),
        surgery=surgery.two_edits,
    ),
    Kind(
        "picture begins late by an edit.mp4",
        "ffmpeg",
        f"{FF} -itsoffset 1 -i $Y -i $W {X264} {AAC} $O",
        wanted=Wanted(length=4, starts=1),
    ),
    Kind(
        "B-frames and negative times.mp4",
        "ffmpeg",
        f"{IN} -c:v libx264 -preset veryfast -bf 3 {AAC} -movflags negative_cts_offsets $O",
    ),
    Kind(
        "clean aperture.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} $O",
        wanted=Wanted(shown=160 / 112),
        surgery=surgery.crop_picture,
    ),
    Kind(
        "wide by the track's size alone.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} $O",
        Pattern(120, 120, aspect="4:3"),
        surgery=lambda data: surgery.show_wide(surgery.without_aspect(data)),
    ),
    Kind(
        "wide by its matrix.mp4",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} $O",
        Pattern(80, 120, aspect="2:1"),
        surgery=lambda data: surgery.stretch(surgery.without_aspect(data)),
    ),
    Kind(
        "mirrored.mp4", "ffmpeg + bytes", f"{IN} -vf hflip {X264} {AAC} $O", surgery=surgery.mirror
    ),
    Kind(
        "encrypted (CENC).mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} -encryption_scheme cenc-aes-ctr -encryption_key "
        "76a6c65c5ea762046bd749a2e632ccbb -encryption_kid a7e61c373e219033c21091fa607bf3b8 $O",
        wanted=Wanted(refused="encrypt"),
    ),
    Kind(
        "bought and protected.m4v",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} $O",
        wanted=Wanted(refused="is not a movie"),
        surgery=surgery.call_protected,
    ),
    Kind(
        "media elsewhere.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} -f mov $O",
        surgery=surgery.call_outside,
    ),
    Kind(
        "mdat open to the end.mp4",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} -movflags +faststart $O",
        surgery=surgery.open_mdat,
    ),
    Kind(
        "shop's movie.m4v",
        "ffmpeg",
        f"{FF} -i $Y -vf scale=200:200 -frames:v 1 $D/c.jpg; {IN} -i $D/c.jpg -map 0 -map 1 -map 1 "
        f"-map 2 {X264} -c:a:0 aac -c:a:1 ac3 -c:v:1 mjpeg -disposition:v:1 attached_pic -f mp4 $O",
    ),
    Kind("MP3 in MP4.mp4", "ffmpeg", f"{IN} {X264} -c:a libmp3lame $O"),
    Kind("MP2 in MP4.mp4", "ffmpeg", f"{IN} -c:v mpeg4 -q:v 3 -c:a mp2 $O"),
    Kind("Opus in MP4.mp4", "ffmpeg", f"{IN} {X264} -c:a libopus $O"),
    Kind("Vorbis in MP4.mp4", "ffmpeg", f"{IN} {X264} -c:a libvorbis $O"),
    Kind("FLAC in MP4.mp4", "ffmpeg", f"{IN} {X264} -c:a flac -strict -2 $O"),
    Kind("DTS in MP4.mp4", "ffmpeg", f"{IN} {X264} -c:a dca -strict -2 $O"),
    Kind("ALAC 24 bits 96 kHz.m4v", "ffmpeg", f"{IN} {X264} -c:a alac -ar 96000 -f mp4 $O"),
    Kind("AAC Main.mp4", "ffmpeg", f"{IN} {X264} -c:a aac -profile:a aac_main $O"),
    Kind("AAC LTP.mp4", "ffmpeg", f"{IN} {X264} -c:a aac -profile:a aac_ltp -strict -2 $O"),
    Kind(
        "AAC 5.1.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} -af 'pan=5.1|FL=c0|FR=c1' $O",
        wanted=Wanted(sound="any"),
    ),
    Kind(
        "VP9 in MP4.mp4",
        "ffmpeg",
        f"{IN} -c:v libvpx-vp9 -deadline realtime -cpu-used 8 -c:a libopus $O",
    ),
    Kind(
        "AV1 in MP4.mp4",
        "ffmpeg",
        f"{IN} -c:v libsvtav1 -preset 12 -svtav1-params film-grain=0 {AAC} $O 2>&1",
    ),
    Kind("JPEG 2000.mov", "ffmpeg", f"{IN} -c:v jpeg2000 -c:a pcm_s16be $O", Pattern(seconds=1)),
    Kind("Smooth Streaming.ismv", "ffmpeg", f"{IN} {X264} {AAC} -f ismv $O"),
    Kind(
        "HLS fragments in one file.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} -movflags +cmaf+frag_keyframe+empty_moov $O",
    ),
    Kind(
        "GStreamer's.mov",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc ! qtmux name=m ! filesink location=$O {WAV} ! "
        "voaacenc ! m.",
    ),
    Kind(
        "GStreamer's fragments.mp4",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc ! mp4mux fragment-duration=500 name=m ! filesink "
        f"location=$O {WAV} ! voaacenc ! m.",
        wanted=Wanted(starts=0.08, length=3.08, late=-0.036),
    ),
    Kind(
        "Motion JPEG 2000 by GStreamer.mj2",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! openjpegenc ! mj2mux ! filesink location=$O",
        Pattern(seconds=1),
        SILENT,
    ),
    Kind("x264's.flv", "x264", "x264 --quiet --bframes 3 -o $O $Y", wanted=SILENT),
    Kind("x264's.mkv", "x264", "x264 --quiet --bframes 3 --open-gop -o $O $Y", wanted=SILENT),
    Kind(
        "x265's.hevc",
        "x265",
        "x265 --log-level none --preset ultrafast --y4m $Y -o $O",
        wanted=SILENT,
    ),
    Kind(
        "speech at 8 kHz.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} -b:a 24k $O",
        SPEECH,
        Wanted(sound="mono"),
    ),
    Kind(
        "melt's.mp4",
        "melt",
        "melt $Y -consumer avformat:$O f=mp4 vcodec=libx264 preset=ultrafast an=1 real_time=-1 "
        "width=160 height=120 frame_rate_num=25 frame_rate_den=1 sample_aspect_num=1 "
        "sample_aspect_den=1 display_aspect_num=4 display_aspect_den=3 progressive=1 "
        ">/dev/null 2>&1",
        wanted=SILENT,
    ),
]
