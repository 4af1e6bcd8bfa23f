// Hash collections and sets: bucket order, ownership, the cache repair and the cost of size.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <stdexcept>
#include <vector>

namespace {
using lstd::InvalidOperationException;
using lstd::NotInitializedIteratorException;

// Equal by key; tag tells equal items apart. Destruction is logged by tag.
struct Item {
    static int live;
    static std::vector<int> deleted;
    Item(int k, int t) : key(k), tag(t) { ++live; }
    ~Item() {
        --live;
        deleted.push_back(tag);
    }
    bool operator==(Item const& o) const { return key == o.key; }
    int key, tag;
};
int Item::live = 0;
std::vector<int> Item::deleted;

// Copies counted; copying a value of 99 throws.
struct Val {
    static int live;
    explicit Val(int x) : v(x) { ++live; }
    Val(Val const& o) : v(o.v) {
        if (v == 99)
            throw std::runtime_error("copy");
        ++live;
    }
    Val& operator=(Val const&) = default;
    ~Val() { --live; }
    bool operator==(Val const& o) const { return v == o.v; }
    int v;
};
int Val::live = 0;

unsigned long HashItem(Item const* i) { return static_cast<unsigned long>(i->key); }
unsigned long HashInt(int const& v) { return static_cast<unsigned long>(v); }
unsigned long HashVal(Val const& v) { return static_cast<unsigned long>(v.v); }
unsigned long HashUL(unsigned long const& v) { return v; }

using PtrColl = lstd::PtrHashCollection<Item>;
using PtrIter = lstd::PtrHashCollectionIterator<Item>;

std::vector<int> Tags(PtrColl const& c) {
    std::vector<int> out;
    for (PtrIter it(c); ++it;)
        out.push_back(it.Get()->tag);
    return out;
}
template <typename C>
std::vector<int> Values(C const& c) {
    std::vector<int> out;
    for (lstd::ValHashCollectionIterator<int> it(c); ++it;)
        out.push_back(it.Get());
    return out;
}
std::vector<int> applied;
void Record(Item* i) { applied.push_back(i->tag); }
void Triple(int& v) { v *= 3; }

// Table size 7: keys 15, 8 and 1 share bucket 1, 6 and 20 bucket 6, 3 is alone in bucket 3.
struct PtrHash : ::testing::Test {
    PtrHash() : a(15, 1), b(8, 2), c(3, 3), d(6, 4), e(1, 5), f(20, 6), coll(HashItem, 7) {
        for (Item* p : {&a, &b, &c, &d, &e, &f})
            coll.Append(p);
        Item::deleted.clear();
    }
    Item a, b, c, d, e, f;
    PtrColl coll;
};
}  // namespace

TEST(HashCollection, SizeZeroIsRejected) {
    char const* msg = "The hash table size is invalid. (size = 0)";
    ExpectThrow<InvalidOperationException>([] { PtrColl c(HashItem, 0); }, msg);
    ExpectThrow<InvalidOperationException>([] { lstd::ValHashSet<int> s(HashInt, 0); }, msg);
    lstd::ValHashSet<int> one(HashInt, 1);  // one bucket holds everything, in append order
    for (int v : {5, 3, 5, 9, 8, 7, 6, 1, 2, 0, 4})
        one.Append(v);
    for (int v : {9, 0, 7, 6, 5})
        EXPECT_TRUE(one.Remove(v, nullptr));
    EXPECT_EQ(Values(one), (std::vector<int>{3, 8, 1, 2, 4}));
}

TEST_F(PtrHash, IteratesByBucketThenAppendOrder) {
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 5, 3, 4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 6u);
    coll.Append(&a);  // no duplicate check: the same pointer twice
    coll.Append(nullptr);
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 5, 1, 3, 4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 7u);
    lstd::PtrHashEntry<Item> entry;
    coll.CopyEntry(1, entry);
    EXPECT_EQ(entry.GetNumberOfEntry(), 4u);
    EXPECT_EQ(entry.Get(3), &a);
}

TEST_F(PtrHash, FindAndRemoveCompareContents) {
    Item twin(1, 0), absent(13, 0);
    EXPECT_EQ(coll.Find(&twin), &e);
    EXPECT_EQ(coll.Find(&absent), nullptr);
    EXPECT_EQ(coll.Find(nullptr), nullptr);
    EXPECT_EQ(coll.Remove(&twin), &e);
    EXPECT_EQ(coll.Remove(&twin), nullptr);
    EXPECT_EQ(coll.Remove(nullptr), nullptr);
    EXPECT_EQ(coll.Remove(&c), &c);  // bucket 3 becomes empty and leaves the walk
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 4, 6}));
    coll.Append(&c);
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 3, 4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 5u);
    EXPECT_TRUE(Item::deleted.empty());
}

TEST(PtrHashCollection, ClearDeletesOnlyWithFlagOne) {
    Item* survivor = new Item(1, 1);
    int const live = Item::live;
    {
        PtrColl coll(HashItem, 7);
        for (int k : {13, 6, 0, 7})
            coll.Append(new Item(k, k));
        lstd::PtrDLinkList<Item> keep;
        coll.ToList(keep);
        coll.Clear(0);
        EXPECT_EQ(Item::live, live + 4);
        EXPECT_TRUE(Tags(coll).empty());
        for (int i = 0; i < 4; ++i)
            coll.Append(keep.Get(static_cast<unsigned long>(i)));
        Item::deleted.clear();
        coll.Clear(1);  // ascending buckets, each front to back
        EXPECT_EQ(Item::deleted, (std::vector<int>{0, 7, 13, 6}));
        EXPECT_EQ(coll.GetNumberOfEntry(), 0u);
        coll.Append(survivor);
    }  // the destructor deletes no item
    EXPECT_EQ(Item::live, live);
    delete survivor;
    Item::deleted.clear();
}

TEST_F(PtrHash, ApplyToListAndAppendList) {
    applied.clear();
    coll.Apply(Record);
    EXPECT_EQ(applied, (std::vector<int>{1, 2, 5, 3, 4, 6}));
    lstd::PtrDLinkList<Item> out, in;
    Item other(4, 9);
    out.Append(&other);
    coll.ToList(out);  // out is emptied first, without deleting
    EXPECT_EQ(out.GetNumberOfEntry(), 6u);
    EXPECT_EQ(out.Get(2), &e);
    EXPECT_TRUE(Item::deleted.empty());
    lstd::PtrHashSet<Item> set(HashItem, 7);
    for (Item* p : {&f, &a, &d, &other, &a})
        in.Append(p);
    set.AppendList(in);  // through the set's Append, which skips the second a
    coll.AppendList(in);
    lstd::PtrHashSetIterator<Item> it(set);
    std::vector<Item*> got;
    while (++it)
        got.push_back(it.Get());
    EXPECT_EQ(got, (std::vector<Item*>{&a, &other, &f, &d}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 11u);
}

TEST_F(PtrHash, IteratorProtocol) {
    PtrIter it;
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
    it.Init(coll);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, "Iterator not set validity.");
    EXPECT_EQ(it.GetCurHashValue(), 1u);
    EXPECT_EQ(it.GetItemNumberAt(1), 3u);
    EXPECT_EQ(it.GetItemNumberAt(2), 0u);
    ASSERT_TRUE(++it);
    EXPECT_EQ(it.Get(), &a);
    PtrIter next;
    it.GetNextIterator(next);  // a fresh copy goes on with the next bucket
    ASSERT_TRUE(++next);
    EXPECT_EQ(next.Get(), &c);
    while (++it) {
    }
    EXPECT_FALSE(++it);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, "Iterator not set validity.");
    it.Reset();
    ASSERT_TRUE(++it);
    EXPECT_EQ(it.Get(), &a);
    it.Clear();
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
}

// Deliberate: the base Clear() drops only the cache. Iteration then sees the last bucket
// alone until a change marks the cache out of date; the repair then finds everything again.
TEST_F(PtrHash, BaseClearForgetsCacheUntilNextChange) {
    EXPECT_EQ(Tags(coll).size(), 6u);  // the cache is up to date
    static_cast<lstd::HashCollection<Item>&>(coll).Clear();
    EXPECT_EQ(Tags(coll), (std::vector<int>{4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 6u);
    Item g(2, 7);
    coll.Append(&g);
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 5, 7, 3, 4, 6}));
}

TEST(ValHashCollection, CopiesInAndOut) {
    int const live = Val::live;
    {
        lstd::ValHashCollection<Val> coll(HashVal, 10);
        Val x(12), out(0);
        coll.Append(x);
        coll.Append(Val(2));
        x.v = 22;
        coll.Append(x);
        EXPECT_EQ(Val::live, live + 5);
        EXPECT_TRUE(coll.Find(Val(12), &out));
        EXPECT_EQ(out.v, 12);
        EXPECT_FALSE(coll.Find(Val(32), &out));
        EXPECT_TRUE(coll.Remove(Val(22), &out));  // copied out, stored copy destroyed
        EXPECT_EQ(out.v, 22);
        EXPECT_FALSE(coll.Remove(Val(22), nullptr));
        EXPECT_EQ(Val::live, live + 4);
        coll.Clear();
        EXPECT_EQ(Val::live, live + 2);
        coll.Append(x);
    }  // the destructor destroys the copies
    EXPECT_EQ(Val::live, live);
}

TEST(ValHashCollection, ApplyAndAppendList) {
    lstd::ValHashCollection<int> coll(HashInt, 10);
    lstd::ValDLinkList<int> in;
    for (int v : {31, 4, 21, 4})
        in.Append(v);
    coll.AppendList(in);
    EXPECT_EQ(Values(coll), (std::vector<int>{31, 21, 4, 4}));
    coll.Apply(Triple);
    EXPECT_EQ(Values(coll), (std::vector<int>{93, 63, 12, 12}));  // buckets are kept
    lstd::ValHashEntry<int> entry;
    coll.CopyEntry(1, entry);
    EXPECT_EQ(entry.GetNumberOfEntry(), 2u);
    EXPECT_EQ(entry.GetLast(), 63);
}

// Deliberate: a failed append leaves its value counted. The cache repair then finds fewer
// items than counted; it runs only when a change marked the cache out of date.
TEST(ValHashCollection, FailedAppendStaysCounted) {
    lstd::ValHashCollection<Val> coll(HashVal, 10);
    coll.Append(Val(9));
    lstd::ValHashCollectionIterator<Val> it(coll);           // the cache is up to date
    EXPECT_THROW(coll.Append(Val(99)), std::runtime_error);  // into non-empty bucket 9
    EXPECT_EQ(coll.GetNumberOfEntry(), 2u);
    it.Init(coll);
    ASSERT_TRUE(++it);
    EXPECT_EQ(it.Get().v, 9);
    EXPECT_FALSE(++it);
    coll.Append(Val(1));
    ExpectThrow<lstd::UnknownException>([&] { it.Init(coll); },
                                        "Items in hash structure is not integrity");
    ExpectThrow<lstd::UnknownException>([&] { it.Reset(); },
                                        "Items in hash structure is not integrity");
    coll.Clear();
    coll.Append(Val(3));
    it.Init(coll);
    ASSERT_TRUE(++it);
    EXPECT_EQ(it.Get().v, 3);
}

TEST(HashSet, RefusesEqualItems) {
    Item a(3, 1), twin(3, 2);
    int const live = Item::live;
    lstd::PtrHashSet<Item> set(HashItem);
    set.Append(&a);
    set.Append(&twin);  // neither stored nor deleted
    set.Append(&a);
    EXPECT_EQ(set.GetNumberOfEntry(), 1u);
    EXPECT_EQ(set.Find(&twin), &a);
    EXPECT_EQ(Item::live, live);
    lstd::ValHashSet<int> values(HashInt, 10);
    for (int v : {7, 17, 7, 3, 17})
        EXPECT_EQ(values.Append(v), 1);  // a duplicate reports 1 as well, changing nothing
    EXPECT_EQ(values.GetNumberOfEntry(), 3u);
    lstd::ValHashSetIterator<int> it(values);
    std::vector<int> got;
    while (++it)
        got.push_back(it.Get());
    EXPECT_EQ(got, (std::vector<int>{3, 7, 17}));
}

// Storage follows the items: neither construction, iteration nor clearing touch the 32767
// buckets one by one, and the sizes below do not depend on the table size.
TEST(HashCollection, CostFollowsItemsNotTableSize) {
    EXPECT_LT(sizeof(lstd::PtrHashSet<Item>), 256u);
    EXPECT_LT(sizeof(lstd::ValHashMap<lstd::String, lstd::String>), 256u);
    lstd::ValHashSet<unsigned long> set(HashUL, 32767);
    EXPECT_EQ(set.GetBucketSlotCount(), 0u);
    lstd::ValHashCollectionIterator<unsigned long> it(set);
    EXPECT_EQ(it.GetCurHashValue(), 32766u);
    EXPECT_FALSE(++it);
    for (unsigned long v : {5UL, 40000UL, 32771UL})
        set.Append(v);
    EXPECT_EQ(set.GetBucketSlotCount(), 8u);
    std::vector<unsigned long> got;
    for (it.Init(set); ++it;)
        got.push_back(it.Get());
    EXPECT_EQ(got, (std::vector<unsigned long>{32771, 5, 40000}));
    set.Clear();
    EXPECT_EQ(set.GetBucketSlotCount(), 0u);
    lstd::ValHashSet<unsigned long> huge(HashUL, 1UL << 40);  // no table of 2^40 buckets
    for (unsigned long i = 0; i < 1000; ++i) {
        huge.Append((i * 7919) << 28);  // buckets filled and emptied without any walk
        huge.Remove((i * 7919) << 28, nullptr);
        huge.Append(i << 30);
    }
    EXPECT_EQ(huge.GetNumberOfEntry(), 1000u);
    EXPECT_LE(huge.GetBucketSlotCount(), 4096u);
    lstd::ValHashSetIterator<unsigned long> hugeIt(huge);
    unsigned long count = 0, previous = 0;
    for (; ++hugeIt; ++count) {
        EXPECT_TRUE(count == 0 || hugeIt.Get() > previous);
        previous = hugeIt.Get();
    }
    EXPECT_EQ(count, 1000u);
}
