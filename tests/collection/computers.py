"""AVI, WMV, Flash, RealMedia, animated pictures and screen recordings."""

from judge import Wanted
from kinds import FF, GST, IN, MENCODER, WAV, Y4M, Kind
from pattern import Pattern

X264 = "-c:v libx264 -preset ultrafast"
AAC = "-c:a aac -b:a 128k"
SILENT = Wanted(sound="none")
MONO = Wanted(sound="mono")
ANY = Wanted(sound="any")
GAME = Pattern(320, 200, aspect="5:6", rate="70", seconds=2)
SMALL = Pattern(sample_rate=44100)

KINDS = [
    Kind(
        "DivX 3 with MP3 VBR.avi",
        "mencoder",
        f"{MENCODER} -ovc lavc -lavcopts vcodec=msmpeg4:vqscale=3 -oac mp3lame -lameopts vbr=3:q=4 "
        "-o $O",
        SMALL,
    ),
    Kind(
        "Xvid packed with MP3 VBR.avi",
        "mencoder",
        f"{MENCODER} -ovc xvid -xvidencopts fixed_quant=3:max_bframes=2:packed -oac mp3lame "
        "-lameopts vbr=3 -o $O",
        SMALL,
    ),
    Kind(
        "Xvid with qpel and GMC.avi",
        "mencoder",
        f"{MENCODER} -ovc xvid -xvidencopts fixed_quant=3:max_bframes=2:nopacked:qpel:gmc -oac "
        "mp3lame -lameopts cbr:br=128 -o $O",
        SMALL,
    ),
    Kind(
        "MPEG-4 with B-frames.avi",
        "mencoder",
        f"{MENCODER} -ovc lavc -lavcopts vcodec=mpeg4:vqscale=3:vmax_b_frames=2 -oac mp3lame -o $O",
        SMALL,
    ),
    Kind(
        "H.264 in AVI by mencoder.avi",
        "mencoder",
        f"{MENCODER} -ovc x264 -x264encopts crf=20:bframes=2 -oac mp3lame -o $O",
        SMALL,
        # mencoder delays the audio by the picture's decoding delay.
        Wanted(starts=None),
    ),
    Kind(
        "H.264 with B-frames in AVI.avi",
        "ffmpeg",
        f"{IN} -c:v libx264 -preset veryfast -bf 3 {AAC} $O",
    ),
    Kind("DivX 3.avi", "ffmpeg", f"{IN} -c:v msmpeg4 -q:v 3 -c:a libmp3lame $O"),
    Kind(
        "MS MPEG-4 v2 with MS ADPCM.avi", "ffmpeg", f"{IN} -c:v msmpeg4v2 -q:v 3 -c:a adpcm_ms $O"
    ),
    Kind(
        "Cinepak.avi",
        "ffmpeg",
        f"{IN} -c:v cinepak -max_strips 1 -c:a pcm_u8 $O",
        Pattern(seconds=2),
        Wanted(colour=45),
    ),
    Kind(
        "MS Video 1.avi",
        "ffmpeg",
        f"{IN} -c:v msvideo1 -c:a pcm_u8 -ar 22050 $O",
        wanted=Wanted(colour=45),
    ),
    Kind(
        "MJPEG with GSM.avi",
        "ffmpeg",
        f"{IN} -c:v mjpeg -q:v 3 -ac 1 -ar 8000 -c:a libgsm_ms $O",
        wanted=MONO,
    ),
    Kind("HuffYUV.avi", "ffmpeg", f"{IN} -pix_fmt yuv422p -c:v huffyuv -c:a pcm_s16le $O"),
    Kind("Ut Video.avi", "ffmpeg", f"{IN} -c:v utvideo -c:a pcm_s16le $O"),
    Kind("RGB upside down.avi", "ffmpeg", f"{IN} -c:v rawvideo -pix_fmt bgr24 -c:a pcm_s16le $O"),
    Kind(
        "256 colours.avi",
        "ffmpeg",
        f"{IN} -filter_complex '[0:v]split[a][b];[a]palettegen[p];[b][p]paletteuse' -c:v rawvideo "
        "-pix_fmt pal8 -c:a pcm_s16le $O",
        wanted=Wanted(colour=40),
    ),
    Kind(
        "dropped frames.avi",
        "ffmpeg",
        f"{IN} -vf \"select='not(eq(mod(n,5),3))'\" -fps_mode vfr -c:v mpeg4 -q:v 3 -c:a "
        "libmp3lame $O",
        wanted=Wanted(even=False),
    ),
    Kind(
        "audio with delay.avi",
        "mencoder",
        f"{MENCODER} -delay 0.5 -ovc lavc -lavcopts vcodec=mpeg4:vqscale=3 -oac mp3lame -o $O",
        SMALL,
        Wanted(late=0.087),
    ),
    Kind(
        "GStreamer's.avi",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! jpegenc ! avimux name=m ! filesink location=$O {WAV} ! "
        "lamemp3enc ! m.",
    ),
    Kind(
        "game by DOSBox.avi",
        "ffmpeg",
        f"{IN} -pix_fmt bgr0 -c:v zmbv -ar 22050 -c:a pcm_s16le $O",
        GAME,
    ),
    Kind(
        "copied by mencoder.avi",
        "mencoder",
        f"{IN} -c:v libxvid -q:v 3 -c:a libmp3lame $D/a.avi; mencoder -really-quiet $D/a.avi -ovc "
        "copy -oac copy -o $O",
    ),
    Kind("raw pictures.y4m", "none", "cp $Y $O", wanted=SILENT),
    Kind("Windows Media 7.wmv", "ffmpeg", f"{IN} -c:v wmv1 -q:v 3 -c:a wmav1 $O"),
    Kind("Windows Media 8.wmv", "ffmpeg", f"{IN} -c:v wmv2 -q:v 3 -c:a wmav2 $O"),
    Kind(
        "GStreamer's.asf",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! avenc_wmv2 bitrate=500000 ! asfmux name=m ! filesink "
        f"location=$O {WAV} ! avenc_wmav2 ! m.",
    ),
    Kind(
        "RealVideo 10 with AC-3.rm",
        "ffmpeg",
        f"{IN} -c:v rv10 -q:v 3 -c:a ac3 -ar 44100 -f rm $O",
        Pattern(176, 144),
        ANY,
    ),
    Kind(
        "RealVideo 20.rm",
        "ffmpeg",
        f"{FF} -i $Y -c:v rv20 -q:v 3 -f rm $O",
        Pattern(176, 144),
        SILENT,
    ),
    Kind("Sorenson with MP3.flv", "ffmpeg", f"{IN} -c:v flv -q:v 3 -ar 44100 -c:a libmp3lame $O"),
    Kind(
        "Flash screen video.flv",
        "ffmpeg",
        f"{IN} -c:v flashsv -ar 22050 -ac 1 -c:a nellymoser $O",
        wanted=MONO,
    ),
    Kind("Flash screen video 2.flv", "ffmpeg", f"{IN} -c:v flashsv2 -ar 44100 -c:a adpcm_swf $O"),
    Kind(
        "Sorenson with Speex.flv",
        "ffmpeg",
        f"{IN} -c:v flv -q:v 3 -ar 16000 -ac 1 -c:a libspeex $O",
        wanted=MONO,
    ),
    Kind(
        "H.264 by GStreamer.flv",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc ! h264parse ! flvmux name=m ! filesink location=$O "
        f"{WAV} ! voaacenc ! aacparse ! m.",
    ),
    Kind("Flash player's.f4v", "ffmpeg", f"{IN} {X264} {AAC} -f f4v $O"),
    Kind(
        "animated.gif",
        "ffmpeg",
        f"{FF} -i $Y -filter_complex 'split[a][b];[a]palettegen[p];[b][p]paletteuse' $O",
        Pattern(rate="10"),
        Wanted(sound="none", colour=40),
    ),
    Kind(
        "animated with pauses, by gifsicle.gif",
        "gifsicle",
        f"{FF} -i $Y $D/f%02d.gif; gifsicle --delay 50 --loop $D/f*.gif -o $O",
        Pattern(rate="2", seconds=6, period=3),
        Wanted(sound="none", colour=60),
    ),
    Kind(
        "animated.apng",
        "apngasm",
        f"{FF} -i $Y -pix_fmt rgba $D/f%02d.png; cd $D; "
        "apngasm a.png f01.png 1 10 >/dev/null; mv a.png $O",
        Pattern(rate="10"),
        Wanted(sound="none"),
    ),
    Kind(
        "animated.webp",
        "libwebp",
        f"{FF} -i $Y -c:v libwebp_anim $O",
        Pattern(rate="10"),
        Wanted(refused="is not a movie"),
    ),
    Kind(
        "recorded with OBS.mkv",
        "ffmpeg",
        f"{IN} {X264} {AAC} -map 0 -map 1 -map 1 -map 1 -f matroska $O",
        Pattern(rate="60"),
    ),
    Kind(
        "fragmented as OBS does.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} -movflags +frag_keyframe+empty_moov+delay_moov $O",
        Pattern(rate="60"),
    ),
    Kind(
        "screen in RGB.mkv",
        "ffmpeg",
        f"{IN} -c:v libx264rgb -preset ultrafast -c:a flac $O",
        wanted=Wanted(),
    ),
    Kind(
        "screen in 4:4:4, full range.mp4",
        "ffmpeg",
        f"{IN} -vf scale=out_range=pc -pix_fmt yuv444p -color_range pc {X264} {AAC} $O",
    ),
    Kind(
        "screen only when it changes.mkv",
        "ffmpeg",
        f"{IN} -vf "
        "\"select='not(mod(n,7))+eq(n,13)+eq(n,15)+eq(n,38)+eq(n,40)+eq(n,63)+eq(n,65)'\" "
        f"-fps_mode vfr {X264} {AAC} $O",
        wanted=Wanted(even=False),
    ),
    Kind(
        "GStreamer's screencast.webm",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! vp8enc deadline=1 ! webmmux streamable=true ! filesink "
        "location=$O",
        wanted=SILENT,
    ),
    Kind("FFV1 with alpha.mkv", "ffmpeg", f"{IN} -pix_fmt yuva420p -c:v ffv1 -c:a wavpack $O"),
    Kind("MagicYUV.mkv", "ffmpeg", f"{IN} -pix_fmt gbrp -c:v magicyuv -c:a tta $O"),
    Kind(
        "MPEG-4 in NUT.nut",
        "ffmpeg",
        f"{IN} -c:v mpeg4 -q:v 3 -c:a libvorbis -f nut $O",
    ),
    Kind(
        "Id's RoQ.roq",
        "ffmpeg",
        f"{IN} -c:v roqvideo -s 128x128 -r 30 -ar 22050 -c:a roq_dpcm -f roq $O",
        Pattern(128, 128, rate="30", seconds=1),
        Wanted(sound="any", colour=60),
    ),
    Kind("very wide.mp4", "ffmpeg", f"{IN} {X264} {AAC} $O", Pattern(1600, 96), Wanted(colour=45)),
    Kind("very tall.mp4", "ffmpeg", f"{IN} {X264} {AAC} $O", Pattern(96, 1600), Wanted(colour=45)),
    Kind(
        "0.2 seconds.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} $O",
        Pattern(seconds=0.2, period=0.2),
        Wanted(sound="any"),
    ),
    Kind(
        "a little picture and audio.avi",
        "ffmpeg",
        f"{IN} -c:v mpeg4 -q:v 3 -c:a libmp3lame $O",
        Pattern(seconds=0.4, period=0.4, sound_seconds=1),
        Wanted(length=1),
    ),
    Kind(
        "one frame without audio.mp4",
        "ffmpeg",
        f"{FF} -i $Y {X264} $O",
        Pattern(seconds=0.04),
        Wanted(refused="not a movie"),
    ),
    Kind(
        "ten hours, a frame a minute.mp4",
        "ffmpeg",
        f"{FF} -i $Y {X264} $O",
        Pattern(
            rate="1/60",
            seconds=36000,
            period=7200,
            width=64,
            height=48,
            sample_rate=8,
            sound_seconds=0,
        ),
        Wanted(sound="none", length=36000),
    ),
    Kind(
        "a frame a second.mkv",
        "ffmpeg",
        f"{IN} {X264} {AAC} $O",
        Pattern(rate="1", seconds=20, period=5),
    ),
    Kind(
        "audio longer than the picture.mp4",
        "ffmpeg",
        f"{IN} {X264} {AAC} $O",
        Pattern(sound_seconds=4),
        Wanted(length=4),
    ),
    Kind(
        "audio shorter than the picture.mkv",
        "ffmpeg",
        f"{IN} {X264} {AAC} $O",
        Pattern(sound_seconds=2),
    ),
]
