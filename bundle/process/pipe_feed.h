#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "core/byte_sink.h"
#include "core/result.h"
#include "core/unique_fd.h"

namespace bundle {

/// Bytes of a file, from `from` to the one before `to`.
struct ByteRange {
    std::int64_t from = 0;
    std::int64_t to = 0;
};

/// Pieces of a file, one after the other, in a pipe. A process of its own feeds the pipe, so that
/// nothing is held in memory or on a disk and a drive that hangs does not hang this process. It
/// ends with the object, which also closes the pipe, or with this process (Linux only).
class PipeFeed {
  public:
    /// `file` has to stay open until the object is gone.
    static Result<PipeFeed> start(int file, const std::vector<ByteRange>& pieces);

    /// The same with the bytes that `feed` hands on, which runs in the other process.
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
