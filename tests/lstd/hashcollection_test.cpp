// Hash collections and sets: bucket order, ownership, the cache repair and the cost of size.
#include <expect_throw.h>
#include <lkit.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <stdexcept>
#include <vector>

namespace {
using lstd::NotInitializedIteratorException;
using UL = unsigned long;

// Equal by key; tag tells equal items apart. Destruction is logged by tag.
struct Item {
    static std::vector<int> deleted;
    ~Item() { deleted.push_back(tag); }
    bool operator==(Item const& o) const { return key == o.key; }
    int key, tag;
};
std::vector<int> Item::deleted;

// Live objects counted; copying a value of 99 throws.
struct Val {
    static int live;
    explicit Val(int x) : v(x) { ++live; }
    Val(Val const& o) : v(o.v == 99 ? throw std::runtime_error("copy") : o.v) { ++live; }
    Val& operator=(Val const&) = default;
    ~Val() { --live; }
    bool operator==(Val const& o) const { return v == o.v; }
    int v;
};
int Val::live = 0;
void PrintTo(Val const& v, std::ostream* os) { *os << v.v; }

unsigned long HashItem(Item const* i) { return static_cast<unsigned long>(i->key); }
unsigned long HashVal(Val const& v) { return static_cast<unsigned long>(v.v); }
unsigned long Hash(UL const& v) { return v; }

using PtrColl = lstd::PtrHashCollection<Item>;
using PtrIter = lstd::PtrHashCollectionIterator<Item>;

std::vector<int> Tags(PtrColl const& c) {
    std::vector<int> out;
    for (PtrIter it(c); ++it;)
        out.push_back(it.Get()->tag);
    return out;
}
template <typename T>
std::vector<T> Values(lstd::ValHashCollection<T> const& c) {
    std::vector<T> out;
    for (lstd::ValHashCollectionIterator<T> it(c); ++it;)
        out.push_back(it.Get());
    return out;
}
std::vector<int> applied;

// Table size 7: keys 15, 8 and 1 share bucket 1, 6 and 20 bucket 6, 3 is alone in bucket 3.
struct PtrHash : ::testing::Test {
    PtrHash() : a{15, 1}, b{8, 2}, c{3, 3}, d{6, 4}, e{1, 5}, f{20, 6}, coll(HashItem, 7) {
        for (Item* p : {&a, &b, &c, &d, &e, &f})
            coll.Append(p);
        Item::deleted.clear();
    }
    Item a, b, c, d, e, f;
    PtrColl coll;
};
}  // namespace

TEST_F(PtrHash, FindRemoveAndAppendInBucketOrder) {
    Item twin{1, 0}, absent{13, 0};
    EXPECT_EQ((std::vector<Item*>{coll.Find(&twin), coll.Find(&absent), coll.Find(nullptr),
                                  coll.Remove(&twin), coll.Remove(nullptr), coll.Remove(&c)}),
              (std::vector<Item*>{&e, nullptr, nullptr, &e, nullptr, &c}));  // bucket 3 empties
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 4, 6}));
    for (Item* p : {&c, &a, static_cast<Item*>(nullptr)})
        coll.Append(p);  // no duplicate check: a twice; null is ignored
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 1, 3, 4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 6u);
    EXPECT_TRUE(Item::deleted.empty());
    lstd::PtrHashEntry<Item> entry;
    coll.CopyEntry(1, entry);
    EXPECT_TRUE(entry.GetNumberOfEntry() == 3 && entry.Get(2) == &a);
}

TEST(PtrHashCollection, ClearDeletesOnlyWithFlagOne) {
    Item* survivor = new Item{1, 1};
    {
        Item::deleted.clear();
        PtrColl coll(HashItem, 7);
        coll.Append(survivor);
        coll.Clear(0);
        for (int k : {13, 6, 0, 7})
            coll.Append(new Item{k, k});
        coll.Clear(1);
        EXPECT_EQ(coll.GetNumberOfEntry(), 0u);
        coll.Append(survivor);
    }  // the destructor deletes no item; Clear(1) goes by ascending bucket, front to back
    EXPECT_EQ(Item::deleted, (std::vector<int>{0, 7, 13, 6}));
    delete survivor;
}

TEST_F(PtrHash, ApplyToListAndAppendList) {
    applied.clear();
    coll.Apply([](Item* i) { applied.push_back(i->tag); });
    EXPECT_EQ(applied, (std::vector<int>{1, 2, 5, 3, 4, 6}));
    lstd::PtrDLinkList<Item> out, in;
    Item other{4, 9}, twin{15, 8};
    out.Append(&other);
    coll.ToList(out);  // out is emptied first, without deleting
    EXPECT_TRUE(out.GetNumberOfEntry() == 6 && out.Get(2) == &e);
    lstd::PtrHashSet<Item> set(HashItem, 7);
    for (Item* p : {&f, &a, &d, &other, &twin, &a})
        in.Append(p);
    set.AppendList(in);  // through the set's Append: twin and the second a are refused
    coll.AppendList(in);
    EXPECT_EQ(Tags(set), (std::vector<int>{1, 9, 6, 4}));
    EXPECT_EQ(set.Find(&twin), &a);
    EXPECT_EQ(coll.GetNumberOfEntry(), 12u);
    EXPECT_TRUE(Item::deleted.empty());  // neither ToList nor a refused append deletes
}

TEST_F(PtrHash, IteratorProtocol) {
    PtrIter it;
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
    it.Init(coll);
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, "Iterator not set validity.");
    EXPECT_EQ((std::vector<UL>{it.GetCurHashValue(), it.GetItemNumberAt(1), it.GetItemNumberAt(2)}),
              (std::vector<UL>{1, 3, 0}));
    ASSERT_TRUE(++it && it.Get() == &a);
    PtrIter next;
    it.GetNextIterator(next);  // a fresh copy goes on with the next bucket
    ASSERT_TRUE(++next && next.Get() == &c);
    while (++it)
        ;
    ExpectThrow<NotInitializedIteratorException>([&] { it.Get(); }, "Iterator not set validity.");
    it.Reset();
    ASSERT_TRUE(++it && it.Get() == &a);
    it.Clear();
    ExpectThrow<NotInitializedIteratorException>([&] { ++it; }, "Iterator not initialized");
}

// Deliberate: the base Clear() drops only the cache. Iteration then sees the last bucket
// alone until a change marks the cache out of date; the repair then finds everything again.
TEST_F(PtrHash, BaseClearForgetsCacheUntilNextChange) {
    EXPECT_EQ(Tags(coll), (std::vector<int>{1, 2, 5, 3, 4, 6}));  // fills the cache
    static_cast<lstd::HashCollection<Item>&>(coll).Clear();
    EXPECT_EQ(Tags(coll), (std::vector<int>{4, 6}));
    EXPECT_EQ(coll.GetNumberOfEntry(), 6u);
    Item g{2, 7};
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
        EXPECT_TRUE(coll.Find(Val(12), &out) && out.v == 12);
        EXPECT_FALSE(coll.Find(Val(32), &out));  // bucket 2 holds only 2
        EXPECT_TRUE(coll.Remove(Val(22), &out) && out.v == 22);  // copied out, copy destroyed
        EXPECT_EQ(Val::live, live + 4);
        coll.Clear();
        EXPECT_EQ(Val::live, live + 2);
        coll.Append(x);
    }  // the destructor destroys the copies
    EXPECT_EQ(Val::live, live);
}

// Apply may change values in place: each keeps its bucket, and its hash is taken anew, so a
// lookup finds it exactly where its new hash leads to that bucket.
TEST(ValHashCollection, AppendListAndApplyTakingHashesAnew) {
    lstd::ValHashCollection<UL> coll(Hash, 10);
    lstd::ValDLinkList<UL> in;
    for (UL v : {31, 4, 21, 4, 2})
        in.Append(v);
    coll.AppendList(in);
    EXPECT_EQ(Values(coll), (std::vector<UL>{31, 21, 2, 4, 4}));
    coll.Apply([](UL& v) { v = v * 3 + 10; });  // 103, 73, 16, 22, 22: buckets are kept
    EXPECT_EQ(Values(coll), (std::vector<UL>{103, 73, 16, 22, 22}));
    coll.Apply([](UL& v) { v = (v - 10) / 3 + 20; });  // 51, 41, 22, 24, 24: each in its bucket
    for (UL v : {51, 41, 22, 24})
        EXPECT_TRUE(coll.Find(v, nullptr)) << v;
    EXPECT_FALSE(coll.Find(31, nullptr) || coll.Find(4, nullptr));
    lstd::ValHashEntry<UL> entry;
    coll.CopyEntry(1, entry);
    EXPECT_TRUE(entry.GetNumberOfEntry() == 2 && entry.GetLast() == 41);
}

// Deliberate: a failed append leaves its value counted. The cache repair then finds fewer
// items than counted; it runs only when a change marked the cache out of date.
TEST(ValHashCollection, FailedAppendStaysCounted) {
    char const* msg = "Items in hash structure is not integrity";
    lstd::ValHashCollection<Val> coll(HashVal, 10);
    coll.Append(Val(9));
    lstd::ValHashCollectionIterator<Val> it(coll);           // the cache is up to date
    EXPECT_THROW(coll.Append(Val(99)), std::runtime_error);  // into non-empty bucket 9
    EXPECT_EQ(coll.GetNumberOfEntry(), 2u);
    EXPECT_EQ(Values(coll), std::vector<Val>{Val(9)});
    coll.Append(Val(1));
    ExpectThrow<lstd::UnknownException>([&] { it.Reset(); }, msg);
    ExpectThrow<lstd::UnknownException>([&] { it.Init(coll); }, msg);
    coll.Clear();
    coll.Append(Val(3));
    EXPECT_EQ(Values(coll), std::vector<Val>{Val(3)});
}

// Storage follows the items: neither construction, iteration nor clearing touch the 32767
// buckets one by one, and the sizes below do not depend on the table size. Size 0 is refused.
TEST(HashCollection, CostFollowsItemsNotTableSize) {
    char const* msg = "The hash table size is invalid. (size = 0)";
    ExpectThrow<lstd::InvalidOperationException>([] { PtrColl c(HashItem, 0); }, msg);
    ExpectThrow<lstd::InvalidOperationException>([] { lstd::ValHashSet<UL> s(Hash, 0); }, msg);
    EXPECT_LT(sizeof(lstd::PtrHashSet<Item>), 256u);
    EXPECT_LT(sizeof(lstd::ValHashMap<lstd::String, lstd::String>), 256u);
    lstd::ValHashSet<UL> set(Hash, 32767);
    lstd::ValHashCollectionIterator<UL> it(set);
    EXPECT_TRUE(set.GetBucketSlotCount() == 0 && it.GetCurHashValue() == 32766u && !++it);
    for (UL v : {5UL, 40000UL, 32771UL})
        set.Append(v);
    EXPECT_EQ(set.GetBucketSlotCount(), 8u);
    EXPECT_EQ(Values(set), (std::vector<UL>{32771, 5, 40000}));
    set.Clear();
    EXPECT_EQ(set.GetBucketSlotCount(), 0u);
    lstd::ValHashSet<UL> huge(Hash, 1UL << 40);  // no table of 2^40 buckets
    std::vector<UL> want;
    for (UL i = 0; i < 1000; ++i) {
        huge.Append((i * 7919) << 28);  // buckets filled and emptied without any walk
        huge.Remove((i * 7919) << 28, nullptr);
        huge.Append(i << 30);
        want.push_back(i << 30);  // below 2^40, so each is its own bucket number
    }
    EXPECT_TRUE(huge.GetNumberOfEntry() == 1000 && huge.GetBucketSlotCount() <= 4096);
    EXPECT_EQ(Values(huge), want);
}

// The remainder that places an item is exact for every divisor and numerator.
TEST(HashCollection, ModulusIsExact) {
    std::mt19937_64 rng(1);
    for (UL d : {1UL, 2UL, 3UL, 7UL, 32767UL, 1000003UL, (1UL << 63) + 1, ~0UL - 1, ~0UL}) {
        lstd::hashtable::Modulus const m(d);
        for (UL n : {0UL, 1UL, d - 1, d, d + 1, ~0UL, ~0UL - 1})
            EXPECT_EQ(m.Of(n), n % d) << n << " % " << d;
        for (int i = 0; i < 10000; ++i) {
            UL const n = rng() >> (i % 64);
            ASSERT_EQ(m.Of(n), n % d) << n << " % " << d;
        }
    }
}

// Random appends and removals, checked against a table of plain lists, through the growth of
// the bucket index and its move to one array of every bucket: same walk, counts and finds.
// Size 1 keeps everything in append order; a duplicate reports 1 as well, adding nothing.
TEST(ValHashSet, AgreesWithPlainBucketsAtEverySize) {
    for (UL size : {1UL, 7UL, 64UL, 1000UL, 32767UL}) {
        SCOPED_TRACE(size);
        std::mt19937_64 rng(size);
        lstd::ValHashSet<UL> set(Hash, size);
        std::vector<std::vector<UL>> model(size);
        std::size_t count = 0;
        for (int step = 0; step < 40000; ++step) {
            UL const v = rng() % (4 * size + 50);
            std::vector<UL>& bucket = model[v % size];
            std::vector<UL>::iterator const at = std::find(bucket.begin(), bucket.end(), v);
            if (rng() % 3 != 0) {
                EXPECT_EQ(set.Append(v), 1);
                if (at == bucket.end())
                    bucket.push_back(v), ++count;
            } else {
                EXPECT_EQ(set.Remove(v, nullptr), at != bucket.end());
                if (at != bucket.end())
                    bucket.erase(at), --count;
            }
            if (step % 4999 == 0) {
                std::vector<UL> want;
                for (std::vector<UL> const& b : model)
                    want.insert(want.end(), b.begin(), b.end());
                ASSERT_EQ(Values(set), want);
            }
        }
        EXPECT_EQ(set.GetNumberOfEntry(), count);
        for (UL v = 0; v < 4 * size + 50; ++v) {
            std::vector<UL> const& bucket = model[v % size];
            ASSERT_EQ(set.Find(v, nullptr),
                      std::find(bucket.begin(), bucket.end(), v) != bucket.end());
        }
    }
}

// Hashes that share their bucket and the digest kept beside each item still tell items apart
// by operator==; items whose hash differs are never compared.
int compares = 0;
TEST(PtrHashCollection, EqualDigestsFallBackToEquality) {
    struct Key {
        bool operator==(Key const& o) const { return ++compares, hash == o.hash && tag == o.tag; }
        UL hash;
        int tag;
    };
    lstd::PtrHashCollection<Key> coll([](Key const* k) { return k->hash; }, 5);
    std::vector<UL> same;  // hashes of bucket 1 whose digests equal that of 1
    for (UL h = 1; same.size() < 3; h += 5 << 20)
        if (lstd::hashtable::Digest(h) == lstd::hashtable::Digest(1))
            same.push_back(h);
    Key a{same[0], 1}, b{same[1], 2}, c{same[2], 3}, d{same[0], 4};
    for (Key* k : {&a, &b, &c})
        coll.Append(k);
    Key probe{c.hash, 3};
    compares = 0;
    EXPECT_TRUE(coll.Find(&probe) == &c && compares == 3);  // one digest: each item is asked
    Key other{6, 0};  // bucket 1 as well, another digest
    compares = 0;
    EXPECT_TRUE(coll.Find(&other) == nullptr && compares == 0);
    EXPECT_EQ(coll.Find(&d), nullptr);  // equal hash and digest, unequal item
    EXPECT_TRUE(coll.Remove(&a) == &a && coll.Remove(&b) == &b);
    EXPECT_EQ(coll.Find(&probe), &c);  // back to one item kept in the bucket itself
}

// A table whose buckets nearly all hold items keeps them in one array of the table size; the
// walk, the ascending deletion by Clear(1) and the base Clear() behave as with few items.
TEST(PtrHashCollection, FullTableKeepsEveryContract) {
    std::vector<Item> items;
    for (int k = 0; k < 300; ++k)
        items.push_back(Item{(k * 37) % 100, k});
    PtrColl coll(HashItem, 100);
    for (Item& i : items)
        coll.Append(&i);
    EXPECT_EQ(coll.GetBucketSlotCount(), 100u);
    std::vector<int> tags = Tags(coll), want;
    for (int b = 0; b < 100; ++b)
        for (Item const& i : items)
            if (i.key == b)
                want.push_back(i.tag);
    EXPECT_EQ(tags, want);
    static_cast<lstd::HashCollection<Item>&>(coll).Clear();
    EXPECT_EQ(Tags(coll).size(), 3u);  // only the last bucket, until the next change
    Item zero{0, 0};
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(coll.Remove(&zero), nullptr);  // bucket 0 empties: the walk is repaired
    EXPECT_EQ(Tags(coll).size(), 297u);
    PtrColl heap(HashItem, 50);
    for (int k = 0; k < 120; ++k)
        heap.Append(new Item{(k * 7) % 50, k});
    Item::deleted.clear();
    heap.Clear(1);
    std::vector<int> order;
    for (int b = 0; b < 50; ++b)
        for (int k = 0; k < 120; ++k)
            if ((k * 7) % 50 == b)
                order.push_back(k);
    EXPECT_EQ(Item::deleted, order);
    EXPECT_EQ(heap.GetBucketSlotCount(), 0u);
}
