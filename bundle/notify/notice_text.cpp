#include "notify/notice_text.h"

#include <algorithm>

namespace notices {

namespace {

// Notifications are short.
constexpr std::size_t kMostNamed = 4;
constexpr std::size_t kMostFolders = 2;

/// The entries of one movie together: its steps in their order.
struct Movie {
    std::string output;
    std::string name;
    std::string sentences;
    std::string note;
};

std::vector<Movie> movies_of(std::vector<Entry> entries) {
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& one, const Entry& other) { return one.step < other.step; });
    std::vector<Movie> movies;
    for (const Entry& entry : entries) {
        const auto found = std::find_if(movies.begin(), movies.end(), [&](const Movie& movie) {
            return movie.output == entry.output;
        });
        if (found == movies.end()) {
            movies.push_back({entry.output, entry.name, entry.sentence, entry.note});
        } else {
            found->sentences += " " + entry.sentence;
            found->note = entry.note.empty() ? found->note : entry.note;
        }
    }
    return movies;
}

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

/// The folders of the failure notes, each once.
std::vector<std::string> folders_of(const std::vector<Movie>& movies) {
    std::vector<std::string> folders;
    for (const Movie& movie : movies) {
        const std::string folder = folder_of(movie.note);
        if (!folder.empty() && std::find(folders.begin(), folders.end(), folder) == folders.end()) {
            folders.push_back(folder);
        }
    }
    return folders;
}

std::string where(const std::vector<std::string>& folders) {
    if (folders.empty()) {
        return "For details, see the program's console.";
    }
    std::string text = "For details, see the files that end in .failed.txt in " + folders.front();
    for (std::size_t at = 1; at < std::min(folders.size(), kMostFolders); ++at) {
        text += ", " + folders[at];
    }
    return text + (folders.size() > kMostFolders ? ", ..." : "");
}

Message on_one(const Movie& movie) {
    return {movie.name, movie.sentences + "\n" +
                            (movie.note.empty() ? "For details, see the program's console."
                                                : "For details, see " + one_line(movie.note))};
}

Message on_several(const std::vector<Movie>& movies) {
    Message message{std::to_string(movies.size()) + " movies: there were problems", ""};
    const std::size_t named = std::min(movies.size(), kMostNamed);
    for (std::size_t at = 0; at < named; ++at) {
        message.body += one_line(movies[at].name) + ": " + movies[at].sentences + "\n";
    }
    if (movies.size() > named) {
        message.body += "... and " + std::to_string(movies.size() - named) + " more\n";
    }
    message.body += where(folders_of(movies));
    return message;
}

}  // namespace

void add(std::vector<Entry>& entries, const Entry& entry) {
    std::erase_if(entries, [&entry](const Entry& earlier) {
        return earlier.output == entry.output && earlier.step == entry.step;
    });
    entries.push_back(entry);
}

std::size_t count_movies(const std::vector<Entry>& entries) {
    return movies_of(entries).size();
}

Message message_on(const std::vector<Entry>& entries, bool markup) {
    const auto movies = movies_of(entries);
    Message message = movies.size() == 1 ? on_one(movies.front()) : on_several(movies);
    message.summary = one_line(message.summary);
    message.body = markup ? escaped(message.body) : message.body;
    return message;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

std::string one_line(std::string_view text) {
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return result;
}

}  // namespace notices
