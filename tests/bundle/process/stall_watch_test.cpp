#include "process/stall_watch.h"

#include <gtest/gtest.h>

#include <csignal>

#include "bundle/support/child_run.h"

namespace bundle {
namespace {

constexpr std::chrono::milliseconds kLimit{100};

/// Polls the watch for ten times its limit, or until it reports a standstill.
bool comes_to_a_standstill(StallWatch watch) {
    const auto deadline = StallWatch::Clock::now() + 10 * kLimit;
    while (StallWatch::Clock::now() < deadline) {
        if (watch.stalled()) {
            return true;
        }
        ::usleep(5000);
    }
    return false;
}

TEST(StallWatch, NoticesAProgramThatDoesNothing) {
    const ChildRun sleeper({"sleep", "60"});
    EXPECT_TRUE(comes_to_a_standstill({sleeper.id(), kLimit}));
}

TEST(StallWatch, SparesAProgramThatWorksSilently) {
    const ChildRun worker({"sh", "-c", "while :; do :; done"});
    EXPECT_FALSE(comes_to_a_standstill({worker.id(), kLimit}));
}

TEST(StallWatch, SparesASuspendedProgram) {
    const ChildRun sleeper({"sleep", "60"});
    sleeper.send(SIGSTOP);
    EXPECT_FALSE(comes_to_a_standstill({sleeper.id(), kLimit}));
}

TEST(StallWatch, StartsAgainWhenSomethingIsPrinted) {
    const ChildRun sleeper({"sleep", "60"});
    StallWatch watch(sleeper.id(), kLimit);
    const auto deadline = StallWatch::Clock::now() + 5 * kLimit;
    while (StallWatch::Clock::now() < deadline) {
        watch.heard();
        ASSERT_FALSE(watch.stalled());
        ::usleep(5000);
    }
}

}  // namespace
}  // namespace bundle
