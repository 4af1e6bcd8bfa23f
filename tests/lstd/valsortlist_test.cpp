// ValSortList and Comparator: sorted insertion, placement of equivalent values, search.
#include <gtest/gtest.h>
#include <lkit.h>

#include <initializer_list>
#include <vector>

namespace {
using V = std::vector<int>;
using lstd::Comparator;

// Orders by the tens digit only: 31 and 32 are equivalent but not equal.
struct ByTens : Comparator<int> {
    signed char Order(int const& a, int const& b) const override {
        return Compare(0, 0, a / 10, b / 10);
    }
};
struct Descending : Comparator<int> {
    signed char Order(int const& a, int const& b) const override { return Compare(0, 0, b, a); }
};
struct Counting : Comparator<int> {
    signed char Order(int const& a, int const& b) const override {
        ++calls;
        return Compare(0, 0, a, b);
    }
    mutable int calls = 0;
};

V Items(lstd::ValDLAbstractList<int> const& l) {
    V out;
    for (unsigned long i = 0; i < l.GetNumberOfEntry(); ++i)
        out.push_back(l.Get(i));
    return out;
}
V Sorted(Comparator<int>* comparator, std::initializer_list<int> values) {
    lstd::ValSortList<int> l(comparator);
    for (int v : values)
        l.Append(v);
    return Items(l);
}
}  // namespace

TEST(Comparator, NaturalOrder) {
    Comparator<int> natural;  // Order defaults to the static Compare
    EXPECT_EQ((V{Comparator<int>::Compare(7, 9, 1, 2), natural.Order(2, 1), natural.Order(2, 2)}),
              (V{-1, 1, 0}));
}

TEST(ValSortList, KeepsOrder) {
    Descending down;
    EXPECT_EQ(Sorted(nullptr, {3, 1, 2}), (V{1, 2, 3}));
    EXPECT_EQ(Sorted(nullptr, {3, 1, 2, 9, 5, 0, 7, 5}), (V{0, 1, 2, 3, 5, 5, 7, 9}));
    EXPECT_EQ(Sorted(&down, {3, 1, 2, 9}), (V{9, 3, 2, 1}));
}

TEST(ValSortList, AscendingInputIsAppendedWithoutSearch) {
    Counting counting;
    lstd::ValSortList<int> l(&counting);
    for (int v = 0; v < 6; ++v)
        l.Append(v);
    EXPECT_EQ(counting.calls, 5);  // one comparison with the tail per value after the first
    lstd::ValSortList<int> pair(&counting);
    pair.Append(1);
    pair.Append(5);
    counting.calls = 0;
    pair.Append(3);  // tail, head, then a two-position range that is not compared
    EXPECT_EQ(counting.calls, 2);
    EXPECT_EQ(Items(pair), (V{1, 3, 5}));
}

TEST(ValSortList, EquivalentValuePlacement) {
    // Deliberate: an equivalent value goes in front of the element the search lands on,
    // so duplicates keep no stable order.
    ByTens tens;
    EXPECT_EQ(Sorted(&tens, {51, 52}), (V{52, 51}));                  // one element: in front of it
    EXPECT_EQ(Sorted(&tens, {51, 52, 53}), (V{52, 53, 51}));          // two elements: between them
    EXPECT_EQ(Sorted(&tens, {51, 52, 53, 54}), (V{52, 54, 53, 51}));  // before the probed middle
    // 32 lands in front of the probed 31; the equal 31 goes in front of its twin.
    EXPECT_EQ(Sorted(&tens, {11, 31, 51, 32, 31}), (V{11, 32, 31, 31, 51}));
}

TEST(ValSortList, SearchNeedsEquality) {
    ByTens tens;
    lstd::ValSortList<int> l(&tens);
    for (int v : {11, 31, 51, 12, 32})
        l.Append(v);
    ASSERT_EQ(Items(l), (V{11, 12, 32, 31, 51}));
    unsigned long const none = static_cast<unsigned long>(-1);
    EXPECT_EQ((std::vector<unsigned long>{l.Index(31), l.Index(12), l.Index(39), l.Index(41)}),
              (std::vector<unsigned long>{3, 1, none, none}));  // 39: equivalent, not equal
    int out = 0;
    EXPECT_TRUE(l.Find(51, &out));
    EXPECT_EQ(out, 51);
    EXPECT_FALSE(l.Find(91, &out) || l.Find(59, nullptr));
    EXPECT_TRUE(l.Remove(32, &out));
    EXPECT_EQ(out, 32);
    EXPECT_FALSE(l.Remove(32, nullptr));
    EXPECT_EQ(Items(l), (V{11, 12, 31, 51}));
}
