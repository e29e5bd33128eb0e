"""DVDs, Video CDs and tapes."""

import surgery
from judge import Wanted
from kinds import FF, GST, IN, SURGERY, WAV, Y4M, Kind
from pattern import Pattern

PAL = Pattern(720, 576, aspect="16:15", seconds=2)
PAL_WIDE = Pattern(720, 576, aspect="64:45", seconds=2)
NTSC = Pattern(720, 480, aspect="8:9", rate="30000/1001", seconds=2)
VCD = Pattern(352, 288, aspect="12:11", seconds=2)
DV = f"{IN} -c:v dvvideo -pix_fmt yuv420p -c:a pcm_s16le -ar 48000"

KINDS = [
    Kind("PAL DVD 16x9 AC-3.vob", "ffmpeg", f"{IN} -target pal-dvd -aspect 16:9 $O", PAL_WIDE),
    Kind("NTSC DVD.vob", "ffmpeg", f"{IN} -target ntsc-dvd -aspect 4:3 $O", NTSC),
    Kind(
        "VTS_01_1.VOB",
        "dvdauthor",
        f"{IN} -target pal-dvd -aspect 4:3 $D/a.mpg; cd $D; VIDEO_FORMAT=PAL dvdauthor -o dvd -t "
        "a.mpg; VIDEO_FORMAT=PAL dvdauthor -o dvd -T; cp dvd/VIDEO_TS/VTS_01_1.VOB $O",
        PAL,
    ),
    Kind(
        "DVD with LPCM.vob",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -c:a pcm_dvd -ar 48000 -f vob $O",
        PAL,
    ),
    Kind(
        "DVD with DTS.vob",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -c:a dca -strict -2 -f vob $O",
        PAL,
    ),
    Kind(
        "movie with 3 to 2 pulldown.mpg",
        "mjpegtools",
        f"cd $D; {FF} -i $Y -c:v mpeg2video -q:v 3 -bf 0 f.m2v; {SURGERY} pull_down f.m2v v.m2v; "
        "twolame --quiet $W a.mp2; mplex -v 0 -f 8 -o $O v.m2v a.mp2",
        Pattern(352, 480, aspect="20:11", rate="24000/1001"),
    ),
    Kind(
        "movie with 3 to 2 pulldown.mkv",
        "mkvmerge",
        f"cd $D; {FF} -i $Y -c:v mpeg2video -q:v 3 -bf 0 f.m2v; {SURGERY} pull_down f.m2v v.m2v; "
        "twolame --quiet $W a.mp2; mplex -v 0 -f 8 -o a.mpg v.m2v a.mp2; mkvmerge -q -o $O a.mpg",
        Pattern(352, 480, aspect="20:11", rate="24000/1001"),
    ),
    Kind("Video CD.mpg", "ffmpeg", f"{IN} -target pal-vcd $O", VCD),
    Kind(
        "Video CD by mplex.mpg",
        "mjpegtools",
        "cd $D; mpeg2enc -v 0 -f 1 -o v.m1v < $Y; twolame --quiet -b 224 $W a.mp2; "
        "mplex -v 0 -f 1 -o $O v.m1v a.mp2",
        Pattern(352, 288, aspect="12:11", seconds=2, sample_rate=44100),
    ),
    Kind(
        "AVSEQ01.DAT",
        "ffmpeg + bytes",
        f"{IN} -target pal-vcd $O",
        VCD,
        surgery=surgery.video_cd_sectors,
    ),
    Kind(
        "Super Video CD.mpg",
        "ffmpeg",
        f"{IN} -target pal-svcd -aspect 4:3 $O",
        Pattern(480, 576, aspect="8:5", seconds=2),
    ),
    Kind(
        "GStreamer's.mpg",
        "GStreamer",
        f"{GST} {Y4M} ! mpeg2enc format=3 ! mpegvideoparse ! mpegpsmux name=m ! filesink "
        f"location=$O {WAV} ! twolamemp2enc ! mpegaudioparse ! m.",
    ),
    Kind(
        "MPEG-2 with open GOPs, cut.mpg",
        "ffmpeg",
        f"{IN} -c:v mpeg2video -q:v 3 -bf 2 -g 12 -c:a mp2 -f vob $D/a.mpg; "
        "size=$(stat -c %s $D/a.mpg); tail -c +$((size / 3 / 2048 * 2048 + 1)) $D/a.mpg > $O",
        Pattern(352, 288, aspect="12:11"),
        Wanted(length=2.2, even=False),
    ),
    Kind(
        "MPEG-1 alone.m1v",
        "ffmpeg",
        f"{FF} -i $Y -c:v mpeg1video -q:v 3 -f mpeg1video $O",
        wanted=Wanted(sound="none"),
    ),
    Kind(
        "MPEG-2 alone.m2v",
        "mjpegtools",
        "mpeg2enc -v 0 -f 3 -b 1500 -o $O < $Y",
        wanted=Wanted(sound="none"),
    ),
    Kind("DV type 2.avi", "ffmpeg", f"{DV} $O", PAL),
    Kind("DV type 1.avi", "ffmpeg + bytes", f"{DV} -f dv $O", PAL, surgery=surgery.dv_type_1),
    Kind("DV alone.dv", "ffmpeg", f"{DV} -f dv $O", PAL),
    Kind(
        "DV wide NTSC.mov",
        "ffmpeg",
        f"{IN} -c:v dvvideo -pix_fmt yuv411p -aspect 16:9 -c:a pcm_s16be -ar 48000 $O",
        Pattern(720, 480, aspect="32:27", rate="30000/1001", seconds=2),
        Wanted(colour=45),
    ),
    Kind(
        "DVCPRO 50.mov",
        "ffmpeg",
        f"{IN} -c:v dvvideo -pix_fmt yuv422p -c:a pcm_s16be -ar 48000 $O",
        PAL,
    ),
    Kind(
        "DV by melt.dv",
        "melt",
        "melt $Y -audio-track $W -consumer avformat:$O f=dv vcodec=dvvideo pix_fmt=yuv420p "
        "acodec=pcm_s16le "
        "ar=48000 ac=2 real_time=-1 -profile dv_pal >/dev/null 2>&1",
        PAL,
        Wanted(sound="any"),
    ),
]
