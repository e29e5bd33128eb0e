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

}  // namespace
}  // namespace bundle
