#include "process/pipe_feed.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "process/child.h"

namespace bundle {

namespace {

constexpr std::size_t kBlock = 65536;

bool write_all(int pipe, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(pipe, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Runs after a fork: only async-signal-safe calls.
void feed(int file, const std::vector<ByteRange>& pieces, const ByteSink& sink) {
    std::array<char, kBlock> block;
    for (const ByteRange& piece : pieces) {
        for (std::int64_t at = piece.from; at < piece.to;) {
            const auto wanted = std::min<std::int64_t>(piece.to - at, kBlock);
            const ssize_t count = ::pread(file, block.data(), static_cast<std::size_t>(wanted), at);
            if (count <= 0 || !sink({block.data(), static_cast<std::size_t>(count)})) {
                return;
            }
            at += count;
        }
    }
}

}  // namespace

Result<PipeFeed> PipeFeed::start(int file, const std::vector<ByteRange>& pieces) {
    return start([&](const ByteSink& sink) { feed(file, pieces, sink); });
}

Result<PipeFeed> PipeFeed::start(const std::function<void(const ByteSink&)>& feed) {
    auto pipe = open_pipe();
    if (!pipe) {
        return pipe.failure();
    }
    const pid_t id = ::fork();
    if (id < 0) {
        return Failure{std::string("cannot start a process: ") + std::strerror(errno)};
    }
    if (id == 0) {
        pipe->reader.reset();
        end_with_maker();
        const int writer = pipe->writer.get();
        feed([writer](std::string_view bytes) { return write_all(writer, bytes); });
        ::_exit(0);
    }
    return PipeFeed(id, std::move(pipe->reader));
}

PipeFeed::PipeFeed(pid_t id, UniqueFd reader) : id_(id), reader_(std::move(reader)) {}

PipeFeed::PipeFeed(PipeFeed&& other) noexcept
    : id_(std::exchange(other.id_, 0)), reader_(std::move(other.reader_)) {}

PipeFeed::~PipeFeed() {
    if (id_ > 0) {
        kill_child(id_);
    }
}

}  // namespace bundle
