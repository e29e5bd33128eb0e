#pragma once

/// Ends the process, which the fuzzer reports with its input, if `condition` is false.
#define REQUIRE(condition) require((condition), #condition, __FILE__, __LINE__)

void require(bool condition, const char* text, const char* file, int line);
