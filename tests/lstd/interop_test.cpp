// Standard-library interplay of the containers: range-for, <algorithm>, moves, initializer
// lists, lookups by text and the String conversions.
#include <lstd/array.h>
#include <lstd/circularbuffer.h>
#include <lstd/parray.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/ptrhashmap.h>
#include <lstd/string.h>
#include <lstd/stringbuilder.h>
#include <lstd/valdlinklist.h>
#include <lstd/valhashmap.h>
#include <lstd/valmatrix.h>
#include <lstd/valqueue.h>
#include <lstd/valsortlist.h>

#include <failing_alloc.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <iterator>
#include <numeric>
#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

using lstd::String;

namespace {

// Counts copies (moves are copies too: there is no move constructor) and destructions: a
// move of a container touches no element.
struct Counted {
    static int copies, destroyed;
    Counted(int v = 0) : value(v) {}
    Counted(Counted const& other) : value(other.value) { ++copies; }
    Counted& operator=(Counted const& other) {
        value = other.value;
        ++copies;
        return *this;
    }
    ~Counted() { ++destroyed; }
    bool operator==(Counted const& other) const { return value == other.value; }
    bool operator<(Counted const& other) const { return value < other.value; }
    int value;
};
int Counted::copies = 0, Counted::destroyed = 0;

// Seven buckets: the test values share buckets, so the walks cross buckets and bucket runs.
unsigned long const kBuckets = 7;
unsigned long HashOf(Counted const& c) { return static_cast<unsigned long>(c.value) * 3; }
unsigned long HashOf(Counted const* c) { return HashOf(*c); }

int KeyOf(Counted const& c) { return c.value; }
int KeyOf(Counted const* c) { return c->value; }
template <typename Entry>
auto KeyOf(Entry const& e) -> decltype(KeyOf(e.GetKey())) {
    return KeyOf(e.GetKey());
}

using PtrMap = lstd::PtrHashMap<Counted, Counted>;
using ValMap = lstd::ValHashMap<Counted, Counted>;
template <typename C, typename... Of>
constexpr bool kIsOneOf = (std::is_same<C, Of>::value || ...);
template <typename C>
constexpr bool kIsMap = kIsOneOf<C, PtrMap, ValMap>;
template <typename C>
constexpr bool kIsArray = kIsOneOf<C, lstd::Array<Counted>, lstd::PArray<Counted>>;
template <typename C>
constexpr bool kIsHash =
    kIsMap<C> || kIsOneOf<C, lstd::PtrHashSet<Counted>, lstd::ValHashSet<Counted>>;
template <typename C>
constexpr bool kHoldsPointers =
    std::is_pointer<typename C::value_type>::value || std::is_same<C, PtrMap>::value;
// The Counted objects that one stored item owns.
template <typename C>
constexpr int kOwnedEach = kHoldsPointers<C> ? 0 : (kIsMap<C> ? 2 : 1);

// The pointer containers' objects; they outlive the containers.
using Pool = std::deque<Counted>;

template <typename C>
C MakeEmpty() {
    if constexpr (kIsHash<C>)
        return C(&HashOf, kBuckets);
    else if constexpr (kIsArray<C>)
        return C(0);
    else
        return C();
}

template <typename C>
void Add(C& c, Pool& pool, int v) {
    auto item = [&pool](int x) {
        if constexpr (kHoldsPointers<C>) {
            return &pool.emplace_back(x);
        } else {
            static_cast<void>(pool);
            return Counted(x);
        }
    };
    if constexpr (kIsArray<C>) {  // one block per element: walks cross blocks
        c.Resize(c.GetLength() + 1);
        c[c.GetLength() - 1] = item(v);
    } else if constexpr (kIsMap<C>) {
        c.Append(item(v), item(v + 1000));
    } else {
        c.Append(item(v));
    }
}

template <typename C>
C Make(Pool& pool, std::vector<int> const& values) {
    C c = MakeEmpty<C>();
    for (int v : values)
        Add(c, pool, v);
    return c;
}

// The hash containers' own iterators.
auto OwnIterator(lstd::PtrHashSet<Counted> const& c) {
    return lstd::PtrHashSetIterator<Counted>(c);
}
auto OwnIterator(lstd::ValHashSet<Counted> const& c) {
    return lstd::ValHashSetIterator<Counted>(c);
}
auto OwnIterator(PtrMap const& c) { return lstd::PtrHashMapIterator<Counted, Counted>(c); }
auto OwnIterator(ValMap const& c) { return lstd::ValHashMapIterator<Counted, Counted>(c); }

// The order of the container's own access: positions, or its heap-free hash iterator.
template <typename C>
std::vector<int> Legacy(C const& c) {
    std::vector<int> keys;
    if constexpr (kIsHash<C>) {
        for (auto it = OwnIterator(c); ++it;)
            if constexpr (kIsMap<C>)
                keys.push_back(KeyOf(it.GetKey()));
            else
                keys.push_back(KeyOf(it.Get()));
    } else {
        unsigned long n = 0;
        if constexpr (kIsArray<C>)
            n = c.GetLength();
        else
            n = c.GetNumberOfEntry();
        for (unsigned long i = 0; i < n; ++i)
            keys.push_back(KeyOf(c[i]));
    }
    return keys;
}

// Range-for, through the const or the mutable iterator as c is.
template <typename C>
std::vector<int> Walk(C& c) {
    std::vector<int> keys;
    for (auto&& element : c)
        keys.push_back(KeyOf(element));
    return keys;
}

template <typename C>
class EveryContainer : public testing::Test {
protected:
    void SetUp() override { Counted::copies = Counted::destroyed = 0; }
    // Distinct values, not ascending, several per bucket of the hash containers.
    std::vector<int> const mValues{12, 5, 19, 3, 26, 8, 1, 15, 22, 9};
    Pool mPool;
};
using Containers =
    testing::Types<lstd::PtrDLinkList<Counted>, lstd::ValDLinkList<Counted>,
                   lstd::ValQueue<Counted>, lstd::ValSortList<Counted>, lstd::Array<Counted>,
                   lstd::PArray<Counted>, lstd::PtrHashSet<Counted>, lstd::ValHashSet<Counted>,
                   PtrMap, ValMap>;
TYPED_TEST_SUITE(EveryContainer, Containers, );  // the empty name generator keeps clang quiet

TYPED_TEST(EveryContainer, RangeForAndAlgorithmsWalkTheContainersOwnOrder) {
    TypeParam c = Make<TypeParam>(this->mPool, this->mValues);
    TypeParam const& cc = c;
    std::vector<int> const legacy = Legacy(c);
    Counted::copies = 0;
    ASSERT_EQ(this->mValues.size(), legacy.size());
    EXPECT_EQ(legacy, Walk(c));
    EXPECT_EQ(legacy, Walk(cc));

    using Category = typename std::iterator_traits<decltype(cc.begin())>::iterator_category;
    static_assert(std::is_base_of<std::forward_iterator_tag, Category>::value, "forward at least");
    auto key = [](int k) { return [k](auto const& e) { return KeyOf(e) == k; }; };
    EXPECT_EQ(static_cast<long>(legacy.size()), std::distance(cc.begin(), cc.end()));
    auto const nine = std::find_if(cc.begin(), cc.end(), key(9));
    ASSERT_NE(cc.end(), nine);
    EXPECT_EQ(9, KeyOf(*nine));
    EXPECT_EQ(cc.end(), std::find_if(cc.begin(), cc.end(), key(4)));
    EXPECT_EQ(4,
              std::count_if(cc.begin(), cc.end(), [](auto const& e) { return KeyOf(e) % 2 == 0; }));
    EXPECT_TRUE(std::equal(cc.begin(), cc.end(), legacy.begin(), legacy.end(),
                           [](auto const& e, int k) { return KeyOf(e) == k; }));
    auto it = cc.begin();
    auto const before = it++;
    EXPECT_EQ(legacy[0], KeyOf(*before));
    EXPECT_EQ(legacy[1], KeyOf(*it));
    EXPECT_EQ(0, Counted::copies);  // walking copies nothing
}

TYPED_TEST(EveryContainer, MovesCopyNothingAndDeleteOnlyTheTargetsValues) {
    TypeParam source = Make<TypeParam>(this->mPool, this->mValues);
    std::vector<int> const order = Legacy(source);
    Counted::copies = Counted::destroyed = 0;
    TypeParam target(std::move(source));
    EXPECT_EQ(0, Counted::copies + Counted::destroyed);
    EXPECT_EQ(order, Walk(target));
    // The source is an empty container that works as a new one.
    EXPECT_TRUE(source.begin() == source.end());
    EXPECT_TRUE(Legacy(source).empty());
    Add(source, this->mPool, 40);
    EXPECT_EQ(std::vector<int>{40}, Walk(source));

    // Value containers destroy what the target held; pointer containers delete nothing.
    source = Make<TypeParam>(this->mPool, {100, 101});
    Counted::copies = Counted::destroyed = 0;
    source = std::move(target);
    EXPECT_EQ(0, Counted::copies);
    EXPECT_EQ(2 * kOwnedEach<TypeParam>, Counted::destroyed);
    EXPECT_EQ(order, Walk(source));
    EXPECT_EQ(0, std::distance(target.begin(), target.end()));
    TypeParam& alias = source;
    source = std::move(alias);  // a self-move changes nothing
    EXPECT_EQ(order, Walk(source));
}

TEST(ListIterators, AreBidirectionalAndWriteThroughSlots) {
    lstd::ValDLinkList<int> values{4, 7, 9};
    EXPECT_EQ((std::vector<int>{9, 7, 4}),
              std::vector<int>(std::make_reverse_iterator(values.end()),
                               std::make_reverse_iterator(values.begin())));
    for (int& v : values)
        v *= 2;
    lstd::ValDLinkList<int>::const_iterator const c = values.begin();  // converts
    EXPECT_EQ((std::vector<int>{8, 14, 18}), std::vector<int>(c, values.cend()));

    int a = 1, b = 2;
    lstd::PtrDLinkList<int> pointers;
    pointers.Append(&a);
    pointers.Append(nullptr);
    *std::find(pointers.begin(), pointers.end(), nullptr) = &b;  // a slot, as ReplaceAt
    EXPECT_EQ(&b, pointers.Get(1));
    static_assert(
        std::is_same<decltype(*std::declval<lstd::ValSortList<int>&>().begin()), int const&>::value,
        "a sorted list's values are read-only through its iterators");

    // Initializer lists keep each container's rules.
    lstd::ValQueue<int> const queue{3, 1, 2};
    EXPECT_EQ((std::vector<int>{3, 1, 2}), std::vector<int>(queue.begin(), queue.end()));
    lstd::ValSortList<int> const sorted{3, 1, 2, 1};
    EXPECT_EQ((std::vector<int>{1, 1, 2, 3}), std::vector<int>(sorted.begin(), sorted.end()));
    lstd::ValHashSet<String> names({"b", "a", "b"}, &String::Hash);
    EXPECT_EQ(2u, names.GetNumberOfEntry());
}

TEST(ArrayIterators, AreRandomAccessAcrossBlocks) {
    lstd::Array<unsigned long> numbers(3);
    numbers.Resize(7);
    numbers.Resize(10);  // three blocks: 3, 4 and 3 elements
    unsigned long const shuffled[] = {8, 3, 9, 0, 5, 1, 7, 2, 6, 4};
    std::copy(std::begin(shuffled), std::end(shuffled), numbers.begin());
    auto const first = numbers.begin();
    EXPECT_TRUE(numbers.end() - first == 10 && first[4] == 5 && *(first + 7) == 2);
    EXPECT_TRUE(*(numbers.end() - 1) == 4 && *(numbers.end() - 7 + 1 - 1) == 0);
    EXPECT_TRUE(first + 3 < first + 4 && first + 9 >= first + 2);
    std::sort(numbers.begin(), numbers.end(), std::greater<unsigned long>());
    EXPECT_EQ((std::vector<unsigned long>{9, 8, 7, 6, 5, 4, 3, 2, 1, 0}),
              std::vector<unsigned long>(numbers.begin(), numbers.end()));
}

unsigned long Identity(unsigned long const& v) { return v; }

std::vector<unsigned long> LegacyWalk(lstd::ValHashSet<unsigned long> const& set) {
    std::vector<unsigned long> items;
    lstd::ValHashSetIterator<unsigned long> it(set);
    while (++it)
        items.push_back(it.Get());
    return items;
}

TEST(HashIterators, FollowTheCollectionInEveryStateWithoutAllocating) {
    // 64 buckets: a handful of items keeps the bucket index sparse, a hundred makes it dense.
    for (unsigned long count : {5ul, 100ul}) {
        SCOPED_TRACE(count);
        lstd::ValHashSet<unsigned long> set(&Identity, 64);
        for (unsigned long i = 0; i < count; ++i)
            set.Append((i * 37) % 200);
        auto walk = [&set] {
            std::vector<unsigned long> items;
            items.reserve(set.GetNumberOfEntry() + 1);
            FailingAllocations none(0);
            for (unsigned long item : set)
                items.push_back(item);
            return items;
        };
        std::vector<unsigned long> const walked = walk();  // the cache out of date
        EXPECT_EQ(LegacyWalk(set), walked);
        EXPECT_EQ(walked, walk());  // repaired by the legacy walk
        set.Remove(37, nullptr);    // empties its bucket: out of date again
        set.Append(64);
        set.Append(128);
        EXPECT_EQ(walk(), LegacyWalk(set));
    }
    // Emptying only the cache leaves the iterator the last bucket alone, until a new bucket
    // marks the cache out of date; the range walk keeps this.
    int items[] = {1, 2, 6, 3};
    lstd::PtrHashCollection<int> c([](int const* p) { return static_cast<unsigned long>(*p); }, 7);
    for (int i = 0; i < 3; ++i)
        c.Append(&items[i]);
    c.HashCollection<int>::Clear();
    EXPECT_EQ(std::vector<int*>{&items[2]}, std::vector<int*>(c.begin(), c.end()));
    c.Append(&items[3]);
    EXPECT_EQ((std::vector<int*>{&items[0], &items[1], &items[3], &items[2]}),
              std::vector<int*>(c.begin(), c.end()));
}

TEST(MapIterators, UnpackIntoKeyAndValue) {
    lstd::ValHashMap<String, int> counts(&String::Hash, 5);
    counts.Append(String("a"), 1);
    counts.Append(String("bc"), 2);
    for (auto& [key, value] : counts)
        value += static_cast<int>(key.GetLength()) * 10;
    auto const& constCounts = counts;
    EXPECT_EQ(33, std::accumulate(constCounts.begin(), constCounts.end(), 0,
                                  [](int sum, auto const& e) { return sum + e.GetValue(); }));
    EXPECT_EQ(11, *counts.Find("a"));

    String k("k");
    int one = 1, two = 2;
    lstd::PtrHashMap<String, int> pointers(&String::Hash);
    pointers.Append(&k, &one);
    for (auto& [key, value] : pointers)
        value = key == &k ? &two : nullptr;  // replaces the value pointer, as Append would
    EXPECT_EQ(&two, pointers.Get(std::string_view("k")));
}

unsigned long LengthHash(String const& s) { return s.GetLength(); }

TEST(TextLookups, MatchEveryByteWithoutMakingAString) {
    std::string_view const withNul("a\0b", 3);
    lstd::ValHashMap<String, String> map(&String::Hash);
    map.Append(String(withNul), String("nul"));
    map.Append(String("a"), String("plain"));
    lstd::ValHashSet<String> set(&String::Hash);
    set.Append(String(withNul));
    String key(withNul);
    lstd::PtrHashSet<String> pointers(&String::Hash);
    pointers.Append(&key);
    {
        FailingAllocations none(0);
        ASSERT_NE(nullptr, map.Find(withNul));
        EXPECT_EQ(*map.Find(withNul), "nul");
        EXPECT_EQ(*map.Find("a"), "plain");  // the C string stops at its NUL
        EXPECT_EQ(nullptr, map.Find(std::string_view("a\0c", 3)));
        EXPECT_TRUE(set.Find(withNul));
        EXPECT_FALSE(set.Find("a"));
        EXPECT_EQ(&key, pointers.Find(withNul));
        EXPECT_EQ(nullptr, pointers.Find(static_cast<char const*>(nullptr)));
    }
    String out;
    EXPECT_TRUE(map.Get(std::string("a"), out) && !map.Get("zz", out));
    EXPECT_EQ(out, "plain");  // left as the hit copied it
    EXPECT_TRUE(set.Find(withNul, &out) && out == withNul);

    // A map with a hash function of its own is looked up through a String of the text.
    lstd::ValHashMap<String, int> other(&LengthHash, 3);
    other.Append(String("abc"), 7);
    EXPECT_EQ(7, *other.Find(std::string_view("abc")));
    EXPECT_EQ(nullptr, other.Find("abd"));
}

TEST(StringInterop, KeepsEveryByte) {
    std::string_view const bytes("x\0y\xff", 4);
    String const s(bytes);
    EXPECT_EQ(4u, s.GetLength());
    EXPECT_EQ(bytes, s.View());
    EXPECT_TRUE(s == bytes && bytes == s);
    EXPECT_TRUE(s != std::string_view("x") && std::string_view("x\0z\xff", 4) != s);
    EXPECT_EQ(3, std::count_if(s.begin(), s.end(), [](char ch) { return ch != 'x'; }));
    std::ostringstream out;
    out << s;
    EXPECT_EQ(std::string(bytes), out.str());
    EXPECT_EQ(String::Hash(s), std::hash<String>()(s));
    std::unordered_set<String> seen{String("x"), String(bytes)};
    EXPECT_EQ(1u, seen.count(String(bytes)));
    String word("dcba");
    std::sort(word.begin(), word.end());
    EXPECT_EQ(word, "abcd");
}

TEST(StringInterop, OrdersViewsLengthFirst) {
    String const b("b");
    EXPECT_TRUE(b < std::string_view("aa") && std::string_view("aa") > b);
    EXPECT_TRUE(b < "aa" && !(b > "aa"));
    EXPECT_TRUE(String("ab") > std::string_view("aa") && std::string_view("aa") < String("ab"));
    EXPECT_FALSE(b < std::string_view("b") || b > std::string_view("b"));
    EXPECT_TRUE(b > static_cast<char const*>(nullptr));  // a null C string is empty
}

TEST(OtherMoves, LeaveAnEmptySource) {
    lstd::StringBuilder builder;
    builder.Append("ab");
    builder.Insert(String("X"), 0);  // a list piece before the packed ones
    lstd::StringBuilder target(std::move(builder));
    EXPECT_EQ(target.ToString(), "Xab");
    EXPECT_EQ(builder.ToString(), "");
    builder.Append("new");
    target = std::move(builder);
    EXPECT_TRUE(target.ToString() == "new" && builder.GetLength() == 0);

    lstd::CircularBuffer ring(4);
    ring.Write("abc", 3);
    ring.Read(nullptr, 1);
    lstd::CircularBuffer moved(std::move(ring));
    EXPECT_EQ(moved.ReadString(2), "bc");
    EXPECT_EQ(3u, moved.ByteCounter(false));
    EXPECT_TRUE(ring.GetLength() == 0 && ring.Space() == 0 && !ring.Write("x", 1));

    lstd::ValDispersionMatrix<int> matrix(2, 3);
    matrix[1][2] = 7;
    lstd::ValDispersionMatrix<int> taken(std::move(matrix));
    EXPECT_EQ(7, taken[1][2]);
    EXPECT_TRUE(taken.GetRows() == 2 && taken.GetColumns() == 3);
    EXPECT_TRUE(matrix.GetRows() == 0 && matrix.GetColumns() == 0);
}
}  // namespace
