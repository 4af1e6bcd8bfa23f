// Hash maps, their entries and iterators: replacement on append, ownership, order, identity.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <string>
#include <utility>
#include <vector>

namespace {
using lstd::String;

// A key or value whose copies and live objects are counted.
struct Obj {
    static int live, copies;
    explicit Obj(int x) : v(x) { ++live; }
    Obj(Obj const& o) : v(o.v) { ++live, ++copies; }
    Obj& operator=(Obj const& o) {
        v = o.v;
        ++copies;
        return *this;
    }
    ~Obj() { --live; }
    bool operator==(Obj const& o) const { return v == o.v; }
    int v;
};
int Obj::live = 0, Obj::copies = 0;

unsigned long HashObj(Obj const& o) { return static_cast<unsigned long>(o.v); }
unsigned long HashObjPtr(Obj const* o) { return static_cast<unsigned long>(o->v); }

using ValMap = lstd::ValHashMap<Obj, Obj>;
using PtrMap = lstd::PtrHashMap<Obj, Obj>;
using Pair = lstd::PairEntry<Obj, Obj>;
using ValEntry = lstd::ValHashMapEntry<Obj, Obj>;

std::vector<std::pair<int, int>> Pairs(ValMap const& m) {
    std::vector<std::pair<int, int>> out;
    for (lstd::ValHashMapIterator<Obj, Obj> it(m); ++it;)
        out.emplace_back(it.GetKey().v, it.GetValue().v);
    return out;
}
}  // namespace

TEST(ValHashMap, AppendReplacesValueOfEqualKey) {
    ValMap map(HashObj, 10);
    EXPECT_TRUE(map.IsEmpty());
    map.Append(Obj(13), Obj(1));
    map.Append(Obj(3), Obj(2));
    map.Append(Obj(13), Obj(3));  // one entry, second value
    map.Append(Obj(20), Obj(4));
    EXPECT_EQ(map.Length(), 3u);
    EXPECT_EQ(Pairs(map), (std::vector<std::pair<int, int>>{{20, 4}, {13, 3}, {3, 2}}));
    EXPECT_FALSE(map.IsEmpty());
}

TEST(ValHashMap, LookupsCopyNoKey) {
    ValMap map(HashObj, 10);
    map.Append(Obj(5), Obj(50));
    map.Append(Obj(15), Obj(150));
    Obj key(15), out(0);
    Obj::copies = 0;
    EXPECT_TRUE(map.Get(key, out));
    EXPECT_EQ(out.v, 150);
    EXPECT_EQ(Obj::copies, 1);  // the value, into out
    map.Find(key)->v = 151;
    EXPECT_EQ(map.Find(Obj(25)), nullptr);
    EXPECT_FALSE(map.Get(Obj(25), out));
    EXPECT_EQ(out.v, 150);  // untouched
    map.Append(key, Obj(152));
    EXPECT_EQ(Obj::copies, 2);  // the value assignment only
    EXPECT_TRUE(map.Remove(key, &out));
    EXPECT_EQ(out.v, 152);
    EXPECT_FALSE(map.Remove(key, nullptr));
    EXPECT_EQ(map.Length(), 1u);
    int const live = Obj::live;
    map.Clear();
    EXPECT_EQ(Obj::live, live - 2);
    EXPECT_TRUE(map.IsEmpty());
}

TEST(ValHashMap, StringKeys) {
    lstd::ValHashMap<String, String> map(String::Hash);
    map.Append("width", "10");
    map.Append("height", "20");
    map.Append("width", "30");
    String value;
    EXPECT_TRUE(map.Get("width", value));
    EXPECT_TRUE(value == "30");
    EXPECT_FALSE(map.Get("depth", value));
    std::vector<std::string> keys;
    lstd::ValHashMapIterator<String, String> it;
    for (it.Init(map); ++it;)
        keys.push_back(it.GetKey().GetStdChar());
    unsigned long const w = String::Hash(String("width")) % 32767;
    unsigned long const h = String::Hash(String("height")) % 32767;
    EXPECT_EQ(keys, (w < h ? std::vector<std::string>{"width", "height"}
                           : std::vector<std::string>{"height", "width"}));
}

TEST(HashMapIterator, CurrentEntryOnlyAfterSuccessfulStep) {
    char const* msg = "The iterator is not initialized or it reached last item.";
    ValMap map(HashObj, 10);
    map.Append(Obj(1), Obj(2));
    lstd::ValHashMapIterator<Obj, Obj> unbound;
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { ++unbound; },
                                                       "Iterator not initialized");
    lstd::ValHashMapIterator<Obj, Obj> it(map);
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { it.GetKey(); }, msg);
    EXPECT_EQ(it.GetEntry(), nullptr);
    ASSERT_TRUE(++it);
    EXPECT_EQ(it.GetValue().v, 2);
    EXPECT_FALSE(++it);
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { it.GetValue(); }, msg);
    PtrMap ptrs(HashObjPtr, 10);
    lstd::PtrHashMapIterator<Obj, Obj> pit(ptrs);
    EXPECT_FALSE(++pit);
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { pit.GetKey(); }, msg);
}

struct PtrHashMapOwnership : ::testing::Test {
    PtrHashMapOwnership() : live(Obj::live) {}
    int live;
};

// Deliberate: appending an existing key replaces only the value pointer; the passed key is
// neither stored nor deleted, and the old value is neither deleted nor referenced.
TEST_F(PtrHashMapOwnership, AppendExistingKeyReplacesOnlyValue) {
    Obj *k1 = new Obj(7), *k2 = new Obj(7), *v1 = new Obj(1), *v2 = new Obj(2);
    {
        PtrMap map(HashObjPtr, 10);
        map.Append(k1, v1);
        map.Append(k2, v2);
        EXPECT_EQ(map.Length(), 1u);
        EXPECT_EQ(map.Get(k2), v2);
        lstd::PtrHashMapIterator<Obj, Obj> it(map);
        ASSERT_TRUE(++it);
        EXPECT_EQ(it.GetKey(), k1);
        EXPECT_EQ(it.GetValue(), v2);
    }  // the destructor deletes entries, never keys or values
    EXPECT_EQ(Obj::live, live + 4);
    for (Obj* o : {k1, k2, v1, v2})
        delete o;
}

TEST_F(PtrHashMapOwnership, ClearDeletesOnlyWithFlagOne) {
    Obj *k1 = new Obj(1), *v1 = new Obj(10), *k2 = new Obj(2);
    PtrMap map(HashObjPtr, 10);
    map.Append(k1, v1);
    map.Append(k2, nullptr);
    map.Clear(0);
    EXPECT_EQ(Obj::live, live + 3);
    EXPECT_TRUE(map.IsEmpty());
    map.Append(k1, v1);
    map.Append(k2, nullptr);  // null values are skipped
    map.Clear(1);
    EXPECT_EQ(Obj::live, live);
}

TEST(PtrHashMap, StringKeysGetAndRemove) {
    lstd::PtrHashMap<String, String> map(String::Hash);
    map.Append(new String("a"), new String("1"));
    map.Append(nullptr, new String("none"));  // String::Hash(nullptr) is 0
    String probe("a"), *key = nullptr, *value = nullptr;
    EXPECT_TRUE(*map.Get(&probe) == "1");
    EXPECT_TRUE(*map.Get(nullptr) == "none");
    EXPECT_TRUE(map.Remove(&probe, &key, &value));  // handed back, not deleted
    EXPECT_TRUE(*key == "a" && *value == "1");
    EXPECT_FALSE(map.Remove(&probe, nullptr, nullptr));
    EXPECT_EQ(map.Get(&probe), nullptr);
    EXPECT_EQ(map.Length(), 1u);
    delete key;
    delete value;
    map.Clear(1);
}

// Deliberate: entries and maps compare identities; key equality is the entries' own ==.
TEST(PairEntry, ComparesIdentity) {
    Obj k1(1), k2(1);
    lstd::PtrHashMapEntry<Obj, Obj> a(&k1, nullptr, HashObjPtr), b(&k2, nullptr, HashObjPtr);
    Pair const &pa = a, &pb = b;
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(pa == pb);
    EXPECT_TRUE(pa == pa);
    EXPECT_EQ(pa < pb, &a < &b);
    EXPECT_EQ(pa >= pb, !(&a < &b));
    ValEntry c(k1, k2, HashObj), d(k2, k1, HashObj);
    EXPECT_TRUE(c == d);
    EXPECT_FALSE(static_cast<Pair const&>(c) == d);
    EXPECT_EQ(ValEntry::Hash(&c), 1u);
    ValMap m1(HashObj), m2(HashObj);
    lstd::HashMap<Obj, Obj> const& h1 = m1;
    EXPECT_TRUE(h1 == m1);
    EXPECT_FALSE(h1 == m2);
}
