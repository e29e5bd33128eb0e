// Shows a notification about a step that failed. The tools start it and do not wait for it:
//
//   notify OUTPUT STEP NAME SENTENCE NOTE
//
// It ends within some seconds, whatever the desktop does.

#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "notify/notice_queue.h"
#include "notify/session_bus.h"
#include "protocol/session_folder.h"

namespace {

constexpr int kWords = 6;
// In seconds, so that no bus can keep this program running; the first is for finding the desktop.
constexpr unsigned kLongestSearch = 3;
constexpr unsigned kLongestLife = 15;

notices::Milliseconds now() {
    return std::chrono::duration_cast<notices::Milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void show_with_others(const SessionBus& bus, const notices::Entry& entry,
                      const std::string& folder) {
    notices::NoticeQueue queue(folder);
    const auto wait = queue.join(entry, now());
    if (!wait) {
        return;
    }
    std::this_thread::sleep_for(*wait);
    auto batch = queue.take_all(now());
    if (batch.entries.empty()) {
        batch.entries = {entry};  // the folder takes no files
    }
    const auto message = notices::message_on(batch.entries, bus.reads_markup());
    queue.remember(bus.show(message, batch.replaces), batch.entries);
}

}  // namespace

int main(int count, char** words) {
    if (count != kWords) {
        return 2;
    }
    ::alarm(kLongestSearch);
    const SessionBus bus;
    if (!bus.has_notifications()) {
        return 0;
    }
    ::alarm(kLongestLife);
    const notices::Entry entry{words[1], words[2], words[3], words[4], words[5]};
    if (const auto folder = session_folder()) {
        show_with_others(bus, entry, *folder);
    } else {
        bus.show(notices::message_on({entry}, bus.reads_markup()), "");
    }
    return 0;
}
