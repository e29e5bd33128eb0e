// The arguments of our ffmpeg, one per line.

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "ffmpeg/request.h"
#include "fuzz/lines.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto arguments = lines_of({reinterpret_cast<const char*>(data), size});
    const auto request = bundle::parse_transcode(arguments);
    if (const auto output = bundle::output_of(arguments))
        REQUIRE(*output == arguments.back());
    if (!request) {
        REQUIRE(request.failure().status == bundle::kStatusUsage);
        REQUIRE(!request.failure().message.empty());
        return 0;
    }
    REQUIRE(request->output == arguments.back());
    REQUIRE(!request->input.empty());
    REQUIRE(std::find(arguments.begin(), arguments.end(), request->input) != arguments.end());
    REQUIRE(request->width >= 0 && request->width <= 16384);
    REQUIRE(request->height >= 0 && request->height <= 16384);
    REQUIRE(request->width + request->height > 0);  // the conversion takes 2 for a side of 0 or 1
    REQUIRE(request->level == 0 || (request->level >= 10 && request->level <= 62));
    REQUIRE(request->reference_frames >= 1 && request->reference_frames <= 16);
    REQUIRE(!request->rate || request->rate->value() > 0);
    return 0;
}
