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

constexpr std::int64_t kLargestNote = 65536;

/// The text of a failure note; empty when there is none or the file is something else.
std::string own_note(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > kLargestNote) {
        return {};
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    return is_note(text) ? text : std::string();
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

MaybeFailure leave_at(const std::string& path, Step step, const FailureNote& note) {
    const std::string old = own_note(path);
    if (old.empty() && exists(path)) {
        return Failure{in_quotes(path) + " is a file of your own, which is kept"};
    }
    Parts parts = parts_of(old);
    parts[place_of(step)] = part_text(step, note);
    return write_privately(path, note_text(parts));
}

/// Removes what the note says about the steps from `first` up to, but not including, `last`.
void clear_at(const std::string& path, std::size_t first, std::size_t last) {
    const std::string old = own_note(path);
    if (old.empty()) {
        return;
    }
    Parts parts = parts_of(old);
    for (std::size_t step = first; step < last; ++step) {
        parts[step].clear();
    }
    const std::string text = note_text(parts);
    if (text.empty()) {
        ::unlink(path.c_str());
    } else if (text != old) {
        (void)write_privately(path, text);
    }
}

/// Notes about the step in other places are older.
void clear_elsewhere(const std::vector<std::string>& places, const std::string& written,
                     Step step) {
    for (const std::string& path : places) {
        if (path != written) {
            clear_at(path, place_of(step), place_of(step) + 1);
        }
    }
}

}  // namespace

Result<WrittenNote> leave_note(const Subject& subject, Step step, const FailureNote& note) {
    const auto places = note_places(subject);
    MaybeFailure first;
    for (const std::string& path : places) {
        const auto failure = leave_at(path, step, note);
        if (!failure) {
            clear_elsewhere(places, path, step);
            return WrittenNote{path, first ? first->message : ""};
        }
        first = first ? first : failure;
    }
    return *first;
}

void clear_note(const Subject& subject, Step from) {
    for (const std::string& path : note_places(subject)) {
        clear_at(path, place_of(from), kSteps);
    }
}

bool conversion_failed(const Subject& subject) {
    const auto places = note_places(subject);
    return std::any_of(places.begin(), places.end(), [&subject](const std::string& path) {
        return says_not_made(parts_of(own_note(path))[place_of(Step::kConversion)]) &&
               !is_newer(subject.output, path);
    });
}

}  // namespace bundle
