#include "process/progress.h"

#include <algorithm>
#include <utility>

#include "core/formatted.h"
#include "core/numbers.h"
#include "protocol/tool_output.h"

namespace bundle {

namespace {

constexpr std::int64_t kBarWidth = 20;

std::string_view without_blanks(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t last = text.find_last_not_of(" \r");
    return last == std::string_view::npos ? "" : text.substr(first, last + 1 - first);
}

std::optional<double> kilobits(std::string_view value) {
    constexpr std::string_view kUnit = "kbits/s";
    return value.ends_with(kUnit) ? parse_decimal(value.substr(0, value.size() - kUnit.size()))
                                  : std::nullopt;
}

}  // namespace

ProgressReader::ProgressReader(std::function<void(const Progress&)> on_progress)
    : on_progress_(std::move(on_progress)),
      lines_([this](std::string_view line) { read_line(line); }) {}

void ProgressReader::read_line(std::string_view line) {
    const std::size_t cut = line.find('=');
    if (cut == std::string_view::npos) {
        return;
    }
    const std::string_view key = line.substr(0, cut);
    const std::string_view value = without_blanks(line.substr(cut + 1));
    if (key == "frame") {
        progress_.frames = parse_integer(value).value_or(0);
    } else if (key == "dup_frames") {
        progress_.repeated = parse_integer(value).value_or(0);
    } else if (key == "fps") {
        progress_.frames_per_second = parse_decimal(value).value_or(0);
    } else if (key == "stream_0_0_q") {
        progress_.quantizer = parse_decimal(value).value_or(0);
    } else if (key == "total_size") {
        progress_.bytes = parse_integer(value);
    } else if (key == "out_time_us") {
        progress_.microseconds = parse_integer(value);
    } else if (key == "bitrate") {
        progress_.kilobits_per_second = kilobits(value);
    } else if (key == "progress") {
        on_progress_(progress_);
    }
}

const Progress& FurthestProgress::with(const Progress& latest) {
    if (latest.microseconds >= furthest_.microseconds) {
        furthest_ = latest;
    }
    return furthest_;
}

std::string old_progress_line(const Progress& progress) {
    const long long hundredths =
        std::max<std::int64_t>(progress.microseconds.value_or(0), 0) / 10'000;
    const std::string bitrate = progress.kilobits_per_second
                                    ? formatted("%6.1fkbits/s", *progress.kilobits_per_second)
                                    : "N/A";
    return formatted(tool_output::kProgressLine, static_cast<long long>(progress.frames),
                     progress.frames_per_second, progress.quantizer,
                     static_cast<long long>(progress.bytes.value_or(0) / 1024), hundredths / 100,
                     hundredths % 100, bitrate.c_str());
}

std::string file_progress_line(std::int64_t percent) {
    percent = std::clamp<std::int64_t>(percent, 0, 100);
    const auto filled = static_cast<std::size_t>(percent * kBarWidth / 100);
    std::string bar(filled, '=');
    bar.resize(static_cast<std::size_t>(kBarWidth), ' ');
    return formatted(tool_output::kFileProgressLine, bar.c_str(), static_cast<int>(percent));
}

}  // namespace bundle
