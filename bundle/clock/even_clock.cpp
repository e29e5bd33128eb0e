#include "clock/even_clock.h"

#include <algorithm>
#include <cstdlib>

namespace bundle {

namespace {

// Milliseconds.
constexpr std::int64_t kReordering = 1000;

}  // namespace

bool EvenClock::follows(const Stream& stream, std::int64_t even) const {
    return even >= stream.even - kReordering && even <= std::max(stream.even, end_) + longest_gap_;
}

std::int64_t EvenClock::offset_for(const Stream& stream, std::int64_t time) {
    const std::int64_t step = time - stream.last;
    const bool has_small_step = step >= -kReordering && step <= kLongestStep;
    // A stream of few packets may show the same times after the jump as before it.
    const bool is_far_behind = time + stream.offset < end_ - kReordering;
    if (has_small_step && !(is_far_behind && follows(stream, time + newest_offset_))) {
        return stream.offset;
    }
    if (!follows(stream, time + newest_offset_)) {
        newest_offset_ = end_ - time;
    }
    return newest_offset_;
}

std::int64_t EvenClock::even(int number, std::int64_t time) {
    const bool is_first = streams_.empty();
    const auto [place, is_new] = streams_.try_emplace(number);
    Stream& stream = place->second;
    if (is_new) {
        stream = {time, newest_offset_, time + newest_offset_};
        start_ = is_first ? time : start_;
        end_ = is_first ? time : end_;
    }
    stream.offset = offset_for(stream, time);
    const std::int64_t even = time + stream.offset;
    const std::int64_t step = std::abs(even - stream.even);
    stream.step = step > 0 ? std::min(step, stream.step) : stream.step;
    stream.last = time;
    stream.even = even;
    end_ = std::max(end_, even + (stream.step < kLongestStep ? stream.step : 0));
    return even;
}

}  // namespace bundle
