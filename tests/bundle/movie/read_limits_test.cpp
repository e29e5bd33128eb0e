#include "movie/read_limits.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "core/bytes_read.h"
#include "core/stop_signals.h"
#include "process/run.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

TEST(BytesRead, AreTheFirstNumberOfTheSystem) {
    std::istringstream text("rchar: 123456\nwchar: 7\nread_bytes: 8\n");
    EXPECT_EQ(bytes_read_in(text), 123'456);
    std::istringstream other("wchar: 7\nnonsense");
    EXPECT_EQ(bytes_read_in(other), 0);
    EXPECT_EQ(bytes_read(0), 0);
}

TEST(BytesRead, GrowWithWhatThisProcessReads) {
    const std::int64_t before = bytes_read(::getpid());
    EXPECT_GT(before, 0);
    bytes_read(::getpid());
    EXPECT_GT(bytes_read(::getpid()), before);
}

TEST(LooksBlank, WantsNothingButZeros) {
    const TemporaryFolder folder;
    std::string zeros(1'000'000, '\0');
    EXPECT_TRUE(looks_blank(folder.write("zeros", zeros)));
    EXPECT_TRUE(looks_blank(folder.write("few", std::string(10, '\0'))));
    for (const std::size_t at : {std::size_t{5}, zeros.size() / 2, zeros.size() - 1}) {
        std::string other = zeros;
        other[at] = 'x';
        EXPECT_FALSE(looks_blank(folder.write("other", other))) << at;
    }
    EXPECT_FALSE(looks_blank(folder.write("empty", "")));
    EXPECT_FALSE(looks_blank(folder / "missing"));
}

}  // namespace
}  // namespace bundle
