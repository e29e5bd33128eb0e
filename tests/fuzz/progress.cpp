// The progress output of both tools, passed to a job in every split.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>

#include "convert/Movie.h"
#include "fuzz/reference.h"
#include "fuzz/require.h"
#include "support/job_listener.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

/// The number in `digits`, at most the largest `long`.
long number(const std::string& digits) {
    return std::strtol(digits.c_str(), nullptr, 10);
}

/// A running job, with tools that were never started.
class Job {
  public:
    Job(const wxString& mode, std::uint8_t figures)
        : movie(listener, "/m/a.avi", "/out", 0), transcoder(&movie), muxer(&movie) {
        movie.mode = mode;
        movie.duration = 1 + figures % 7 * 600;
        movie.ffmpeg = &transcoder;
        movie.mp4box = &muxer;
        transcoder.millis = muxer.millis = figures * 1000L;
    }

    void poll(std::string_view text) {
        movie.OnFFmpegUpdate(undecoded(text));
        check_texts();
    }

    JobListener listener;
    Movie movie;

  private:
    void check_texts() const {
        wxString remaining = movie.time_remaining(-1, -1);
        if (movie.percent > 100)
            remaining.StartsWith("-", &remaining);  // only MP4Box's own figure is not limited
        REQUIRE(remaining == "??:??:??" || remaining == ">24h" || remaining.length() == 8);
        REQUIRE(movie.percent >= 0 && movie.percent_exact >= 0.0F);
    }

    FFmpeg transcoder;
    MP4Box muxer;
};

/// Two polls of a transcode: the figures of the last record that is complete in one of them.
void transcode(std::string_view first, std::string_view second, std::uint8_t figures) {
    Job job("convert", figures);
    std::int32_t percent = 0;
    for (const std::string_view text : {first, second}) {
        job.poll(text);
        if (const auto seconds = reference_seconds(text)) {
            const float done =
                static_cast<float>(number(*seconds)) / static_cast<float>(job.movie.duration);
            percent = static_cast<std::int32_t>(std::min(100.0 * done, 100.0));
        }
        REQUIRE(job.movie.percent == percent);
        REQUIRE(job.movie.percent_exact <= 100.0F);
    }
}

/// Two polls of a mux: the figure of each, 0 where it has none.
void mux(std::string_view first, std::string_view second, std::uint8_t figures) {
    Job job("subtitle", figures);
    for (const std::string_view text : {first, second}) {
        job.poll(text);
        const long percent = number(reference_percent(text).value_or("0"));
        REQUIRE(job.movie.percent == std::min<long>(percent, std::numeric_limits<int>::max()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        transcode(text.substr(0, cut), text.substr(cut), data[0]);
        mux(text.substr(0, cut), text.substr(cut), data[0]);
    }
    return 0;
}
