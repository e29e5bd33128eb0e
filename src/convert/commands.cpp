#include "convert/commands.h"

const char* const kFFmpegTool = "Vantreo.app/Contents/Resources/ffmpeg";
const char* const kMP4BoxTool = "Vantreo.app/Contents/Resources/MP4Box";

namespace {

constexpr const char* kTranscodeOptions =
    " -acodec aac -strict experimental -ab 128k -ac 2 -ar 44100 -coder 0 -flags +loop -cmp +chroma"
    " -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq 6 -me_range 16 -g 250"
    " -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 -qcomp 0.6 -qmin 10 -qmax 51"
    " -qdiff 4 -bf 0 -refs 2 -directpred 1 -trellis 1 -flags2 +bpyramid+mixed_refs+fastpskip"
    " -wpredp 0 -rc_lookahead 30 -level 30 -maxrate 10000000 -bufsize 10000000 -crf 21 -threads 0"
    " -f ipod";

wxString escaped(wxString path) {
    path.Replace("\\", "\\\\");
    path.Replace("\"", "\\\"");
    return path;
}

}  // namespace

wxString probe_command(const wxString& source) {
    return wxString(kFFmpegTool) + " -i \"" + escaped(source) + "\"";
}

wxString transcode_command(const wxString& source, double fps, FrameSize size,
                           const wxString& output) {
    wxString command = wxString(kFFmpegTool) + " -y -i \"" + escaped(source) + "\"";
    command += kTranscodeOptions;
    if (fps > 29.97)
        command += " -r 30000/1001";
    command += wxString::Format(" -s %ix%i", size.width, size.height);
    return command + " \"" + escaped(output) + "\"";
}

wxString subtitle_command(const wxString& srt, const wxString& output) {
    return wxString(kMP4BoxTool) + " -add \"" + escaped(srt) + ":hdlr=sbtl\" \"" + escaped(output) +
           "\"";
}
