#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace bundle {

/// Removes the first line from the text and returns it without its line feed.
std::string_view take_line(std::string_view& text);

/// Splits what a program prints into lines, whatever pieces it comes in. A line is cut after 1000
/// bytes; an unfinished line at the end is dropped.
class LineReader {
  public:
    explicit LineReader(std::function<void(std::string_view)> on_line);

    void add(std::string_view piece);

  private:
    std::function<void(std::string_view)> on_line_;
    std::string line_;  ///< the unfinished line
};

}  // namespace bundle
