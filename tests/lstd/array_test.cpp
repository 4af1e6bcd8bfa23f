// Array and PArray: block layout on growth and shrink, index checks, ownership of elements.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <vector>

namespace {
// Counts live objects; a default-built one holds 7, so construction in place is visible.
struct Tracked {
    static int live;
    Tracked() { ++live; }
    ~Tracked() { --live; }
    int value = 7;
};
int Tracked::live = 0;

using Words = lstd::Array<unsigned long>;
using Sizes = std::vector<unsigned long>;

// Block sizes in index order, each block found through GetBlock at its first index.
Sizes BlockSizes(Words const &a) {
    Sizes sizes;
    for (unsigned long i = 0, offset = 1; i < a.GetLength(); i += sizes.back(), offset = 1) {
        sizes.push_back(a.GetBlock(i, offset)->GetBlockSize());
        EXPECT_EQ(offset, 0u);
    }
    return sizes;
}
} // namespace

TEST(Array, GrowthAppendsABlockShrinkDropsOrTrimsFromTheEnd) {
    Words a(10);
    a.Fill(1);
    a.Resize(15);
    a.Resize(15); // the same length changes nothing
    EXPECT_EQ(BlockSizes(a), (Sizes{10, 5}));
    unsigned long offset = 0;
    Words::Block *second = a.GetBlock(12, offset);
    EXPECT_EQ(offset, 2u);
    EXPECT_EQ(&(*second)[2], &a[12]);
    EXPECT_EQ((Sizes{a[9], a[10]}), (Sizes{1, 0})); // new elements read 0
    a.Resize(18);
    for (unsigned long i = 0; i < 18; ++i)
        a[i] = i * 10;
    struct Row {
        unsigned long length;
        Sizes blocks;
    } const rows[] = {{15, {10, 5}}, {13, {10, 3}}, {4, {4}}, {0, {}}};
    for (Row const &row : rows) {
        SCOPED_TRACE(row.length);
        a.Resize(row.length);
        EXPECT_EQ(BlockSizes(a), row.blocks);
        for (unsigned long i = 0; i < row.length; ++i)
            EXPECT_EQ(a[i], i * 10);
    }
}

TEST(Array, IndexChecksThrowWhereGetBlockReturnsNull) {
    Words empty(0), a(4);
    unsigned long offset = 99;
    EXPECT_EQ(empty.GetBlock(0, offset), nullptr);
    empty.Fill(5);
    ExpectThrow<lstd::InvalidIndexException>([&] { empty[0]; },
                                             "The index '0' is invalid. (mLength=0)");
    a.Resize(6);
    EXPECT_EQ(a.GetBlock(6, offset), nullptr);
    EXPECT_EQ(offset, 99u);
    Words const &c = a;
    ExpectThrow<lstd::InvalidIndexException>([&] { c[6]; },
                                             "The index '6' is invalid. (mLength=6)");
    Words::Block *block = a.GetBlock(5, offset);
    EXPECT_EQ(offset, 1u);
    ExpectThrow<lstd::InvalidIndexException>([&] { (*block)[2]; },
                                             "The index '2' is invalid. (mBlockSize=2)");
}

TEST(Array, OwnsItsElementsButShrinkDoesNotDestroyTrimmedOnes) {
    int const base = Tracked::live;
    {
        lstd::Array<Tracked> a(3);
        a.Resize(5);
        EXPECT_EQ(a[4].value, 7);
        EXPECT_EQ(Tracked::live - base, 5);
        a.Resize(3); // the whole second block goes with its elements
        EXPECT_EQ(Tracked::live - base, 3);
        a.Resize(1); // trimmed in place: two elements released undestroyed
        EXPECT_EQ(Tracked::live - base, 3);
    }
    EXPECT_EQ(Tracked::live - base, 2);
    Tracked::live = base;
}

TEST(PArray, NewSlotsAreNullAndKeepTheirPointers) {
    Tracked t[5];
    lstd::PArray<Tracked> p(2);
    lstd::PArray<Tracked> const &c = p;
    p.Resize(5);
    for (unsigned long i = 0; i < 5; ++i) {
        EXPECT_EQ(c[i], nullptr);
        p[i] = &t[i];
    }
    for (unsigned long i = 0; i < 5; ++i)
        EXPECT_EQ(c[i], &t[i]);
    p.Resize(1);
    p.Resize(2);
    EXPECT_EQ(c[0], &t[0]);
    EXPECT_EQ(c[1], nullptr);
    ExpectThrow<lstd::InvalidIndexException>([&] { c[2]; },
                                             "The index '2' is invalid. (mLength=2)");
}

TEST(PArray, NeverDeletesThePointedObjects) {
    int const base = Tracked::live;
    Tracked *a = new Tracked, *b = new Tracked;
    {
        lstd::PArray<Tracked> p(1);
        p.Resize(3);
        p[0] = a;
        p[2] = b;
        p.Resize(1); // drops the block holding b's slot
    }
    EXPECT_EQ(Tracked::live - base, 2);
    delete a;
    delete b;
}
