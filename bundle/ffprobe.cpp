#include "ffprobe.h"

#include <nlohmann/json.hpp>

#include "console.h"
#include "files.h"
#include "process.h"
#include "system_tools.h"

namespace bundle {

namespace {

// Far above what thousands of streams need.
constexpr std::size_t kLongestAnswer = std::size_t{8} << 20;

Failure unreadable(const nlohmann::json& answer) {
    const auto reason = nlohmann::json::json_pointer("/error/string");
    if (answer.is_object() && answer.contains(reason) && answer[reason].is_string()) {
        return {"not a movie: " + printable(answer[reason].get<std::string>())};
    }
    return {"not a movie: ffprobe gives no answer"};
}

}  // namespace

Result<nlohmann::json> probe_entries(const std::string& path, const std::string& entries,
                                     const StopSignals& stop) {
    if (auto failure = check_input(path)) {
        return *failure;
    }
    const auto program = find_ffprobe();
    if (!program) {
        return program.failure();
    }
    const Command command{*program,
                          {"-v", "quiet", "-of", "json", "-show_error", "-show_entries", entries,
                           "-i", file_url(path)}};
    std::string answer;
    const auto collect = [&answer](std::string_view piece) {
        if (answer.size() + piece.size() <= kLongestAnswer) {
            answer.append(piece);
        }
    };
    const auto status = run(command, {collect, {}, {}}, stop);
    if (!status) {
        return status.failure();
    }
    auto parsed = nlohmann::json::parse(answer, nullptr, false);
    if (*status != 0 || !parsed.is_object()) {
        return unreadable(parsed);
    }
    return parsed;
}

Result<Film> probe_film(const std::string& path, const StopSignals& stop) {
    const auto answer = probe_entries(path, kFilmEntries, stop);
    return answer ? film_from(*answer) : answer.failure();
}

}  // namespace bundle
