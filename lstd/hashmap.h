// lstd/hashmap.h - root of the hash maps, their key/value entries and the iterator root.
//
// A map is a set of heap-allocated entries (PtrHashMap, ValHashMap); an entry carries the
// map's key hash function, so that the static Hash of its class, the hash of the map's inner
// set, is the key hash of its key. Two map entries are equal for the set when their keys are
// equal under K's operator==; the comparison operators of PairEntry, which every entry
// inherits, are a different thing on purpose: they compare identities.
#ifndef LSTD_HASHMAP_H
#define LSTD_HASHMAP_H

#include <lstd/exception.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

namespace lstd {
namespace hashtable {

/// Storage for the entries of one map: blocks of places, each block twice the one before (4
/// places first, 512 at most), and a list of the places of removed entries, reused first.
/// The pool never constructs or destroys an entry; ReleaseAll returns every block at once.
template <typename E>
class EntryPool {
public:
    EntryPool() : mBlocks(nullptr), mFree(nullptr), mNext(nullptr), mEnd(nullptr), mBlockPlaces(0) {
        static_assert(alignof(E) <= alignof(std::max_align_t), "blocks come from malloc");
    }
    EntryPool(EntryPool const&) = delete;
    EntryPool& operator=(EntryPool const&) = delete;
    ~EntryPool() { ReleaseAll(); }

    /// Frees this pool's blocks (their entries must be destroyed already) and takes other's
    /// blocks and places; other is left empty.
    void Take(EntryPool& other) {
        ReleaseAll();
        mBlocks = other.mBlocks;
        mFree = other.mFree;
        mNext = other.mNext;
        mEnd = other.mEnd;
        mBlockPlaces = other.mBlockPlaces;
        other.mBlocks = nullptr;
        other.mFree = other.mNext = other.mEnd = nullptr;
        other.mBlockPlaces = 0;
    }

    /// A place for one entry. Throws NotEnoughMemoryException.
    void* Take() {
        if (mFree != nullptr) {
            Place* place = mFree;
            mFree = place->mNext;
            return place;
        }
        if (mNext == mEnd)
            Grow();
        return mNext++;
    }
    /// Takes back a place whose entry was destroyed.
    void Give(void* place) {
        Place* p = static_cast<Place*>(place);
        p->mNext = mFree;
        mFree = p;
    }
    /// Whether every place taken is still in use (none was given back since the last
    /// ReleaseAll): then ForEachTaken reaches exactly the live entries.
    bool AllInUse() const { return mFree == nullptr; }
    /// Calls fn(place) on every place taken, block by block in memory order; meaningful
    /// only while AllInUse().
    template <typename F>
    void ForEachTaken(F const& fn) const {
        for (Block* block = mBlocks; block != nullptr; block = block->mNext) {
            Place* const first = reinterpret_cast<Place*>(block + 1);
            Place* const end = block == mBlocks ? mNext : first + block->mPlaces;
            for (Place* place = first; place != end; ++place)
                fn(static_cast<void*>(place));
        }
    }
    /// Frees every block; the entries in them must be destroyed already.
    void ReleaseAll() {
        while (mBlocks != nullptr) {
            Block* block = mBlocks;
            mBlocks = block->mNext;
            std::free(block);
        }
        mFree = mNext = mEnd = nullptr;
        mBlockPlaces = 0;
    }

private:
    union Place {
        Place* mNext;
        alignas(E) unsigned char mBytes[sizeof(E)];
    };
    struct alignas(std::max_align_t) Block {  // the places that follow suit any entry
        Block* mNext;
        unsigned long mPlaces;
    };

    void Grow() {
        unsigned long const places =
            mBlockPlaces == 0 ? 4 : (mBlockPlaces < 512 ? mBlockPlaces * 2 : 512);
        Block* block = static_cast<Block*>(std::malloc(sizeof(Block) + places * sizeof(Place)));
        if (block == nullptr)
            LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
        block->mNext = mBlocks;
        block->mPlaces = places;
        mBlocks = block;
        mNext = reinterpret_cast<Place*>(block + 1);
        mEnd = mNext + places;
        mBlockPlaces = places;
    }

    Block* mBlocks;
    Place* mFree;
    Place* mNext;  // the next never used place of the newest block
    Place* mEnd;
    unsigned long mBlockPlaces;
};
}  // namespace hashtable

/// Root of the hash maps.
template <typename K, typename V>
class HashMap {
public:
    HashMap() {}
    HashMap(HashMap const&) = delete;
    HashMap& operator=(HashMap const&) = delete;
    virtual ~HashMap() {}

    /// Deliberately an identity test: true only for the very same map.
    virtual bool operator==(HashMap const& other) const { return this == &other; }
    /// Whether the map holds no entry.
    virtual bool IsEmpty() const = 0;
    /// The number of entries.
    virtual unsigned long Length() const = 0;
};

/// Root of the key/value entries. Deliberate: the operators compare the entries' identities
/// and addresses, never their keys (the maps find keys with the key equality of their entries).
template <typename K, typename V>
class PairEntry {
public:
    PairEntry() {}
    virtual ~PairEntry() {}

    /// Identity: true only for this very entry.
    virtual bool operator==(PairEntry const& other) const { return this == &other; }
    /// Address order of the two entries, not key order.
    ///@{
    virtual bool operator>(PairEntry const& other) const { return Address(this) > Address(&other); }
    virtual bool operator>=(PairEntry const& other) const {
        return Address(this) >= Address(&other);
    }
    virtual bool operator<(PairEntry const& other) const { return Address(this) < Address(&other); }
    virtual bool operator<=(PairEntry const& other) const {
        return Address(this) <= Address(&other);
    }
    ///@}

private:
    static std::uintptr_t Address(PairEntry const* entry) {
        return reinterpret_cast<std::uintptr_t>(entry);
    }
};

/// A key pointer and a value pointer; the entry owns neither.
template <typename K, typename V>
class PtrPairEntry : public PairEntry<K, V> {
public:
    /// Stores both pointers; neither is copied nor owned.
    PtrPairEntry(K* key, V* value) : mKey(key), mValue(value) {}
    virtual ~PtrPairEntry() {}

    /// The key, not owned.
    K* GetKey() const { return mKey; }
    /// The value, not owned.
    V* GetValue() const { return mValue; }

    /// The key, not owned.
    K* mKey;
    /// The value, not owned.
    V* mValue;
};

/// A copy of a key and a copy of a value.
template <typename K, typename V>
class ValPairEntry : public PairEntry<K, V> {
public:
    /// Copies key and value.
    ValPairEntry(K const& key, V const& value) : mKey(key), mValue(value) {}
    virtual ~ValPairEntry() {}

    /// The key, read-only: the map finds the entry by it.
    K const& GetKey() const { return mKey; }
    /// The value, writable in place.
    V& GetValue() { return mValue; }
    /// The value.
    V const& GetValue() const { return mValue; }

    /// The key.
    K mKey;
    /// The value.
    V mValue;
};

/// An entry of PtrHashMap.
template <typename K, typename V>
class PtrHashMapEntry : public PtrPairEntry<K, V> {
public:
    /// The hash of a key (the pointer may be null).
    typedef unsigned long (*KeyHashFunc)(K const*);

    /// The two pointers and the key hash of the map.
    PtrHashMapEntry(K* key, V* value, KeyHashFunc keyHashFunc)
        : PtrPairEntry<K, V>(key, value), mKeyHashFunc(keyHashFunc) {}
    virtual ~PtrHashMapEntry() {}

    using PairEntry<K, V>::operator==;
    /// Key equality: *mKey == *other.mKey; a null key equals only a null key. The value
    /// takes no part.
    bool operator==(PtrHashMapEntry const& other) const {
        if (this->mKey == nullptr || other.mKey == nullptr)
            return this->mKey == other.mKey;
        return *this->mKey == *other.mKey;
    }
    /// The hash of the map's inner set: the key hash of entry's key (null keys included).
    static unsigned long Hash(PtrHashMapEntry const* entry) {
        return entry->mKeyHashFunc(entry->mKey);
    }

    /// The key hash of the map.
    KeyHashFunc mKeyHashFunc;
};

/// An entry of ValHashMap.
template <typename K, typename V>
class ValHashMapEntry : public ValPairEntry<K, V> {
public:
    /// The hash of a key.
    typedef unsigned long (*KeyHashFunc)(K const&);

    /// Copies of key and value, and the key hash of the map.
    ValHashMapEntry(K const& key, V const& value, KeyHashFunc keyHashFunc)
        : ValPairEntry<K, V>(key, value), mKeyHashFunc(keyHashFunc) {}
    virtual ~ValHashMapEntry() {}

    using PairEntry<K, V>::operator==;
    /// Key equality: mKey == other.mKey; the value takes no part.
    bool operator==(ValHashMapEntry const& other) const { return this->mKey == other.mKey; }
    /// The hash of the map's inner set: the key hash of entry's key.
    static unsigned long Hash(ValHashMapEntry const* entry) {
        return entry->mKeyHashFunc(entry->mKey);
    }

    /// The key hash of the map.
    KeyHashFunc mKeyHashFunc;
};

/// Root of the map iterators.
template <typename K, typename V>
class HashMapIterator {
public:
    HashMapIterator() {}
    virtual ~HashMapIterator() {}
};

///@{
/// The key (I = 0) or the value (I = 1) of entry, so that the entries range-for yields unpack
/// into two names: for (auto& [key, value] : map). A ValHashMapEntry gives its key read-only
/// (K const&) and its value (V&, V const& for a const entry); a PtrHashMapEntry gives its key
/// pointer read-only (K* const&) and its value pointer, which may be replaced in place as
/// Append does (V*&, V* const& for a const entry). Any other I does not compile.
template <std::size_t I, typename K, typename V>
auto& get(ValHashMapEntry<K, V>& entry) {
    static_assert(I < 2, "a map entry has a key and a value");
    if constexpr (I == 0)
        return entry.GetKey();
    else
        return entry.GetValue();
}
template <std::size_t I, typename K, typename V>
auto& get(ValHashMapEntry<K, V> const& entry) {
    static_assert(I < 2, "a map entry has a key and a value");
    if constexpr (I == 0)
        return entry.GetKey();
    else
        return entry.GetValue();
}
template <std::size_t I, typename K, typename V>
auto& get(PtrHashMapEntry<K, V>& entry) {
    static_assert(I < 2, "a map entry has a key and a value");
    if constexpr (I == 0)
        return static_cast<K* const&>(entry.mKey);
    else
        return entry.mValue;
}
template <std::size_t I, typename K, typename V>
auto& get(PtrHashMapEntry<K, V> const& entry) {
    static_assert(I < 2, "a map entry has a key and a value");
    if constexpr (I == 0)
        return entry.mKey;
    else
        return entry.mValue;
}
///@}
}  // namespace lstd

namespace std {
/// A ValHashMapEntry unpacks into two names, key and value (structured bindings).
template <typename K, typename V>
struct tuple_size<lstd::ValHashMapEntry<K, V>> : std::integral_constant<std::size_t, 2> {};
/// The first name of an unpacked ValHashMapEntry: the key.
template <typename K, typename V>
struct tuple_element<0, lstd::ValHashMapEntry<K, V>> {
    /// The key type, read-only (the map finds the entry by it).
    typedef K const type;
};
/// The second name of an unpacked ValHashMapEntry: the value.
template <typename K, typename V>
struct tuple_element<1, lstd::ValHashMapEntry<K, V>> {
    /// The value type.
    typedef V type;
};
/// A PtrHashMapEntry unpacks into two names, key pointer and value pointer (structured
/// bindings).
template <typename K, typename V>
struct tuple_size<lstd::PtrHashMapEntry<K, V>> : std::integral_constant<std::size_t, 2> {};
/// The first name of an unpacked PtrHashMapEntry: the key pointer.
template <typename K, typename V>
struct tuple_element<0, lstd::PtrHashMapEntry<K, V>> {
    /// The key pointer type, read-only (the map finds the entry by it).
    typedef K* const type;
};
/// The second name of an unpacked PtrHashMapEntry: the value pointer.
template <typename K, typename V>
struct tuple_element<1, lstd::PtrHashMapEntry<K, V>> {
    /// The value pointer type; the pointer may be replaced in place.
    typedef V* type;
};
}  // namespace std
#endif  // LSTD_HASHMAP_H
