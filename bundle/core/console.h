#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bundle {

/// Writes `text` when `descriptor` takes it without blocking, else drops it: a reader that has
/// stopped reading must not block the work. Up to 4096 bytes are written in one piece or not
/// at all.
void write_if_ready(int descriptor, std::string_view text);

/// Like `write_if_ready`, but waits up to a second for a slow reader before it drops the text.
void write_patiently(int descriptor, std::string_view text);

/// Writes a message, made printable, to the error stream. Each line starts with the tool's name, as
/// in "ffmpeg: line": the program passes on no others.
void complain(std::string_view tool, std::string_view message);

/// `text` with a '?' for every control character but the line feed, so that a name or another
/// program's message can neither forge a line nor control the terminal. A '?' also breaks up the
/// words by which the program recognises reports and progress.
std::string printable(std::string_view text);

/// A name for a message: printable, on one line, in single quotes, shortened in the middle.
std::string in_quotes(std::string_view name);

/// The same for a path that a person may want to copy: not shortened.
std::string whole_in_quotes(std::string_view path);

/// Keeps the end of another program's output, at most `kLimit` bytes.
class MessageTail {
  public:
    static constexpr std::size_t kLimit = 1500;

    void add(std::string_view text);

    /// The kept lines, printable, without line feeds at the end; without a line that was cut.
    std::string text() const;

  private:
    std::string kept_;
    bool cut_ = false;
};

}  // namespace bundle
