#include "subtitles/cue_track.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <set>
#include <string>
#include <utility>

namespace bundle {

namespace {

using Cues = std::vector<Cue>;

constexpr std::int64_t kStep = 10;
constexpr std::int64_t kLongestWithoutEnd = 2000;
constexpr std::int64_t kShortestOverlap = 100;
constexpr std::ptrdiff_t kMostTogether = 8;
constexpr std::size_t kMostText = std::size_t{32} << 20;

std::int64_t in_steps(std::int64_t ms) {
    return (ms + kStep / 2) / kStep * kStep;
}

/// A cue without a duration ends where it starts.
void round_times(Cue& cue) {
    const bool has_length = cue.end_ms > cue.start_ms;
    cue.start_ms = in_steps(cue.start_ms);
    cue.end_ms = has_length ? std::max(in_steps(cue.end_ms), cue.start_ms + kStep) : cue.start_ms;
}

/// The first of the sorted cues that starts after this time.
Cues::const_iterator first_after(const Cues& cues, std::int64_t time) {
    return std::upper_bound(
        cues.begin(), cues.end(), time,
        [](std::int64_t before, const Cue& cue) { return before < cue.start_ms; });
}

void give_length(Cue& cue, const Cues& cues) {
    if (cue.end_ms == cue.start_ms) {
        const auto next = first_after(cues, cue.start_ms);
        cue.end_ms += kLongestWithoutEnd;
        cue.end_ms = next == cues.end() ? cue.end_ms : std::min(cue.end_ms, next->start_ms);
    }
}

/// Two texts together for an instant would only flicker.
void cut_short_overlap(Cue& cue, const Cues& cues) {
    const auto next = first_after(cues, std::max(cue.start_ms, cue.end_ms - kShortestOverlap));
    if (next != cues.end() && next->start_ms < cue.end_ms && next->end_ms >= cue.end_ms) {
        cue.end_ms = next->start_ms;
    }
}

Cues settled(Cues cues) {
    std::for_each(cues.begin(), cues.end(), round_times);
    std::stable_sort(cues.begin(), cues.end(),
                     [](const Cue& a, const Cue& b) { return a.start_ms < b.start_ms; });
    for (Cue& cue : cues) {
        give_length(cue, cues);
    }
    for (Cue& cue : cues) {
        cut_short_overlap(cue, cues);
    }
    return cues;
}

/// The indices of the cues, in the order of their ends.
std::vector<std::size_t> by_end(const Cues& cues) {
    std::vector<std::size_t> numbers(cues.size());
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    std::sort(numbers.begin(), numbers.end(),
              [&cues](std::size_t a, std::size_t b) { return cues[a].end_ms < cues[b].end_ms; });
    return numbers;
}

std::vector<std::int64_t> starts_and_ends(const Cues& cues) {
    std::vector<std::int64_t> times;
    for (const Cue& cue : cues) {
        times.insert(times.end(), {cue.start_ms, cue.end_ms});
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

/// Steps through the times at which something changes.
class Walk {
  public:
    explicit Walk(const Cues& cues) : cues_(cues), by_end_(by_end(cues)) {}

    void go_to(std::int64_t time) {
        while (ended_ < by_end_.size() && cues_[by_end_[ended_]].end_ms == time) {
            shown_.erase(by_end_[ended_++]);
        }
        has_start_ = false;
        for (; started_ < cues_.size() && cues_[started_].start_ms == time; ++started_) {
            shown_.insert(started_);
            has_start_ = true;
        }
    }

    /// The text that is shown at this time.
    std::string text() {
        const bool has_room = written_ < kMostText;
        if (shown_.empty() || !(has_room || has_start_)) {
            return {};
        }
        const auto most = has_room ? kMostTogether : 1;
        const auto count = std::min(most, static_cast<std::ptrdiff_t>(shown_.size()));
        std::string text;
        for (auto number = std::prev(shown_.end(), count); number != shown_.end(); ++number) {
            text.append(text.empty() ? "" : "\n").append(cues_[*number].text);
        }
        written_ += text.size();
        return text;
    }

  private:
    const Cues& cues_;
    std::vector<std::size_t> by_end_;
    std::set<std::size_t> shown_;
    std::size_t started_ = 0;
    std::size_t ended_ = 0;
    bool has_start_ = false;
    std::size_t written_ = 0;
};

}  // namespace

std::vector<Cue> one_at_a_time(std::vector<Cue> cues) {
    cues = settled(std::move(cues));
    const auto times = starts_and_ends(cues);
    Walk walk(cues);
    Cues track;
    for (std::size_t at = 0; at + 1 < times.size(); ++at) {
        walk.go_to(times[at]);
        if (std::string text = walk.text(); !text.empty()) {
            track.push_back({times[at], times[at + 1], std::move(text)});
        }
    }
    return track;
}

}  // namespace bundle
