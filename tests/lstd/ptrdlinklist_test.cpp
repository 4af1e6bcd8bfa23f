// PtrDLinkList and its iterator: positions, ownership of items and removal while iterating.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <memory>
#include <vector>

namespace {
using lstd::InvalidIndexException;
using lstd::InvalidOperationException;
using lstd::NotInitializedIteratorException;

struct Item {
    static int live;
    explicit Item(int v) : value(v) { ++live; }
    ~Item() { --live; }
    bool operator==(Item const& o) const { return value == o.value; }
    int value;
};
int Item::live = 0;

using List = lstd::PtrDLinkList<Item>;
using P = std::vector<Item*>;

P Items(List const& l) {
    P out;
    for (unsigned long i = 0; i < l.GetNumberOfEntry(); ++i)
        out.push_back(l.Get(i));
    return out;
}
P Walk(lstd::IPtrOrderListIterator<Item>& it) {
    P seen;
    while (++it)
        seen.push_back(it.Get());
    return seen;
}
unsigned char SameParity(Item const* s, Item const* x) {
    return s != nullptr && s->value % 2 == x->value % 2;
}

struct PtrDLinkList : ::testing::Test {
    PtrDLinkList() : a(1), b(2), c(3), d(4) {
        Item::live = 0;  // count only what a test creates
        for (Item* p : {&a, &b, &c})
            list.Append(p);
    }
    Item a, b, c, d;
    List list, out, empty;
    lstd::PtrDLinkListIterator<Item> it;
};
struct PtrDLinkListIterator : PtrDLinkList {};
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
    EXPECT_EQ(list.Get(5), nullptr);
    ExpectThrow<InvalidIndexException>([&] { list[5]; }, "Invalid position (5)");
    list[4] = &b;  // operator[] is the slot itself
    EXPECT_EQ(Items(list), (P{&d, nullptr, &b, &c, &b}));
}

TEST_F(PtrDLinkList, SearchAndRemoveCompareContents) {
    Item twin(2), absent(9);
    list.Append(nullptr);
    EXPECT_EQ((P{list.Find(&twin), list.Find(&absent), list.Find(&absent, SameParity)}),
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
    list.Append(&a);
    out.Append(&keep);
    list.RemoveAll(&twinA, &out);  // out is emptied first, without deleting keep
    EXPECT_EQ(Items(out), (P{&a, &a}));
    EXPECT_EQ(Item::live, 3);
    list.Append(&a);
    list.Append(&c);
    which.Append(&twinA);
    which.Append(&twinC);
    list.RemoveAll(which, &out);  // Deliberate: only the last item's removals remain.
    EXPECT_EQ(Items(out), (P{&c, &c}));
    list.Append(&a);
    list.Append(&c);
    list.Remove(which, &out);  // appends, out is not emptied
    EXPECT_EQ(Items(out), (P{&c, &c, &a, &c}));
    EXPECT_EQ(Items(list), (P{&b}));
}

TEST_F(PtrDLinkList, AppendZeroZeroTakesAll) {
    out.Append(list, 0, 0);  // Deliberate: (0, 0) appends the whole list.
    out.Append(list, 1, 1);
    out.Append(list, 2, 0);
    out.Append(list, -3, 9);
    out.Append(empty, 5, 5);
    ExpectThrow<InvalidOperationException>([&] { out.Append(list, 3, 0); },
                                           "Initial position '3' is out of range (0 -> 3 - 1).");
    EXPECT_EQ(Items(out), (P{&a, &b, &c, &b, &c, &a, &b, &c}));
}

TEST_F(PtrDLinkList, OnlyClearOneDeletesItems) {
    {
        List l;
        l.Append(new Item(1));
        l.Append(nullptr);
        l.Append(new Item(2));
        out.Append(l, 0, 0);
        l.Clear(2);  // a flag is set only when it equals 1
        l.Append(out, 0, 0);
        l.Clear(0);
        l.Append(out, 0, 0);
    }  // the destructor clears without deleting
    EXPECT_EQ(Item::live, 2);
    out.Clear(1);  // each non-null item once; a pointer stored twice would be deleted twice
    EXPECT_EQ(Item::live, 0);
    EXPECT_EQ(out.GetNumberOfEntry(), 0u);
    EXPECT_EQ(out.GetHead(), nullptr);
}

TEST_F(PtrDLinkListIterator, Protocol) {
    std::unique_ptr<lstd::IPtrOrderListIterator<Item>> i(list.CreateIterator(0, 0, -1));
    EXPECT_EQ(Walk(*i), (P{&a, &b, &c}));  // the first ++ delivers without moving
    EXPECT_EQ(i->GetCurPosition(), 3u);
    EXPECT_EQ(i->Get(), &c);  // the node stays on the last item
    it.Init(list, 2, 0, -1);
    EXPECT_TRUE(--it && it.Get() == &c && --it && --it && it.Get() == &a);
    EXPECT_FALSE(--it);  // at begin
    it.Reset(1, 1, 1);
    EXPECT_TRUE(++it);
    EXPECT_EQ(it.Set(&d), &b);
    EXPECT_FALSE(++it);
    EXPECT_EQ(list.Get(1), &d);
    it.Reset(2, 0, 1);  // position outside the range: exhausted
    EXPECT_EQ(Walk(it), P{});
    EXPECT_EQ(it.GetCurPosition(), 2u);
}

TEST_F(PtrDLinkListIterator, Failures) {
    ExpectThrow<InvalidOperationException>([&] { list.CreateIterator(3, 0, -1); },
                                           "Initial position '3' is out of range (0 -> 3 - 1).");
    ExpectThrow<NotInitializedIteratorException>(
        [&] { it.Reset(0, 0, -1); },
        "This iterator is not initialized. Please call Init() method before.");
    it.Init(empty, 0, 0, -1);
    EXPECT_FALSE(++it);
    char const* msg = "Iterator not set validity.";
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Set(&a); }, msg);
    ExpectThrow<InvalidOperationException>([&] { list.Remove(it, 0); }, "Invalid iterator");
    EXPECT_EQ(empty.Remove(it, 0), nullptr);
    lstd::PtrDLinkListIterator<Item> prev, next;
    it.Init(list, 0, 0, -1);
    it.GetPrevIterator(prev);  // no node before the head
    ExpectThrow<NotInitializedIteratorException>([&] { prev.Get(); }, msg);
    it.GetNextIterator(next);
    EXPECT_EQ(Walk(next), (P{&b, &c}));
}

TEST_F(PtrDLinkListIterator, RemoveMovesIterator) {
    list.Append(&d);
    it.Init(list, 0, 0, -1);
    ++it;
    EXPECT_EQ(list.Remove(it, 0), &a);  // head with forward 0: fresh on the new head
    EXPECT_TRUE(it.IsFresh() && it.GetCurPosition() == 0 && ++it && it.Get() == &b);
    EXPECT_EQ(list.Remove(it, 1), &b);  // forward 1: the successor takes the position
    EXPECT_EQ(it.Get(), &c);
    EXPECT_EQ(it.GetEnd(), 1u);
    list.InsertAt(&a, 0);  // a c d
    it.Reset(1, 0, -1);
    ++it;
    EXPECT_EQ(list.Remove(it, 0), &c);  // forward 0: back to the predecessor
    EXPECT_EQ(it.GetCurPosition(), 0u);
    EXPECT_EQ(Walk(it), (P{&d}));
    EXPECT_EQ(Items(list), (P{&a, &d}));
}
