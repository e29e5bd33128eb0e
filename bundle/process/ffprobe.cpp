#include "process/ffprobe.h"

#include <nlohmann/json.hpp>

#include "core/console.h"
#include "core/files.h"
#include "core/json_reading.h"
#include "core/lines.h"
#include "process/run.h"
#include "process/source_check.h"
#include "process/system_tools.h"

namespace bundle {

namespace {

// Far above what thousands of streams need.
constexpr std::size_t kLongestAnswer = std::size_t{8} << 20;
constexpr std::chrono::seconds kLongestProbe{60};

Failure unreadable(const std::string& path, const nlohmann::json& answer) {
    const std::string reason = text(member(answer, "error"), "string");
    return failure_by(Cause::kNoMovie,
                      in_quotes(path) + " is not a movie: " +
                          (reason.empty() ? "ffprobe gives no answer" : printable(reason)));
}

/// Whatever a playlist in a movie says, only files and this program's pipes are read.
std::vector<std::string> probe_options(std::initializer_list<std::string> more) {
    std::vector<std::string> options{"-v", "quiet", "-protocol_whitelist", "file,pipe"};
    options.insert(options.end(), more);
    return options;
}

/// Calls `on_line` with each line that ffprobe prints about the movie on the descriptor `input`.
MaybeFailure read_lines(int input, const std::vector<std::string>& options, const StopSignals& stop,
                        const std::function<void(std::string_view)>& on_line) {
    const auto program = find_ffprobe();
    if (!program) {
        return program.failure();
    }
    Command command{*program, probe_options({"-of", "csv=p=0"})};
    command.arguments.insert(command.arguments.end(), options.begin(), options.end());
    command.arguments.insert(command.arguments.end(), {"-i", "pipe:0"});
    command.input = input;
    command.longest_run = kLongestProbe;
    LineReader lines(on_line);
    const auto status =
        run(command, {[&lines](std::string_view piece) { lines.add(piece); }, {}, {}}, stop);
    return status ? MaybeFailure() : status.failure();
}

}  // namespace

Result<nlohmann::json> probe_entries(const std::string& path, const std::string& entries,
                                     const StopSignals& stop, const std::vector<std::string>& more,
                                     std::int64_t most_read) {
    if (auto failure = check_source(path, stop)) {
        return *failure;
    }
    const auto program = find_ffprobe();
    if (!program) {
        return program.failure();
    }
    Command command{*program,
                    probe_options({"-of", "json", "-show_error", "-show_entries", entries})};
    command.arguments.insert(command.arguments.end(), more.begin(), more.end());
    command.arguments.insert(command.arguments.end(), {"-i", file_url(path)});
    command.longest_run = kLongestProbe;
    command.most_read = most_read;
    std::string answer;
    const auto collect = [&answer](std::string_view piece) {
        if (answer.size() + piece.size() <= kLongestAnswer) {
            answer.append(piece);
        }
    };
    const auto status = run(command, {collect, {}, {}}, stop);
    if (!status) {
        return stop.received() != 0
                   ? status.failure()
                   : about("cannot look into " + in_quotes(path), status.failure());
    }
    auto parsed = nlohmann::json::parse(answer, nullptr, false);
    if (*status != 0 || !parsed.is_object()) {
        return unreadable(path, parsed);
    }
    return parsed;
}

MaybeFailure read_packets(int input, std::vector<std::string> more, const std::string& fields,
                          const StopSignals& stop,
                          const std::function<void(std::string_view)>& on_packet) {
    more.insert(more.end(), {"-show_entries", "packet=" + fields});
    return read_lines(input, more, stop, on_packet);
}

MaybeFailure read_key_frames(int input, int stream, std::vector<std::string> more,
                             const std::string& fields, const StopSignals& stop,
                             const std::function<void(std::string_view)>& on_frame) {
    more.insert(more.end(), {"-skip_frame", "nokey", "-select_streams", std::to_string(stream),
                             "-show_entries", "frame=" + fields});
    return read_lines(input, more, stop, on_frame);
}

}  // namespace bundle
