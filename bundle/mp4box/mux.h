#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// What an MP4Box command line requests.
struct SubtitleRequest {
    std::string subtitles;  ///< a SubRip file
    std::string mp4;        ///< the MP4 file that they are added to
};

/// Reads the arguments after the program's name: "-add", a subtitle file's name followed by
/// ":hdlr=sbtl", and the MP4 file. The names are taken by position, even when they look like
/// options.
Result<SubtitleRequest> parse_subtitle_request(const std::vector<std::string>& arguments);

/// Facts about the MP4 file that a subtitle track is added to.
struct Mp4Facts {
    int subtitle_tracks = 0;  ///< not added by this tool
    std::string brand;        ///< major brand, such as "M4V "
    std::string recorded;     ///< when the movie was recorded, as ffmpeg reads times; may be empty
    bool is_mp4 = false;      ///< by its content, not by its name
    bool has_audio = false;
    int width = 0;                ///< of the picture in pixels; 0: none
    int height = 0;               ///< as above
    std::vector<int> own_tracks;  ///< stream indices of the subtitles that this tool has added
};

/// The value of ffprobe's `-show_entries` for `mp4_facts`.
extern const char* const kMp4Entries;

/// The facts in ffprobe's JSON.
Mp4Facts mp4_facts(const nlohmann::json& probed);

/// Arguments for ffmpeg that copy `mp4` to `output`, without earlier subtitles of this tool, and
/// add the ASS script on standard input as an enabled track.
std::vector<std::string> subtitle_arguments(const std::string& mp4, const Mp4Facts& facts,
                                            const std::string& output);

/// Adds the subtitles to the MP4 file, with progress lines on standard output.
///
/// Blocks. The MP4 file is replaced in one step when the new one is complete; after a failure or a
/// stop it is unchanged, and a failure note says why. Replaces subtitles that this tool added
/// before and keeps all others. Refuses a file that is not an MP4 file, one that another run has
/// replaced meanwhile, and one that a failed conversion should have replaced.
MaybeFailure add_subtitles(const SubtitleRequest& request, const StopSignals& stop);

}  // namespace bundle
