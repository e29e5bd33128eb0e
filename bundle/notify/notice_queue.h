#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "notify/notice_text.h"

namespace notices {

using Milliseconds = std::chrono::milliseconds;

/// How long a notice waits for others, such as the one about the next step of its movie.
inline constexpr Milliseconds kGathering{1000};

/// The least time between two notifications.
inline constexpr Milliseconds kPause{5000};

/// How long a notification may be replaced by one about a later step of its movies.
inline constexpr Milliseconds kReplacing{60000};

/// What the helpers of a session share. Times are those of a steady clock.
struct Shared {
    Milliseconds last_time{0};  ///< when the latest notification was shown; 0: none
    std::string last_id;        ///< the desktop's number for it
    std::vector<Entry> last;    ///< what it was about
    std::vector<Entry> pending;

    bool operator==(const Shared&) const = default;
};

/// The state as bytes, and back; empty for invalid bytes.
std::string packed(const Shared& shared);
Shared unpacked(std::string_view bytes);

/// How long a new notice waits until it is shown.
Milliseconds waiting_time(const Shared& shared, Milliseconds now);

/// The notices for one notification.
struct Batch {
    std::vector<Entry> entries;
    std::string replaces;  ///< the desktop's number of an earlier notification; may be empty
};

/// Takes all pending notices for one notification. If they are all about movies of the latest one,
/// it is replaced, and keeps what it said about other steps and movies.
Batch take(Shared& shared, Milliseconds now);

/// The queue of this session's helpers, in the session's folder. One of those that wait shows all
/// notices. Its turn ends with its process, in whatever way.
class NoticeQueue {
  public:
    explicit NoticeQueue(const std::string& folder);
    NoticeQueue(const NoticeQueue&) = delete;
    NoticeQueue& operator=(const NoticeQueue&) = delete;
    ~NoticeQueue();

    /// Adds the notice and returns how long to wait before `take_all`; empty when another helper
    /// shows it. Where the folder takes no files, `take_all` is empty and every helper shows its
    /// own.
    std::optional<Milliseconds> join(const Entry& entry, Milliseconds now);

    /// Takes the notices to show and ends this helper's turn.
    Batch take_all(Milliseconds now);

    /// Remembers what was shown, and the desktop's number for it.
    void remember(const std::string& id, const std::vector<Entry>& entries);

  private:
    template <typename Change>
    auto locked(Change change);

    int state_ = -1;
    int turn_ = -1;  ///< locked by the helper that waits
};

}  // namespace notices
