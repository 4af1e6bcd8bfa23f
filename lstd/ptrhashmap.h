// lstd/ptrhashmap.h - hash map of key pointers to value pointers, and its iterator.
#ifndef LSTD_PTRHASHMAP_H
#define LSTD_PTRHASHMAP_H

#include <lstd/exception.h>
#include <lstd/hashcollection.h>
#include <lstd/hashmap.h>

#include <new>
#include <string_view>
#include <utility>

namespace lstd {

template <typename K, typename V>
class PtrHashMapIterator;

/// A map from K pointers to V pointers: a PtrHashSet of PtrHashMapEntry objects, which the map
/// creates and deletes. The keys and values are the caller's: the map deletes them only in
/// Clear(1), never in its destructor. Keys are compared with K's operator==.
///
/// Lookups (Append, Get, Remove) hash the key once and search the set with a probe entry on
/// the stack that holds the key pointer; nothing is allocated or copied to look a key up.
///
/// begin() and end() walk the entries in iteration order for range-for and `<algorithm>`: a
/// forward iterator whose element is the entry (Entry&, Entry const& when const), with
/// GetKey() and GetValue() (pointers); for (auto& [key, value] : map) unpacks it. A move hands
/// the entries over and deletes no key or value; the source is left an empty map.
template <typename K, typename V>
class PtrHashMap : public HashMap<K, V> {
public:
    /// The hash of a key (the pointer may be null).
    typedef unsigned long (*KeyHashFunc)(K const*);
    /// The stored pair.
    typedef PtrHashMapEntry<K, V> Entry;
    /// Forward iterator over the entries in iteration order (Entry&): the value pointer may
    /// be replaced through it, the key pointer must stay. Converts to const_iterator.
    /// Changing the map invalidates it.
    typedef hashtable::HashIterator<Entry, Entry, Entry&, hashtable::EntryAccess<Entry, Entry&>>
        iterator;
    /// Forward iterator over the entries in iteration order, read-only (Entry const&).
    typedef hashtable::HashIterator<Entry, Entry, Entry const&,
                                    hashtable::EntryAccess<Entry, Entry const&>>
        const_iterator;
    /// The element type, Entry.
    typedef Entry value_type;

    /// An empty map of hashSize buckets hashing keys with keyHashFunc (String::Hash for
    /// String keys). Throws InvalidOperationException "The hash table size is invalid.
    /// (size = 0)" for 0.
    explicit PtrHashMap(KeyHashFunc keyHashFunc, unsigned long const& hashSize = 32767)
        : mSet(&Entry::Hash, hashSize), mKeyHashFunc(keyHashFunc) {}
    /// Takes other's entries and key hash, deleting no key or value; other is left an empty
    /// map with its table size and key hash.
    PtrHashMap(PtrHashMap&& other) noexcept
        : HashMap<K, V>(), mSet(std::move(other.mSet)), mKeyHashFunc(other.mKeyHashFunc) {}
    /// Deletes this map's entries (never its keys or values), then takes other's.
    PtrHashMap& operator=(PtrHashMap&& other) noexcept {
        if (this != &other) {
            mSet.Clear(1);
            mSet = std::move(other.mSet);
            mKeyHashFunc = other.mKeyHashFunc;
        }
        return *this;
    }
    /// Deletes the entries, never the keys or values.
    virtual ~PtrHashMap() { mSet.Clear(1); }

    ///@{
    /// Iteration over the entries in the order of PtrHashMapIterator: ascending bucket of the key
    /// hash, then order of insertion. Allocates nothing.
    iterator begin() { return iterator(mSet); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(mSet); }
    const_iterator end() const { return const_iterator(); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    /// Maps key to value. Deliberate: when an equal key is present, only that entry's value
    /// pointer is replaced; the old value is not deleted and the passed key is neither stored
    /// nor deleted (the caller keeps both). Throws NotEnoughMemoryException.
    void Append(K* key, V* value) {
        Entry const probe(key, nullptr, mKeyHashFunc);
        typename PtrHashSet<Entry>::Spot spot;
        Entry* entry = mSet.FindHashed(
            mKeyHashFunc(key), [&probe](Entry const& stored) { return stored == probe; }, &spot);
        if (entry != nullptr) {
            entry->mValue = value;
            return;
        }
        try {
            entry = new Entry(key, value, mKeyHashFunc);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        try {
            mSet.AppendAt(spot, entry);
        } catch (...) {
            delete entry;
            throw;
        }
    }
    /// The value mapped to a key equal to *key, or null when there is none.
    V* Get(K const* key) const {
        Entry const* entry = Lookup(key);
        return entry != nullptr ? entry->mValue : nullptr;
    }
    /// For String keys: the value mapped to the key whose bytes equal text (NULs included),
    /// or null. No String is made when the map hashes keys with String::Hash.
    template <typename Q = K, hashtable::IfString<Q> = 0>
    V* Get(std::string_view text) const {
        Entry const* entry =
            mSet.FindHashed(hashtable::HashOfText(mKeyHashFunc, text), [text](Entry const& stored) {
                return stored.mKey != nullptr && *stored.mKey == text;
            });
        return entry != nullptr ? entry->mValue : nullptr;
    }
    /// Get by the text of a C string (null is the empty text).
    template <typename Q = K, hashtable::IfString<Q> = 0>
    V* Get(char const* s) const {
        return Get(text::Of(s));
    }
    /// Removes the entry of a key equal to *key, handing its key and value pointers to
    /// *removedKey and *removedValue when given (neither is deleted); false when absent.
    bool Remove(K const* key, K** removedKey, V** removedValue) {
        Entry const probe(const_cast<K*>(key), nullptr, mKeyHashFunc);
        Entry* entry = mSet.RemoveHashed(mKeyHashFunc(key),
                                         [&probe](Entry const& stored) { return stored == probe; });
        if (entry == nullptr)
            return false;
        if (removedKey != nullptr)
            *removedKey = entry->mKey;
        if (removedValue != nullptr)
            *removedValue = entry->mValue;
        delete entry;
        return true;
    }
    /// Empties the map. With deleteItems equal to 1 it first deletes every entry's key and
    /// value (null ones skipped), in iteration order.
    void Clear(unsigned char const& deleteItems) {
        if (deleteItems == 1) {
            PtrHashMapIterator<K, V> it(*this);
            while (++it) {
                Entry* entry = it.GetEntry();
                if (entry->mKey != nullptr)
                    delete entry->mKey;
                if (entry->mValue != nullptr)
                    delete entry->mValue;
            }
        }
        mSet.Clear(1);
    }
    bool IsEmpty() const override { return mSet.GetNumberOfEntry() == 0; }
    unsigned long Length() const override { return mSet.GetNumberOfEntry(); }

private:
    Entry* Lookup(K const* key) const {
        Entry const probe(const_cast<K*>(key), nullptr, mKeyHashFunc);
        return mSet.FindHashed(mKeyHashFunc(key),
                               [&probe](Entry const& stored) { return stored == probe; });
    }

    PtrHashSet<Entry> mSet;
    KeyHashFunc mKeyHashFunc;

    friend class PtrHashMapIterator<K, V>;
};

/// Walks a PtrHashMap in the order of its set: ascending bucket of the key hash, then order
/// of insertion. After construction from a map or Init, call operator++ before reading.
template <typename K, typename V>
class PtrHashMapIterator : public HashMapIterator<K, V> {
public:
    PtrHashMapIterator() : mCurEntry(nullptr) {}
    /// Binds map (see Init).
    explicit PtrHashMapIterator(PtrHashMap<K, V> const& map)
        : mSetIterator(map.mSet), mCurEntry(nullptr) {}
    virtual ~PtrHashMapIterator() {}

    /// Binds map and stands before its first entry.
    void Init(PtrHashMap<K, V> const& map) {
        mSetIterator.Init(map.mSet);
        mCurEntry = nullptr;
    }
    /// Moves to the next entry; false, with no current entry, once they are exhausted.
    /// Throws NotInitializedIteratorException "Iterator not initialized" before Init.
    bool operator++() {
        if (!++mSetIterator) {
            mCurEntry = nullptr;
            return false;
        }
        mCurEntry = mSetIterator.Get();
        return mCurEntry != nullptr;
    }
    ///@{
    /// The current key and value pointers. Throw NotInitializedIteratorException "The
    /// iterator is not initialized or it reached last item." without a current entry.
    K* GetKey() const { return Current()->mKey; }
    V* GetValue() const { return Current()->mValue; }
    ///@}
    /// The current entry, or null before the first entry and after the last.
    PtrHashMapEntry<K, V>* GetEntry() const { return mCurEntry; }

private:
    PtrHashMapEntry<K, V>* Current() const {
        if (mCurEntry == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "The iterator is not initialized or it reached last item.");
        return mCurEntry;
    }

    PtrHashSetIterator<PtrHashMapEntry<K, V>> mSetIterator;
    PtrHashMapEntry<K, V>* mCurEntry;
};
}  // namespace lstd
#endif  // LSTD_PTRHASHMAP_H
