// ValSortList and Comparator: sorted insertion, placement of equivalent values, search.
#include <gtest/gtest.h>
#include <lkit.h>

#include <initializer_list>
#include <vector>

namespace {
using V = std::vector<int>;
using lstd::Comparator;

// Value types whose comparators are full specialisations: the sorted list orders through
// Comparator<T>::Compare when it is given a comparator, and through operator< otherwise.
template <int Kind>
struct Num {
    Num(int x = 0) : v(x) {}
    bool operator==(Num const& o) const { return v == o.v; }
    bool operator<(Num const& o) const { return v < o.v; }
    int v;
};
using Tens = Num<0>;     // compared by the tens digit: 31 and 32 are equivalent, not equal
using Down = Num<1>;     // compared in descending order
using Counted = Num<2>;  // natural order, counting the comparisons
using Point = Num<3>;    // a specialisation with nothing but the static Compare
int compareCalls = 0;

signed char Sign(int a, int b) { return a < b ? -1 : (b < a ? 1 : 0); }

// The shape of a comparator specialisation: a virtual destructor and the static Compare,
// which orders by key(value) and counts its calls.
template <class T, int (*key)(T const&)>
class CompareBy {
public:
    virtual ~CompareBy() {}
    static signed char Compare(unsigned long const&, unsigned long const&, T const& a,
                               T const& b) {
        return ++compareCalls, Sign(key(a), key(b));
    }
};
int TensKey(Tens const& t) { return t.v / 10; }
int DownKey(Down const& d) { return -d.v; }
int CountedKey(Counted const& c) { return c.v; }
}  // namespace

template <>
class lstd::Comparator<Tens> : public CompareBy<Tens, TensKey> {};
template <>
class lstd::Comparator<Down> : public CompareBy<Down, DownKey> {
public:
    // Never consulted: the list's route is the static Compare.
    signed char Order(Down const& a, Down const& b) const { return Sign(a.v, b.v); }
};
template <>
class lstd::Comparator<Counted> : public CompareBy<Counted, CountedKey> {};
template <>
struct lstd::Comparator<Point> {
    static signed char Compare(unsigned long const&, unsigned long const&, Point const& a,
                               Point const& b) {
        return Sign(b.v, a.v);
    }
};

namespace {
template <class T>
V Items(lstd::ValDLAbstractList<T> const& l) {
    V out;
    for (unsigned long i = 0; i < l.GetNumberOfEntry(); ++i)
        out.push_back(l.Get(i).v);
    return out;
}
template <class T>
V Sorted(Comparator<T>* comparator, std::initializer_list<int> values) {
    lstd::ValSortList<T> l(comparator);
    for (int v : values)
        l.Append(T(v));
    return Items(l);
}
}  // namespace

TEST(ValSortList, KeepsOrder) {
    EXPECT_EQ((V{Comparator<int>::Compare(7, 9, 1, 2), Comparator<int>::Compare(0, 0, 2, 1),
                 Comparator<int>::Compare(0, 0, 2, 2)}),
              (V{-1, 1, 0}));  // the natural order of the primary template
    Comparator<Down> down;
    EXPECT_EQ(Sorted<Down>(nullptr, {3, 1, 2}), (V{1, 2, 3}));
    EXPECT_EQ(Sorted<Down>(nullptr, {3, 1, 2, 9, 5, 0, 7, 5}), (V{0, 1, 2, 3, 5, 5, 7, 9}));
    EXPECT_EQ(Sorted(&down, {3, 1, 2, 9}), (V{9, 3, 2, 1}));
}

TEST(ValSortList, OrdersThroughTheStaticCompareOfASpecialisation) {
    Comparator<Point> byCompare;
    EXPECT_EQ(Sorted(&byCompare, {3, 1, 4, 1, 5}), (V{5, 4, 3, 1, 1}));
    EXPECT_EQ(Sorted<Point>(nullptr, {3, 1, 4}), (V{1, 3, 4}));  // no comparator: operator<
    lstd::ValSortList<Point> l(&byCompare);
    for (int v : {2, 8, 6, 4})
        l.Append(v);
    EXPECT_EQ(l.Index(Point(6)), 1u);  // the searches bisect in the same order
}

TEST(ValSortList, AscendingInputIsAppendedWithoutSearch) {
    Comparator<Counted> counting;
    compareCalls = 0;
    lstd::ValSortList<Counted> l(&counting);
    for (int v = 0; v < 6; ++v)
        l.Append(v);
    EXPECT_EQ(compareCalls, 5);  // one comparison with the tail per value after the first
    lstd::ValSortList<Counted> pair(&counting);
    for (int v : {1, 5})
        pair.Append(v);
    compareCalls = 0;
    pair.Append(3);  // tail, head, then a two-position range that is not compared
    EXPECT_EQ(compareCalls, 2);
    EXPECT_EQ(Items(pair), (V{1, 3, 5}));
}

TEST(ValSortList, EquivalentValuePlacement) {
    // Deliberate: an equivalent value goes in front of the element the search lands on,
    // so duplicates keep no stable order.
    Comparator<Tens> tens;
    EXPECT_EQ(Sorted(&tens, {51, 52}), (V{52, 51}));                  // one element: in front of it
    EXPECT_EQ(Sorted(&tens, {51, 52, 53}), (V{52, 53, 51}));          // two elements: between them
    EXPECT_EQ(Sorted(&tens, {51, 52, 53, 54}), (V{52, 54, 53, 51}));  // before the probed middle
    // 32 lands in front of the probed 31; the equal 31 goes in front of its twin.
    EXPECT_EQ(Sorted(&tens, {11, 31, 51, 32, 31}), (V{11, 32, 31, 31, 51}));
}

TEST(ValSortList, SearchNeedsEquality) {
    Comparator<Tens> tens;
    lstd::ValSortList<Tens> l(&tens);
    for (int v : {11, 31, 51, 12, 32})
        l.Append(v);
    ASSERT_EQ(Items(l), (V{11, 12, 32, 31, 51}));
    unsigned long const none = static_cast<unsigned long>(-1);
    EXPECT_EQ((std::vector<unsigned long>{l.Index(31), l.Index(12), l.Index(39), l.Index(41)}),
              (std::vector<unsigned long>{3, 1, none, none}));  // 39: equivalent, not equal
    Tens out;
    EXPECT_TRUE(l.Find(51, &out) && out.v == 51);
    EXPECT_FALSE(l.Find(91, &out) || l.Find(59, nullptr));
    EXPECT_TRUE(l.Remove(32, &out) && out.v == 32);
    EXPECT_FALSE(l.Remove(32, nullptr));
    EXPECT_EQ(Items(l), (V{11, 12, 31, 51}));
}
