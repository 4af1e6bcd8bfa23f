// lstd/valhashmap.h - hash map of key copies to value copies, and its iterator.
#ifndef LSTD_VALHASHMAP_H
#define LSTD_VALHASHMAP_H

#include <lstd/exception.h>
#include <lstd/hashcollection.h>
#include <lstd/hashmap.h>

#include <new>
#include <string_view>
#include <utility>

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
/// value is copied and nothing is allocated to look a key up. A map keyed by String also
/// finds keys by std::string_view or C string without making a String.
///
/// begin() and end() walk the entries in iteration order for range-for and `<algorithm>`: a
/// forward iterator whose element is the entry (Entry&, Entry const& when const), with
/// GetKey() (read-only) and GetValue(); for (auto& [key, value] : map) unpacks it. A move
/// hands the entries over, copying no key or value; the source is left an empty map.
template <typename K, typename V>
class ValHashMap : public HashMap<K, V> {
public:
    /// The hash of a key.
    typedef unsigned long (*KeyHashFunc)(K const&);
    /// The stored pair.
    typedef ValHashMapEntry<K, V> Entry;
    /// Forward iterator over the entries in iteration order (Entry&): the value may be
    /// changed through it, the key must stay. Converts to const_iterator. Changing the map
    /// invalidates it.
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
    explicit ValHashMap(KeyHashFunc keyHashFunc, unsigned long const& hashSize = 32767)
        : mSet(&Entry::Hash, hashSize), mKeyHashFunc(keyHashFunc) {}
    /// Takes other's entries and key hash, copying no key or value; other is left an empty
    /// map with its table size and key hash.
    ValHashMap(ValHashMap&& other) noexcept
        : HashMap<K, V>(), mSet(std::move(other.mSet)), mKeyHashFunc(other.mKeyHashFunc) {
        mPool.Take(other.mPool);
    }
    /// Deletes this map's entries, then takes other's.
    ValHashMap& operator=(ValHashMap&& other) noexcept {
        if (this != &other) {
            Clear();
            mSet = std::move(other.mSet);
            mKeyHashFunc = other.mKeyHashFunc;
            mPool.Take(other.mPool);
        }
        return *this;
    }
    /// Deletes the entries and so the copies.
    virtual ~ValHashMap() { Clear(); }

    ///@{
    /// Iteration over the entries in the order of ValHashMapIterator: ascending bucket of the key
    /// hash, then order of insertion. Allocates nothing.
    iterator begin() { return iterator(mSet); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(mSet); }
    const_iterator end() const { return const_iterator(); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

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
    /// For String keys: the stored value mapped to the key whose bytes equal text (NULs
    /// included), or null. No String is made when the map hashes keys with String::Hash.
    template <typename Q = K, hashtable::IfString<Q> = 0>
    V* Find(std::string_view text) const {
        Entry* entry = mSet.FindHashed(hashtable::HashOfText(mKeyHashFunc, text),
                                       [text](Entry const& stored) { return stored.mKey == text; });
        return entry != nullptr ? &entry->mValue : nullptr;
    }
    /// Find by the text of a C string (null is the empty text).
    template <typename Q = K, hashtable::IfString<Q> = 0>
    V* Find(char const* s) const {
        return Find(text::Of(s));
    }
    /// For String keys: copies the value mapped to the key whose bytes equal text into value;
    /// false, value untouched, when absent.
    template <typename Q = K, hashtable::IfString<Q> = 0>
    bool Get(std::string_view text, V& value) const {
        V const* found = Find(text);
        if (found == nullptr)
            return false;
        value = *found;
        return true;
    }
    /// Get by the text of a C string (null is the empty text).
    template <typename Q = K, hashtable::IfString<Q> = 0>
    bool Get(char const* s, V& value) const {
        return Get(text::Of(s), value);
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
