"""Movies of phones, cameras and TV recorders."""

import surgery
from judge import Wanted
from kinds import FF, GST, IN, WAV, Y4M, Kind
from pattern import Pattern

X264 = "-c:v libx264 -preset ultrafast"
AAC = "-c:a aac -b:a 128k"
FIFTY_ONE = "-af 'pan=5.1|FL=c0|FR=c1|FC=0*c0|LFE=0*c0|BL=0*c0|BR=0*c0'"
PAL_WIDE = Pattern(width=720, height=576, aspect="64:45", interlace="t")
ANY = Wanted(sound="any")

KINDS = [
    Kind(
        "AVCHD with 5.1.mts",
        "ffmpeg",
        f"{IN} {X264} -flags +ilme+ildct -x264opts tff=1 -c:a ac3 {FIFTY_ONE} -mpegts_m2ts_mode 1 "
        "-f mpegts $O",
        Pattern(1440, 1080, aspect="4:3", matrix="709", interlace="t", seconds=1),
        Wanted(sound="any"),
    ),
    Kind(
        "Blu-ray PCM.m2ts",
        "ffmpeg",
        f"{IN} {X264} -c:a pcm_bluray -mpegts_m2ts_mode 1 -f mpegts $O",
    ),
    Kind(
        "JVC wide.mod",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -flags +ilme+ildct -c:a ac3 -f dvd $O",
        PAL_WIDE,
    ),
    Kind(
        "MXF OP1a MPEG-2 4:2:2.mxf",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p -c:v mpeg2video -q:v 3 -bf 2 -c:a pcm_s24le -f mxf $O",
    ),
    Kind(
        "MXF two mono tracks.mxf",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -filter_complex '[1:a]channelsplit[l][r]' -map 0:v -map "
        "'[l]' "
        "-map '[r]' -c:a pcm_s16le -f mxf $O",
        wanted=ANY,
    ),
    Kind(
        "IMX30.mxf",
        "ffmpeg",
        f"{IN} -vf pad=720:608:0:32,setdar=16/9 -pix_fmt yuv422p -c:v mpeg2video -flags "
        "+ildct+low_delay -dc 2 -intra_vlc 1 -non_linear_quant 1 -ps 1 -qmin 1 -qmax 12 -top 1 "
        "-g 0 "
        "-b:v 30M -minrate 30M -maxrate 30M -bufsize 1200000 -rc_init_occupancy 1200000 "
        "-c:a pcm_s16le -f mxf_d10 $O",
        Pattern(720, 576, aspect="64:45", seconds=2),
        Wanted(colour=None, even=False),
    ),
    Kind(
        "XAVC-like 4:2:2 10 bits.mxf",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p10le {X264} -g 1 -c:a pcm_s24le -f mxf $O",
    ),
    Kind(
        "GStreamer's.mxf",
        "GStreamer",
        f"{GST} {Y4M} ! mpeg2enc ! mpegvideoparse ! mxfmux name=m ! filesink location=$O {WAV} ! "
        "audio/x-raw,format=S16LE ! m.",
        wanted=Wanted(),
    ),
    Kind(
        "DNxHR without audio.mxf",
        "ffmpeg",
        f"{FF} -i $Y -pix_fmt yuv422p -c:v dnxhd -profile:v dnxhr_lb -f mxf $O",
        Pattern(320, 180),
        Wanted(sound="none"),
    ),
    Kind(
        "DNxHD and PCM.mov",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p -c:v dnxhd -profile:v dnxhr_sq -c:a pcm_s16le $O",
        Pattern(320, 180),
    ),
    Kind(
        "GoPro with telemetry.mp4",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} -write_tmcd 1 -timecode 10:11:12:13 -f mp4 $O",
        Pattern(rate="30000/1001"),
        surgery=surgery.add_telemetry,
    ),
    Kind(
        "GoPro with telemetry.mov",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} -timecode 10:11:12:13 -f mov $O",
        surgery=surgery.add_telemetry,
    ),
    Kind(
        "dash cam.avi",
        "ffmpeg",
        f"{IN} -c:v mjpeg -q:v 4 -ac 1 -ar 8000 -c:a pcm_s16le $O",
        Pattern(rate="30"),
        Wanted(sound="mono"),
    ),
    Kind(
        "dash cam 8 kHz A-law.mov",
        "ffmpeg",
        f"{IN} {X264} -ac 1 -ar 8000 -c:a pcm_alaw $O",
        wanted=Wanted(sound="mono"),
    ),
    Kind(
        "dash cam loop with data.ts",
        "ffmpeg",
        f"head -c 3000 /dev/urandom > $D/gps; {IN} -f data -i $D/gps -map 0 -map 1 -map 2 {X264} "
        f"{AAC} -c:d copy -f mpegts $O",
    ),
    Kind(
        "drone with telemetry in subtitles.mp4",
        "ffmpeg",
        "printf '1\\n00:00:00,000 --> 00:00:01,000\\nF/2.8, GPS (8.5, 47.3)\\n\\n' > $D/t.srt; "
        f"{IN} -i $D/t.srt -map 0 -map 1 -map 2 {X264} {AAC} -c:s mov_text $O",
    ),
    Kind(
        "360 degrees.mp4",
        "ffmpeg + bytes",
        f"{IN} {X264} {AAC} $O",
        Pattern(240, 120),
        surgery=surgery.make_spherical,
    ),
    Kind(
        "side by side in 3D.mkv",
        "ffmpeg",
        f"{IN} {X264} {AAC} -metadata:s:v stereo_mode=left_right $O",
        Pattern(320, 120),
    ),
    Kind(
        "frame packing 3D.mp4",
        "ffmpeg",
        f"{IN} {X264} -x264opts frame-packing=3 {AAC} $O",
        Pattern(320, 120),
    ),
    Kind(
        "phone's HEVC.mov",
        "ffmpeg",
        f"{IN} -c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1 {AAC} $O",
    ),
    Kind(
        "Dolby Vision label.mp4",
        "ffmpeg + bytes",
        f"{IN} -c:v libx265 -preset ultrafast -x265-params log-level=none -tag:v hvc1 {AAC} $O",
        surgery=surgery.label_dolby_vision,
    ),
    Kind(
        "HEVC 4:2:2 10 bits.mp4",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p10le -c:v libx265 -preset ultrafast -x265-params log-level=none "
        f"{AAC} $O",
    ),
    Kind(
        "HEVC 4:4:4 12 bits.mkv",
        "ffmpeg",
        f"{IN} -pix_fmt yuv444p12le -c:v libx265 -preset ultrafast -x265-params log-level=none "
        f"{AAC} $O",
    ),
    Kind(
        "HEVC with open GOPs, cut.ts",
        "ffmpeg",
        f"{IN} -c:v libx265 -preset ultrafast -x265-params log-level=none:keyint=10:open-gop=1 "
        f"{AAC} "
        "$D/a.ts; "
        f"{FF} -ss 1 -i $D/a.ts -c copy -f mpegts $O",
        wanted=Wanted(length=2.42, frames=45, first=30, starts=0.64),
    ),
    Kind("slow motion.mov", "ffmpeg", f"{IN} {X264} {AAC} $O", Pattern(rate="240", seconds=2)),
    Kind(
        "3GP H.263 AMR.3gp",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! avenc_h263 bitrate=300000 ! h263parse ! 3gppmux name=m ! "
        f"filesink location=$O {WAV} ! audio/x-raw,rate=8000,channels=1 ! amrnbenc ! m.",
        Pattern(176, 144, aspect="12:11"),
        Wanted(sound="any", shown=None),
    ),
    Kind(
        "3GP H.264 AMR-WB.3gp",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc ! h264parse ! 3gppmux name=m ! "
        f"filesink location=$O {WAV} ! audio/x-raw,rate=16000,channels=1 ! voamrwbenc ! m.",
        wanted=Wanted(sound="any"),
    ),
    Kind(
        "3G2 H.263 AAC.3g2",
        "ffmpeg",
        f"{IN} -c:v h263 -s 176x144 {AAC} -f 3g2 $O",
        Pattern(176, 144, aspect="12:11"),
    ),
    Kind(
        "PSP.mp4",
        "ffmpeg",
        f"{IN} -c:v libx264 -preset ultrafast {AAC} -f psp $O",
        Pattern(320, 240, rate="30000/1001"),
    ),
    Kind(
        "pocket player.amv",
        "ffmpeg",
        f"{IN} -c:v amv -pix_fmt yuvj420p -strict -1 -r 25 -ac 1 -ar 22050 -block_size 882 "
        "-c:a adpcm_ima_amv $O",
        wanted=Wanted(sound="mono"),
    ),
    Kind(
        "DVB with padding.ts",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -b:v 1M -c:a mp2 -muxrate 3M -pcr_period 20 -f mpegts $O",
        Pattern(360, 288, aspect="64:45", interlace="t"),
    ),
    Kind(
        "recorder's H.264, cut anywhere.ts",
        "ffmpeg",
        f"{IN} -c:v libx264 -preset veryfast -g 25 -x264opts open-gop=1:bframes=3 -c:a mp2 "
        "-f mpegts $D/a.ts; tail -c +60001 $D/a.ts > $O",
        wanted=Wanted(length=2.05, even=False, sound="any"),
    ),
    Kind(
        "204-byte packets.ts",
        "ffmpeg + bytes",
        f"{IN} {X264} -c:a mp2 -f mpegts $O",
        surgery=surgery.pad_packets,
    ),
    Kind("AAC LATM.ts", "ffmpeg", f"{IN} {X264} {AAC} -mpegts_flags latm -f mpegts $O"),
    Kind("DTS.ts", "ffmpeg", f"{IN} {X264} -c:a dca -strict -2 -f mpegts $O"),
    Kind(
        "S302M.ts",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -c:a s302m -strict -2 -ar 48000 -f mpegts $O",
    ),
    Kind("Opus in TS.ts", "ffmpeg", f"{IN} {X264} -c:a libopus -f mpegts $O"),
    Kind(
        "GStreamer's.ts",
        "GStreamer",
        f"{GST} {Y4M} ! videoconvert ! x264enc key-int-max=25 ! mpegtsmux name=m ! filesink "
        f"location=$O {WAV} ! twolamemp2enc ! mpegaudioparse ! m.",
    ),
    Kind(
        "Media Center.wtv",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -c:a mp2 -f wtv $O",
        Pattern(360, 288, aspect="64:45"),
    ),
    Kind(
        "broadcast server.gxf",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -pix_fmt yuv422p -c:a pcm_s16le -ac 1 -f gxf $O",
        Pattern(720, 576, aspect="64:45", seconds=2),
        Wanted(sound="any"),
    ),
    Kind(
        "timecode and four mono tracks.mov",
        "ffmpeg",
        f"{IN} -pix_fmt yuv422p10le -c:v prores_ks -filter_complex '[1:a]channelsplit[l][r]' -map "
        "0:v -map '[l]' -map '[r]' -c:a pcm_s24le -timecode 01:00:00:00 $O",
        wanted=ANY,
    ),
]
