// ValDLinkList, ValQueue and the value-list iterator: copies in and out, bounds, removal.
#include <expect_throw.h>
#include <lkit.h>

#include <memory>
#include <vector>

namespace {
using lstd::InvalidIndexException;
using lstd::InvalidOperationException;
using lstd::NotInitializedIteratorException;
using V = std::vector<int>;

struct Val {
    static int live, copies;
    explicit Val(int x) : v(x) { ++live; }
    Val(Val const& o) : v(o.v) { ++live, ++copies; }
    Val& operator=(Val const&) = default;
    ~Val() { --live; }
    bool operator==(Val const& o) const { return v == o.v; }
    int v;
};
int Val::live = 0, Val::copies = 0;

V Items(lstd::ValDLAbstractList<int> const& l) {
    V out;
    for (unsigned long i = 0; i < l.GetNumberOfEntry(); ++i)
        out.push_back(l.Get(i));
    return out;
}
template <class... T>
void Fill(lstd::ValDLinkList<int>& l, T... values) {
    (l.Append(values), ...);
}

struct ValDLinkList : ::testing::Test {
    ValDLinkList() { Fill(list, 10, 20, 30); }
    lstd::ValDLinkList<int> list, out, empty;
    lstd::ValDLAbstractListIterator<int> it;
    int value = -1;
};
}  // namespace

TEST_F(ValDLinkList, CopiesInAndOut) {
    Val::live = Val::copies = 0;
    Val x(1), got(0);
    {
        lstd::ValDLinkList<Val> l;
        l.Append(x);
        x.v = 9;  // the list holds its own copy
        EXPECT_EQ(Val::copies, 1);
        l.Get(0).v = 5;  // Get(p) is the stored value itself
        EXPECT_TRUE(l.Get(0, got) && got.v == 5);
        l.InsertAt(x, 0);
        EXPECT_EQ(Val::live, 4);
        EXPECT_TRUE(l.RemoveFirst(&got) && got.v == 9);  // copied out, then the copy destroyed
        EXPECT_EQ(Val::live, 3);
        l.Clear();
        EXPECT_EQ(Val::live, 2);
        l.Append(x);
    }
    EXPECT_EQ(Val::live, 2);  // the destructor destroyed the stored copy
}

TEST_F(ValDLinkList, CopiesAreDeep) {
    lstd::ValDLinkList<int> copy(list);
    copy.Append(40);
    list.ReplaceAt(11, 0, nullptr);
    EXPECT_EQ(Items(copy), (V{10, 20, 30, 40}));
    copy = list;
    EXPECT_EQ(Items(copy), (V{11, 20, 30}));
    lstd::ValDLinkList<int> const& same = copy;
    copy = same;
    EXPECT_EQ(Items(copy), (V{11, 20, 30}));
    lstd::ValDLinkList<lstd::ValDLinkList<int>> rows;  // lists of lists hold copies
    rows.Append(list);
    list.Clear();
    EXPECT_EQ(Items(rows.Get(0)), (V{11, 20, 30}));
}

TEST_F(ValDLinkList, Bounds) {
    EXPECT_FALSE(list.Get(3, value));
    ExpectThrow<InvalidIndexException>([&] { list.Get(3); }, "The index '3' is out of range.");
    ExpectThrow<InvalidIndexException>([&] { list[3]; }, "Invalid position (3)");
    ExpectThrow<InvalidOperationException>([&] { empty.GetFirst(); }, "The list is empty.");
    ExpectThrow<InvalidOperationException>([&] { empty.GetLast(); }, "The list is empty.");
    list.InsertAt(40, 3);
    list.InsertAt(15, 1);
    ExpectThrow<InvalidIndexException>(  // the pointer list's wording, on purpose
        [&] { list.InsertAt(1, 6); },
        "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.");
    list.ReplaceAt(11, 0, &value);  // the replaced value is copied out
    EXPECT_EQ(value, 10);
    list.ReplaceAt(41, 4, nullptr);
    ExpectThrow<InvalidIndexException>(
        [&] { list.ReplaceAt(1, 5, &value); },
        "The position passed into PtrDLinkList<T>::ReplaceAt() method is invalid.");
    EXPECT_EQ(Items(list), (V{11, 15, 20, 30, 41}));
    EXPECT_EQ((V{list.GetFirst(), list.GetLast()}), (V{11, 41}));
}

TEST_F(ValDLinkList, SearchAndRemove) {
    list.Append(20);
    EXPECT_EQ(list.Index(20), 1u);
    EXPECT_EQ(list.Index(99), static_cast<unsigned long>(-1));
    EXPECT_TRUE(list.Find(30, &value) && !list.Find(99, value));
    EXPECT_TRUE(list.Remove(20, &value));
    auto sameTens = [](int const& s, int const& v) -> unsigned char { return s / 10 == v / 10; };
    EXPECT_TRUE(list.Remove(31, sameTens, &value) && value == 30);  // equal(stored, v) decides
    EXPECT_FALSE(list.Remove(99, nullptr) || list.RemoveAt(2, &value));
    list.Apply([](int& v) { v *= 2; });
    EXPECT_EQ(Items(list), (V{20, 40}));
    EXPECT_TRUE(list.RemoveFirst(nullptr) && list.RemoveLast(&value) && value == 40);
    EXPECT_FALSE(list.RemoveFirst(&value) || list.RemoveLast(nullptr));
}

TEST_F(ValDLinkList, RemoveAllAndRemoveList) {
    Fill(list, 10, 30);
    Fill(out, 99);
    list.RemoveAll(10, &out);  // out is emptied first
    EXPECT_EQ(Items(out), (V{10, 10}));
    Fill(list, 10);
    Fill(empty, 10, 30);
    list.RemoveAll(empty, &out);  // Deliberate: only the last value's removals remain.
    EXPECT_EQ(Items(out), (V{30, 30}));
    Fill(list, 30, 10);
    list.Remove(empty, &out);  // appends, out is not emptied
    EXPECT_EQ(Items(out), (V{30, 30, 10, 30}));
    EXPECT_EQ(Items(list), (V{20}));
}

TEST_F(ValDLinkList, RemoveListOfItselfOrIntoItself) {
    list.Remove(list, &out);  // a copy of the values is walked
    EXPECT_TRUE(Items(list).empty());
    EXPECT_EQ(Items(out), (V{10, 20, 30}));
    Fill(list, 10, 20, 30, 10);
    Fill(empty, 10, 30);
    list.RemoveAll(empty, &empty);  // emptied before each value: the last removals remain
    EXPECT_EQ(Items(empty), (V{30}));
    EXPECT_EQ(Items(list), (V{20}));
    Fill(list, 30, 10);
    list.Remove(out, &list);  // each removed value returns to the list's end
    EXPECT_EQ(Items(list), (V{10, 20, 30}));
}

TEST_F(ValDLinkList, SwapReportsTheFirstInvalidPosition) {
    ExpectThrow<InvalidIndexException>([&] { list.Swap(7, 9); }, "Invalid position (7)");
    ExpectThrow<InvalidIndexException>([&] { list.Swap(9, 1); }, "Invalid position (9)");
    ExpectThrow<InvalidIndexException>([&] { list.Swap(1, 5); }, "Invalid position (5)");
    list.Swap(0, 2);
    list.Swap(7, 7);  // same position: nothing, not even a range check
    EXPECT_EQ(Items(list), (V{30, 20, 10}));
    out.Append(list, 0, 0);  // Deliberate: (0, 0) appends the whole list.
    out.Append(list, 1, 1);
    EXPECT_EQ(Items(out), (V{30, 20, 10, 20}));
}

TEST(ValQueue, FirstInFirstOut) {
    lstd::ValQueue<int> q;
    int value = 0;
    for (int v : {1, 2})
        q.Push(v);
    EXPECT_TRUE(q.GetFirst() == 1 && q.RemoveFirst(&value) && value == 1);
    q.Push(3);
    EXPECT_EQ(Items(q), (V{2, 3}));
    q.Clear();
    EXPECT_FALSE(q.RemoveFirst(&value));
}

// Steps and removal moves are shared with the pointer list and checked there; smoke checks.
TEST_F(ValDLinkList, IteratorCopiesAndRemoves) {
    std::unique_ptr<lstd::IValOrderListIterator<int>> i(list.CreateIterator(1, 0, -1));
    EXPECT_TRUE(++*i && i->Get(value) && value == 20);
    i->Set(21);
    EXPECT_EQ(list[1], 21);
    it.Init(list, 0, 0, -1);
    ++it;
    EXPECT_TRUE(list.Remove(it, 0, &value) && value == 10);  // the value is copied out
    EXPECT_TRUE(++it && it.Get() == 21 && list.Remove(it, 1, nullptr) && it.Get() == 30);
    EXPECT_EQ(Items(list), (V{30}));
}

TEST_F(ValDLinkList, StepInsideTheRangeSucceedsAfterTheListShrank) {
    char const* msg = "ValDLAbstractListIterator is not initialized";
    it.Init(list, 1, 0, -1);
    EXPECT_TRUE(list.RemoveLast(nullptr) && ++it && ++it && it.GetCurPosition() == 2);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    EXPECT_FALSE(++it);
    it.Init(list, 1, 0, -1);
    EXPECT_TRUE(list.RemoveFirst(nullptr) && --it && --it && it.GetCurPosition() == 0);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    EXPECT_FALSE(--it);
}

// Unlike the pointer iterator's, the value iterator's Clear is the base one: it unbinds and
// exhausts the iterator but keeps its node, whose value Get still returns.
TEST_F(ValDLinkList, IteratorClearKeepsTheNode) {
    it.Init(list, 1, 0, -1);
    it.Clear();
    EXPECT_TRUE(it.GetCollection() == nullptr && it.GetCurPosition() == 3);
    EXPECT_TRUE(it.Get() == 20 && it.Get(value) && value == 20);
    EXPECT_FALSE(++it || --it);
}

TEST_F(ValDLinkList, IteratorFailures) {
    ExpectThrow<NotInitializedIteratorException>(
        [&] { it.Reset(0, 0, -1); },
        "This iterator is not initialized. Please call Init() method before.");
    ExpectThrow<InvalidOperationException>([&] { list.CreateIterator(3, 0, -1); },
                                           "Initial position '3' is out of range (0 -> 3 - 1).");
    it.Init(empty, 0, 0, -1);
    char const* msg = "ValDLAbstractListIterator is not initialized";
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, msg);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(value); }, msg);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Set(1); }, msg);
    ExpectThrow<InvalidOperationException>([&] { list.Remove(it, 0, &value); },
                                           "Invalid iterator object.");
    EXPECT_FALSE(empty.Remove(it, 0, &value));
}
