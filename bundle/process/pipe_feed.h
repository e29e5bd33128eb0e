#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "core/byte_sink.h"
#include "core/result.h"
#include "core/unique_fd.h"

namespace bundle {

/// Bytes of a file, from `from` up to but not including `to`.
struct ByteRange {
    std::int64_t from = 0;
    std::int64_t to = 0;
};

/// Feeds a pipe with pieces of a file, or with whatever a function passes on.
///
/// A process of its own does that, so that nothing is kept in memory or on disk, and a dead drive
/// can't block this process. It ends with the object or with this process (Linux only).
class PipeFeed {
  public:
    static Result<PipeFeed> start(int file, const std::vector<ByteRange>& pieces);

    /// `feed` runs in the other process, after a fork.
    static Result<PipeFeed> start(const std::function<void(const ByteSink&)>& feed);

    PipeFeed(PipeFeed&& other) noexcept;
    PipeFeed& operator=(PipeFeed&&) = delete;
    ~PipeFeed();

    /// The reading end.
    int reader() const { return reader_.get(); }

  private:
    PipeFeed(pid_t id, UniqueFd reader);

    pid_t id_;
    UniqueFd reader_;
};

}  // namespace bundle
