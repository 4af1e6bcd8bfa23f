// PtrDLinkList and its iterator: positions, ownership of items and removal while iterating.
// The iterator steps and removal moves are shared with the value list: checked in full here.
#include <expect_throw.h>
#include <lkit.h>

#include <memory>
#include <vector>

namespace {
using lstd::InvalidIndexException;
using lstd::InvalidOperationException;
using lstd::NotInitializedIteratorException;

struct Item {
    static inline int live = 0;
    explicit Item(int v) : value(v) { ++live; }
    ~Item() { --live; }
    bool operator==(Item const& o) const { return value == o.value; }
    int value;
};
using List = lstd::PtrDLinkList<Item>;
using P = std::vector<Item*>;

P Walk(lstd::IPtrOrderListIterator<Item>& it) {
    P seen;
    while (++it)
        seen.push_back(it.Get());
    return seen;
}
P Items(List const& l) {
    std::unique_ptr<lstd::IPtrOrderListIterator<Item>> i(l.CreateIterator());
    return Walk(*i);
}
template <class... T>
void Fill(List& l, T... items) {
    (l.Append(items), ...);
}

struct PtrDLinkList : ::testing::Test {
    PtrDLinkList() {
        Item::live = 0;  // count only what a test creates
        Fill(list, &a, &b, &c);
    }
    Item a{1}, b{2}, c{3}, d{4};
    List list, out, empty;
    lstd::PtrDLinkListIterator<Item> it;
};
}  // namespace

TEST_F(PtrDLinkList, PositionalBounds) {
    list.InsertAt(&d, 3);  // position == count appends
    list.InsertAt(nullptr, 1);
    ExpectThrow<InvalidIndexException>(
        [&] { list.InsertAt(&d, 6); },
        "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.");
    EXPECT_EQ(list.ReplaceAt(&d, 0), &a);
    ExpectThrow<InvalidIndexException>(
        [&] { list.ReplaceAt(&a, 5); },
        "The position passed into PtrDLinkList<T>::ReplaceAt() method is invalid.");
    EXPECT_EQ(list.Get(5), nullptr);  // null where operator[] throws
    ExpectThrow<InvalidIndexException>([&] { list[5]; }, "Invalid position (5)");
    list[4] = &b;  // operator[] is the slot itself
    EXPECT_EQ(Items(list), (P{&d, nullptr, &b, &c, &b}));
}

TEST_F(PtrDLinkList, SearchAndRemoveCompareContents) {
    Item twin(2), absent(9);
    auto near = [](auto s, auto x) -> unsigned char { return s && s->value + 8 == x->value; };
    list.Append(nullptr);
    EXPECT_EQ((P{list.Find(&twin), list.Find(&absent), list.Find(&absent, near)}),
              (P{&b, nullptr, &a}));
    EXPECT_EQ(
        (std::vector<unsigned long>{list.Index(&twin), list.Index(nullptr), list.Index(&absent)}),
        (std::vector<unsigned long>{1, 3, static_cast<unsigned long>(-1)}));
    // Braced lists evaluate left to right: the calls run in this order.
    EXPECT_EQ((P{list.Remove(&twin), list.Remove(&twin), list.RemoveAt(3), list.RemoveAt(1),
                 list.RemoveLast(), list.RemoveFirst(), list.RemoveFirst(), list.RemoveLast()}),
              (P{&b, nullptr, nullptr, &c, nullptr, &a, nullptr, nullptr}));
    EXPECT_EQ(Item::live, 2);  // removals delete nothing
}

TEST_F(PtrDLinkList, RemoveAllAndRemoveList) {
    Item keep(7), twinA(1), twinC(3);
    List which;
    Fill(list, &a);
    Fill(out, &keep);
    list.RemoveAll(&twinA, &out);  // out is emptied first, without deleting keep
    EXPECT_TRUE(Items(out) == (P{&a, &a}) && Item::live == 3);
    Fill(list, &a, &c);
    Fill(which, &twinA, &twinC);
    list.RemoveAll(which, &out);  // Deliberate: only the last item's removals remain.
    EXPECT_EQ(Items(out), (P{&c, &c}));
    Fill(list, &a, &c);
    list.Remove(which, &out);  // appends, out is not emptied
    EXPECT_EQ(Items(out), (P{&c, &c, &a, &c}));
    EXPECT_EQ(Items(list), (P{&b}));
}

// The other list is walked in place, except where the removal changes it: when it is the
// list itself or the collection receiving the removed items.
TEST_F(PtrDLinkList, RemoveListOfItselfOrIntoItself) {
    list.Remove(list, &out);
    EXPECT_TRUE(Items(list).empty() && Items(out) == (P{&a, &b, &c}));
    Fill(list, &a, &b, &a);
    List which;
    Fill(which, &a, &b);
    list.RemoveAll(which, &which);  // emptied before each item: ends with the last removals
    EXPECT_TRUE(Items(which) == (P{&b}) && Items(list).empty());
}

TEST_F(PtrDLinkList, AppendZeroZeroTakesAll) {
    // Deliberate: (0, 0) appends the whole list.
    for (auto [from, to] : {std::pair{0, 0}, {1, 1}, {2, 0}, {-3, 9}})
        out.Append(list, from, to);
    out.Append(empty, 5, 5);
    ExpectThrow<InvalidOperationException>([&] { out.Append(list, 3, 0); },
                                           "Initial position '3' is out of range (0 -> 3 - 1).");
    EXPECT_EQ(Items(out), (P{&a, &b, &c, &b, &c, &a, &b, &c}));
}

TEST_F(PtrDLinkList, OnlyClearOneDeletesItems) {
    {
        List l;
        Fill(l, new Item(1), nullptr, new Item(2));
        out.Append(l, 0, 0);
        l.Clear(2);  // a flag is set only when it equals 1
        l.Append(out, 0, 0);
        l.Clear(0);
        l.Append(out, 0, 0);
    }  // the destructor clears without deleting
    EXPECT_EQ(Item::live, 2);
    out.Clear(1);  // each non-null item once; a pointer stored twice would be deleted twice
    EXPECT_TRUE(Item::live == 0 && out.GetNumberOfEntry() == 0 && out.GetHead() == nullptr);
}

TEST_F(PtrDLinkList, IteratorSteps) {
    std::unique_ptr<lstd::IPtrOrderListIterator<Item>> i(list.CreateIterator(0, 0, -1));
    EXPECT_EQ(Walk(*i), (P{&a, &b, &c}));  // the first ++ delivers without moving
    EXPECT_TRUE(i->GetCurPosition() == 3 && i->Get() == &c);  // the node stays on the last
    it.Init(list, 2, 0, -1);
    EXPECT_TRUE(--it && it.Get() == &c && --it && --it && it.Get() == &a);
    EXPECT_FALSE(--it);  // at begin
    it.Reset(1, 1, 1);
    EXPECT_TRUE(++it && it.Set(&d) == &b && !++it && list.Get(1) == &d);
    it.Reset(2, 0, 1);  // position outside the range: exhausted
    EXPECT_TRUE(Walk(it).empty() && it.GetCurPosition() == 2);
}

// The range is fixed when the iterator is set up: after the list lost its far end, a step
// still inside the range succeeds, onto no node; only the step after that fails.
TEST_F(PtrDLinkList, StepInsideTheRangeSucceedsAfterTheListShrank) {
    char const* msg = "Iterator not set validity.";
    it.Init(list, 1, 0, -1);
    EXPECT_EQ(list.RemoveLast(), &c);
    EXPECT_TRUE(++it && it.Get() == &b && ++it && it.GetCurPosition() == 2);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    EXPECT_FALSE(++it);
    list.Append(&c);
    it.Init(list, 1, 0, -1);
    EXPECT_EQ(list.RemoveFirst(), &a);
    EXPECT_TRUE(--it && it.Get() == &b && --it && it.GetCurPosition() == 0);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    EXPECT_FALSE(--it);
}

TEST_F(PtrDLinkList, IteratorFailures) {
    ExpectThrow<InvalidOperationException>([&] { list.CreateIterator(3, 0, -1); },
                                           "Initial position '3' is out of range (0 -> 3 - 1).");
    ExpectThrow<NotInitializedIteratorException>(
        [&] { it.Reset(0, 0, -1); },
        "This iterator is not initialized. Please call Init() method before.");
    it.Init(empty, 0, 0, -1);
    EXPECT_FALSE(++it);
    char const* msg = "Iterator not set validity.";
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    ExpectThrow<InvalidOperationException>([&] { list.Remove(it, 0); }, "Invalid iterator");
    EXPECT_EQ(empty.Remove(it, 0), nullptr);
    lstd::PtrDLinkListIterator<Item> prev, next;
    it.Init(list, 0, 0, -1);
    it.GetPrevIterator(prev);  // no node before the head
    ExpectThrow<NotInitializedIteratorException>([&] { prev.Get(); }, msg);
    it.GetNextIterator(next);
    EXPECT_EQ(Walk(next), (P{&b, &c}));
}

TEST_F(PtrDLinkList, RemoveMovesIterator) {
    list.Append(&d);
    it.Init(list, 0, 0, -1);
    ++it;
    EXPECT_EQ(list.Remove(it, 0), &a);  // head with forward 0: fresh on the new head
    EXPECT_TRUE(it.IsFresh() && it.GetCurPosition() == 0 && ++it && it.Get() == &b);
    EXPECT_EQ(list.Remove(it, 1), &b);  // forward 1: the successor takes the position
    EXPECT_TRUE(it.Get() == &c && it.GetEnd() == 1);
    list.InsertAt(&a, 0);  // a c d
    it.Reset(1, 0, -1);
    ++it;
    EXPECT_EQ(list.Remove(it, 0), &c);  // forward 0: back to the predecessor
    EXPECT_TRUE(it.GetCurPosition() == 0 && Walk(it) == (P{&d}));
    EXPECT_EQ(Items(list), (P{&a, &d}));
}
