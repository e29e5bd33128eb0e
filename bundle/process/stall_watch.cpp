#include "process/stall_watch.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <string>

namespace bundle {

namespace {

struct Activity {
    char state = ' ';
    long long ticks = 0;

    /// Running, waiting for a processor, or suspended by a signal or a debugger.
    bool is_excused() const { return state == 'R' || state == 'T' || state == 't'; }
};

/// Reads "ID (NAME) STATE ..." of proc(5), where the name may contain anything. Fields 14 and 15
/// are the processor time.
std::optional<Activity> activity_of(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/stat");
    std::string line;
    std::getline(file, line);
    const std::size_t name_end = line.rfind(") ");
    if (name_end == std::string::npos) {
        return std::nullopt;
    }
    std::istringstream fields(line.substr(name_end + 2));
    Activity activity;
    fields >> activity.state;
    std::string skipped;
    for (int field = 4; field < 14; ++field) {
        fields >> skipped;
    }
    long long user = 0;
    long long system = 0;
    fields >> user >> system;
    activity.ticks = user + system;
    return fields ? std::optional(activity) : std::nullopt;
}

}  // namespace

StallWatch::StallWatch(pid_t id, std::chrono::milliseconds limit) : id_(id), limit_(limit) {}

bool StallWatch::stalled() {
    const auto activity = activity_of(id_);
    if (activity && (activity->is_excused() || activity->ticks != ticks_)) {
        ticks_ = activity->ticks;
        heard();
    }
    return Clock::now() - last_life_ > limit_;
}

}  // namespace bundle
