// The report of a probe, read by the pattern and turned into a job.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "convert/Movie.h"
#include "convert/devices.h"
#include "fuzz/reference.h"
#include "fuzz/require.h"
#include "support/job_listener.h"
#include "tools/FFmpeg.h"

namespace {

/// The report's values, by plain search; numbers as the C library reads them.
void compare(const Movie& job, std::string_view report) {
    const auto facts = reference_probe(report);
    if (!facts) {
        REQUIRE(job.error == "error_badMovies");
        return;
    }
    REQUIRE(job.width == std::atoi(facts->width.c_str()));
    REQUIRE(job.height == std::atoi(facts->height.c_str()));
    REQUIRE(job.fps == std::strtod(facts->rate.c_str(), nullptr));
}

void check_accepted(const Movie& job) {
    // Eight digits without a colon are hours, whose seconds overflow 32 bits.
    REQUIRE(job.duration != 0);
    REQUIRE(job.fps > 0.0 && job.fps_max > 0.0 && job.fps_max <= 30.0);
    const int limit = kDevices[known_device(job.optimize)].longest_side;
    REQUIRE(job.out_width > 0 && job.out_width <= limit);
    REQUIRE(job.out_height > 0 && job.out_height <= limit);
    REQUIRE(job.output_path == "/tmp/a.mp4");
    REQUIRE(job.ffmpeg_command.Contains(" -r 30000/1001") == (job.fps > 29.97));
    REQUIRE(job.ffmpeg_command.EndsWith(
        wxString::Format(" -s %ix%i \"/tmp/a.mp4\"", job.out_width, job.out_height)));
}

void check_refused(const Movie& job) {
    REQUIRE(job.error == "error_badMovies");
    REQUIRE(job.ffmpeg_command.empty() && job.output_path.empty() && job.mp4box_command.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view report(reinterpret_cast<const char*>(data) + 1, size - 1);
    JobListener listener;
    Movie job(listener, "/no/such/folder/a.avi", "/tmp", data[0] % 4);
    job.infos = undecoded(report);
    job.InfosProcess();
    compare(job, report);
    if (job.error.empty())
        check_accepted(job);
    else
        check_refused(job);
    return 0;
}
