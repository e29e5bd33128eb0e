#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace notices {

/// What went wrong with one step of a movie.
struct Entry {
    std::string output;  ///< path of the MP4 file, which the steps of a movie share
    std::string step;    ///< its number, from "0"
    std::string name;    ///< the movie's
    std::string sentence;
    std::string note;  ///< path of the failure note; empty: there is none

    bool operator==(const Entry&) const = default;
};

/// One notification.
struct Message {
    std::string summary;
    std::string body;
};

/// Adds an entry in place of an earlier one about the same step.
void add(std::vector<Entry>& entries, const Entry& entry);

/// How many movies the entries are about.
std::size_t count_movies(const std::vector<Entry>& entries);

/// The notification about one or more entries. With `markup` the desktop reads the body as markup,
/// and it is escaped.
Message message_on(const std::vector<Entry>& entries, bool markup);

/// The text with entities for the characters that markup uses.
std::string escaped(std::string_view text);

/// The text on one line: every control character becomes a space.
std::string one_line(std::string_view text);

}  // namespace notices
