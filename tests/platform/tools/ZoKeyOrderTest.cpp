// The sort by byte keys orders exactly as comparing the whole keys byte by byte would, with
// equal keys in their items' order, however long the beginnings the keys share.
#include "platform/tools/ZoKeyOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

TEST(ZoKeyOrder, OrdersAsWholeKeysCompareAndKeepsEqualKeysInOrder)
{
    std::mt19937 random(20261125);
    std::vector<std::string> const stems = {"", "plc3_pump_station_north_pressure_", "plc3_pump_station_north_",
                                            "plc3_p", "a", std::string("a\0", 2), std::string(24, 'x')};
    std::vector<std::string> keys;
    for (int i = 0; i < 3000; ++i) {
        std::string key = stems[random() % stems.size()];
        int const tail = int(random() % 12);
        for (int c = 0; c < tail; ++c)
            key.push_back("ab_\xC3\xA9\0z9"[random() % 7]);
        keys.push_back(key);
    }
    std::vector<std::uint32_t> expected(keys.size());
    std::iota(expected.begin(), expected.end(), 0u);
    std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::string_view(keys[a]) < std::string_view(keys[b]);
    });
    EXPECT_EQ(ZoOrderByKeys(keys.size(), [&](std::size_t i) { return std::string_view(keys[i]); }), expected);
    EXPECT_TRUE(ZoOrderByKeys(0, [&](std::size_t i) { return std::string_view(keys[i]); }).empty());
}
