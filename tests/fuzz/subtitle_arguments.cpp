// The arguments of our MP4Box, one per line.

#include <cstdint>
#include <string_view>

#include "fuzz/lines.h"
#include "fuzz/require.h"
#include "mp4box/mux.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto arguments = lines_of({reinterpret_cast<const char*>(data), size});
    const auto request = bundle::parse_subtitle_request(arguments);
    if (!request) {
        REQUIRE(!request.failure().message.empty());
        return 0;
    }
    const auto again =
        bundle::parse_subtitle_request({"-add", request->subtitles + ":hdlr=sbtl", request->mp4});
    REQUIRE(static_cast<bool>(again));
    REQUIRE(again->subtitles == request->subtitles && again->mp4 == request->mp4);
    return 0;
}
