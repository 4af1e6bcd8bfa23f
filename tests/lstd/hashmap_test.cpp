// Hash maps, their entries and iterators: replacement on append, ownership, order, identity.
#include <expect_throw.h>
#include <lkit.h>

#include <string>
#include <utility>
#include <vector>

namespace {
using lstd::NotInitializedIteratorException;
using lstd::String;

// A key or value whose copies and live objects are counted.
struct Obj {
    static int live, copies;
    explicit Obj(int x) : v(x) { ++live; }
    Obj(Obj const& o) : v(o.v) { ++live, ++copies; }
    Obj& operator=(Obj const& o) { return v = o.v, ++copies, *this; }
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

TEST(ValHashMap, AppendReplacesValueAndLookupsCopyNoKey) {
    ValMap map(HashObj, 10);
    for (auto [k, v] : {std::pair{13, 1}, {3, 2}, {13, 3}, {20, 4}})
        map.Append(Obj(k), Obj(v));  // 13 twice: one entry, second value
    EXPECT_EQ(Pairs(map), (std::vector<std::pair<int, int>>{{20, 4}, {13, 3}, {3, 2}}));
    EXPECT_EQ(map.Length(), 3u);
    Obj key(13), out(0);
    Obj::copies = 0;
    map.Find(key)->v = 5;  // the stored value, in place
    EXPECT_TRUE(map.Get(key, out) && out.v == 5 && Obj::copies == 1);  // the value, into out
    EXPECT_TRUE(map.Find(Obj(23)) == nullptr && !map.Get(Obj(23), out) && out.v == 5);
    map.Append(key, Obj(6));
    EXPECT_EQ(Obj::copies, 2);  // the value assignment only
    EXPECT_TRUE(map.Remove(key, &out) && out.v == 6 && !map.Remove(key, nullptr));
    EXPECT_FALSE(map.IsEmpty());
    int const live = Obj::live;
    map.Clear();
    EXPECT_TRUE(Obj::live == live - 4 && map.IsEmpty());
}

TEST(HashMap, StringKeys) {
    lstd::ValHashMap<String, String> vals(String::Hash);
    for (auto [k, v] : {std::pair{"width", "10"}, {"height", "20"}, {"width", "30"}})
        vals.Append(k, v);
    String value;
    EXPECT_TRUE(vals.Get("width", value) && value == "30" && !vals.Get("depth", value));
    EXPECT_EQ(vals.Length(), 2u);
    lstd::PtrHashMap<String, String> ptrs(String::Hash);
    ptrs.Append(new String("a"), new String("1"));
    ptrs.Append(nullptr, new String("none"));  // String::Hash(nullptr) is 0
    String probe("a"), *key = nullptr, *val = nullptr;
    EXPECT_TRUE(*ptrs.Get(&probe) == "1" && *ptrs.Get(nullptr) == "none");
    EXPECT_TRUE(ptrs.Remove(&probe, &key, &val));  // handed back, not deleted
    EXPECT_TRUE(*key == "a" && *val == "1" && !ptrs.Remove(&probe, nullptr, nullptr));
    EXPECT_EQ(ptrs.Length(), 1u);
    delete key;
    delete val;
    ptrs.Clear(1);
}

TEST(HashMapIterator, CurrentEntryOnlyAfterSuccessfulStep) {
    char const* msg = "The iterator is not initialized or it reached last item.";
    ValMap map(HashObj, 10);
    map.Append(Obj(1), Obj(2));
    lstd::ValHashMapIterator<Obj, Obj> unbound, it(map);
    ExpectThrow<NotInitializedIteratorException>([&] { ++unbound; }, "Iterator not initialized");
    ExpectThrow<NotInitializedIteratorException>([&] { it.GetKey(); }, msg);
    EXPECT_EQ(it.GetEntry(), nullptr);
    ASSERT_TRUE(++it && it.GetValue().v == 2);
    EXPECT_FALSE(++it);
    ExpectThrow<NotInitializedIteratorException>([&] { it.GetValue(); }, msg);
    PtrMap ptrs(HashObjPtr, 10);
    lstd::PtrHashMapIterator<Obj, Obj> pit(ptrs);
    EXPECT_FALSE(++pit);
    ExpectThrow<NotInitializedIteratorException>([&] { pit.GetKey(); }, msg);
}

// Deliberate: appending an existing key replaces only the value pointer; the passed key is
// neither stored nor deleted, and the old value is neither deleted nor referenced. Only
// Clear(1) deletes keys and values.
TEST(PtrHashMap, AppendExistingKeyReplacesOnlyValue) {
    int const live = Obj::live;
    Obj *k1 = new Obj(7), *k2 = new Obj(7), *v1 = new Obj(1), *v2 = new Obj(2), *k3 = new Obj(3);
    {
        PtrMap map(HashObjPtr, 10);
        map.Append(k1, v1);
        map.Append(k2, v2);
        EXPECT_TRUE(map.Length() == 1 && map.Get(k2) == v2);
        lstd::PtrHashMapIterator<Obj, Obj> it(map);
        ASSERT_TRUE(++it && it.GetKey() == k1 && it.GetValue() == v2);
        map.Clear(0);
        EXPECT_TRUE(Obj::live == live + 5 && map.IsEmpty());
        map.Append(k2, v2);
        map.Append(k3, nullptr);  // a null value is skipped
        map.Clear(1);
        EXPECT_EQ(Obj::live, live + 2);
        map.Append(k1, v1);
    }  // the destructor deletes entries, never keys or values
    EXPECT_EQ(Obj::live, live + 2);
    delete k1;
    delete v1;
}

// Deliberate: entries and maps compare identities; key equality is the entries' own ==.
TEST(PairEntry, ComparesIdentity) {
    Obj k1(1), k2(1);
    lstd::PtrHashMapEntry<Obj, Obj> a(&k1, nullptr, HashObjPtr), b(&k2, nullptr, HashObjPtr);
    Pair const &pa = a, &pb = b;
    EXPECT_TRUE(a == b && !(pa == pb) && pa == pa);
    EXPECT_TRUE((pa < pb) == (&a < &b) && (pa >= pb) == !(&a < &b));
    ValEntry c(k1, k2, HashObj), d(k2, k1, HashObj);
    EXPECT_TRUE(c == d && !(static_cast<Pair const&>(c) == d) && ValEntry::Hash(&c) == 1);
    ValMap m1(HashObj), m2(HashObj);
    lstd::HashMap<Obj, Obj> const& h1 = m1;
    EXPECT_TRUE(h1 == m1 && !(h1 == m2));
}

// Many String keys, through the index's move to one array of buckets, removals whose entry
// places are reused, and clearing with and without removed places: order and contents agree
// with plain per-bucket lists. Run under the sanitizers, this also checks the entries' memory.
TEST(ValHashMap, ManyStringKeysAgreeWithPlainBuckets) {
    unsigned long const size = 509;
    lstd::ValHashMap<String, String> map(String::Hash, size);
    std::vector<std::vector<std::pair<std::string, std::string>>> model(size);
    auto put = [&](std::string const& k, std::string const& v) {
        map.Append(String(k.c_str()), String(v.c_str()));
        auto& bucket = model[String::Hash(String(k.c_str())) % size];
        for (auto& kv : bucket)
            if (kv.first == k)
                return void(kv.second = v);
        bucket.emplace_back(k, v);
    };
    auto check = [&] {
        std::vector<std::pair<std::string, std::string>> want, got;
        for (auto const& bucket : model)
            want.insert(want.end(), bucket.begin(), bucket.end());
        for (lstd::ValHashMapIterator<String, String> it(map); ++it;)
            got.emplace_back(it.GetKey().GetStdChar(), it.GetValue().GetStdChar());
        EXPECT_EQ(got, want);
        EXPECT_EQ(map.Length(), want.size());
    };
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 3000; ++i)
            put("k" + std::to_string(i * 7919 % 10007), "v" + std::to_string(i + round));
        check();
        for (int i = 0; i < 3000; i += 3) {
            std::string const k = "k" + std::to_string(i * 7919 % 10007);
            String removed;
            EXPECT_TRUE(map.Remove(String(k.c_str()), &removed));
            auto& bucket = model[String::Hash(String(k.c_str())) % size];
            for (auto it = bucket.begin(); it != bucket.end(); ++it)
                if (it->first == k) {
                    EXPECT_EQ(std::string(removed.GetStdChar()), it->second);
                    bucket.erase(it);
                    break;
                }
        }
        for (int i = 0; i < 300; ++i)
            put("new" + std::to_string(i), "n");  // into the places removed entries left
        check();
        if (round == 0) {
            map.Clear();  // with removed places: the walk by bucket
            model.assign(size, {});
            check();
        }
    }
}
