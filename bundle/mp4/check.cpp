#include "mp4/check.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <span>
#include <string_view>

#include "core/formatted.h"
#include "mp4/index.h"

namespace bundle {

namespace {

constexpr double kToleratedSeconds = 2;
constexpr double kToleratedShare = 0.02;
constexpr double kLeastShare = 0.01;

// As ffmpeg writes them. Its "text" tracks have the names of the chapters.
constexpr std::array<std::string_view, 4> kSubtitles{"sbtl", "subp", "subt", "clcp"};
constexpr std::array<std::string_view, 1> kPicture{"vide"};
constexpr std::array<std::string_view, 1> kSound{"soun"};

Failure incomplete(const char* what) {
    return {std::string("the MP4 file is incomplete: ") + what};
}

/// True for a track of one of these kinds that is not empty.
bool is_any_of(const Mp4Track& track, std::span<const std::string_view> handlers) {
    return track.samples > 0 &&
           std::find(handlers.begin(), handlers.end(), track.handler) != handlers.end();
}

std::ptrdiff_t tracks_of(const Mp4Index& index, std::span<const std::string_view> handlers) {
    return std::count_if(index.tracks.begin(), index.tracks.end(),
                         [&](const Mp4Track& track) { return is_any_of(track, handlers); });
}

/// Of picture and sound: in a truncated movie the names of the chapters may go on to its end.
double duration_of(const Mp4Index& index) {
    double longest = 0;
    for (const Mp4Track& track : index.tracks) {
        if (is_any_of(track, kPicture) || is_any_of(track, kSound)) {
            longest = std::max(longest, track.duration);
        }
    }
    return longest;
}

}  // namespace

Result<double> check_mp4(const std::string& path, const ExpectedStreams& expected) {
    std::ifstream file(path, std::ios::binary);
    const auto index = read_mp4_index(file);
    if (!index) {
        return incomplete("it does not open");
    }
    if (tracks_of(*index, kPicture) == 0) {
        return incomplete("it has no picture");
    }
    if (expected.audio && tracks_of(*index, kSound) == 0) {
        return incomplete("it has no sound");
    }
    if (tracks_of(*index, kSubtitles) < expected.subtitle_tracks) {
        return incomplete("it has no subtitles");
    }
    return duration_of(*index);
}

double picture_length(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const auto index = read_mp4_index(file);
    double longest = 0;
    for (const Mp4Track& track : index ? index->tracks : std::vector<Mp4Track>{}) {
        longest = std::max(longest, is_any_of(track, kPicture) ? track.duration : 0);
    }
    return longest;
}

bool is_nearly_nothing(double promised, double made) {
    return made < promised * kLeastShare;
}

std::string shortfall(double promised, double made) {
    const double missing = promised - made;
    if (missing <= kToleratedSeconds || missing <= promised * kToleratedShare) {
        return {};
    }
    return formatted(
        "The movie is truncated or damaged: the MP4 file has %.1f of %.1f seconds; %.1f seconds "
        "(%.0f %%) are missing.",
        made, promised, missing, 100 * missing / promised);
}

}  // namespace bundle
