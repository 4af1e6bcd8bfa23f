// Tests of lstd::HashGenerator and of String::Hash, the key hash of every string-keyed map.
#include <lstd/hashgenerator.h>
#include <lstd/string.h>

#include <gtest/gtest.h>

#include <string>

using lstd::HashGenerator;
using namespace std::string_literals;

namespace {
unsigned long const kBasis64 = 0xCBF29CE484222325UL, kPrime64 = 0x100000001B3UL;
}  // namespace

TEST(HashGenerator, Fnv1Hash) {
    EXPECT_EQ(HashGenerator::DoFNV1Hash64("", 0), kBasis64);
    EXPECT_EQ(HashGenerator::DoFNV1Hash64("a", 1), (kBasis64 * kPrime64) ^ 0x61UL);
    // Deliberate: bytes of 0x80 and above are sign-extended and flip the upper bits too.
    EXPECT_EQ(HashGenerator::DoFNV1Hash64("\x80", 1), (kBasis64 * kPrime64) ^ ~0x7FUL);
    EXPECT_EQ(HashGenerator::DoFNV1Hash64("a\0b", 3), 0xD8DCEC186BAFE70CUL);
    std::string const mixed = "k\xE9y\0\x7F\x80\xFF value"s;
    EXPECT_EQ(HashGenerator::DoFNV1Hash64(mixed.data(), mixed.size()), 0x56C0294880F45175UL);
    // Deliberate: the 32-bit variant keeps a 64-bit state, so it outgrows 32 bits.
    EXPECT_EQ(HashGenerator::DoFNV1Hash32("", 0), 0x811C9DC5UL);
    EXPECT_GT(HashGenerator::DoFNV1Hash32("ab", 2), 0xFFFFFFFFUL);
    EXPECT_EQ(HashGenerator::DoFNV1Hash32("ab", 2), 0x344658B070772D38UL);
    EXPECT_EQ(HashGenerator::DoFNV1Hash32(mixed.data(), mixed.size()), 0x6F683C4279F9A815UL);
}

TEST(HashGenerator, BitHash) {
    // The 15-bit hash keeps a 16-bit scratch word; a one-byte tail replaces only its low byte.
    // "abc": w = 0x6261, the top bit of 'c' is clear: (((w << 1) ^ w) | 0x6263) & 0x7FFF.
    // In the 5-byte NUL row the tail 0x01 lands over the high byte 0x03 of the word before it
    // (0x0301, not 0x0001); with 0x00 after it the tail is a whole word again.
    // clang-format off
    std::pair<std::string, unsigned long> const rows[] = {
        {"", 0}, {"A", 0x41}, {"\xFF", 0xFF}, {"AB", 0x4241}, {"\xFF\xFF", 0x7FFF},
        {"abc", 0x66E3}, {"ab\x80", 0x7F9E}, {"abcd", 0x66E3}, {"abcde", 0x6E65},
        {"\0\0\0\x03\x01"s, 0x0701}, {"abcdef", 0x6E65}, {"\x10\x20\x30\x40\x50\x60", 0x6050},
        {"\0\0\0\x03\x01\0"s, 0x0501}, {"x\x81y\xC0z\x90q", 0x73FF}};
    // clang-format on
    for (auto const& [in, want] : rows) {
        SCOPED_TRACE(testing::PrintToString(in));
        EXPECT_EQ(HashGenerator::DoBitHash(in.data(), in.size()), want);
        HashGenerator::DoBitHash("\xFF\xFF\xFF\xFF", 4);  // leaves nothing behind in the scratch
        EXPECT_EQ(HashGenerator::DoBitHash(in.data(), in.size()), want);
    }
}

TEST(String, HashIsFnv1Hash64OverAllBytes) {
    EXPECT_EQ(lstd::String::Hash(static_cast<lstd::String const*>(nullptr)), 0UL);
    EXPECT_EQ(lstd::String::Hash(lstd::String()), kBasis64);
    lstd::String const withNul("a\0b", 3);
    EXPECT_EQ(lstd::String::Hash(withNul), HashGenerator::DoFNV1Hash64("a\0b", 3));
    EXPECT_EQ(lstd::String::Hash(&withNul), lstd::String::Hash(withNul));
    EXPECT_NE(lstd::String::Hash(withNul), lstd::String::Hash(lstd::String("a")));
}
