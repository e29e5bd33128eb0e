#include "subtitles/subtitle_file.h"

#include <cstdint>
#include <fstream>
#include <iterator>

#include "core/files.h"
#include "subtitles/cue_track.h"
#include "subtitles/text_encoding.h"

namespace bundle {

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{16} << 20;

Result<std::string> read_file(const std::string& path) {
    if (auto failure = check_input(path)) {
        failure->cause = Cause::kSubtitles;
        return *failure;
    }
    if (file_size(path) > kLargestFile) {
        return failure_by(Cause::kSubtitles, "the subtitle file is too large to be one");
    }
    std::ifstream file(path, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(file), {});
    if (file.bad()) {
        return failure_by(Cause::kSubtitles, "cannot read the subtitle file");
    }
    return content;
}

}  // namespace

Result<std::vector<Cue>> read_subtitles(const std::string& path) {
    const auto content = read_file(path);
    if (!content) {
        return content.failure();
    }
    if (content->empty()) {
        return failure_by(Cause::kSubtitles, "the subtitle file is empty");
    }
    const auto text = text_in_utf8(*content);
    if (!text) {
        return failure_by(Cause::kSubtitles,
                          "the subtitle file can't be read: " + text.failure().message);
    }
    auto cues = one_at_a_time(read_subrip(*text));
    if (cues.empty()) {
        return failure_by(Cause::kSubtitles, "the subtitle file has no subtitles in SubRip form");
    }
    return cues;
}

}  // namespace bundle
