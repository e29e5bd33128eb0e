#include "trace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>

#include "console.h"
#include "files.h"
#include "private_file.h"

namespace bundle {

namespace {

constexpr std::string_view kSuffix = ".failed.txt";
constexpr std::string_view kFirstLine = "Vantreo: not everything went well here.\n";
constexpr std::size_t kLongestName = 255;
constexpr std::int64_t kLargestTrace = 65536;

/// How the parts of a trace begin, one for each step.
constexpr std::array<std::string_view, 2> kHeadings{"\n== The conversion ==\n",
                                                    "\n== The subtitles ==\n"};
constexpr std::string_view kNoOutput = "No new film was made.\n";

using Parts = std::array<std::string, kHeadings.size()>;

std::size_t place_of(Step step) {
    return static_cast<std::size_t>(step);
}

/// The trace when it is an ordinary file of ours; empty when there is none or another one.
std::string own_trace(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > kLargestTrace) {
        return {};
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    return text.starts_with(kFirstLine) ? text : std::string();
}

Parts parts_of(const std::string& trace) {
    Parts parts;
    for (std::size_t step = 0; step < parts.size(); ++step) {
        const std::size_t start = trace.find(kHeadings[step]);
        if (start != std::string::npos) {
            const std::size_t body = start + kHeadings[step].size();
            parts[step] = trace.substr(body, trace.find("\n== ", body) - body);
        }
    }
    return parts;
}

std::string text_of(const Parts& parts) {
    std::string text;
    for (std::size_t step = 0; step < parts.size(); ++step) {
        if (!parts[step].empty()) {
            text.append(kHeadings[step]).append(parts[step]);
        }
    }
    return text.empty() ? text : std::string(kFirstLine) + text;
}

/// The lines moved to the right, so that none of them can look like a part's heading.
std::string indented(std::string_view lines) {
    std::string text = "    ";
    for (const char c : printable(lines)) {
        text += c;
        text += c == '\n' ? "    " : "";
    }
    return text + "\n";
}

std::string text_of(Step step, const Report& report) {
    std::string text = "What happened:\n" + indented(report.happened) + "What was left:\n" +
                       indented(report.untouched);
    if (!report.last_lines.empty()) {
        text += "The last lines of the tool:\n" + indented(report.last_lines);
    }
    if (step == Step::kConversion && !report.is_delivered) {
        text += kNoOutput;
    }
    return text;
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
        return Failure{"cannot write " + in_quotes(path)};
    }
    return file->publish();
}

/// Tells long names apart that begin alike: "~" and eight digits, by the hash FNV-1a.
std::string short_mark(std::string_view name) {
    std::uint32_t hash = 2166136261;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
    }
    std::array<char, 10> mark{};
    std::snprintf(mark.data(), mark.size(), "~%08x", static_cast<unsigned>(hash));
    return mark.data();
}

void rewrite(const std::string& path, const Parts& parts) {
    const std::string text = text_of(parts);
    if (text.empty()) {
        ::unlink(path.c_str());
    } else {
        (void)write_privately(path, text);
    }
}

}  // namespace

std::string trace_path(const std::string& output) {
    const std::size_t name = output.rfind('/') + 1;  // npos + 1 is 0
    if (output.size() - name + kSuffix.size() <= kLongestName) {
        return output + std::string(kSuffix);
    }
    const std::string mark = short_mark(std::string_view(output).substr(name));
    std::size_t length = name + kLongestName - kSuffix.size() - mark.size();
    // Not in the middle of a character.
    while (length > name && (output[length] & 0xC0) == 0x80) {
        --length;
    }
    return output.substr(0, length) + mark + std::string(kSuffix);
}

MaybeFailure leave_trace(const std::string& output, Step step, const Report& report) {
    const std::string path = trace_path(output);
    const std::string old = own_trace(path);
    if (old.empty() && exists(path)) {
        return Failure{in_quotes(path) + " is somebody else's file"};
    }
    Parts parts = parts_of(old);
    parts[place_of(step)] = text_of(step, report);
    return write_privately(path, text_of(parts));
}

void tell_in_trace(const std::string& output, Step step, const Report& report) {
    if (const auto failure = leave_trace(output, step, report)) {
        complain("no trace of this beside the film", failure->message);
    }
}

void clear_trace(const std::string& output, Step from) {
    const std::string path = trace_path(output);
    const std::string old = own_trace(path);
    if (old.empty()) {
        return;
    }
    Parts parts = parts_of(old);
    std::fill(parts.begin() + static_cast<std::ptrdiff_t>(place_of(from)), parts.end(), "");
    rewrite(path, parts);
}

bool tells_of_no_output(const std::string& output) {
    const std::string path = trace_path(output);
    const std::string conversion = parts_of(own_trace(path))[place_of(Step::kConversion)];
    return conversion.ends_with(kNoOutput) && !is_newer(output, path);
}

}  // namespace bundle
