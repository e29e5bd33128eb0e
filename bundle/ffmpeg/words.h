#pragma once

#include <initializer_list>
#include <string>
#include <vector>

namespace bundle {

using Words = std::vector<std::string>;

inline void append(Words& words, std::initializer_list<std::string> more) {
    words.insert(words.end(), more);
}

inline void append(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

}  // namespace bundle
