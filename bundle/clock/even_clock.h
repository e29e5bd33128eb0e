#pragma once

#include <cstdint>
#include <map>

namespace bundle {

/// Takes the jumps out of the times of a movie's packets, in milliseconds and in the order of the
/// file: what comes after a jump follows what comes before it, and all streams are moved by the
/// same time, so that they stay in step. A jump is a step back of more than a second in a stream,
/// or one forward of more than `longest_gap` from all that came before.
class EvenClock {
  public:
    explicit EvenClock(std::int64_t longest_gap) : longest_gap_(longest_gap) {}

    /// The even time of the next packet of a stream, which has this time in the file.
    std::int64_t even(int stream, std::int64_t time);

    /// The even time at which the latest packet ends, as far as the distances of packets show.
    std::int64_t end() const { return end_; }

    /// How long the movie is up to the latest packet.
    std::int64_t length() const { return end_ - start_; }

  private:
    static constexpr std::int64_t kLongestStep = 1000;

    struct Stream {
        std::int64_t last = 0;  ///< in the file
        std::int64_t offset = 0;
        std::int64_t even = 0;             ///< of the latest packet
        std::int64_t step = kLongestStep;  ///< the smallest from one packet to the next
    };

    bool follows(const Stream& stream, std::int64_t even) const;
    std::int64_t offset_for(const Stream& stream, std::int64_t time);

    std::int64_t longest_gap_;
    std::int64_t newest_offset_ = 0;
    std::int64_t start_ = 0;
    std::int64_t end_ = 0;
    std::map<int, Stream> streams_;
};

}  // namespace bundle
