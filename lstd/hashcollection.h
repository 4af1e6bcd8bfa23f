// lstd/hashcollection.h - hash collections of pointers and values with a fixed table size, sets.
//
// An item lives in bucket mHashFunc(item) % mHashSize; mHashSize is fixed at construction and
// nothing is ever rehashed. Iteration goes by ascending bucket number, then append order within
// a bucket. The table size fixes only this numbering: storage follows the items, so a
// collection of 32767 buckets costs nothing per empty bucket.
//
// Representation. A bucket exists only while it holds items. The buckets are found by number
// through hashtable::BucketIndex, an open-addressing index (linear probing over a power of two
// of 64-byte slots, none until the first item, at most half full). A slot is the bucket: its
// number, its item count and its item pointers in append order, six inline and more in an
// array of its own. Value collections store pointers to their own heap copies, so the index
// (mTable) lives in HashCollection, shared by both kinds. The hash value cache mHashValueCache
// is the ascending vector of non-empty bucket numbers; a bucket that becomes non-empty is
// noted in mPending, and the repair merges those notes into the cache, drops the buckets that
// became empty and stops once every item is accounted for. No operation ever visits a bucket
// number that never held an item.
#ifndef LSTD_HASHCOLLECTION_H
#define LSTD_HASHCOLLECTION_H

#include <lstd/collection.h>
#include <lstd/exception.h>
#include <lstd/iptrcollection.h>
#include <lstd/iptrorderlist.h>
#include <lstd/iterator.h>
#include <lstd/ivalcollection.h>
#include <lstd/ivalorderlist.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/valdlinklist.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

namespace lstd {

template <typename T>
class HashCollectionIterator;
template <typename K, typename V>
class PtrHashMap;
template <typename K, typename V>
class ValHashMap;

namespace hashtable {

/// The non-empty buckets of a hash collection, found by bucket number. Items are T pointers;
/// the index never creates or deletes the objects they point to.
template <typename T>
class BucketIndex {
public:
    /// Items a bucket keeps in its own slot; more move to an array of the bucket's own.
    static unsigned long const INLINE = 6;

    /// A bucket that holds items: its number, its item count and its items in append order.
    /// A slot is one 64-byte cache line, so a lookup of a bucket of up to INLINE items reads
    /// one line before the items themselves.
    struct alignas(64) Bucket {
        unsigned long mNumber;
        unsigned long mCount;
        union Storage {
            T* mInline[INLINE];
            struct Heap {
                T** mItems;
                unsigned long mCapacity;
            } mHeap;
        } mStorage;

        T** Items() { return mCount <= INLINE ? mStorage.mInline : mStorage.mHeap.mItems; }
        T* const* Items() const {
            return mCount <= INLINE ? mStorage.mInline : mStorage.mHeap.mItems;
        }
    };

    BucketIndex() : mSlots(nullptr), mCapacity(0), mSize(0), mShift(0) {}
    BucketIndex(BucketIndex const&) = delete;
    BucketIndex& operator=(BucketIndex const&) = delete;
    ~BucketIndex() { Clear(); }

    /// The bucket numbered number, or null when it holds no item.
    Bucket* Find(unsigned long const& number) const {
        if (mCapacity == 0)
            return nullptr;
        unsigned long const mask = mCapacity - 1;
        for (unsigned long i = Home(number);; i = (i + 1) & mask) {
            if (mSlots[i].mNumber == number)
                return mSlots + i;
            if (mSlots[i].mNumber == FREE)
                return nullptr;
        }
    }
    /// Adds the bucket numbered number, which must not exist, with no item yet: the caller
    /// appends one at once. Throws NotEnoughMemoryException when the index cannot grow.
    Bucket* Insert(unsigned long const& number) {
        if ((mSize + 1) * 2 > mCapacity)
            Grow();
        Bucket* slot = Place(number);
        slot->mNumber = number;
        slot->mCount = 0;
        ++mSize;
        return slot;
    }
    /// Appends item at the bucket's tail. Throws NotEnoughMemoryException when the bucket's
    /// array cannot grow; the bucket is then unchanged. Never throws up to INLINE items.
    static void Append(Bucket& bucket, T* item) {
        typename Bucket::Storage& s = bucket.mStorage;
        if (bucket.mCount < INLINE) {
            s.mInline[bucket.mCount++] = item;
            return;
        }
        if (bucket.mCount == INLINE) {
            T** items = static_cast<T**>(std::malloc(2 * INLINE * sizeof(T*)));
            if (items == nullptr)
                LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
            for (unsigned long i = 0; i < INLINE; ++i)
                items[i] = s.mInline[i];
            s.mHeap.mItems = items;
            s.mHeap.mCapacity = 2 * INLINE;
        } else if (bucket.mCount == s.mHeap.mCapacity) {
            unsigned long const capacity = s.mHeap.mCapacity * 2;
            void* grown = std::realloc(s.mHeap.mItems, capacity * sizeof(T*));
            if (grown == nullptr)
                LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
            s.mHeap.mItems = static_cast<T**>(grown);
            s.mHeap.mCapacity = capacity;
        }
        s.mHeap.mItems[bucket.mCount++] = item;
    }
    /// Removes the item at position (below the count), keeping the others in order. Returns
    /// true when the bucket became empty: it is then gone, and the pointer must not be used.
    bool RemoveAt(Bucket* bucket, unsigned long const& position) {
        T** items = bucket->Items();
        for (unsigned long i = position; i + 1 < bucket->mCount; ++i)
            items[i] = items[i + 1];
        if (--bucket->mCount == INLINE) {
            for (unsigned long i = 0; i < INLINE; ++i)  // items was read before: still valid
                bucket->mStorage.mInline[i] = items[i];
            std::free(items);
        } else if (bucket->mCount == 0) {
            Erase(bucket);
            return true;
        }
        return false;
    }
    /// Forgets every bucket and releases all memory; the items are not touched.
    void Clear() {
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE && mSlots[i].mCount > INLINE)
                std::free(mSlots[i].mStorage.mHeap.mItems);
        std::free(mSlots);
        mSlots = nullptr;
        mCapacity = mSize = 0;
        mShift = 0;
    }
    void Swap(BucketIndex& other) {
        std::swap(mSlots, other.mSlots);
        std::swap(mCapacity, other.mCapacity);
        std::swap(mSize, other.mSize);
        std::swap(mShift, other.mShift);
    }

    /// Number of non-empty buckets.
    unsigned long Size() const { return mSize; }
    /// Number of slots allocated (0, or a power of two at least twice Size()); each slot
    /// takes sizeof(Bucket), 64 bytes.
    unsigned long Capacity() const { return mCapacity; }
    /// The numbers of the non-empty buckets, in no particular order.
    void GetNumbers(std::vector<unsigned long>& numbers) const {
        numbers.reserve(mSize);
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE)
                numbers.push_back(mSlots[i].mNumber);
    }
    /// Calls fn(bucket) on every non-empty bucket, in slot order.
    template <typename F>
    void ForEach(F const& fn) {
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE)
                fn(mSlots[i]);
    }
    /// Whether bucket is a slot of this index (a stale pointer of another index is not).
    bool Holds(Bucket const* bucket) const {
        std::uintptr_t const p = reinterpret_cast<std::uintptr_t>(bucket);
        std::uintptr_t const first = reinterpret_cast<std::uintptr_t>(mSlots);
        return mSlots != nullptr && p >= first && p < first + mCapacity * sizeof(Bucket);
    }

private:
    static unsigned long const FREE = ~0UL;  // no bucket number reaches it: numbers < mHashSize

    // Fibonacci hashing spreads consecutive and strided bucket numbers over the slots.
    unsigned long Home(unsigned long const& number) const {
        return (number * 0x9E3779B97F4A7C15UL) >> mShift;
    }
    Bucket* Place(unsigned long const& number) {
        unsigned long const mask = mCapacity - 1;
        unsigned long i = Home(number);
        while (mSlots[i].mNumber != FREE)
            i = (i + 1) & mask;
        return mSlots + i;
    }
    void Grow() {
        unsigned long const capacity = mCapacity == 0 ? 2 : mCapacity * 2;
        Bucket* slots = static_cast<Bucket*>(std::aligned_alloc(64, capacity * sizeof(Bucket)));
        if (slots == nullptr)
            LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
        for (unsigned long i = 0; i < capacity; ++i)
            slots[i].mNumber = FREE;
        Bucket* old = mSlots;
        unsigned long const oldCapacity = mCapacity;
        mSlots = slots;
        mCapacity = capacity;
        mShift = 64;
        for (unsigned long c = capacity; c > 1; c >>= 1)
            --mShift;
        for (unsigned long i = 0; i < oldCapacity; ++i)
            if (old[i].mNumber != FREE)
                *Place(old[i].mNumber) = old[i];
        std::free(old);
    }
    // Backward-shift deletion: later slots of the probe run move up into the hole, so that
    // lookups need no tombstones.
    void Erase(Bucket* bucket) {
        unsigned long const mask = mCapacity - 1;
        unsigned long hole = static_cast<unsigned long>(bucket - mSlots);
        for (unsigned long i = (hole + 1) & mask; mSlots[i].mNumber != FREE; i = (i + 1) & mask) {
            unsigned long const home = Home(mSlots[i].mNumber);
            if (((i - home) & mask) >= ((i - hole) & mask)) {
                mSlots[hole] = mSlots[i];
                hole = i;
            }
        }
        mSlots[hole].mNumber = FREE;
        --mSize;
    }

    Bucket* mSlots;
    unsigned long mCapacity;
    unsigned long mSize;
    unsigned int mShift;
};
}  // namespace hashtable

/// Root of the hash collections: the table size, the item count and the hash value cache (the
/// ascending numbers of the non-empty buckets, which iteration walks). Not copyable.
template <typename T>
class HashCollection : public Collection<T> {
public:
    HashCollection(HashCollection const&) = delete;
    HashCollection& operator=(HashCollection const&) = delete;
    virtual ~HashCollection() {}

    using Collection<T>::operator=;

    /// Empties the hash value cache and marks it up to date; the buckets keep their items.
    /// Deliberate: until a change marks the cache out of date again, iteration sees only the
    /// last bucket (mHashSize - 1). ValHashCollection overrides it to empty everything.
    virtual void Clear() {
        for (unsigned long number : mHashValueCache)
            NotePending(number);
        mHashValueCache.clear();
        mCacheDirty = 0;
    }

    /// The number of buckets given at construction.
    unsigned long GetHashSize() const { return mHashSize; }
    /// Bucket slots allocated, a memory diagnostic: 0 while empty, else a power of two at
    /// least twice the number of non-empty buckets, whatever the table size.
    unsigned long GetBucketSlotCount() const { return mTable.Capacity(); }

protected:
    typedef hashtable::BucketIndex<T> Index;
    typedef typename Index::Bucket Bucket;

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit HashCollection(unsigned long const& hashSize)
        : mItemCount(0), mHashSize(hashSize), mCacheDirty(0) {
        if (hashSize == 0)
            LSTD_THROW(InvalidOperationException, "The hash table size is invalid. (size = 0)");
    }

    /// Creates bucket number for a first item and notes it for the cache repair. Throws
    /// NotEnoughMemoryException.
    Bucket* NewBucket(unsigned long const& number) {
        NotePending(number);
        return mTable.Insert(number);
    }
    /// Empties the collection's bookkeeping: no bucket, no item, an empty, valid cache.
    void ResetAll() {
        mTable.Clear();
        mItemCount = 0;
        mHashValueCache.clear();
        mPending.clear();
        mCacheDirty = 0;
    }
    /// The numbers of the non-empty buckets, ascending: the cache itself while it is exact.
    /// Throws NotEnoughMemoryException.
    std::vector<unsigned long> GetSortedBuckets() const {
        std::vector<unsigned long> numbers;
        try {
            if (mCacheDirty == 0 && mPending.empty())
                return mHashValueCache;
            mTable.GetNumbers(numbers);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        std::sort(numbers.begin(), numbers.end());
        return numbers;
    }
    /// Empties the collection, then calls destroy on each of its former items: ascending
    /// buckets, each front to back. The items are detached first, so that destroy finds the
    /// collection empty. Never throws: without memory to order the buckets, the slots' own
    /// order is taken (destructors call this).
    template <typename Destroy>
    void ClearItems(Destroy const& destroy) {
        std::vector<unsigned long> order;
        bool ordered = true;
        try {
            order = GetSortedBuckets();
        } catch (NotEnoughMemoryException const&) {
            ordered = false;
        }
        Index detached;
        detached.Swap(mTable);
        ResetAll();
        if (ordered) {
            for (unsigned long number : order) {
                Bucket* bucket = detached.Find(number);
                for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
                    destroy(bucket->Items()[i]);
            }
        } else {
            detached.ForEach([&destroy](Bucket& bucket) {
                for (unsigned long i = 0; i < bucket.mCount; ++i)
                    destroy(bucket.Items()[i]);
            });
        }
    }
    /// Brings mHashValueCache up to date, incrementally: the noted buckets are merged into the
    /// ascending cache, the buckets that became empty leave it, and the walk stops once the
    /// buckets seen hold mItemCount items. Throws UnknownException "Items in hash structure is
    /// not integrity" when all the buckets hold fewer (an append that failed after counting).
    void UpdateHashValueCache() const {
        std::vector<unsigned long> merged;
        unsigned long remaining = mItemCount;
        try {
            std::sort(mPending.begin(), mPending.end());
            merged.reserve(mHashValueCache.size() + mPending.size());
            std::vector<unsigned long>::const_iterator c = mHashValueCache.begin();
            std::vector<unsigned long>::const_iterator p = mPending.begin();
            while (remaining > 0 && (c != mHashValueCache.end() || p != mPending.end())) {
                unsigned long number;
                if (p == mPending.end() || (c != mHashValueCache.end() && *c <= *p))
                    number = *c++;
                else
                    number = *p++;
                if (!merged.empty() && merged.back() == number)
                    continue;
                Bucket const* bucket = mTable.Find(number);
                if (bucket == nullptr)
                    continue;
                merged.push_back(number);
                remaining -= bucket->mCount < remaining ? bucket->mCount : remaining;
            }
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        // Every bucket left unvisited is empty: the ones visited hold all the items.
        mHashValueCache.swap(merged);
        mPending.clear();
        if (remaining > 0)
            LSTD_THROW(UnknownException, "Items in hash structure is not integrity");
    }

    unsigned long mItemCount;
    unsigned long mHashSize;
    mutable unsigned char mCacheDirty;
    mutable std::vector<unsigned long> mHashValueCache;
    mutable std::vector<unsigned long> mPending;  // became non-empty since the last repair
    Index mTable;

private:
    // A bucket emptied and refilled between two repairs is noted again; when the notes
    // outgrow the buckets, the duplicates and the buckets that are empty again are dropped.
    void NotePending(unsigned long const& number) {
        try {
            if (mPending.size() >= 2 * mTable.Size() + 16) {
                std::sort(mPending.begin(), mPending.end());
                mPending.erase(std::unique(mPending.begin(), mPending.end()), mPending.end());
                mPending.erase(std::remove_if(mPending.begin(), mPending.end(),
                                              [this](unsigned long const& n) {
                                                  return mTable.Find(n) == nullptr;
                                              }),
                               mPending.end());
            }
            mPending.push_back(number);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
    }

    friend class HashCollectionIterator<T>;
};

/// The items of one bucket as a pointer list. The collections keep their buckets in the
/// compact form described at the top of this file; CopyEntry hands a bucket out in this form.
template <typename T>
class PtrHashEntry : public PtrDLinkList<T> {
public:
    PtrHashEntry() {}
    virtual ~PtrHashEntry() {}
    using PtrDLinkList<T>::operator=;
};

/// The values of one bucket as a value list (see PtrHashEntry).
template <typename T>
class ValHashEntry : public ValDLinkList<T> {
public:
    ValHashEntry() {}
    virtual ~ValHashEntry() {}
    using ValDLinkList<T>::operator=;
};

/// A hash collection of T pointers. It keeps the pointers it is given and deletes them only
/// in Clear(1); its destructor and Remove never delete an item. No duplicate check: the same
/// or an equal item may stand several times. Lookups compare contents with T's operator==.
template <typename T>
class PtrHashCollection : public HashCollection<T>, public IPtrCollection<T> {
public:
    typedef unsigned long (*HashFunc)(T const*);

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit PtrHashCollection(HashFunc hashFunc, unsigned long const& hashSize = 32767)
        : HashCollection<T>(hashSize), mHashFunc(hashFunc) {}
    PtrHashCollection(PtrHashCollection const&) = delete;
    PtrHashCollection& operator=(PtrHashCollection const&) = delete;
    virtual ~PtrHashCollection() {}

    using Collection<T>::operator=;
    using HashCollection<T>::Clear;

    /// Appends item at its bucket's tail; null is ignored. Exceptions of the hash function
    /// propagate before anything changes; a failing bucket append (NotEnoughMemoryException)
    /// leaves the item counted (deliberately not undone).
    void Append(T* item) override {
        if (item == nullptr)
            return;
        unsigned long const number = mHashFunc(item) % this->mHashSize;
        ++this->mItemCount;
        Bucket* bucket = this->mTable.Find(number);
        if (bucket == nullptr) {
            this->mCacheDirty = 1;
            bucket = this->NewBucket(number);
        }
        Index::Append(*bucket, item);
    }
    /// Appends every item of list, in order, through the virtual Append (so a set skips the
    /// duplicates).
    virtual void AppendList(IPtrOrderList<T> const& list) {
        IPtrOrderListIterator<T>* it = list.CreateIterator(0, 0, -1);
        try {
            while (++*it)
                Append(it->Get());
        } catch (...) {
            delete it;
            throw;
        }
        delete it;
    }
    /// Removes the first item of its bucket equal to *item and hands it back undeleted; null
    /// when none is equal or item is null.
    T* Remove(T const* item) override {
        if (item == nullptr)
            return nullptr;
        return RemoveHashed(mHashFunc(item), [item](T const& stored) { return stored == *item; });
    }
    /// Calls fn on every item: ascending buckets, each front to back.
    void Apply(void (*fn)(T*)) override {
        for (unsigned long number : this->GetSortedBuckets()) {
            // The bucket is looked up again after each call, in case fn changed the collection.
            for (unsigned long i = 0;; ++i) {
                Bucket* bucket = this->mTable.Find(number);
                if (bucket == nullptr || i >= bucket->mCount)
                    break;
                fn(bucket->Items()[i]);
            }
        }
    }
    /// Empties the collection. With deleteItems equal to 1 the items are deleted, ascending
    /// buckets, each front to back (an item stored twice is deleted twice: not guarded).
    void Clear(unsigned char const& deleteItems) override {
        if (deleteItems == 1)
            this->ClearItems([](T* item) { delete item; });
        else
            this->ResetAll();
    }
    /// The first stored item of its bucket equal to *item, or null (also for a null item).
    T* Find(T const* item) const override {
        if (item == nullptr)
            return nullptr;
        return FindHashed(mHashFunc(item), [item](T const& stored) { return stored == *item; });
    }
    /// Empties out with Clear(0), then appends every item in iteration order, repairing the
    /// cache first when it is out of date (see UpdateHashValueCache for what that may throw).
    virtual void ToList(IPtrCollection<T>& out) const {
        out.Clear(0);
        if (this->mCacheDirty == 1) {
            this->UpdateHashValueCache();
            this->mCacheDirty = 0;
        }
        for (unsigned long number : this->mHashValueCache) {
            Bucket const* bucket = this->mTable.Find(number);
            for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
                out.Append(bucket->Items()[i]);
        }
    }
    unsigned long GetNumberOfEntry() const override { return this->mItemCount; }

    /// Appends the items of bucket hashValue (below the table size), in order, to entry.
    void CopyEntry(unsigned long const& hashValue, PtrHashEntry<T>& entry) const {
        Bucket const* bucket = this->mTable.Find(hashValue);
        for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
            entry.Append(bucket->Items()[i]);
    }

protected:
    typedef typename HashCollection<T>::Index Index;
    typedef typename HashCollection<T>::Bucket Bucket;

    // The lookups below take the item's hash computed by the caller, so that the maps hash a
    // key once; match(stored) is the equality test, stored being an item of the bucket.

    /// The first item of bucket hash % mHashSize that matches, or null.
    template <typename Match>
    T* FindHashed(unsigned long const& hash, Match const& match) const {
        Bucket const* bucket = this->mTable.Find(hash % this->mHashSize);
        if (bucket == nullptr)
            return nullptr;
        T* const* items = bucket->Items();
        for (unsigned long i = 0, n = bucket->mCount; i < n; ++i)
            if (match(*items[i]))
                return items[i];
        return nullptr;
    }
    /// Removes the first item of bucket hash % mHashSize that matches and returns it; null
    /// when none does. An emptied bucket marks the cache out of date.
    template <typename Match>
    T* RemoveHashed(unsigned long const& hash, Match const& match) {
        Bucket* bucket = this->mTable.Find(hash % this->mHashSize);
        if (bucket == nullptr)
            return nullptr;
        T* const* items = bucket->Items();
        for (unsigned long i = 0, n = bucket->mCount; i < n; ++i) {
            if (match(*items[i])) {
                T* item = items[i];
                if (this->mTable.RemoveAt(bucket, i))
                    this->mCacheDirty = 1;
                --this->mItemCount;
                return item;
            }
        }
        return nullptr;
    }
    /// The set's append of an item known to be absent from its bucket: marks the cache out
    /// of date, counts the item, then appends it (a failing append leaves it counted).
    void AppendHashed(T* item, unsigned long const& hash) {
        unsigned long const number = hash % this->mHashSize;
        this->mCacheDirty = 1;
        ++this->mItemCount;
        Bucket* bucket = this->mTable.Find(number);
        if (bucket == nullptr)
            bucket = this->NewBucket(number);
        Index::Append(*bucket, item);
    }

    HashFunc mHashFunc;

    template <typename K, typename V>
    friend class PtrHashMap;
    template <typename K, typename V>
    friend class ValHashMap;
};

/// A hash collection of copies of T; removal copies the value out. No duplicate check.
/// Lookups compare with T's operator==, the stored value on the left.
template <typename T>
class ValHashCollection : public HashCollection<T>, public IValCollection<T> {
public:
    typedef unsigned long (*HashFunc)(T const&);

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit ValHashCollection(HashFunc hashFunc, unsigned long const& hashSize = 32767)
        : HashCollection<T>(hashSize), mHashFunc(hashFunc) {}
    ValHashCollection(ValHashCollection const&) = delete;
    ValHashCollection& operator=(ValHashCollection const&) = delete;
    virtual ~ValHashCollection() { DestroyValues(); }

    using Collection<T>::operator=;

    /// Destroys every stored copy (ascending buckets, each front to back) and empties the
    /// collection and its cache.
    void Clear() override { DestroyValues(); }
    /// Stores a copy of value at its bucket's tail. NotEnoughMemoryException and the
    /// exceptions of T's copy constructor propagate with the value counted (not undone).
    unsigned char Append(T const& value) override {
        unsigned long const number = mHashFunc(value) % this->mHashSize;
        ++this->mItemCount;
        Bucket* bucket = this->mTable.Find(number);
        if (bucket == nullptr)
            this->mCacheDirty = 1;
        StoreCopy(bucket, number, value);
        return 1;
    }
    /// Appends every value of list, in order, through the virtual Append.
    virtual void AppendList(IValOrderList<T> const& list) {
        IValOrderListIterator<T>* it = list.CreateIterator(0, 0, -1);
        try {
            while (++*it)
                Append(it->Get());
        } catch (...) {
            delete it;
            throw;
        }
        delete it;
    }
    /// Removes the first value of its bucket equal to value, copying it to *removed when
    /// given; false when none is equal.
    bool Remove(T const& value, T* removed) override {
        Bucket* bucket = this->mTable.Find(mHashFunc(value) % this->mHashSize);
        if (bucket == nullptr)
            return false;
        T* const* items = bucket->Items();
        for (unsigned long i = 0, n = bucket->mCount; i < n; ++i) {
            if (*items[i] == value) {
                T* stored = items[i];
                if (this->mTable.RemoveAt(bucket, i))
                    this->mCacheDirty = 1;
                --this->mItemCount;
                if (removed != nullptr) {
                    try {
                        *removed = static_cast<T&&>(*stored);
                    } catch (...) {
                        delete stored;
                        throw;
                    }
                }
                delete stored;
                return true;
            }
        }
        return false;
    }
    /// Calls fn on every stored value: ascending buckets, each front to back.
    void Apply(void (*fn)(T&)) override {
        for (unsigned long number : this->GetSortedBuckets()) {
            for (unsigned long i = 0;; ++i) {
                Bucket* bucket = this->mTable.Find(number);
                if (bucket == nullptr || i >= bucket->mCount)
                    break;
                fn(*bucket->Items()[i]);
            }
        }
    }
    /// Whether a value equal to value is stored; copies it to *found when given.
    bool Find(T const& value, T* found) const override {
        T const* stored = FindStored(value);
        if (stored != nullptr && found != nullptr)
            *found = *stored;
        return stored != nullptr;
    }
    unsigned long GetNumberOfEntry() const override { return this->mItemCount; }

    /// Appends copies of the values of bucket hashValue (below the table size) to entry.
    void CopyEntry(unsigned long const& hashValue, ValHashEntry<T>& entry) const {
        Bucket const* bucket = this->mTable.Find(hashValue);
        for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
            entry.Append(*bucket->Items()[i]);
    }

protected:
    typedef typename HashCollection<T>::Index Index;
    typedef typename HashCollection<T>::Bucket Bucket;

    /// The first stored value of its bucket equal to value, or null.
    T* FindStored(T const& value) const {
        Bucket const* bucket = this->mTable.Find(mHashFunc(value) % this->mHashSize);
        if (bucket == nullptr)
            return nullptr;
        T* const* items = bucket->Items();
        for (unsigned long i = 0, n = bucket->mCount; i < n; ++i)
            if (*items[i] == value)
                return items[i];
        return nullptr;
    }
    /// Appends a heap copy of value to bucket (number, null when it has no item yet).
    void StoreCopy(Bucket* bucket, unsigned long const& number, T const& value) {
        T* copy;
        try {
            copy = new T(value);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        try {
            if (bucket == nullptr)
                bucket = this->NewBucket(number);
            Index::Append(*bucket, copy);
        } catch (...) {
            delete copy;
            throw;
        }
    }

    HashFunc mHashFunc;

private:
    void DestroyValues() {
        this->ClearItems([](T* value) { delete value; });
    }
};

/// A PtrHashCollection that refuses an item equal to a stored one.
template <typename T>
class PtrHashSet : public PtrHashCollection<T> {
public:
    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit PtrHashSet(typename PtrHashCollection<T>::HashFunc hashFunc,
                        unsigned long const& hashSize = 32767)
        : PtrHashCollection<T>(hashFunc, hashSize) {}
    virtual ~PtrHashSet() {}

    using PtrHashCollection<T>::operator=;

    /// Appends item unless its bucket holds an item equal to it; then nothing happens and the
    /// passed pointer is neither stored nor deleted. Null is ignored.
    void Append(T* item) override {
        if (item == nullptr)
            return;
        unsigned long const hash = this->mHashFunc(item);
        if (this->FindHashed(hash, [item](T const& stored) { return stored == *item; }) == nullptr)
            this->AppendHashed(item, hash);
    }
};

/// A ValHashCollection that refuses a value equal to a stored one.
template <typename T>
class ValHashSet : public ValHashCollection<T> {
public:
    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit ValHashSet(typename ValHashCollection<T>::HashFunc hashFunc,
                        unsigned long const& hashSize = 32767)
        : ValHashCollection<T>(hashFunc, hashSize) {}
    virtual ~ValHashSet() {}

    using ValHashCollection<T>::operator=;

    /// Stores a copy of value unless an equal value is stored; returns 1 either way.
    /// Deliberate: a duplicate is not a failure; it changes nothing and is reported like a
    /// successful append.
    unsigned char Append(T const& value) override {
        unsigned long const number = this->mHashFunc(value) % this->mHashSize;
        Bucket* bucket = this->mTable.Find(number);
        if (bucket != nullptr) {
            T* const* items = bucket->Items();
            for (unsigned long i = 0, n = bucket->mCount; i < n; ++i)
                if (*items[i] == value)
                    return 1;
        }
        this->mCacheDirty = 1;
        ++this->mItemCount;
        this->StoreCopy(bucket, number, value);
        return 1;
    }

private:
    typedef typename ValHashCollection<T>::Bucket Bucket;
};

/// Walks a hash collection: ascending bucket numbers from the hash value cache, and the items
/// of each bucket in append order. After Init, call operator++ before reading the first item.
/// Changing the collection during the walk invalidates the iterator (nothing guards it).
template <typename T>
class HashCollectionIterator : public Iterator<T> {
public:
    HashCollectionIterator() : mHashCollection(nullptr), mCachePosition(0), mCurHashValue(0) {}
    virtual ~HashCollectionIterator() {}

    using Iterator<T>::Init;
    using Iterator<T>::operator=;

    /// Binds collection, repairing its cache first when it is out of date (even through the
    /// const reference; see UpdateHashValueCache for what that may throw, the iterator then
    /// stays as it was), and stands before the first item of the first cached bucket. With
    /// an empty cache it stands on bucket mHashSize - 1, which is normally empty.
    virtual void Init(HashCollection<T> const& collection) {
        if (collection.mCacheDirty == 1) {
            collection.UpdateHashValueCache();
            collection.mCacheDirty = 0;
        }
        mHashCollection = &collection;
        this->mCollection = &collection;
        mCachePosition = 0;
        if (collection.mHashValueCache.empty())
            GetNextHashValue(collection.mHashSize - 1);
        else
            GetNextHashValue(collection.mHashValueCache[0]);
    }
    /// Sets the current bucket to 0 and, when a collection is bound, runs Init on it again.
    virtual void Reset() {
        mCurHashValue = 0;
        if (mHashCollection != nullptr)
            Init(*mHashCollection);
    }
    /// Moves to the next item; false once the items are exhausted. Throws
    /// NotInitializedIteratorException "Iterator not initialized" when no collection is bound.
    virtual bool operator++() {
        if (mHashCollection == nullptr || this->mCollection == nullptr)
            LSTD_THROW(NotInitializedIteratorException, "Iterator not initialized");
        if (GetNextForCurEntry())
            return true;
        std::vector<unsigned long> const& cache = mHashCollection->mHashValueCache;
        while (mCachePosition + 1 < cache.size()) {
            GetNextHashValue(cache[++mCachePosition]);
            if (GetNextForCurEntry())
                return true;
        }
        mCachePosition = cache.size();
        return false;
    }
    /// Copies the collection, the current bucket and the cache position into other, which
    /// keeps its own place within a bucket: a fresh other goes on with the next bucket.
    virtual void GetNextIterator(HashCollectionIterator& other) const {
        other.mCollection = this->mCollection;
        other.mHashCollection = mHashCollection;
        other.mCurHashValue = mCurHashValue;
        other.mCachePosition = mCachePosition;
    }
    /// Makes hashValue the current bucket, before its first item; returns true.
    virtual bool GetNextHashValue(unsigned long const& hashValue) {
        mCurHashValue = hashValue;
        return true;
    }
    /// The number of items in bucket hashValue.
    virtual unsigned long GetItemNumberAt(unsigned long const& hashValue) const = 0;
    /// Moves to the next item of the current bucket; whether there is one.
    virtual bool GetNextForCurEntry() = 0;

    /// The current bucket number.
    unsigned long GetCurHashValue() const { return mCurHashValue; }

protected:
    typedef typename hashtable::BucketIndex<T>::Bucket Bucket;

    /// The bound collection's bucket hashValue, or null.
    Bucket const* FindBucket(unsigned long const& hashValue) const {
        return mHashCollection != nullptr ? mHashCollection->mTable.Find(hashValue) : nullptr;
    }
    /// One step of the derived iterators within the current bucket: entry and position are
    /// their place, item receives the next item (null at the end). A place that does not
    /// belong to the current bucket of the bound collection counts as exhausted.
    bool StepInEntry(Bucket const*& entry, unsigned long& position, T*& item) const {
        if (entry == nullptr || mHashCollection == nullptr ||
            !mHashCollection->mTable.Holds(entry) || entry->mNumber != mCurHashValue ||
            position >= entry->mCount) {
            item = nullptr;
            return false;
        }
        item = entry->Items()[position++];
        return true;
    }

    HashCollection<T> const* mHashCollection;
    unsigned long mCachePosition;  // index of the current bucket in the cache
    unsigned long mCurHashValue;
};

/// Iterator of PtrHashCollection and PtrHashSet; Get() is the current item.
template <typename T>
class PtrHashCollectionIterator : public HashCollectionIterator<T> {
public:
    PtrHashCollectionIterator() : mEntry(nullptr), mEntryPosition(0), mCurItem(nullptr) {}
    /// Binds collection (see Init).
    explicit PtrHashCollectionIterator(PtrHashCollection<T> const& collection)
        : mEntry(nullptr), mEntryPosition(0), mCurItem(nullptr) {
        Init(collection);
    }
    virtual ~PtrHashCollectionIterator() {}

    using HashCollectionIterator<T>::Init;
    using HashCollectionIterator<T>::operator=;

    bool GetNextHashValue(unsigned long const& hashValue) override {
        HashCollectionIterator<T>::GetNextHashValue(hashValue);
        mEntry = this->FindBucket(hashValue);
        mEntryPosition = 0;
        mCurItem = nullptr;
        return true;
    }
    unsigned long GetItemNumberAt(unsigned long const& hashValue) const override {
        Bucket const* bucket = this->FindBucket(hashValue);
        return bucket != nullptr ? bucket->mCount : 0;
    }
    bool GetNextForCurEntry() override {
        return this->StepInEntry(mEntry, mEntryPosition, mCurItem);
    }
    /// Binds collection (see HashCollectionIterator::Init).
    virtual void Init(PtrHashCollection<T> const& collection) {
        HashCollectionIterator<T>::Init(collection);
    }

    /// The current item. Throws NotInitializedIteratorException "Iterator not set validity."
    /// (the bucket-list iterator's text) before the first item and after the last.
    T* Get() const {
        if (mCurItem == nullptr)
            LSTD_THROW(NotInitializedIteratorException, "Iterator not set validity.");
        return mCurItem;
    }

private:
    typedef typename HashCollectionIterator<T>::Bucket Bucket;

    Bucket const* mEntry;          // the current bucket, null when empty
    unsigned long mEntryPosition;  // of the next item in mEntry
    T* mCurItem;
};

/// Iterator of ValHashCollection and ValHashSet; Get() is the current stored value.
template <typename T>
class ValHashCollectionIterator : public HashCollectionIterator<T> {
public:
    ValHashCollectionIterator() : mEntry(nullptr), mEntryPosition(0), mCurValue(nullptr) {}
    /// Binds collection (see Init).
    explicit ValHashCollectionIterator(ValHashCollection<T> const& collection)
        : mEntry(nullptr), mEntryPosition(0), mCurValue(nullptr) {
        Init(collection);
    }
    virtual ~ValHashCollectionIterator() {}

    using HashCollectionIterator<T>::Init;
    using HashCollectionIterator<T>::operator=;

    bool GetNextHashValue(unsigned long const& hashValue) override {
        HashCollectionIterator<T>::GetNextHashValue(hashValue);
        mEntry = this->FindBucket(hashValue);
        mEntryPosition = 0;
        mCurValue = nullptr;
        return true;
    }
    unsigned long GetItemNumberAt(unsigned long const& hashValue) const override {
        Bucket const* bucket = this->FindBucket(hashValue);
        return bucket != nullptr ? bucket->mCount : 0;
    }
    bool GetNextForCurEntry() override {
        return this->StepInEntry(mEntry, mEntryPosition, mCurValue);
    }
    /// Binds collection (see HashCollectionIterator::Init).
    virtual void Init(ValHashCollection<T> const& collection) {
        HashCollectionIterator<T>::Init(collection);
    }

    /// The current stored value. Throws NotInitializedIteratorException
    /// "ValDLAbstractListIterator is not initialized" (the bucket-list iterator's text)
    /// before the first value and after the last.
    T& Get() const {
        if (mCurValue == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "ValDLAbstractListIterator is not initialized");
        return *mCurValue;
    }
    /// Copies the current value into value; throws as Get().
    bool Get(T& value) const {
        value = Get();
        return true;
    }

private:
    typedef typename HashCollectionIterator<T>::Bucket Bucket;

    Bucket const* mEntry;
    unsigned long mEntryPosition;
    T* mCurValue;
};

/// Iterator of PtrHashSet.
template <typename T>
class PtrHashSetIterator : public PtrHashCollectionIterator<T> {
public:
    PtrHashSetIterator() {}
    /// Binds set (see HashCollectionIterator::Init).
    explicit PtrHashSetIterator(PtrHashSet<T> const& set) : PtrHashCollectionIterator<T>(set) {}
    virtual ~PtrHashSetIterator() {}

    using PtrHashCollectionIterator<T>::operator=;
};

/// Iterator of ValHashSet.
template <typename T>
class ValHashSetIterator : public ValHashCollectionIterator<T> {
public:
    ValHashSetIterator() {}
    /// Binds set (see HashCollectionIterator::Init).
    explicit ValHashSetIterator(ValHashSet<T> const& set) : ValHashCollectionIterator<T>(set) {}
    virtual ~ValHashSetIterator() {}

    using ValHashCollectionIterator<T>::operator=;
};
}  // namespace lstd
#endif  // LSTD_HASHCOLLECTION_H
