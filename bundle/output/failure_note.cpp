#include "output/failure_note.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>

#include "core/console.h"
#include "core/files.h"
#include "output/private_file.h"

namespace bundle {

namespace {

constexpr std::int64_t kLargestTrace = 65536;

/// The trace when it is an ordinary file of ours; empty when there is none or another one.
std::string own_trace(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > kLargestTrace) {
        return {};
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    return is_trace(text) ? text : std::string();
}

MaybeFailure write_privately(const std::string& path, const std::string& text) {
    auto file = PrivateFile::create(path);
    if (!file) {
        return file.failure();
    }
    std::ofstream stream(file->path(), std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) {
        return file->explained({"cannot write " + in_quotes(path)});
    }
    return file->publish();
}

MaybeFailure leave_at(const std::string& path, Step step, const Report& report) {
    const std::string old = own_trace(path);
    if (old.empty() && exists(path)) {
        return Failure{in_quotes(path) + " is a file of your own, which stays"};
    }
    Parts parts = parts_of(old);
    parts[place_of(step)] = part_text(step, report);
    return write_privately(path, trace_text(parts));
}

/// Takes the steps from the first one on, but before the last one, out of the trace.
void clear_at(const std::string& path, std::size_t first, std::size_t last) {
    const std::string old = own_trace(path);
    if (old.empty()) {
        return;
    }
    Parts parts = parts_of(old);
    for (std::size_t step = first; step < last; ++step) {
        parts[step].clear();
    }
    const std::string text = trace_text(parts);
    if (text.empty()) {
        ::unlink(path.c_str());
    } else if (text != old) {
        (void)write_privately(path, text);
    }
}

/// What another place says of the step is older.
void forget_elsewhere(const std::vector<std::string>& places, const std::string& left, Step step) {
    for (const std::string& path : places) {
        if (path != left) {
            clear_at(path, place_of(step), place_of(step) + 1);
        }
    }
}

}  // namespace

Result<Left> leave_trace(const Subject& subject, Step step, const Report& report) {
    const auto places = trace_places(subject);
    MaybeFailure first;
    for (const std::string& path : places) {
        const auto failure = leave_at(path, step, report);
        if (!failure) {
            forget_elsewhere(places, path, step);
            return Left{path, first ? first->message : ""};
        }
        first = first ? first : failure;
    }
    return *first;
}

void clear_trace(const Subject& subject, Step from) {
    for (const std::string& path : trace_places(subject)) {
        clear_at(path, place_of(from), kSteps);
    }
}

bool tells_of_no_output(const Subject& subject) {
    const auto places = trace_places(subject);
    return std::any_of(places.begin(), places.end(), [&subject](const std::string& path) {
        return says_not_made(parts_of(own_trace(path))[place_of(Step::kConversion)]) &&
               !is_newer(subject.output, path);
    });
}

}  // namespace bundle
