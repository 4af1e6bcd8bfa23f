// BitSet: word layout, checked access, operators and the hexadecimal form.
#include <lstd/bitset.h>

#include <expect_throw.h>

namespace {

TEST(BitSet, BitsLiveInSixtyFourBitWords) {
    lstd::BitSet empty(0);
    EXPECT_EQ(1u, empty.GetWordNumber());  // at least one word
    lstd::BitSet bits(130);
    EXPECT_EQ(3u, bits.GetWordNumber());
    bits.Set(0, 1);
    bits.Set(64, 1);
    bits.Set(129, 1);
    EXPECT_EQ(1u, bits.GetWords()[0]);
    EXPECT_EQ(1u, bits.GetWords()[1]);
    EXPECT_EQ(2u, bits.GetWords()[2]);
    EXPECT_TRUE(bits.Get(129));
    EXPECT_FALSE(bits.Get(128));
    EXPECT_EQ(3u, bits.Count());
    bits.GetWords()[1] = 0x8000000000000000UL;  // direct word access, as the graphs use it
    EXPECT_TRUE(bits.Get(127));
    bits.Set(0, 0);
    EXPECT_FALSE(bits.Get(0));
    bits.Clear();
    EXPECT_EQ(0u, bits.Count());
}

TEST(BitSet, AccessIsChecked) {
    lstd::BitSet bits(10);
    lkit_test::ExpectThrow<lstd::InvalidIndexException>(
        [&] { bits.Get(10); }, "The bit index '10' is invalid. (mBitNumber=10)");
    lkit_test::ExpectThrow<lstd::InvalidIndexException>(
        [&] { bits.Set(64, 1); }, "The bit index '64' is invalid. (mBitNumber=10)");
    lkit_test::ExpectThrow<lstd::InvalidOperationException>(
        [&] { bits.Set(1, 2); }, "The bit value is invalid. (Only 0 or 1 is allowed)");
    EXPECT_EQ(0u, bits.Count());
}

TEST(BitSet, OperatorsCombineEqualLengths) {
    lstd::BitSet a(70), b(70);
    a.Set(1, 1);
    a.Set(69, 1);
    b.Set(1, 1);
    b.Set(2, 1);
    EXPECT_EQ("200000000000000006", (a | b).ToHexString());
    EXPECT_EQ("000000000000000002", (a & b).ToHexString());
    EXPECT_EQ("200000000000000004", (a ^ b).ToHexString());
    lstd::BitSet c(a);
    c ^= a;
    EXPECT_EQ(0u, c.Count());
    EXPECT_TRUE(a != c);
    c = a;
    EXPECT_TRUE(a == c);
    lstd::BitSet shorter(69);
    lkit_test::ExpectThrow<lstd::InvalidOperationException>(
        [&] { a |= shorter; }, "The bit sets differ in length. (70 and 69 bits)");
    lkit_test::ExpectThrow<lstd::InvalidOperationException>(
        [&] { (void)(a & shorter); }, "The bit sets differ in length. (70 and 69 bits)");
    shorter = a;  // assignment takes the other length
    EXPECT_EQ(70u, shorter.GetBitNumber());
    EXPECT_TRUE(shorter.Get(69));
}

TEST(BitSet, HexFormHasOneDigitPerFourBits) {
    lstd::BitSet eight(8);
    eight.Set(0, 1);
    eight.Set(5, 1);
    EXPECT_EQ("21", eight.ToHexString());
    EXPECT_EQ("0", lstd::BitSet(0).ToHexString());
    EXPECT_EQ("0", lstd::BitSet(3).ToHexString());
    lstd::BitSet wide(65);
    wide.Set(64, 1);
    EXPECT_EQ("10000000000000000", wide.ToHexString());
}
}  // namespace
