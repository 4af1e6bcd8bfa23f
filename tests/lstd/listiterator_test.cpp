// Identity semantics of Collection and the position rules of the ListIterator base.
#include <expect_throw.h>
#include <lkit.h>

#include <cstdint>
#include <vector>

namespace {
using lstd::NotInitializedIteratorException;
using V = std::vector<unsigned long>;
using Base = lstd::ListIterator<int>;

// {current, begin, end, fresh}
V Pos(Base const& it) { return {it.GetCurPosition(), it.GetBegin(), it.GetEnd(), it.IsFresh()}; }

struct ListIterator : ::testing::Test {
    ListIterator() {
        for (int v : {10, 20, 30})
            list.Append(v);
    }
    lstd::ValDLinkList<int> list, other;
    Base it;  // the base class is concrete: its Reset never throws
};
}  // namespace

TEST(Collection, ComparesAndAssignsByIdentity) {
    lstd::ValDLinkList<int> a, b;
    lstd::Collection<int>& ca = a;
    lstd::Collection<int>& cb = b;
    auto addr = [](void const* p) { return reinterpret_cast<std::uintptr_t>(p); };
    EXPECT_TRUE(ca == ca && !(ca != ca));
    EXPECT_TRUE(!(ca == cb) && ca != cb);   // two empty lists are still two lists
    bool const lt = addr(&ca) < addr(&cb);  // addresses as unsigned numbers
    EXPECT_EQ((std::vector<bool>{(ca < cb), (ca <= cb), (ca > cb), (ca >= cb)}),
              (std::vector<bool>{lt, lt, !lt, !lt}));
    EXPECT_TRUE(!(ca < ca) && !(ca > ca) && ca <= ca && ca >= ca);
    b.Append(1);
    EXPECT_EQ(&(ca = cb), &ca);  // copies nothing
    EXPECT_EQ(a.GetNumberOfEntry(), 0u);
}

TEST_F(ListIterator, ResetRangeRules) {
    it.Init(list, 5, 0, -1);
    EXPECT_EQ(Pos(it), (V{3, 0, 2, 1}));  // beyond the end: exhausted
    EXPECT_EQ(it.GetCollection(), &list);
    it.Reset(0, 2, 1);
    EXPECT_EQ(Pos(it), (V{2, 2, 1, 1}));  // begin after end: end + 1
    it.Reset(1, -4, 10);
    EXPECT_EQ(Pos(it), (V{1, 0, 2, 1}));  // negative begin is 0, end clamped to n - 1
    it.Reset(1, 7, -1);
    EXPECT_EQ(Pos(it), (V{3, 7, 2, 1}));  // begin is not clamped
    it.Init(other, 0, 0, 5);
    EXPECT_EQ(Pos(it), (V{0, 0, 0, 1}));  // empty collection
}

TEST_F(ListIterator, StepsIgnoreFreshFlag) {
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
    ExpectThrow<NotInitializedIteratorException>([&] { --it; }, "Iterator not initialized");
    it.Init(list, 0, 0, -1);
    EXPECT_TRUE(++it && ++it);
    EXPECT_FALSE(++it);
    EXPECT_EQ(Pos(it), (V{3, 0, 2, 1}));
    EXPECT_TRUE(--it && it.GetCurPosition() == 2);
    it.Reset(1, 1, -1);
    EXPECT_FALSE(--it || it.GetCurPosition() != 1);  // at begin: does not move
    it.Reset(1, 7, -1);
    EXPECT_FALSE(--it || it.GetCurPosition() != 2);  // moves to 2, which is below begin
    it.Clear();
    EXPECT_TRUE(it.GetCollection() == nullptr && it.GetCurPosition() == 3);
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
}

// Assignment keeps the target's begin; GetPrev/NextIterator copy the range; comparisons of
// iterators are always false.
TEST_F(ListIterator, CopiesAndComparisons) {
    other.Append(1);
    other.Append(2);
    lstd::ValDLAbstractListIterator<int> src;
    src.Init(other, 1, 0, 1);
    ++src;  // delivers the current item: the fresh flag is cleared
    it.Init(list, 2, 1, -1);
    EXPECT_EQ(&(it = src), &it);
    EXPECT_EQ(it.GetCollection(), &other);
    EXPECT_EQ(Pos(it), (V{1, 1, 1, 0}));
    Base target;
    target.Init(other, 0, 2, 2);
    it.Init(list, 0, 0, 1);
    it.GetPrevIterator(target);
    EXPECT_EQ(Pos(target), (V{0, 0, 1, 1}));  // 0 does not wrap; begin is copied here
    EXPECT_EQ(target.GetCollection(), &list);
    it.Reset(1, 0, -1);
    it.GetNextIterator(target);
    EXPECT_EQ(Pos(target), (V{2, 0, 2, 1}));
    target.Reset(1, 0, -1);
    EXPECT_FALSE(it == it || it == target || it <= it || it >= it);
    EXPECT_FALSE(it < target || target < it || it > target || target > it);
}
