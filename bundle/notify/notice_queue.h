#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "notify/notice_text.h"

namespace notices {

using Milliseconds = std::chrono::milliseconds;

/// How long a notice waits for others of the same moment, as the next step of its movie.
inline constexpr Milliseconds kGathering{1000};

/// The least time between two notifications.
inline constexpr Milliseconds kPause{5000};

/// How long a notification is still replaced by one on a later step of its movies.
inline constexpr Milliseconds kReplacing{60000};

/// What the helpers of a session know of each other's notices. Times are of a clock that only goes
/// forward.
struct Shared {
    Milliseconds last_time{0};  ///< when the latest notification was shown; 0: none was
    std::string last_id;        ///< the desktop's number of it
    std::vector<Entry> last;    ///< what it was about
    std::vector<Entry> pending;

    bool operator==(const Shared&) const = default;
};

/// The state as bytes and back; what is no state comes back empty.
std::string packed(const Shared& shared);
Shared unpacked(std::string_view bytes);

/// How long a notice that has just come waits until it is shown.
Milliseconds waiting_time(const Shared& shared, Milliseconds now);

/// What is to be shown.
struct Batch {
    std::vector<Entry> entries;
    std::string replaces;  ///< the desktop's number of a notification; empty: a new one
};

/// Takes all pending notices for one notification. When they are on movies of the latest one, they
/// replace it, together with what that said of other steps and movies.
Batch take(Shared& shared, Milliseconds now);

/// The queue of this session's helpers, in a folder of the session. Of those that wait only one
/// shows what has come; it ends when the process ends, in any way.
class NoticeQueue {
  public:
    explicit NoticeQueue(const std::string& folder);
    NoticeQueue(const NoticeQueue&) = delete;
    NoticeQueue& operator=(const NoticeQueue&) = delete;
    ~NoticeQueue();

    /// Adds the notice. How long to wait before `take_all`; empty when another helper shows it.
    /// Where the folder takes no files every helper shows its own, which `take_all` does not have.
    std::optional<Milliseconds> join(const Entry& entry, Milliseconds now);

    /// What is to be shown now; from here on another helper may wait.
    Batch take_all(Milliseconds now);

    /// Remembers the desktop's number of what was shown.
    void remember(const std::string& id, const std::vector<Entry>& entries);

  private:
    template <typename Change>
    auto locked(Change change);

    int state_ = -1;
    int turn_ = -1;  ///< locked by the helper that waits
};

}  // namespace notices
