#include "output/note_text.h"

#include <algorithm>

#include "core/console.h"

namespace bundle {

namespace {

constexpr std::string_view kFirstLine = "Vantreo: there was a problem with this movie.\n";

/// The heading of each step.
constexpr std::array<std::string_view, kSteps> kHeadings{"\n== The conversion ==\n",
                                                         "\n== The subtitles ==\n"};
constexpr std::string_view kNotMade = "No new MP4 file was made.\n";
constexpr std::string_view kMade = "The MP4 file was made.\n";

/// Indents the lines, so that none of them can pass for a heading.
std::string indented(std::string_view lines) {
    std::string text = "    ";
    for (const char c : printable(lines)) {
        text += c;
        text += c == '\n' ? "    " : "";
    }
    return text + "\n";
}

std::string paragraph(std::string_view title, std::string_view lines) {
    return lines.empty() ? std::string() : std::string(title) + "\n" + indented(lines);
}

}  // namespace

std::size_t place_of(Step step) {
    return static_cast<std::size_t>(step);
}

bool is_note(std::string_view text) {
    return text.starts_with(kFirstLine);
}

Parts parts_of(const std::string& note) {
    Parts parts;
    for (std::size_t step = 0; step < parts.size(); ++step) {
        const std::size_t start = note.find(kHeadings[step]);
        if (start != std::string::npos) {
            const std::size_t body = start + kHeadings[step].size();
            parts[step] = note.substr(body, note.find("\n== ", body) - body);
        }
    }
    return parts;
}

std::string note_text(const Parts& parts) {
    std::string text;
    for (std::size_t step = 0; step < parts.size(); ++step) {
        if (!parts[step].empty()) {
            text.append(kHeadings[step]).append(parts[step]);
        }
    }
    return text.empty() ? text : std::string(kFirstLine) + text;
}

std::string part_text(Step step, const FailureNote& note) {
    std::string text = paragraph("What you can do:", note.advice) +
                       paragraph("What happened:", note.happened) +
                       paragraph("Result:", note.untouched) +
                       paragraph("The last lines of the tool:", note.last_lines);
    if (step == Step::kConversion) {
        text += note.is_delivered ? kMade : kNotMade;
    }
    return text;
}

bool says_not_made(std::string_view part) {
    return part.ends_with(kNotMade);
}

}  // namespace bundle
