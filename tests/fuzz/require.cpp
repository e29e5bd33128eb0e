#include "fuzz/require.h"

#include <cstdio>
#include <cstdlib>

void require(bool condition, const char* text, const char* file, int line) {
    if (!condition) {
        std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, text);
        std::abort();
    }
}
