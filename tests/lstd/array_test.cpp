// Array and PArray: block layout on growth and shrink, index checks, ownership of elements.
#include <expect_throw.h>
#include <lkit.h>

#include <numeric>
#include <vector>

namespace {
// Counts live objects; a default-built one holds 7, so construction in place is visible.
struct Tracked {
    inline static int live = 0;
    Tracked() { ++live; }
    ~Tracked() { --live; }
    int value = 7;
};

using Words = lstd::Array<unsigned long>;
using Sizes = std::vector<unsigned long>;

// Block sizes in index order, each block found through GetBlock at its first index.
Sizes BlockSizes(Words const& a) {
    Sizes sizes;
    for (unsigned long i = 0, offset = 1; i < a.GetLength(); i += sizes.back(), offset = 1) {
        sizes.push_back(a.GetBlock(i, offset)->GetBlockSize());
        EXPECT_EQ(offset, 0u);
    }
    return sizes;
}
}  // namespace

TEST(Array, GrowthAppendsABlockShrinkDropsOrTrimsFromTheEnd) {
    Words a(10);
    a.Fill(1);
    a.Resize(18);
    EXPECT_EQ((Sizes{a[9], a[10]}), (Sizes{1, 0}));  // new elements read 0
    for (unsigned long i = 0; i < 18; ++i)
        a[i] = i * 10;
    // Each row resizes to the sum of its blocks; the first keeps the length, changing nothing.
    for (Sizes const& blocks : std::vector<Sizes>{{10, 8}, {10, 5}, {10, 3}, {4}, {}}) {
        unsigned long const length = std::accumulate(blocks.begin(), blocks.end(), 0ul);
        SCOPED_TRACE(length);
        a.Resize(length);
        EXPECT_EQ(BlockSizes(a), blocks);
        for (unsigned long i = 0; i < length; ++i)
            EXPECT_EQ(a[i], i * 10);
    }
}

TEST(Array, IndexChecksThrowWhereGetBlockReturnsNull) {
    Words empty(0), a(4);
    ExpectThrow<lstd::InvalidIndexException>([&] { empty[0]; },
                                             "The index '0' is invalid. (mLength=0)");
    a.Resize(6);
    unsigned long offset = 99;
    EXPECT_EQ(a.GetBlock(6, offset), nullptr);
    EXPECT_EQ(offset, 99u);
    Words::Block* block = a.GetBlock(5, offset);
    EXPECT_TRUE(offset == 1 && &(*block)[1] == &a[5]);
    ExpectThrow<lstd::InvalidIndexException>([&] { (*block)[2]; },
                                             "The index '2' is invalid. (mBlockSize=2)");
}

TEST(Array, OwnsItsElementsButShrinkDoesNotDestroyTrimmedOnes) {
    int const base = Tracked::live;
    {
        lstd::Array<Tracked> a(3);
        a.Resize(5);
        EXPECT_TRUE(a[4].value == 7 && Tracked::live - base == 5);
        a.Resize(3);  // the whole second block goes with its elements
        EXPECT_EQ(Tracked::live - base, 3);
        a.Resize(1);  // trimmed in place: two elements released undestroyed
        EXPECT_EQ(Tracked::live - base, 3);
    }
    EXPECT_EQ(Tracked::live - base, 2);
}

TEST(PArray, NewSlotsAreNullAndPointeesAreNeverDeleted) {
    int const base = Tracked::live;
    Tracked t[5];
    {
        lstd::PArray<Tracked> p(2);
        p.Resize(5);
        for (unsigned long i = 0; i < 5; ++i) {
            EXPECT_EQ(p[i], nullptr);
            p[i] = &t[i];
        }
        p.Resize(1);  // trims the first block and drops the second, with their pointees' slots
        p.Resize(2);
        EXPECT_TRUE(p[0] == &t[0] && p[1] == nullptr);
        ExpectThrow<lstd::InvalidIndexException>([&] { p[2]; },
                                                 "The index '2' is invalid. (mLength=2)");
    }
    EXPECT_EQ(Tracked::live - base, 5);
}
