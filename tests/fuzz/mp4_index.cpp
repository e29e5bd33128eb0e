// An MP4 file with any content: its index, and the placement of subtitles.

#include "mp4/index.h"

#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>

#include "fuzz/require.h"
#include "mp4/boxes.h"
#include "subtitles/placement.h"

namespace {

std::optional<bundle::Mp4Index> read(const std::string& bytes) {
    std::istringstream file(bytes);
    return bundle::read_mp4_index(file);
}

/// True if the file's last box has no size: such a file may end anywhere.
bool reaches_to_the_end(const std::string& bytes) {
    std::size_t at = 0;
    while (bytes.size() - at >= 8) {
        std::uint64_t size = bundle::number_at(bytes, at, 4);
        if (size == 0)
            return true;
        size = size == 1 && bytes.size() - at >= 16 ? bundle::number_at(bytes, at + 8, 8) : size;
        REQUIRE(size >= 8 && size <= bytes.size() - at);
        at += size;
    }
    REQUIRE(at == bytes.size());
    return false;
}

void check(const bundle::Mp4Index& index, const std::string& bytes) {
    REQUIRE(std::isfinite(index.duration) && index.duration >= 0);
    REQUIRE(index.tracks.size() < bytes.size());
    for (const auto& track : index.tracks)
        REQUIRE(track.handler.size() == 4);
    if (!reaches_to_the_end(bytes)) {
        REQUIRE(!read(bytes.substr(0, bytes.size() - 1)));
        REQUIRE(!read(bytes + "x"));
    }
}

/// Placing twice changes nothing.
void place_subtitles(const std::string& bytes) {
    std::istringstream file(bytes);
    const auto moov = bundle::find_moov(file);
    std::string index = moov ? bundle::read_range(file, *moov) : "";
    if (bundle::place_text_track(index, {160, 18, 102})) {
        std::string again = index;
        REQUIRE(bundle::place_text_track(again, {160, 18, 102}) && again == index);
        (void)bundle::place_text_track(index, {320, 36, 204});
        REQUIRE(again != index && again.size() == index.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (const auto index = read(bytes))
        check(*index, bytes);
    place_subtitles(bytes);
    return 0;
}
