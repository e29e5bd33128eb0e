#include "pipe_feed.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "child.h"

namespace bundle {

namespace {

constexpr std::size_t kBlock = 65536;

bool write_all(int pipe, const char* bytes, ssize_t count) {
    while (count > 0) {
        const ssize_t written = ::write(pipe, bytes, static_cast<std::size_t>(count));
        if (written <= 0) {
            return false;
        }
        bytes += written;
        count -= written;
    }
    return true;
}

/// Only async-signal-safe calls: it runs behind a fork.
[[noreturn]] void feed(int file, const std::vector<ByteRange>& pieces, int pipe) {
    end_with_maker();
    std::array<char, kBlock> block;
    for (const ByteRange& piece : pieces) {
        for (std::int64_t at = piece.from; at < piece.to;) {
            const auto wanted = std::min<std::int64_t>(piece.to - at, kBlock);
            const ssize_t count = ::pread(file, block.data(), static_cast<std::size_t>(wanted), at);
            if (count <= 0 || !write_all(pipe, block.data(), count)) {
                ::_exit(0);
            }
            at += count;
        }
    }
    ::_exit(0);
}

}  // namespace

Result<PipeFeed> PipeFeed::start(int file, const std::vector<ByteRange>& pieces) {
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
        feed(file, pieces, pipe->writer.get());
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
