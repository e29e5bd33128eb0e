#include "process/run.h"

#include <gtest/gtest.h>

namespace bundle {
namespace {

TEST(Process, EndsAProgramThatExceedsItsTime) {
    Command busy{"/bin/sh", {"-c", "while :; do :; done"}};
    busy.longest_run = std::chrono::milliseconds(100);
    const auto status = run(busy, {}, StopSignals({}));
    ASSERT_FALSE(status);
    EXPECT_EQ(status.failure().message, "sh did not finish within 0 seconds");
}

TEST(Process, PassesOnEverythingPrinted) {
    std::string output;
    std::string errors;
    const Listener listener{[&output](std::string_view piece) { output += piece; },
                            [&errors](std::string_view piece) { errors += piece; },
                            {}};
    const auto status =
        run({"/bin/sh", {"-c", "echo out; echo err >&2; exit 3"}}, listener, StopSignals({}));
    ASSERT_TRUE(status);
    EXPECT_EQ(*status, 3);
    EXPECT_EQ(output, "out\n");
    EXPECT_EQ(errors, "err\n");
}

TEST(Process, EndsAProgramWhenItsListenerSaysSo) {
    bool has_enough = false;
    const Listener listener{
        {}, [&](std::string_view) { has_enough = true; }, {}, [&] { return has_enough; }};
    const auto start = std::chrono::steady_clock::now();
    const auto status =
        run({"/bin/sh", {"-c", "echo err >&2; exec sleep 60"}}, listener, StopSignals({}));
    ASSERT_FALSE(status);
    EXPECT_EQ(status.failure().message, "sh was ended before its time");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace bundle
