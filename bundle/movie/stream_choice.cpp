#include "movie/stream_choice.h"

#include <tuple>

namespace bundle {

namespace {

/// The place of the stream with the highest rank, the first of equals, among those that qualify.
template <typename Qualifies, typename Rank>
std::optional<std::size_t> best(const std::vector<StreamFacts>& streams, Qualifies qualifies,
                                Rank rank) {
    std::optional<std::size_t> found;
    for (std::size_t at = 0; at < streams.size(); ++at) {
        if (qualifies(streams[at]) && (!found || rank(streams[at]) > rank(streams[*found]))) {
            found = at;
        }
    }
    return found;
}

}  // namespace

bool may_be_one_frame(const StreamFacts& stream) {
    return stream.packets_seen && *stream.packets_seen < 2;
}

std::optional<std::size_t> choose_picture(const std::vector<StreamFacts>& streams) {
    return best(
        streams, [](const StreamFacts& stream) { return stream.decodable && !stream.is_still; },
        [](const StreamFacts& stream) {
            return std::tuple(!may_be_one_frame(stream), stream.is_default, stream.pixels);
        });
}

std::optional<std::size_t> choose_sound(const std::vector<StreamFacts>& streams) {
    return best(
        streams, [](const StreamFacts& stream) { return stream.decodable; },
        [](const StreamFacts& stream) { return std::tuple(stream.sound, stream.is_default); });
}

}  // namespace bundle
