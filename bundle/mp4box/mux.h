#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "core/result.h"
#include "core/stop_signals.h"

namespace bundle {

/// What an MP4Box command line asks for.
struct SubtitleRequest {
    std::string subtitles;  ///< file in SubRip form
    std::string mp4;        ///< MP4 file that receives them
};

/// Reads the arguments that follow the program's name: "-add", a subtitle file's name with
/// ":hdlr=sbtl" right after it, and the MP4 file; the names may look like anything.
Result<SubtitleRequest> parse_subtitle_request(const std::vector<std::string>& arguments);

/// What has to be known about the MP4 file that receives a subtitle track.
struct Mp4Facts {
    int subtitle_tracks = 0;  ///< that this tool has not added
    std::string brand;        ///< of the MP4 file, as "M4V "
    std::string recorded;  ///< when the movie was recorded, as ffmpeg reads times; empty: unknown
    bool is_mp4 = false;   ///< by its content, not by its name
    bool has_audio = false;
    int width = 0;                ///< of the picture in pixels; 0: none
    int height = 0;               ///< as above
    std::vector<int> own_tracks;  ///< numbers in the file of the subtitles that this tool has added
};

/// What `mp4_facts` reads, as ffprobe's `-show_entries` takes it.
extern const char* const kMp4Entries;

/// The MP4 file's container in ffprobe's JSON.
Mp4Facts mp4_facts(const nlohmann::json& probed);

/// The arguments that make ffmpeg copy everything in `mp4`, but for earlier subtitles of this
/// tool, to the file `output` and add the ASS script on its standard input as an enabled track.
std::vector<std::string> subtitle_arguments(const std::string& mp4, const Mp4Facts& facts,
                                            const std::string& output);

/// Adds the subtitles to the MP4 file, with progress lines on standard output.
///
/// Blocks to the end of the work. The MP4 file is replaced in one step when the new one is whole;
/// after a failure or a stop it is as it was, and a failure note says why. Subtitles that this tool
/// added before are replaced, those of others are kept. An MP4 file that was replaced meanwhile by
/// another run is left alone. Refuses what is no MP4 file, and an MP4 file that an earlier, failed
/// conversion was to replace.
MaybeFailure add_subtitles(const SubtitleRequest& request, const StopSignals& stop);

}  // namespace bundle
