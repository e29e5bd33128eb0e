#include "notify/notice_queue.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace notices {

namespace {

constexpr std::size_t kFields = 5;
constexpr std::size_t kLargestState = 1 << 20;

std::array<std::string, kFields> fields_of(const Entry& entry) {
    return {entry.output, entry.step, entry.name, entry.sentence, entry.note};
}

void pack(std::string& bytes, const std::vector<Entry>& entries) {
    bytes += std::to_string(entries.size()) + '\0';
    for (const Entry& entry : entries) {
        for (const std::string& field : fields_of(entry)) {
            bytes += field + '\0';
        }
    }
}

/// Reads zero-terminated texts.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::string text() {
        const std::size_t end = bytes_.find('\0');
        is_whole_ = is_whole_ && end != std::string_view::npos;
        const std::string found(bytes_.substr(0, end));
        bytes_.remove_prefix(is_whole_ ? end + 1 : bytes_.size());
        return found;
    }

    long long number() {
        const std::string digits = text();
        long long value = 0;
        const auto [end, fault] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        is_whole_ = is_whole_ && fault == std::errc() && end == digits.data() + digits.size();
        return value;
    }

    std::vector<Entry> entries() {
        std::vector<Entry> found;
        for (long long left = number(); is_whole_ && left > 0; --left) {
            Entry entry;
            for (std::string* field :
                 {&entry.output, &entry.step, &entry.name, &entry.sentence, &entry.note}) {
                *field = text();
            }
            found.push_back(entry);
        }
        return found;
    }

    bool is_whole() const { return is_whole_ && bytes_.empty(); }

  private:
    std::string_view bytes_;
    bool is_whole_ = true;
};

std::string content_of(int file) {
    std::string bytes(kLargestState, '\0');
    const ssize_t size = ::pread(file, bytes.data(), bytes.size(), 0);
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
}

void write_content(int file, const std::string& bytes) {
    if (::ftruncate(file, 0) == 0) {
        [[maybe_unused]] const ssize_t written = ::pwrite(file, bytes.data(), bytes.size(), 0);
    }
}

int open_in(const std::string& folder, const char* name) {
    const int file = ::open((folder + "/" + name).c_str(),
                            O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    // Files that look old may be cleared away.
    ::futimens(file, nullptr);
    return file;
}

/// True when all movies of the newer entries are among those of the older ones.
bool are_known(const std::vector<Entry>& newer, const std::vector<Entry>& older) {
    return std::all_of(newer.begin(), newer.end(), [&older](const Entry& entry) {
        return std::any_of(older.begin(), older.end(),
                           [&entry](const Entry& known) { return known.output == entry.output; });
    });
}

}  // namespace

std::string packed(const Shared& shared) {
    std::string bytes = std::to_string(shared.last_time.count()) + '\0' + shared.last_id + '\0';
    pack(bytes, shared.last);
    pack(bytes, shared.pending);
    return bytes;
}

Shared unpacked(std::string_view bytes) {
    Reader reader(bytes);
    Shared shared;
    shared.last_time = Milliseconds(reader.number());
    shared.last_id = reader.text();
    shared.last = reader.entries();
    shared.pending = reader.entries();
    return reader.is_whole() ? shared : Shared();
}

Milliseconds waiting_time(const Shared& shared, Milliseconds now) {
    // A time in the future is from before a restart of the system.
    const bool is_recent = shared.last_time.count() > 0 && shared.last_time <= now;
    const Milliseconds pause = is_recent ? shared.last_time + kPause - now : Milliseconds(0);
    return std::max(kGathering, pause);
}

Batch take(Shared& shared, Milliseconds now) {
    Batch batch;
    std::swap(batch.entries, shared.pending);
    if (batch.entries.empty()) {
        return batch;
    }
    if (are_known(batch.entries, shared.last) && shared.last_time <= now &&
        now - shared.last_time < kReplacing) {
        auto together = shared.last;
        for (const Entry& entry : batch.entries) {
            add(together, entry);
        }
        batch = {together, shared.last_id};
    }
    shared.last_time = now;
    shared.last.clear();
    return batch;
}

NoticeQueue::NoticeQueue(const std::string& folder) {
    state_ = open_in(folder, "notices");
    turn_ = open_in(folder, "notices.turn");
}

NoticeQueue::~NoticeQueue() {
    ::close(state_);
    ::close(turn_);
}

/// Reads, changes and writes the state while no other helper does.
template <typename Change>
auto NoticeQueue::locked(Change change) {
    ::flock(state_, LOCK_EX);
    Shared shared = unpacked(content_of(state_));
    auto result = change(shared);
    write_content(state_, packed(shared));
    ::flock(state_, LOCK_UN);
    return result;
}

std::optional<Milliseconds> NoticeQueue::join(const Entry& entry, Milliseconds now) {
    return locked([&](Shared& shared) -> std::optional<Milliseconds> {
        const bool has_turn = turn_ < 0 || ::flock(turn_, LOCK_EX | LOCK_NB) == 0;
        add(shared.pending, entry);
        return has_turn ? std::optional(waiting_time(shared, now)) : std::nullopt;
    });
}

Batch NoticeQueue::take_all(Milliseconds now) {
    return locked([&](Shared& shared) {
        ::flock(turn_, LOCK_UN);
        return take(shared, now);
    });
}

void NoticeQueue::remember(const std::string& id, const std::vector<Entry>& entries) {
    locked([&](Shared& shared) {
        shared.last_id = id;
        shared.last = entries;
        return 0;
    });
}

}  // namespace notices
