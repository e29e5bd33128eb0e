#include "movie/programs.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace bundle {
namespace {

using nlohmann::json;

json programme(std::initializer_list<int> streams) {
    json list = json::array();
    for (const int index : streams) {
        list.push_back({{"index", index}});
    }
    return {{"streams", list}};
}

TEST(Programmes, PartTheirStreams) {
    const json probed{{"programs", {programme({0, 1}), programme({2, 3})}}};
    EXPECT_EQ(streams_of_other_programs(probed, 0), (std::set{2, 3}));
    EXPECT_EQ(streams_of_other_programs(probed, 3), (std::set{0, 1}));
}

TEST(Programmes, MayShareStreams) {
    const json probed{{"programs", {programme({0, 1, 4}), programme({2, 3, 4})}}};
    EXPECT_EQ(streams_of_other_programs(probed, 0), (std::set{2, 3}));
    EXPECT_EQ(streams_of_other_programs(probed, 4), std::set<int>());
}

TEST(Programmes, PartNothingFromAStreamOfNone) {
    const json probed{{"programs", {programme({0, 1}), programme({2, 3})}}};
    EXPECT_EQ(streams_of_other_programs(probed, 5), std::set<int>());
    EXPECT_EQ(streams_of_other_programs(json::object(), 0), std::set<int>());
}

}  // namespace
}  // namespace bundle
