// lstd/hashcollection.h - hash collections of pointers and values with a fixed table size, sets.
//
// An item lives in bucket mHashFunc(item) % mHashSize; mHashSize is fixed at construction and
// nothing is ever rehashed. Iteration goes by ascending bucket number, then append order within
// a bucket. The table size fixes only this numbering: storage follows the items, so a
// collection of 32767 buckets costs nothing per empty bucket.
//
// Requirement on the hash function: equal items have equal hashes. Each bucket keeps a digest
// of every item's hash beside it (lstd/hashindex.h) and a lookup calls T's operator== only on
// the items whose digest equals that of the hash looked for. An item must therefore not change
// its hash while it is stored; Apply takes the hashes anew after its function ran.
//
// Representation. The buckets that hold items are found by number through
// hashtable::BucketIndex (mTable), shared by both kinds: pointer collections record the
// pointers they are given; value collections record small trivial values (unsigned long,
// pointers) in place and other values as pointers to heap copies of their own. The hash value
// cache mHashValueCache is the ascending vector of non-empty bucket numbers; a bucket that
// becomes non-empty is noted in mPending while the index is sparse, and the repair merges
// those notes into the cache, drops the buckets that became empty and stops once every item
// is accounted for. Once the index is dense the repair reads the bucket array in order instead.
#ifndef LSTD_HASHCOLLECTION_H
#define LSTD_HASHCOLLECTION_H

#include <lstd/collection.h>
#include <lstd/exception.h>
#include <lstd/hashindex.h>
#include <lstd/iptrcollection.h>
#include <lstd/iptrorderlist.h>
#include <lstd/iterator.h>
#include <lstd/ivalcollection.h>
#include <lstd/ivalorderlist.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/valdlinklist.h>

#include <lstd/hashgenerator.h>
#include <lstd/string.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace lstd {

template <typename T>
class HashCollectionIterator;
namespace hashtable {
template <typename T>
class Cursor;
}
template <typename K, typename V>
class PtrHashMap;
template <typename K, typename V>
class ValHashMap;

/// Root of the hash collections: the table size, the item count and the hash value cache (the
/// ascending numbers of the non-empty buckets, which iteration walks). Not copyable; the
/// concrete collections move. A moved-from collection is empty and keeps its table size and
/// hash function; a move assignment gives the target the source's.
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
    /// Bucket places allocated, a memory diagnostic: 0 while empty; while few buckets hold
    /// items, a power of two at least twice their number, whatever the table size; once most
    /// do, the table size (see lstd/hashindex.h).
    unsigned long GetBucketSlotCount() const { return mTable.Capacity(); }

protected:
    /// @cond INTERNAL
    typedef hashtable::Slot<T> Slot;
    typedef hashtable::BucketIndex<Slot> Index;
    typedef typename Index::Bucket Bucket;

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit HashCollection(unsigned long const& hashSize)
        : mItemCount(0), mHashSize(hashSize), mCacheDirty(0), mTable(hashSize),
          mModulus(hashSize != 0 ? hashSize : 1) {
        if (hashSize == 0)
            LSTD_THROW(InvalidOperationException, "The hash table size is invalid. (size = 0)");
    }
    /// Takes other's items and bookkeeping (see Take).
    HashCollection(HashCollection&& other) noexcept
        : Collection<T>(), mItemCount(0), mHashSize(other.mHashSize), mCacheDirty(0),
          mTable(other.mHashSize), mModulus(other.mModulus) {
        Take(other);
    }
    /// This collection, holding nothing (after ResetAll), takes other's buckets, count,
    /// cache and table size; other is left empty with its own table size. Never throws.
    void Take(HashCollection& other) noexcept {
        mTable.Take(other.mTable);
        mItemCount = other.mItemCount;
        mHashSize = other.mHashSize;
        mModulus = other.mModulus;
        mCacheDirty = other.mCacheDirty;
        mHashValueCache.swap(other.mHashValueCache);
        mPending.swap(other.mPending);
        other.mItemCount = 0;
        other.mCacheDirty = 0;
        other.mHashValueCache.clear();
        other.mPending.clear();
    }

    /// The bucket of hash, and the first of its items whose hash has the digest of hash and
    /// that matches (match(slot) is the equality test): position is that item's, or the
    /// count when none matches. Null when the bucket holds nothing.
    template <typename Match>
    Bucket* Locate(unsigned long const& hash, unsigned long& position, Match const& match) const {
        Bucket* bucket = mTable.Find(mModulus.Of(hash));
        if (bucket != nullptr)
            position = bucket->Search(hashtable::Digest(hash), match);
        return bucket;
    }
    /// Appends item, whose hash is hash, to bucket, its bucket, or to a new one when bucket
    /// is null; then notes a new bucket for the cache repair. Throws NotEnoughMemoryException.
    void AppendRecord(Bucket* bucket, unsigned long const& hash, Slot const& item) {
        if (bucket == nullptr) {
            unsigned long const number = mModulus.Of(hash);
            NotePending(number);
            bucket = mTable.Insert(number);
            if (mTable.IsDense() && mPending.capacity() != 0)
                std::vector<unsigned long>().swap(mPending);  // the repair reads the array now
        }
        Index::Append(*bucket, hashtable::Digest(hash), item);
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
            if (!mTable.IsDense() && mCacheDirty == 0 && mPending.empty())
                return mHashValueCache;
            mTable.GetNumbers(numbers);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        if (!mTable.IsDense())
            std::sort(numbers.begin(), numbers.end());
        return numbers;
    }
    /// Records the hash of the item at position of bucket number anew, after a function may
    /// have changed it; nothing when that place holds no record any more.
    template <typename HashOf>
    void Rehash(unsigned long const& number, unsigned long const& position, HashOf const& hashOf) {
        Bucket* bucket = mTable.Find(number);
        if (bucket != nullptr && position < bucket->mCount)
            bucket->SetDigest(position, hashtable::Digest(hashOf(bucket->Items()[position])));
    }
    /// Empties the collection, then calls destroy on each of its former items: ascending
    /// buckets, each front to back, unless inOrder is false (for items whose destruction
    /// nobody can watch). The items are detached first, so that destroy finds the collection
    /// empty. Never throws: without memory to order the buckets, the slots' own order is
    /// taken (destructors call this).
    template <typename Destroy>
    void ClearItems(Destroy const& destroy, bool inOrder = true) {
        std::vector<unsigned long> order;
        bool ordered = inOrder;
        if (inOrder && !mTable.IsDense()) {  // a dense index walks its buckets in order itself
            try {
                order = GetSortedBuckets();
            } catch (NotEnoughMemoryException const&) {
                ordered = false;
            }
        }
        Index detached(mHashSize);
        detached.Swap(mTable);
        ResetAll();
        if (ordered && !detached.IsDense()) {
            for (unsigned long number : order) {
                Bucket* bucket = detached.Find(number);
                for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
                    destroy(bucket->Items()[i]);
            }
        } else {
            detached.ForEach([&destroy](Bucket const& bucket) {
                Slot const* items = bucket.Items();
                for (unsigned long i = 0; i < bucket.mCount; ++i)
                    destroy(items[i]);
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
            if (mTable.IsDense()) {  // the buckets in order: no note is kept then
                merged.reserve(mTable.Size());
                for (unsigned long n = 0; n < mHashSize && remaining > 0; ++n) {
                    Bucket const* bucket = mTable.Find(n);
                    if (bucket != nullptr) {
                        merged.push_back(n);
                        remaining -= bucket->mCount < remaining ? bucket->mCount : remaining;
                    }
                }
                mPending.clear();
            } else {
                MergePending(merged, remaining);
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
    hashtable::Modulus mModulus;  // of mHashSize
    /// @endcond

private:
    // The sparse repair: merges the ascending cache with the sorted notes into merged,
    // keeping the buckets that hold items, until they account for remaining items.
    void MergePending(std::vector<unsigned long>& merged, unsigned long& remaining) const {
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
    }
    // A bucket emptied and refilled between two repairs is noted again; when the notes
    // outgrow the buckets, the duplicates and the buckets that are empty again are dropped.
    void NotePending(unsigned long const& number) {
        if (mTable.IsDense())
            return;
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
    friend class hashtable::Cursor<T>;
};

namespace hashtable {
/// The walk behind the standard-library iterators of the hash collections and maps: the item
/// slots of a HashCollection in its iteration order, the order of HashCollectionIterator
/// (ascending bucket numbers, then append order), without allocating and without repairing
/// the hash value cache. An up-to-date cache is walked as it stands (an empty one, as after
/// HashCollection::Clear(), stands for bucket mHashSize - 1, as for the iterator); an out of
/// date one is read together with the buckets noted since (whose notes it sorts in place,
/// even through the const reference) or, for a dense index, replaced by the bucket array
/// itself. Within a bucket a step is a pointer increment. Changing the collection
/// invalidates the cursor.
template <typename T>
class Cursor {
public:
    typedef typename HashCollection<T>::Slot Slot;

    /// The end of every walk.
    Cursor()
        : mCollection(nullptr), mItem(nullptr), mEnd(nullptr), mNext(0), mNoted(0), mLast(0),
          mMode(DONE) {}
    /// On the first item of collection, or the end when it has none.
    explicit Cursor(HashCollection<T> const& collection)
        : mCollection(&collection), mItem(nullptr), mEnd(nullptr), mNext(0), mNoted(0), mLast(0),
          mMode(CACHE) {
        if (collection.mCacheDirty == 1) {
            if (collection.mTable.IsDense()) {
                mMode = DENSE;
            } else {
                std::sort(collection.mPending.begin(), collection.mPending.end());
                mMode = MERGE;
            }
        } else if (collection.mHashValueCache.empty()) {
            mMode = LAST;
        }
        NextBucket();
    }

    /// The current slot; null at the end.
    Slot const* Get() const { return mItem; }
    /// Moves to the next item (not past the end).
    void Advance() {
        if (++mItem == mEnd)
            NextBucket();
    }

private:
    typedef typename HashCollection<T>::Bucket Bucket;
    enum Mode : unsigned char { CACHE, LAST, DENSE, MERGE, DONE };

    // Stands on the first item of bucket number; false when it holds none.
    bool Enter(unsigned long const& number) {
        Bucket const* bucket = mCollection->mTable.Find(number);
        if (bucket == nullptr || bucket->mCount == 0)
            return false;
        mItem = bucket->Items();
        mEnd = mItem + bucket->mCount;
        return true;
    }
    // Stands on the first item of the next bucket that holds one, or at the end.
    void NextBucket() {
        HashCollection<T> const& c = *mCollection;
        std::vector<unsigned long> const& cache = c.mHashValueCache;
        switch (mMode) {
        case CACHE:
            while (mNext < cache.size())
                if (Enter(cache[mNext++]))
                    return;
            break;
        case LAST:
            mMode = DONE;
            if (Enter(c.mHashSize - 1))
                return;
            break;
        case DENSE:
            while (mNext < c.mHashSize)
                if (Enter(mNext++))
                    return;
            break;
        case MERGE: {
            // The cache and the notes, both ascending, merged; a number met twice (noted
            // again, or in both) is entered once.
            std::vector<unsigned long> const& noted = c.mPending;
            for (;;) {
                bool const fromCache = mNext < cache.size() &&
                                       (mNoted >= noted.size() || cache[mNext] <= noted[mNoted]);
                if (!fromCache && mNoted >= noted.size())
                    break;
                unsigned long const number = fromCache ? cache[mNext++] : noted[mNoted++];
                if (number < mLast)
                    continue;
                mLast = number + 1;
                if (Enter(number))
                    return;
            }
            break;
        }
        case DONE:
            break;
        }
        mMode = DONE;
        mItem = mEnd = nullptr;
    }

    HashCollection<T> const* mCollection;
    Slot const* mItem;     // the current slot, null at the end
    Slot const* mEnd;      // past the current bucket's last slot
    unsigned long mNext;   // CACHE, MERGE: next cache index; DENSE: next bucket number
    unsigned long mNoted;  // MERGE: next index of the sorted notes
    unsigned long mLast;   // MERGE: the bucket number last tried, plus one (0: none yet)
    Mode mMode;
};

/// The standard-library iterator of the hash collections and maps (range-for, `<algorithm>`):
/// forward, in iteration order (see Cursor); no allocation, no virtual call. Access::Get(slot)
/// is the element reference Ref; an iterator converts to the const_iterator of the same walk.
template <typename T, typename Value, typename Ref, typename Access>
class HashIterator {
public:
    typedef std::forward_iterator_tag iterator_category;
    typedef Value value_type;
    typedef std::ptrdiff_t difference_type;
    typedef typename std::remove_reference<Ref>::type* pointer;
    typedef Ref reference;

    /// The end.
    HashIterator() {}
    /// On the first item of collection.
    explicit HashIterator(HashCollection<T> const& collection) : mCursor(collection) {}
    template <typename OtherRef, typename OtherAccess,
              typename = typename std::enable_if<std::is_convertible<OtherRef, Ref>::value &&
                                                 !std::is_same<OtherRef, Ref>::value>::type>
    HashIterator(HashIterator<T, Value, OtherRef, OtherAccess> const& other)
        : mCursor(other.mCursor) {}

    reference operator*() const { return Access::Get(*mCursor.Get()); }
    pointer operator->() const { return &Access::Get(*mCursor.Get()); }
    HashIterator& operator++() {
        mCursor.Advance();
        return *this;
    }
    HashIterator operator++(int) {
        HashIterator const before = *this;
        mCursor.Advance();
        return before;
    }
    friend bool operator==(HashIterator const& a, HashIterator const& b) {
        return a.mCursor.Get() == b.mCursor.Get();
    }
    friend bool operator!=(HashIterator const& a, HashIterator const& b) {
        return a.mCursor.Get() != b.mCursor.Get();
    }

private:
    Cursor<T> mCursor;

    template <typename, typename, typename, typename>
    friend class HashIterator;
};

/// The element of a pointer collection: the stored pointer, read-only (changing it in place
/// would move the item to another bucket).
template <typename T>
struct PointerAccess {
    static T* const& Get(Slot<T> const& slot) { return slot.mPointer; }
};
/// The element of a map: the entry a stored pointer points to, as Ref (Entry& or Entry const&).
template <typename Entry, typename Ref>
struct EntryAccess {
    static Ref Get(Slot<Entry> const& slot) { return *slot.mPointer; }
};

/// The hash that hashFunc, which hashes Strings, gives the String holding text: computed from
/// the bytes when hashFunc is String::Hash (the 64-bit FNV-1 of HashGenerator); other
/// functions are given a String made from text.
inline unsigned long HashOfText(unsigned long (*hashFunc)(String const&), std::string_view text) {
    if (hashFunc == static_cast<unsigned long (*)(String const&)>(&String::Hash))
        return HashGenerator::DoFNV1Hash64(text.data(), text.size());
    return hashFunc(String(text));
}
inline unsigned long HashOfText(unsigned long (*hashFunc)(String const*), std::string_view text) {
    if (hashFunc == static_cast<unsigned long (*)(String const*)>(&String::Hash))
        return HashGenerator::DoFNV1Hash64(text.data(), text.size());
    String const key(text);
    return hashFunc(&key);
}
/// Enables a lookup by text for collections of Strings only.
template <typename T>
using IfString = typename std::enable_if<std::is_same<T, String>::value, int>::type;
}  // namespace hashtable

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
///
/// begin() and end() walk the items in iteration order for range-for and `<algorithm>`: a
/// forward iterator over the stored pointers (T* const&), allocating nothing. A move hands
/// the pointers over, deleting none (a move assignment forgets the target's, as Clear(0)).
template <typename T>
class PtrHashCollection : public HashCollection<T>, public IPtrCollection<T> {
public:
    /// The item hash; an item goes into bucket hash % table size.
    typedef unsigned long (*HashFunc)(T const*);
    /// Forward iterator over the stored pointers in iteration order, read-only (T* const&):
    /// replacing a pointer in place would leave it in the wrong bucket. Changing the collection
    /// invalidates it.
    typedef hashtable::HashIterator<T, T*, T* const&, hashtable::PointerAccess<T>> const_iterator;
    /// Same as const_iterator.
    typedef const_iterator iterator;
    /// The item type, T*.
    typedef T* value_type;

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit PtrHashCollection(HashFunc hashFunc, unsigned long const& hashSize = 32767)
        : HashCollection<T>(hashSize), mHashFunc(hashFunc) {}
    PtrHashCollection(PtrHashCollection const&) = delete;
    PtrHashCollection& operator=(PtrHashCollection const&) = delete;
    ///@{
    /// Takes other's pointers, table size and hash function, deleting no item; other is left
    /// empty with its table size and hash function. The assignment first forgets this
    /// collection's pointers as Clear(0) does.
    PtrHashCollection(PtrHashCollection&& other) noexcept
        : HashCollection<T>(std::move(other)), IPtrCollection<T>(), mHashFunc(other.mHashFunc) {}
    PtrHashCollection& operator=(PtrHashCollection&& other) noexcept {
        if (this != &other) {
            this->ResetAll();
            this->Take(other);
            mHashFunc = other.mHashFunc;
        }
        return *this;
    }
    ///@}
    virtual ~PtrHashCollection() {}

    ///@{
    /// Iteration in the order of HashCollectionIterator: ascending bucket numbers, each bucket
    /// in append order. Allocates nothing.
    const_iterator begin() const { return const_iterator(*this); }
    const_iterator end() const { return const_iterator(); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    using Collection<T>::operator=;
    using HashCollection<T>::Clear;

    /// Appends item at its bucket's tail; null is ignored. Exceptions of the hash function
    /// propagate before anything changes; a failing bucket append (NotEnoughMemoryException)
    /// leaves the item counted (deliberately not undone).
    void Append(T* item) override {
        if (item == nullptr)
            return;
        unsigned long const hash = mHashFunc(item);
        ++this->mItemCount;
        Bucket* bucket = this->mTable.Find(this->mModulus.Of(hash));
        if (bucket == nullptr)
            this->mCacheDirty = 1;
        this->AppendRecord(bucket, hash, Pointer(item));
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
    /// Calls fn on every item: ascending buckets, each front to back; then records the
    /// item's hash anew.
    void Apply(void (*fn)(T*)) override {
        HashFunc const hashFunc = mHashFunc;
        for (unsigned long number : this->GetSortedBuckets()) {
            // The bucket is looked up again after each call, in case fn changed the collection.
            for (unsigned long i = 0;; ++i) {
                Bucket* bucket = this->mTable.Find(number);
                if (bucket == nullptr || i >= bucket->mCount)
                    break;
                fn(bucket->Items()[i].mPointer);
                this->Rehash(number, i,
                             [hashFunc](Slot const& slot) { return hashFunc(slot.mPointer); });
            }
        }
    }
    /// Empties the collection. With deleteItems equal to 1 the items are deleted, ascending
    /// buckets, each front to back (an item stored twice is deleted twice: not guarded).
    void Clear(unsigned char const& deleteItems) override {
        if (deleteItems == 1)
            this->ClearItems([](Slot const& slot) { delete slot.mPointer; });
        else
            this->ResetAll();
    }
    /// The first stored item of its bucket equal to *item, or null (also for a null item).
    T* Find(T const* item) const override {
        if (item == nullptr)
            return nullptr;
        return FindHashed(mHashFunc(item), [item](T const& stored) { return stored == *item; });
    }
    /// For Strings: the first stored String whose bytes equal text (NULs included), or null.
    /// No String is made when the collection hashes with String::Hash.
    template <typename Q = T, hashtable::IfString<Q> = 0>
    T* Find(std::string_view text) const {
        return FindHashed(hashtable::HashOfText(mHashFunc, text),
                          [text](String const& stored) { return stored == text; });
    }
    /// Find by the text of a C string (null is the empty text).
    template <typename Q = T, hashtable::IfString<Q> = 0>
    T* Find(char const* s) const {
        return Find(text::Of(s));
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
                out.Append(bucket->Items()[i].mPointer);
        }
    }
    /// The number of items stored.
    unsigned long GetNumberOfEntry() const override { return this->mItemCount; }

    /// Appends the items of bucket hashValue (below the table size), in order, to entry.
    void CopyEntry(unsigned long const& hashValue, PtrHashEntry<T>& entry) const {
        Bucket const* bucket = this->mTable.Find(hashValue);
        for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
            entry.Append(bucket->Items()[i].mPointer);
    }

protected:
    /// @cond INTERNAL
    typedef typename HashCollection<T>::Slot Slot;
    typedef typename HashCollection<T>::Bucket Bucket;

    /// Where an absent item goes: its bucket (null while that holds nothing) and its hash.
    struct Spot {
        Spot() : mBucket(nullptr), mHash(0) {}

        Bucket* mBucket;
        unsigned long mHash;
    };

    static Slot Pointer(T* item) {
        Slot slot;
        slot.mPointer = item;
        return slot;
    }

    // The lookups below take the item's hash computed by the caller, so that the maps hash a
    // key once; match(stored) is the equality test, stored being an item of the bucket whose
    // recorded hash equals hash.

    /// The first item of bucket hash % mHashSize that matches, or null; then *spot, when
    /// given, tells AppendAt where the item goes.
    template <typename Match>
    T* FindHashed(unsigned long const& hash, Match const& match, Spot* spot = nullptr) const {
        unsigned long position = 0;
        Bucket* bucket = this->Locate(hash, position, [&match](Slot const& slot) {
            return match(static_cast<T const&>(*slot.mPointer));
        });
        if (bucket != nullptr && position < bucket->mCount)
            return bucket->Items()[position].mPointer;
        if (spot != nullptr) {
            spot->mBucket = bucket;
            spot->mHash = hash;
        }
        return nullptr;
    }
    /// Removes the first item of bucket hash % mHashSize that matches and returns it; null
    /// when none does. An emptied bucket marks the cache out of date.
    template <typename Match>
    T* RemoveHashed(unsigned long const& hash, Match const& match) {
        unsigned long position = 0;
        Bucket* bucket = this->Locate(hash, position, [&match](Slot const& slot) {
            return match(static_cast<T const&>(*slot.mPointer));
        });
        if (bucket == nullptr || position == bucket->mCount)
            return nullptr;
        T* const item = bucket->Items()[position].mPointer;
        if (this->mTable.RemoveAt(bucket, position))
            this->mCacheDirty = 1;
        --this->mItemCount;
        return item;
    }
    /// The set's append of an item found absent by FindHashed, with no change since: marks
    /// the cache out of date, counts the item, then appends it (a failing append leaves it
    /// counted).
    void AppendAt(Spot const& spot, T* item) {
        this->mCacheDirty = 1;
        ++this->mItemCount;
        this->AppendRecord(spot.mBucket, spot.mHash, Pointer(item));
    }

    HashFunc mHashFunc;
    /// @endcond

    template <typename K, typename V>
    friend class PtrHashMap;
    template <typename K, typename V>
    friend class ValHashMap;
};

namespace hashtable {
/// How a value collection keeps a value in a slot: a heap copy by default.
template <typename T, bool = InPlace<T>::value>
struct ValueStore {
    static T* Get(Slot<T> const& slot) { return slot.mPointer; }
    /// Throws NotEnoughMemoryException and what T's copy constructor throws.
    static Slot<T> Make(T const& value) {
        Slot<T> slot;
        try {
            slot.mPointer = new T(value);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        return slot;
    }
    static void Destroy(Slot<T> const& slot) { delete slot.mPointer; }
};
/// A small trivial value kept in the slot itself.
template <typename T>
struct ValueStore<T, true> {
    static T* Get(Slot<T> const& slot) { return const_cast<T*>(&slot.mValue); }
    static Slot<T> Make(T const& value) {
        Slot<T> slot;
        slot.mValue = value;
        return slot;
    }
    static void Destroy(Slot<T> const&) {}
};
}  // namespace hashtable

namespace hashtable {
/// The element of a value collection: the stored value, read-only (changing it in place
/// could change its hash; Apply rehashes).
template <typename T>
struct ValueAccess {
    static T const& Get(Slot<T> const& slot) { return *ValueStore<T>::Get(slot); }
};
}  // namespace hashtable

/// A hash collection of copies of T; removal copies the value out. No duplicate check.
/// Lookups compare with T's operator==, the stored value on the left.
///
/// begin() and end() walk the values in iteration order for range-for and `<algorithm>`: a
/// forward iterator over the stored values (T const&), allocating nothing. A move copies no
/// value (a move assignment destroys the target's values first).
template <typename T>
class ValHashCollection : public HashCollection<T>, public IValCollection<T> {
public:
    /// The value hash; a value goes into bucket hash % table size.
    typedef unsigned long (*HashFunc)(T const&);
    /// Forward iterator over the stored values in iteration order, read-only (T const&):
    /// changing a value in place could change its hash (Apply rehashes). Changing the
    /// collection invalidates it.
    typedef hashtable::HashIterator<T, T, T const&, hashtable::ValueAccess<T>> const_iterator;
    /// Same as const_iterator.
    typedef const_iterator iterator;
    /// The value type, T.
    typedef T value_type;

    /// Throws InvalidOperationException "The hash table size is invalid. (size = 0)" for 0.
    explicit ValHashCollection(HashFunc hashFunc, unsigned long const& hashSize = 32767)
        : HashCollection<T>(hashSize), mHashFunc(hashFunc) {}
    ValHashCollection(ValHashCollection const&) = delete;
    ValHashCollection& operator=(ValHashCollection const&) = delete;
    ///@{
    /// Takes other's values, table size and hash function, copying no value; other is left
    /// empty with its table size and hash function. The assignment first destroys this
    /// collection's values.
    ValHashCollection(ValHashCollection&& other) noexcept
        : HashCollection<T>(std::move(other)), IValCollection<T>(), mHashFunc(other.mHashFunc) {}
    ValHashCollection& operator=(ValHashCollection&& other) noexcept {
        if (this != &other) {
            DestroyValues();
            this->Take(other);
            mHashFunc = other.mHashFunc;
        }
        return *this;
    }
    ///@}
    virtual ~ValHashCollection() { DestroyValues(); }

    ///@{
    /// Iteration in the order of HashCollectionIterator: ascending bucket numbers, each bucket
    /// in append order. Allocates nothing.
    const_iterator begin() const { return const_iterator(*this); }
    const_iterator end() const { return const_iterator(); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    using Collection<T>::operator=;

    /// Destroys every stored copy (ascending buckets, each front to back) and empties the
    /// collection and its cache.
    void Clear() override { DestroyValues(); }
    /// Stores a copy of value at its bucket's tail. NotEnoughMemoryException and the
    /// exceptions of T's copy constructor propagate with the value counted (not undone).
    unsigned char Append(T const& value) override {
        unsigned long const hash = mHashFunc(value);
        ++this->mItemCount;
        Bucket* bucket = this->mTable.Find(this->mModulus.Of(hash));
        if (bucket == nullptr)
            this->mCacheDirty = 1;
        StoreCopy(bucket, hash, value);
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
        unsigned long position = 0;
        Bucket* bucket = Locate(value, mHashFunc(value), position);
        if (bucket == nullptr || position == bucket->mCount)
            return false;
        Slot const held = bucket->Items()[position];
        if (this->mTable.RemoveAt(bucket, position))
            this->mCacheDirty = 1;
        --this->mItemCount;
        if (removed != nullptr) {
            try {
                *removed = static_cast<T&&>(*Store::Get(held));
            } catch (...) {
                Store::Destroy(held);
                throw;
            }
        }
        Store::Destroy(held);
        return true;
    }
    /// Calls fn on every stored value: ascending buckets, each front to back; then records
    /// the value's hash anew.
    void Apply(void (*fn)(T&)) override {
        HashFunc const hashFunc = mHashFunc;
        for (unsigned long number : this->GetSortedBuckets()) {
            // The bucket is looked up again after each call, in case fn changed the collection.
            for (unsigned long i = 0;; ++i) {
                Bucket* bucket = this->mTable.Find(number);
                if (bucket == nullptr || i >= bucket->mCount)
                    break;
                fn(*Store::Get(bucket->Items()[i]));
                this->Rehash(number, i,
                             [hashFunc](Slot const& slot) { return hashFunc(*Store::Get(slot)); });
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
    /// For Strings: whether a stored String's bytes equal text (NULs included); copies it to
    /// *found when given. No String is made when the collection hashes with String::Hash.
    template <typename Q = T, hashtable::IfString<Q> = 0>
    bool Find(std::string_view text, T* found = nullptr) const {
        unsigned long position = 0;
        Bucket* bucket = HashCollection<T>::Locate(
            hashtable::HashOfText(mHashFunc, text), position,
            [text](Slot const& slot) { return *Store::Get(slot) == text; });
        if (bucket == nullptr || position == bucket->mCount)
            return false;
        if (found != nullptr)
            *found = *Store::Get(bucket->Items()[position]);
        return true;
    }
    /// Find by the text of a C string (null is the empty text).
    template <typename Q = T, hashtable::IfString<Q> = 0>
    bool Find(char const* s, T* found = nullptr) const {
        return Find(text::Of(s), found);
    }
    /// The number of values stored.
    unsigned long GetNumberOfEntry() const override { return this->mItemCount; }

    /// Appends copies of the values of bucket hashValue (below the table size) to entry.
    void CopyEntry(unsigned long const& hashValue, ValHashEntry<T>& entry) const {
        Bucket const* bucket = this->mTable.Find(hashValue);
        for (unsigned long i = 0; bucket != nullptr && i < bucket->mCount; ++i)
            entry.Append(*Store::Get(bucket->Items()[i]));
    }

protected:
    /// @cond INTERNAL
    typedef typename HashCollection<T>::Slot Slot;
    typedef typename HashCollection<T>::Bucket Bucket;
    typedef hashtable::ValueStore<T> Store;

    /// The bucket of value (whose hash is hash) and the position of the first stored value
    /// equal to it (the count when none is); null when the bucket holds nothing.
    Bucket* Locate(T const& value, unsigned long const& hash, unsigned long& position) const {
        return HashCollection<T>::Locate(
            hash, position, [&value](Slot const& slot) { return *Store::Get(slot) == value; });
    }
    /// The first stored value of its bucket equal to value, or null.
    T* FindStored(T const& value) const {
        unsigned long position = 0;
        Bucket* bucket = Locate(value, mHashFunc(value), position);
        if (bucket == nullptr || position == bucket->mCount)
            return nullptr;
        return Store::Get(bucket->Items()[position]);
    }
    /// Appends a copy of value, whose hash is hash, to bucket, its bucket (null when that
    /// has no item yet).
    void StoreCopy(Bucket* bucket, unsigned long const& hash, T const& value) {
        Slot const copy = Store::Make(value);
        try {
            this->AppendRecord(bucket, hash, copy);
        } catch (...) {
            Store::Destroy(copy);
            throw;
        }
    }

    HashFunc mHashFunc;
    /// @endcond

private:
    void DestroyValues() {
        if (hashtable::InPlace<T>::value)
            this->ResetAll();  // nothing to destroy, nothing to order
        else
            this->ClearItems([](Slot const& slot) { Store::Destroy(slot); },
                             !hashtable::QuietDestructor<T>::value);
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
    ///@{
    /// Hands the pointers over, deleting none; other is left empty. The assignment first
    /// forgets this set's pointers as Clear(0) does.
    PtrHashSet(PtrHashSet&& other) noexcept : PtrHashCollection<T>(std::move(other)) {}
    PtrHashSet& operator=(PtrHashSet&& other) noexcept {
        PtrHashCollection<T>::operator=(std::move(other));
        return *this;
    }
    ///@}
    virtual ~PtrHashSet() {}

    using PtrHashCollection<T>::operator=;

    /// Appends item unless its bucket holds an item equal to it; then nothing happens and the
    /// passed pointer is neither stored nor deleted. Null is ignored.
    void Append(T* item) override {
        if (item == nullptr)
            return;
        typename PtrHashCollection<T>::Spot spot;
        if (this->FindHashed(
                this->mHashFunc(item), [item](T const& stored) { return stored == *item; },
                &spot) == nullptr)
            this->AppendAt(spot, item);
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
    /// Copies of values, appended in order (a duplicate is skipped, as by Append).
    ValHashSet(std::initializer_list<T> values, typename ValHashCollection<T>::HashFunc hashFunc,
               unsigned long const& hashSize = 32767)
        : ValHashCollection<T>(hashFunc, hashSize) {
        for (T const& value : values)
            Append(value);
    }
    ///@{
    /// Copies no value; other is left empty. The assignment first destroys this set's values.
    ValHashSet(ValHashSet&& other) noexcept : ValHashCollection<T>(std::move(other)) {}
    ValHashSet& operator=(ValHashSet&& other) noexcept {
        ValHashCollection<T>::operator=(std::move(other));
        return *this;
    }
    ///@}
    virtual ~ValHashSet() {}

    using ValHashCollection<T>::operator=;

    /// Stores a copy of value unless an equal value is stored; returns 1 either way.
    /// Deliberate: a duplicate is not a failure; it changes nothing and is reported like a
    /// successful append.
    unsigned char Append(T const& value) override {
        unsigned long const hash = this->mHashFunc(value);
        unsigned long position = 0;
        Bucket* bucket = this->Locate(value, hash, position);
        if (bucket != nullptr && position < bucket->mCount)
            return 1;
        this->mCacheDirty = 1;
        ++this->mItemCount;
        this->StoreCopy(bucket, hash, value);
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
    /// @cond INTERNAL
    typedef typename HashCollection<T>::Slot Slot;
    typedef typename HashCollection<T>::Bucket Bucket;

    /// The bound collection's bucket hashValue, or null.
    Bucket const* FindBucket(unsigned long const& hashValue) const {
        return mHashCollection != nullptr ? mHashCollection->mTable.Find(hashValue) : nullptr;
    }
    /// The number of items in the bound collection's bucket hashValue.
    unsigned long CountAt(unsigned long const& hashValue) const {
        Bucket const* bucket = FindBucket(hashValue);
        return bucket != nullptr ? bucket->mCount : 0;
    }
    /// One step of the derived iterators within the current bucket: entry and position are
    /// their place; returns the next item's slot, or null at the end. A place that does not
    /// belong to the current bucket of the bound collection counts as exhausted.
    Slot const* StepInEntry(Bucket const*& entry, unsigned long& position) const {
        if (entry == nullptr || mHashCollection == nullptr ||
            !mHashCollection->mTable.Holds(entry) ||
            mHashCollection->mTable.NumberOf(entry) != mCurHashValue || position >= entry->mCount)
            return nullptr;
        return &entry->Items()[position++];
    }

    HashCollection<T> const* mHashCollection;
    unsigned long mCachePosition;  // index of the current bucket in the cache
    unsigned long mCurHashValue;
    /// @endcond
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
        return this->CountAt(hashValue);
    }
    bool GetNextForCurEntry() override {
        typename HashCollectionIterator<T>::Slot const* slot =
            this->StepInEntry(mEntry, mEntryPosition);
        mCurItem = slot != nullptr ? slot->mPointer : nullptr;
        return slot != nullptr;
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
        return this->CountAt(hashValue);
    }
    bool GetNextForCurEntry() override {
        typename HashCollectionIterator<T>::Slot const* slot =
            this->StepInEntry(mEntry, mEntryPosition);
        mCurValue = slot != nullptr ? hashtable::ValueStore<T>::Get(*slot) : nullptr;
        return slot != nullptr;
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
