// Tests of lstd::Memory::CopyOverlappedMemory (note the order: source, then destination).
#include <lstd/memory.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using lstd::Memory;

TEST(Memory, CopyOverlappedMemory) {
    // Moves in both directions and onto themselves, distances below, at and above the count.
    unsigned long const rows[][3] = {{0, 2, 5},  {2, 0, 5},   {1, 1, 5},   {0, 1, 100},
                                     {1, 0, 100}, {0, 3, 10},  {3, 0, 10},  {0, 3, 9},
                                     {3, 0, 9},   {5, 8, 3},   {8, 5, 3},   {2, 50, 40},
                                     {50, 2, 40}, {0, 7, 0}};
    for (auto const &[from, to, count] : rows) {
        SCOPED_TRACE(testing::Message() << from << " -> " << to << " x" << count);
        char expected[128], actual[128];
        for (int i = 0; i < 128; ++i)
            expected[i] = actual[i] = static_cast<char>(i * 7 + 1);
        std::memmove(expected + to, expected + from, count);
        Memory::CopyOverlappedMemory(actual + from, actual + to, count);
        EXPECT_EQ(std::string(actual, 128), std::string(expected, 128));
    }
}
