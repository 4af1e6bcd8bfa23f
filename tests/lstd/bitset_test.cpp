// BitSet: word layout, checked access, operators and the hexadecimal form.
#include <lstd/bitset.h>

#include <expect_throw.h>

#include <string>
#include <utility>
#include <vector>

namespace {
using Words = std::vector<unsigned long>;
std::string Hex(lstd::BitSet const& b) { return b.ToHexString().GetStdChar(); }

TEST(BitSet, BitsLiveInSixtyFourBitWords) {
    EXPECT_EQ(1u, lstd::BitSet(0).GetWordNumber());  // at least one word
    lstd::BitSet bits(130);
    for (unsigned long i : {0, 64, 129})
        bits.Set(i, 1);
    lstd::Array<unsigned long>& words = bits.GetWords();
    EXPECT_EQ((Words{1, 1, 2}), (Words{words[0], words[1], words[2]}));
    EXPECT_EQ(3u, bits.GetWordNumber());
    EXPECT_TRUE(bits.Get(129) && !bits.Get(128) && bits.Count() == 3);
    words[1] = 0x8000000000000000UL;  // direct word access, as the graphs use it
    bits.Set(0, 0);
    EXPECT_TRUE(bits.Get(127) && !bits.Get(0));
    bits.Clear();
    EXPECT_EQ(0u, bits.Count());
    ExpectThrow<lstd::InvalidIndexException>([&] { bits.Get(130); },
                                             "The bit index '130' is invalid. (mBitNumber=130)");
    ExpectThrow<lstd::InvalidIndexException>([&] { bits.Set(131, 1); },
                                             "The bit index '131' is invalid. (mBitNumber=130)");
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { bits.Set(1, 2); }, "The bit value is invalid. (Only 0 or 1 is allowed)");
    EXPECT_EQ(0u, bits.Count());
}

// Operators and the hexadecimal form, one digit per four bits.
TEST(BitSet, OperatorsCombineEqualLengths) {
    lstd::BitSet a(70), b(70), eight(8), wide(65);
    for (auto [set, bit] : {std::pair{&a, 1}, {&a, 69}, {&b, 1}, {&b, 2}, {&eight, 0},
                            {&eight, 5}, {&wide, 64}})
        set->Set(bit, 1);
    EXPECT_EQ((std::vector<std::string>{"200000000000000006", "000000000000000002",
                                        "200000000000000004", "21", "10000000000000000", "0",
                                        "0"}),
              (std::vector<std::string>{Hex(a | b), Hex(a & b), Hex(a ^ b), Hex(eight), Hex(wide),
                                        Hex(lstd::BitSet(0)), Hex(lstd::BitSet(3))}));
    lstd::BitSet c(a);
    c ^= a;
    EXPECT_TRUE(c.Count() == 0 && a != c);
    c = a;
    EXPECT_TRUE(a == c);
    lstd::BitSet shorter(69);
    char const* msg = "The bit sets differ in length. (70 and 69 bits)";
    ExpectThrow<lstd::InvalidOperationException>([&] { a |= shorter; }, msg);
    ExpectThrow<lstd::InvalidOperationException>([&] { (void)(a & shorter); }, msg);
    shorter = a;  // assignment takes the other length
    EXPECT_TRUE(shorter.GetBitNumber() == 70 && shorter.Get(69));
}
}  // namespace
