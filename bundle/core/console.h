#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bundle {

/// Writes `text` at once when `descriptor` takes it without blocking, else drops it: a reader that
/// has stopped reading must not stop the work. At most 4096 bytes, what a pipe takes whole.
void write_if_ready(int descriptor, std::string_view text);

/// As `write_if_ready`, but waits up to a second for a slow reader before it drops the text.
void write_patiently(int descriptor, std::string_view text);

/// Writes the message to the error stream, patiently, each of its lines as "TOOL: line": the
/// program passes on no others. The message is made printable.
void complain(std::string_view tool, std::string_view message);

/// `text` with every control character but the line feed shown as '?', so that a name or a message
/// from elsewhere can neither forge a line nor reach the terminal's controls. What the program
/// looks for in reports and progress is spoilt by a '?' too.
std::string printable(std::string_view text);

/// A name in a message: printable, on one line, in single quotes, shortened in its middle.
std::string in_quotes(std::string_view name);

/// A path as a person copies it: printable, on one line, in single quotes, however long.
std::string whole_in_quotes(std::string_view path);

/// Keeps the end of what another program printed, never more than `kLimit` bytes.
class MessageTail {
  public:
    static constexpr std::size_t kLimit = 1500;

    void add(std::string_view text);

    /// The kept lines, printable, without surrounding line feeds; a line that was cut is left out.
    std::string text() const;

  private:
    std::string kept_;
    bool cut_ = false;
};

}  // namespace bundle
