// lstd/valhashmap.h - hash map of key copies to value copies, and its iterator.
#ifndef LSTD_VALHASHMAP_H
#define LSTD_VALHASHMAP_H

#include <lstd/exception.h>
#include <lstd/hashcollection.h>
#include <lstd/hashmap.h>

#include <new>

namespace lstd {

template <typename K, typename V>
class ValHashMapIterator;

/// A map from copies of K to copies of V: a PtrHashSet of ValHashMapEntry objects, which the
/// map creates and destroys with the copies in them. Keys are compared with K's operator==,
/// the stored key on the left. The entries live in blocks of the map's own
/// (hashtable::EntryPool), so that an entry costs no allocation of its own.
///
/// Lookups (Append, Get, Find, Remove) hash the key once and search the set with a probe
/// that references the key instead of an entry holding copies of key and value: no key or
/// value is copied and nothing is allocated to look a key up.
template <typename K, typename V>
class ValHashMap : public HashMap<K, V> {
public:
    /// The hash of a key.
    typedef unsigned long (*KeyHashFunc)(K const&);
    /// The stored pair.
    typedef ValHashMapEntry<K, V> Entry;

    /// An empty map of hashSize buckets hashing keys with keyHashFunc (String::Hash for
    /// String keys). Throws InvalidOperationException "The hash table size is invalid.
    /// (size = 0)" for 0.
    explicit ValHashMap(KeyHashFunc keyHashFunc, unsigned long const& hashSize = 32767)
        : mSet(&Entry::Hash, hashSize), mKeyHashFunc(keyHashFunc) {}
    /// Deletes the entries and so the copies.
    virtual ~ValHashMap() { Clear(); }

    /// Maps a copy of key to a copy of value; when an equal key is present its value is
    /// assigned value and the key stays as stored. Throws NotEnoughMemoryException; the
    /// exceptions of K's and V's copying propagate.
    void Append(K const& key, V const& value) {
        typename PtrHashSet<Entry>::Spot spot;
        Entry* entry = mSet.FindHashed(
            mKeyHashFunc(key), [&key](Entry const& stored) { return stored.mKey == key; }, &spot);
        if (entry != nullptr) {
            entry->mValue = value;
            return;
        }
        void* const place = mPool.Take();
        try {
            entry = new (place) Entry(key, value, mKeyHashFunc);
        } catch (...) {
            mPool.Give(place);
            throw;
        }
        try {
            mSet.AppendAt(spot, entry);
        } catch (...) {
            Destroy(entry);
            throw;
        }
    }
    /// Copies the value mapped to key into value; false, value untouched, when absent.
    bool Get(K const& key, V& value) const {
        Entry const* entry = Lookup(key, mKeyHashFunc(key));
        if (entry == nullptr)
            return false;
        value = entry->mValue;
        return true;
    }
    /// The stored value mapped to key, or null when absent; valid until the key is removed
    /// or the map cleared.
    V* Find(K const& key) const {
        Entry* entry = Lookup(key, mKeyHashFunc(key));
        return entry != nullptr ? &entry->mValue : nullptr;
    }
    /// Removes the entry of key, copying its value to *removed when given; false when absent.
    bool Remove(K const& key, V* removed) {
        Entry* entry = mSet.RemoveHashed(
            mKeyHashFunc(key), [&key](Entry const& stored) { return stored.mKey == key; });
        if (entry == nullptr)
            return false;
        if (removed != nullptr) {
            try {
                *removed = static_cast<V&&>(entry->mValue);
            } catch (...) {
                Destroy(entry);
                throw;
            }
        }
        Destroy(entry);
        return true;
    }
    /// Deletes every entry: ascending buckets, each in order of insertion, where the
    /// destructors of K or V could tell the order; in the order of storage otherwise.
    void Clear() {
        bool const quiet =
            hashtable::QuietDestructor<K>::value && hashtable::QuietDestructor<V>::value;
        if (quiet && mPool.AllInUse()) {  // the entries in memory order: the fastest walk
            mSet.Clear(0);
            mPool.ForEachTaken([](void* place) { static_cast<Entry*>(place)->~Entry(); });
        } else {
            mSet.ClearItems(
                [](typename PtrHashSet<Entry>::Slot const& slot) { slot.mPointer->~Entry(); },
                !quiet);
        }
        mPool.ReleaseAll();
    }
    bool IsEmpty() const override { return mSet.GetNumberOfEntry() == 0; }
    unsigned long Length() const override { return mSet.GetNumberOfEntry(); }

private:
    Entry* Lookup(K const& key, unsigned long const& hash) const {
        return mSet.FindHashed(hash, [&key](Entry const& stored) { return stored.mKey == key; });
    }

    void Destroy(Entry* entry) {
        entry->~Entry();
        mPool.Give(entry);
    }

    PtrHashSet<Entry> mSet;
    KeyHashFunc mKeyHashFunc;
    hashtable::EntryPool<Entry> mPool;

    friend class ValHashMapIterator<K, V>;
};

/// Walks a ValHashMap in the order of its set: ascending bucket of the key hash, then order
/// of insertion. After construction from a map or Init, call operator++ before reading.
template <typename K, typename V>
class ValHashMapIterator : public HashMapIterator<K, V> {
public:
    ValHashMapIterator() : mCurEntry(nullptr) {}
    /// Binds map (see Init).
    explicit ValHashMapIterator(ValHashMap<K, V> const& map)
        : mSetIterator(map.mSet), mCurEntry(nullptr) {}
    virtual ~ValHashMapIterator() {}

    /// Binds map and stands before its first entry.
    void Init(ValHashMap<K, V> const& map) {
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
    /// The current key and stored value. Throw NotInitializedIteratorException "The iterator
    /// is not initialized or it reached last item." without a current entry.
    K const& GetKey() const { return Current()->mKey; }
    V& GetValue() const { return Current()->mValue; }
    ///@}
    /// The current entry, or null before the first entry and after the last.
    ValHashMapEntry<K, V>* GetEntry() const { return mCurEntry; }

private:
    ValHashMapEntry<K, V>* Current() const {
        if (mCurEntry == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "The iterator is not initialized or it reached last item.");
        return mCurEntry;
    }

    PtrHashSetIterator<ValHashMapEntry<K, V>> mSetIterator;
    ValHashMapEntry<K, V>* mCurEntry;
};
}  // namespace lstd
#endif  // LSTD_VALHASHMAP_H
