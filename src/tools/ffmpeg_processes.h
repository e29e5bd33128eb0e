#pragma once

#include <vector>

/// Ids of the user's running processes that are named ffmpeg, whoever started them. One that has
/// ended and only waits to be reaped is not running. Reads /proc on Linux and asks libproc on Mac
/// OS X (not tried); empty on a system that has neither.
std::vector<long> running_ffmpegs();

/// Whether a child of this process has ended; it is left to be reaped by its owner. True for the id
/// of anything but a child.
bool child_has_ended(long pid);
